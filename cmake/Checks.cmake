# Checks of the sources and of what was built from them (in VW_BUILD): every script of tests/checks
# is one test, passed by exit code 0.
file(GLOB checks CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/tests/checks/*.sh ${CMAKE_SOURCE_DIR}/tests/checks/*.py)
foreach(check IN LISTS checks)
    get_filename_component(name ${check} NAME_WE)
    add_test(NAME check_${name} COMMAND ${check} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
    set_tests_properties(check_${name} PROPERTIES
        TIMEOUT 900
        LABELS check
        ENVIRONMENT "VW_BUILD=${CMAKE_BINARY_DIR}")
endforeach()

# The longest ones first, so that none runs alone at the end. CTest knows this by itself where it has
# run them before.
set_tests_properties(windows check_lint PROPERTIES COST 300)
set_tests_properties(engine PROPERTIES COST 200)
set_tests_properties(system console PROPERTIES COST 100)

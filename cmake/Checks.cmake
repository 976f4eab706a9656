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

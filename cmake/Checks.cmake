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
foreach(seconds_and_names IN ITEMS
    "300 windows check_lint" "190 engine" "100 system" "90 restore" "75 check_kill_points"
    "55 console app" "45 ui" "35 check_restore_faults check_package check_arabic_locale"
    "25 editing progress check_console_kill_points" "15 fsutil check_fault_points")
    string(REPLACE " " ";" names "${seconds_and_names}")
    list(POP_FRONT names seconds)
    set_tests_properties(${names} PROPERTIES COST ${seconds})
endforeach()

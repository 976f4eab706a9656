# The native build: the pure files and their tests under ASan and UBSan, and the fuzzers.

# vw_require(<variable>): every file of the list has to be there.
function(vw_require variable)
    foreach(file IN LISTS ${variable})
        if(NOT EXISTS ${CMAKE_SOURCE_DIR}/${file})
            message(FATAL_ERROR "${variable} in cmake/PureSources.cmake names ${file}, which is not there")
        endif()
    endforeach()
endfunction()

vw_require(PURE_SOURCES)
vw_require(PURE_TESTS)
file(GLOB hostSupport CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/TextCaseHost.cpp)
file(GLOB fuzzers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/fuzz/*.cpp)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/reports)

set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)

if(PURE_TESTS)
    add_executable(pure_tests ${PURE_TESTS} ${PURE_SOURCES} ${hostSupport})
    target_compile_options(pure_tests PRIVATE ${sanitizers})
    target_link_options(pure_tests PRIVATE ${sanitizers})
    target_link_libraries(pure_tests PRIVATE vw_flags gmock_main gmock gtest)
    set_target_properties(pure_tests PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    add_test(NAME pure
        COMMAND pure_tests --gtest_output=xml:reports/pure.xml
        WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
    set_tests_properties(pure PROPERTIES
        TIMEOUT 600
        LABELS cases)
endif()

if(fuzzers)
    # The pure files once more, watched by the fuzzer.
    add_library(vw_fuzzed STATIC ${PURE_SOURCES} ${hostSupport})
    target_compile_options(vw_fuzzed PUBLIC -fsanitize=fuzzer-no-link ${sanitizers})
    target_link_libraries(vw_fuzzed PUBLIC vw_flags)
endif()

# A short run in every test run; for a long one start the program by hand with -max_total_time=N.
foreach(fuzzer IN LISTS fuzzers)
    get_filename_component(name ${fuzzer} NAME_WE)
    add_executable(fuzz_${name} ${fuzzer})
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer ${sanitizers})
    target_link_libraries(fuzz_${name} PRIVATE vw_fuzzed)
    set_target_properties(fuzz_${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
    add_test(NAME fuzz_${name}
        COMMAND fuzz_${name} -runs=20000 -max_total_time=10 -timeout=10 -seed=1
            -artifact_prefix=reports/${name}-
        WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
    set_tests_properties(fuzz_${name} PROPERTIES TIMEOUT 120 LABELS fuzz)
endforeach()

# The order in which texts of both directions are shown.
add_executable(display_marks ${CMAKE_SOURCE_DIR}/tests/bidi/DisplayMarks.cpp
    ${CMAKE_SOURCE_DIR}/platform/TextDirection.cpp ${CMAKE_SOURCE_DIR}/platform/Utf8.cpp)
target_link_libraries(display_marks PRIVATE vw_flags)
set_target_properties(display_marks PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
add_test(NAME check_display_order
    COMMAND ${CMAKE_SOURCE_DIR}/tests/bidi/display_order.py $<TARGET_FILE:display_marks>)
set_tests_properties(check_display_order PROPERTIES TIMEOUT 120 LABELS check)

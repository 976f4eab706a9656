# One test program per layer and one for the whole program, each one test of CTest.

# What the test programs share. TextCaseHost.cpp is the native build's replacement of Windows.
file(GLOB supportSources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/*.cpp)
list(FILTER supportSources EXCLUDE REGEX "/TextCaseHost\\.cpp$")
if(supportSources)
    add_library(vw_testsupport STATIC ${supportSources})
else()
    add_library(vw_testsupport INTERFACE)
endif()

# Support files may use the layers up to here without making every test program wait for more.
set(supportRooms "")
foreach(layer vw_format vw_fsutil vw_platform)
    if(TARGET ${layer})
        list(APPEND supportRooms ${layer})
    endif()
endforeach()
if(supportSources)
    target_link_libraries(vw_testsupport PUBLIC gmock gtest ${supportRooms} vw_flags)
else()
    target_link_libraries(vw_testsupport INTERFACE gmock gtest ${supportRooms} vw_flags)
endif()

# Starts a program as another process and operates its windows: for the tests of whole programs, and
# for the programs by which checks and scripts do the same.
file(GLOB drivingSources CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/tests/system/Program*.cpp ${CMAKE_SOURCE_DIR}/tests/windows/Driven*.cpp)
add_library(vw_driving STATIC ${drivingSources})
target_link_libraries(vw_driving PUBLIC vw_testsupport gmock vw_flags)
target_compile_options(vw_driving PRIVATE $<$<CONFIG:Release>:-O0>)

# The headers that nearly every test includes are read once. They come from elsewhere and hardly ever
# change; every test includes what it uses all the same, which scripts/lint checks without them.
target_precompile_headers(vw_driving PRIVATE
    <gmock/gmock.h> <gtest/gtest.h> ${CMAKE_SOURCE_DIR}/platform/WindowsHeader.h)

# A path as the tests under Wine see it: the root of this machine is drive Z:.
function(vw_windows_path path variable)
    string(REPLACE "/" "\\" path "Z:${path}")
    set(${variable} ${path} PARENT_SCOPE)
endfunction()

vw_windows_path(${CMAKE_BINARY_DIR}/bin/Vaultwright.exe programPath)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/reports)

# Every test program runs in a Wine prefix of its own, so that they may run side by side: settings,
# named locks and temporary files of one never meet those of another.
#
# vw_add_tests(<name> <folder> <timeout in seconds>): the program <name>_tests of the folder's
# files *Test.cpp. Other files may be beside them, shared by these tests alone.
function(vw_add_tests name folder timeout)
    file(GLOB tests CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*Test.cpp)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp)
    if(NOT tests)
        return()
    endif()
    list(REMOVE_ITEM sources ${drivingSources})

    add_executable(${name}_tests ${sources})
    vw_add_resources(${name}_tests)
    set(layers "")
    if(TARGET vw_${name})
        set(layers vw_${name})
    elseif(name MATCHES "^(system|windows)$")
        set(layers ${VW_LAYERS})
        list(REVERSE layers)
        list(PREPEND layers vw_driving)
    endif()
    target_link_libraries(${name}_tests PRIVATE vw_testsupport ${layers} gmock_main vw_flags)
    # The tests themselves are built without optimisation, which takes almost half of the time that
    # it takes with it. What they test is optimised as it is for users.
    target_compile_options(${name}_tests PRIVATE $<$<CONFIG:Release>:-O0>)
    target_precompile_headers(${name}_tests REUSE_FROM vw_driving)
    set_target_properties(${name}_tests PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    if(name MATCHES "^(system|windows)$" AND TARGET Vaultwright)
        add_dependencies(${name}_tests Vaultwright)
    endif()

    add_test(NAME ${name}
        COMMAND ${name}_tests --gtest_output=xml:reports/${name}.xml
        WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${timeout}
        LABELS cases
        ENVIRONMENT "VW_PROGRAM=${programPath};VW_PREFIX=${CMAKE_BINARY_DIR}/prefix/${name}")
endfunction()

vw_add_tests(platform platform 600)
vw_add_tests(fsutil fsutil 600)
vw_add_tests(format list/format 600)
vw_add_tests(engine engine 2400)
vw_add_tests(ui ui 600)
vw_add_tests(progress progress 600)
vw_add_tests(editing list/editing 900)
vw_add_tests(restore restore 600)
vw_add_tests(app app 600)
vw_add_tests(system system 1200)
vw_add_tests(windows windows 1200)
if(TARGET system_tests)
    # They read the version of the program as the system does, and compare it with the project's.
    target_link_libraries(system_tests PRIVATE version)
    target_include_directories(system_tests PRIVATE ${CMAKE_BINARY_DIR}/generated)
endif()

# kill_point.exe: what tests/checks/kill_points.sh looks with at the disk after a kill.
file(GLOB killPointSources CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/tests/system/tools/*.cpp ${CMAKE_SOURCE_DIR}/tests/system/CrashScenario*.cpp)
if(killPointSources AND TARGET Vaultwright)
    add_executable(kill_point ${killPointSources})
    target_link_libraries(kill_point PRIVATE vw_driving)
    vw_wide_entry(kill_point)
    set_target_properties(kill_point PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
endif()

# restore_faults.exe: the cases of tests/checks/restore_faults.sh, which makes the disk fail for them.
if(TARGET Vaultwright)
    file(GLOB faultSources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/windows/faults/*.cpp)
    add_executable(restore_faults ${faultSources})
    target_link_libraries(restore_faults PRIVATE vw_driving gmock_main)
    set_target_properties(restore_faults PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
endif()

# canary.exe: what tests put where no program of the system may be looked for.
add_executable(canary ${CMAKE_SOURCE_DIR}/tests/system/canary/Canary.cpp)
target_link_libraries(canary PRIVATE vw_flags)
vw_wide_entry(canary)
set_target_properties(canary PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
if(TARGET windows_tests)
    add_dependencies(windows_tests canary)
endif()

# save_point.exe: what tests/checks/save_points.sh and full_disk.sh work the main window with.
add_executable(save_point ${CMAKE_SOURCE_DIR}/tests/windows/tools/SavePoint.cpp)
target_link_libraries(save_point PRIVATE vw_driving)
vw_wide_entry(save_point)
set_target_properties(save_point PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)

# The console companion: the layer console/, its program vw.exe and its tests. It is beside app/
# and uses every layer to the left of that one.
set(consoleLayers ${VW_LAYERS})
list(REMOVE_ITEM consoleLayers vw_app)
list(REVERSE consoleLayers)

file(GLOB consoleSources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/console/*.cpp)
list(REMOVE_ITEM consoleSources ${CMAKE_SOURCE_DIR}/console/main.cpp)
add_library(vw_console STATIC ${consoleSources})
target_link_libraries(vw_console PUBLIC ${consoleLayers} vw_flags)

# Two header-only libraries. When cross-building they are those of the distribution, and
# /usr/include comes after the compiler's own folders: before them it would replace the headers of
# Windows by those of Linux.
if(CMAKE_CROSSCOMPILING)
    set_source_files_properties(console/Arguments.cpp console/JsonLine.cpp PROPERTIES
        COMPILE_OPTIONS "-idirafter;/usr/include")
else()
    find_package(CLI11 REQUIRED)
    find_package(nlohmann_json REQUIRED)
    target_link_libraries(vw_console PRIVATE CLI11::CLI11 nlohmann_json::nlohmann_json)
endif()
set_source_files_properties(console/Arguments.cpp PROPERTIES
    COMPILE_DEFINITIONS "VW_VERSION=\"${PROJECT_VERSION}\"")

configure_file(console/vw.manifest.in ${generated}/vw.manifest @ONLY)
set_source_files_properties(console/vw.rc PROPERTIES OBJECT_DEPENDS
    "${generated}/ui/VersionNumbers.h;${generated}/vw.manifest")
add_executable(vw ${CMAKE_SOURCE_DIR}/console/main.cpp ${CMAKE_SOURCE_DIR}/console/vw.rc)
target_include_directories(vw PRIVATE ${generated})
target_link_libraries(vw PRIVATE vw_console)
vw_wide_entry(vw)
set_target_properties(vw PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# Its tests drive the program itself, in a Wine prefix of their own.
file(GLOB consoleTests CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/console/*.cpp)
add_executable(console_tests ${consoleTests})
target_link_libraries(console_tests PRIVATE vw_driving vw_console gmock_main vw_flags)
target_compile_options(console_tests PRIVATE $<$<CONFIG:Release>:-O0>)
target_precompile_headers(console_tests REUSE_FROM vw_driving)
set_target_properties(console_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
add_dependencies(console_tests vw)
target_include_directories(console_tests PRIVATE ${generated})
vw_windows_path(${CMAKE_BINARY_DIR}/bin/vw.exe consolePath)
add_test(NAME console
    COMMAND console_tests --gtest_output=xml:reports/console.xml
    WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
set_tests_properties(console PROPERTIES
    TIMEOUT 1200
    LABELS cases
    ENVIRONMENT "VW_CONSOLE=${consolePath};VW_PREFIX=${CMAKE_BINARY_DIR}/prefix/console")

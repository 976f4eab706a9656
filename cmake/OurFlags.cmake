# vw_flags: how our own files are compiled. GoogleTest is built without it.
add_library(vw_flags INTERFACE)
target_include_directories(vw_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(vw_flags INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -fstack-protector-strong
    # Source lines that errors name are written from the project's root on every machine.
    -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)

if(WIN32)
    target_compile_definitions(vw_flags INTERFACE UNICODE _UNICODE)
    string(REGEX MATCH "^([0-9]+)[.]([0-9]+)" _ "${VW_LEAST_WINDOWS}")
    set(leastMajor ${CMAKE_MATCH_1})
    set(leastMinor ${CMAKE_MATCH_2})
    target_link_options(vw_flags INTERFACE
        -static
        -fstack-protector-strong
        -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va
        # An older system names the reason when it refuses the program.
        -Wl,--major-subsystem-version=${leastMajor} -Wl,--minor-subsystem-version=${leastMinor}
        # The same sources give the same bytes, and users do not load symbols of the runtime.
        -Wl,--no-insert-timestamp
        $<$<CONFIG:Release>:-Wl,--strip-all>)
    include(DelayLoad)
    vw_delay_load(vw_flags comctl32 comdlg32 uxtheme shell32 oleaut32 ole32)
    target_link_libraries(vw_flags INTERFACE shlwapi uuid gdi32 user32 advapi32)
endif()

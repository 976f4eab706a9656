# vw_flags: how our own files are compiled and linked. GoogleTest is built without it.
#
# Three compilers are provided for. GCC builds what users get; clang builds the same and is tried
# with `scripts/build clang`; the options for the Microsoft compiler have never been tried.
add_library(vw_flags INTERFACE)
target_include_directories(vw_flags INTERFACE ${CMAKE_SOURCE_DIR})

if(MSVC)
    target_compile_options(vw_flags INTERFACE
        /W4 /WX /permissive- /utf-8 /Zc:__cplusplus /Zc:preprocessor /EHsc)
else()
    target_compile_options(vw_flags INTERFACE
        -Wall -Wextra -Wpedantic -Werror
        -fstack-protector-strong
        # Source lines that errors name are written from the project's root on every machine.
        -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
endif()

if(WIN32)
    target_compile_definitions(vw_flags INTERFACE UNICODE _UNICODE)
    string(REGEX MATCH "^([0-9]+)[.]([0-9]+)" leastVersion "${VW_LEAST_WINDOWS}")
    set(leastMajor ${CMAKE_MATCH_1})
    set(leastMinor ${CMAKE_MATCH_2})

    # An older system names the reason when it refuses the program. The same sources give the same
    # bytes, and users do not load symbols of the runtime.
    if(MSVC)
        target_link_options(vw_flags INTERFACE
            /DYNAMICBASE /NXCOMPAT /HIGHENTROPYVA /Brepro
            "$<$<BOOL:$<TARGET_PROPERTY:WIN32_EXECUTABLE>>:/SUBSYSTEM:WINDOWS,${leastVersion}>"
            "$<$<NOT:$<BOOL:$<TARGET_PROPERTY:WIN32_EXECUTABLE>>>:/SUBSYSTEM:CONSOLE,${leastVersion}>")
    else()
        target_link_options(vw_flags INTERFACE
            -static
            -fstack-protector-strong
            -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va
            -Wl,--major-subsystem-version=${leastMajor} -Wl,--minor-subsystem-version=${leastMinor}
            -Wl,--no-insert-timestamp
            $<$<CONFIG:Release>:-Wl,--strip-all>)
    endif()

    include(DelayLoad)
    vw_delay_load(vw_flags comctl32 comdlg32 uxtheme shell32 oleaut32 ole32)
    target_link_libraries(vw_flags INTERFACE shlwapi uuid gdi32 user32 advapi32)
endif()

# vw_wide_entry(<program>): the program begins in wmain or wWinMain.
function(vw_wide_entry program)
    if(MSVC)
        return()
    endif()
    target_link_options(${program} PRIVATE -municode)
endfunction()

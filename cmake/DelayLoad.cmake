# Libraries of the system that are loaded at their first call. A run without windows calls none of
# them, and loading them is half of what such a run would take.
#
# vw_delay_load(<target> <library>...): links the target to libraries that load late. The linkers of
# Microsoft and of LLVM have an option for it; for GNU's, dlltool makes import libraries of the
# toolchain's own. LLVM's would put their tables where the program may not write.
function(vw_delay_load target)
    if(MSVC)
        set(option /DELAYLOAD:)
    elseif(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        set(option -Wl,-Xlink=-delayload:)
    endif()
    if(option)
        foreach(library IN LISTS ARGN)
            target_link_libraries(${target} INTERFACE ${library})
            target_link_options(${target} INTERFACE ${option}${library}.dll)
        endforeach()
        target_link_libraries(${target} INTERFACE delayimp)
        return()
    endif()
    set(folder ${CMAKE_BINARY_DIR}/delayed)
    file(MAKE_DIRECTORY ${folder})
    foreach(library IN LISTS ARGN)
        set(late lib${library}_late.a)
        if(NOT EXISTS ${folder}/${late})
            vw_make_late_library(${library} ${late} ${folder})
        endif()
        target_link_libraries(${target} INTERFACE ${folder}/${late})
    endforeach()
    target_link_libraries(${target} INTERFACE delayimp)
endfunction()

# The functions of a library are the symbols of its ordinary import library.
function(vw_make_late_library library late folder)
    find_library(ordinary NAMES lib${library}.a NO_CACHE REQUIRED)
    execute_process(
        COMMAND ${CMAKE_NM} --defined-only --extern-only ${ordinary}
        OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL " T [A-Za-z0-9_]+" functions "${symbols}")
    list(TRANSFORM functions REPLACE " T " "")
    list(REMOVE_DUPLICATES functions)
    list(JOIN functions "\n" exports)
    file(WRITE ${folder}/${library}.def "LIBRARY \"${library}.dll\"\nEXPORTS\n${exports}\n")
    # Without folders: the file's name becomes part of symbols in the program.
    execute_process(
        COMMAND ${CMAKE_DLLTOOL} --machine i386:x86-64 --input-def ${library}.def
            --output-delaylib ${late}
        WORKING_DIRECTORY ${folder}
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Cross-building for 64-bit Windows with clang, over the headers, the C++ library and the linker of
# Debian's MinGW-w64. A second compiler reads the sources by other rules, and warns of other faults.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-x86_64.cmake)

execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
    OUTPUT_VARIABLE runtime OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET runtime PARENT_PATH runtime)

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
foreach(tool ar ranlib nm dlltool)
    string(TOUPPER ${tool} variable)
    find_program(CMAKE_${variable} x86_64-w64-mingw32-${tool} REQUIRED)
endforeach()

# The library was built for the variant with posix threads and for emulated thread-local storage, and
# compares types in functions of its own: GCC defines these macros for this target by itself.
set(CMAKE_C_FLAGS_INIT "-pthread -femulated-tls")
set(CMAKE_CXX_FLAGS_INIT "-pthread -femulated-tls \
-D__GXX_TYPEINFO_EQUALITY_INLINE=0 -D__GXX_MERGED_TYPEINFO_NAMES=0 \
-isystem ${runtime}/include/c++ -isystem ${runtime}/include/c++/x86_64-w64-mingw32")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld -pthread -L${runtime}")

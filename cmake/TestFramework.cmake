# GoogleTest and GMock from Debian's package of their sources, built once per build folder.
set(VW_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Folder of GoogleTest's sources")
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
add_subdirectory(${VW_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

# The program itself: app/main.cpp, the resources of ui/ and every layer.

# The resources are objects of their own, since the test programs of windows need them too. The
# version record and the manifest take the version of the project.
set(generated ${CMAKE_BINARY_DIR}/generated)
configure_file(${CMAKE_SOURCE_DIR}/ui/VersionNumbers.h.in ${generated}/ui/VersionNumbers.h @ONLY)
configure_file(${CMAKE_SOURCE_DIR}/ui/Vaultwright.manifest.in ${generated}/Vaultwright.manifest
    @ONLY)
file(GLOB resourceFiles CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/ui/*.h ${CMAKE_SOURCE_DIR}/ui/icons/*.ico)
enable_language(RC)
set_source_files_properties(${CMAKE_SOURCE_DIR}/ui/Vaultwright.rc PROPERTIES OBJECT_DEPENDS
    "${resourceFiles};${generated}/ui/VersionNumbers.h;${generated}/Vaultwright.manifest")
add_library(vw_resources OBJECT ${CMAKE_SOURCE_DIR}/ui/Vaultwright.rc)
target_include_directories(vw_resources PRIVATE
    ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/ui ${generated})

# vw_add_resources(<program>): adds the manifest, the version record and the icons to the program.
function(vw_add_resources program)
    target_sources(${program} PRIVATE $<TARGET_OBJECTS:vw_resources>)
endfunction()

add_executable(Vaultwright WIN32 ${CMAKE_SOURCE_DIR}/app/main.cpp)
vw_add_resources(Vaultwright)
set(layers ${VW_LAYERS})
list(REVERSE layers)
target_link_libraries(Vaultwright PRIVATE ${layers} vw_flags)
vw_wide_entry(Vaultwright)
set_target_properties(Vaultwright PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# The help pages and the icon of list files are copied beside the program. The pages are copied
# anew when one of them is changed, added or removed: the list of their names is a dependency too.
file(GLOB_RECURSE helpFiles CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/Help/*)
list(JOIN helpFiles "\n" helpNames)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/help-files.txt CONTENT "${helpNames}\n" @ONLY)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/help-copied
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${CMAKE_BINARY_DIR}/bin/Help
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/Help ${CMAKE_BINARY_DIR}/bin/Help
    COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/help-copied
    DEPENDS ${helpFiles} ${CMAKE_BINARY_DIR}/help-files.txt
    COMMENT "Copying the help pages"
    VERBATIM)
add_custom_target(vw_help ALL DEPENDS ${CMAKE_BINARY_DIR}/help-copied)
add_dependencies(Vaultwright vw_help)
add_custom_target(vw_list_icon ALL
    COMMAND ${CMAKE_COMMAND} -E copy_if_different
        ${CMAKE_SOURCE_DIR}/ui/icons/vwl.ico ${CMAKE_BINARY_DIR}/bin/vwl.ico
    COMMENT "Copying the icon of list files")

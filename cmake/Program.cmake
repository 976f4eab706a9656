# The program itself: app/main.cpp, the resources of ui/ and every room.

# The resources are objects of their own, since the test programs of windows need them too.
file(GLOB resourceScripts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/ui/*.rc)
file(GLOB resourceFiles CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/ui/*.manifest ${CMAKE_SOURCE_DIR}/ui/*.h
    ${CMAKE_SOURCE_DIR}/ui/*.ico ${CMAKE_SOURCE_DIR}/ui/icons/*.ico
    ${CMAKE_SOURCE_DIR}/ui/*.bmp ${CMAKE_SOURCE_DIR}/ui/icons/*.bmp)
if(resourceScripts)
    enable_language(RC)
    set_source_files_properties(${resourceScripts} PROPERTIES OBJECT_DEPENDS "${resourceFiles}")
    add_library(vw_resources OBJECT ${resourceScripts})
    target_include_directories(vw_resources PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/ui)
endif()

# vw_add_resources(<program>): gives the program the manifest, the version record and the pictures.
function(vw_add_resources program)
    if(TARGET vw_resources)
        target_sources(${program} PRIVATE $<TARGET_OBJECTS:vw_resources>)
    endif()
endfunction()

file(GLOB programMain CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/app/main.cpp)
if(programMain AND TARGET vw_app)
    add_executable(Vaultwright WIN32 ${programMain})
    vw_add_resources(Vaultwright)
    set(rooms ${VW_ROOMS})
    list(REVERSE rooms)
    target_link_libraries(Vaultwright PRIVATE ${rooms} vw_flags)
    target_link_options(Vaultwright PRIVATE -municode -Wl,--stack,8388608)
    set_target_properties(Vaultwright PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

    # What lies beside the program: the help pages and the icon of list files. The pages are copied
    # anew when one of them changes, comes or goes: the list of their names is one more of them.
    file(GLOB_RECURSE helpFiles CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/Help/*)
    if(helpFiles)
        list(JOIN helpFiles "\n" helpNames)
        file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/help-files.txt CONTENT "${helpNames}\n" @ONLY)
        add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/help-copied
            COMMAND ${CMAKE_COMMAND} -E rm -rf ${CMAKE_BINARY_DIR}/bin/Help
            COMMAND ${CMAKE_COMMAND} -E copy_directory
                ${CMAKE_SOURCE_DIR}/Help ${CMAKE_BINARY_DIR}/bin/Help
            COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/help-copied
            DEPENDS ${helpFiles} ${CMAKE_BINARY_DIR}/help-files.txt
            COMMENT "Copying the help pages"
            VERBATIM)
        add_custom_target(vw_help ALL DEPENDS ${CMAKE_BINARY_DIR}/help-copied)
        add_dependencies(Vaultwright vw_help)
    endif()
    file(GLOB listIcon CONFIGURE_DEPENDS
        ${CMAKE_SOURCE_DIR}/ui/vwl.ico ${CMAKE_SOURCE_DIR}/ui/icons/vwl.ico)
    if(listIcon)
        add_custom_target(vw_list_icon ALL
            COMMAND ${CMAKE_COMMAND} -E copy_if_different
                ${listIcon} ${CMAKE_BINARY_DIR}/bin/vwl.ico
            COMMENT "Copying the icon of list files")
    endif()
endif()

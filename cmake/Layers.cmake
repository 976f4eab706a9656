# The layers of the program, from left to right: a layer may use only the layers before it.
set(VW_LAYERS "")

# vw_add_room(<name> <folder>): makes the static library vw_<name> of the folder's sources and links
# the layers made so far to it.
function(vw_add_room name folder)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    list(REMOVE_ITEM sources ${CMAKE_SOURCE_DIR}/app/main.cpp)

    set(lowerLayers ${VW_LAYERS})
    list(REVERSE lowerLayers)
    add_library(vw_${name} STATIC ${sources})
    target_link_libraries(vw_${name} PUBLIC ${lowerLayers} vw_flags)
    set(VW_LAYERS ${VW_LAYERS} vw_${name} PARENT_SCOPE)
endfunction()

# It sets the guards that the protection of the others compares.
if(NOT MSVC)
    set_source_files_properties(platform/StackGuard.cpp PROPERTIES
        COMPILE_OPTIONS -fno-stack-protector)
endif()

vw_add_room(platform platform)
vw_add_room(fsutil fsutil)
vw_add_room(format list/format)
vw_add_room(engine engine)
vw_add_room(ui ui)
vw_add_room(progress progress)
vw_add_room(editing list/editing)
vw_add_room(restore restore)
vw_add_room(app app)

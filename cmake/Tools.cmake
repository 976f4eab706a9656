# The programs of tools/, which scripts use and people start by hand. They are neither tests nor
# shipped; all of them are built into tools/ of the build folder.

# vw_add_tool(<name> <source>... [LIBRARIES <library>...])
function(vw_add_tool name)
    cmake_parse_arguments(PARSE_ARGV 1 tool "" "" "LIBRARIES")
    add_executable(${name} ${tool_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE ${tool_LIBRARIES} vw_flags)
    vw_wide_entry(${name})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tools)
endfunction()

# FormShow.exe shows one form with sample data.
file(GLOB formSources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/forms/*.cpp)
vw_add_tool(FormShow ${formSources} LIBRARIES vw_ui)
vw_add_resources(FormShow)

# Shots.exe operates the program for the pictures of scripts/shots.
file(GLOB shotSources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/shots/*.cpp)
vw_add_tool(Shots ${shotSources} LIBRARIES vw_driving)
add_dependencies(Shots Vaultwright)

# What scripts/bench measures with, one program for each file.
file(GLOB benchSources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/bench/*.cpp)
foreach(source IN LISTS benchSources)
    get_filename_component(tool ${source} NAME_WE)
    vw_add_tool(${tool} ${source})
endforeach()
# The system waits for the first window of a program only when it is no console program.
set_target_properties(BareWindow PROPERTIES WIN32_EXECUTABLE ON)
target_link_libraries(EngineCall PRIVATE vw_console)

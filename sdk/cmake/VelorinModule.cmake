# velorin_add_module(<name> MANIFEST <name>.addin.json [PICTURE <file>] SOURCES <files>... [LIBRARIES <targets>...]):
# an add-in module, its library with manifest and picture beside it.
function(velorin_add_module name)
    cmake_parse_arguments(PARSE_ARGV 1 module "" "MANIFEST;PICTURE" "SOURCES;LIBRARIES")
    add_library(${name} MODULE ${module_SOURCES})
    target_link_libraries(${name} PRIVATE Velorin::addin ${module_LIBRARIES})
    set_target_properties(${name} PROPERTIES PREFIX "" C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden)
    foreach(file ${module_MANIFEST} ${module_PICTURE})
        add_custom_command(TARGET ${name} POST_BUILD COMMAND ${CMAKE_COMMAND} -E copy_if_different
            ${CMAKE_CURRENT_SOURCE_DIR}/${file} $<TARGET_FILE_DIR:${name}>)
    endforeach()
endfunction()

# Files that panelhost writes about itself, from the texts of --help: manual pages and completions of two shells.

set(generated_dir "${CMAKE_CURRENT_BINARY_DIR}/generated")
set(generated_files "")

# panelhost_generate(<file> <argument of generate...>): writes what "panelhost generate" prints to <file>, compressed if
# its name ends in .gz.
function(panelhost_generate file)
    set(path "${generated_dir}/${file}")
    get_filename_component(directory "${path}" DIRECTORY)
    file(MAKE_DIRECTORY "${directory}")
    string(REGEX REPLACE "\\.gz$" "" plain "${path}")
    set(compress "")
    if(NOT plain STREQUAL path)
        set(compress COMMAND gzip -9nf "${plain}")
    endif()
    add_custom_command(OUTPUT "${path}"
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:panelhost> generate ${ARGN} > "${plain}"
        ${compress} DEPENDS panelhost VERBATIM)
    set(generated_files "${generated_files};${path}" PARENT_SCOPE)
endfunction()

panelhost_generate(man/panelhost.1.gz man)
foreach(command play record view probe restore check info runs run stats prune schema generate)
    panelhost_generate(man/panelhost-${command}.1.gz man ${command})
endforeach()
panelhost_generate(bash/panelhost bash)
panelhost_generate(zsh/_panelhost zsh)
add_custom_target(panelhost_generated ALL DEPENDS ${generated_files})

install(DIRECTORY "${generated_dir}/man/" DESTINATION share/man/man1 COMPONENT PanelHost)
install(FILES "${generated_dir}/bash/panelhost" DESTINATION share/bash-completion/completions COMPONENT PanelHost)
install(FILES "${generated_dir}/zsh/_panelhost" DESTINATION share/zsh/vendor-completions COMPONENT PanelHost)

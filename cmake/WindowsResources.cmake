# bankweaver_program_resources(target description [icon...]): what Windows reads in the program's file:
# the version and names that its properties show, the manifest, and the icons, the program's own
# first. Nothing on other systems.
if(WIN32)
    enable_language(RC)
endif()

function(bankweaver_program_resources target description)
    if(NOT WIN32)
        return()
    endif()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    set(manifest ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
    # Qt gives windows the icon of this name; a file's icons are counted in the order of names.
    set(icons)
    set(number 1)
    foreach(icon ${ARGN})
        string(APPEND icons "IDI_ICON${number} ICON \"${icon}\"\n")
        math(EXPR number "${number} + 1")
    endforeach()
    string(REPLACE "." "," numbers ${PROJECT_VERSION})
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${source} @ONLY)
    set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${manifest};${ARGN}")
    target_sources(${target} PRIVATE ${source})
endfunction()

# bankweaver_embed(target name=path...): links the bytes of each file into the target. A name
# becomes the symbols embedded_NAME_begin and embedded_NAME_end (declared extern "C" const
# unsigned char[] where they are used). The target is rebuilt when a file changes.
function(bankweaver_embed target)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_embedded.S)
    # The names of sections are those of the format of object files: PE for Windows, ELF elsewhere.
    if(WIN32)
        set(text "    .section .rdata,\"dr\"\n")
    else()
        set(text "    .section .note.GNU-stack,\"\",%progbits\n    .section .rodata\n")
    endif()
    set(files)
    foreach(pair ${ARGN})
        string(REGEX MATCH "^([^=]+)=(.+)$" unused "${pair}")
        set(symbol embedded_${CMAKE_MATCH_1})
        set(path ${CMAKE_MATCH_2})
        list(APPEND files ${path})
        string(APPEND text
            "    .global ${symbol}_begin\n    .global ${symbol}_end\n    .balign 16\n"
            "${symbol}_begin:\n    .incbin \"${path}\"\n${symbol}_end:\n    .byte 0\n")
    endforeach()
    file(CONFIGURE OUTPUT ${source} CONTENT "${text}" @ONLY)
    set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${files}")
    target_sources(${target} PRIVATE ${source})
endfunction()

# Run by cpack between installing and packing: what Debian's policy wants of each package beside the
# program's own files.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
find_program(GZIP gzip REQUIRED)
find_program(DATE date REQUIRED)

execute_process(COMMAND ${DATE} -Ru -d "${CPACK_BANKWEAVER_DATE} 12:00 UTC" OUTPUT_VARIABLE DATE
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

foreach(component ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${component} upper)
    set(PACKAGE ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(share ${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share)
    set(doc ${share}/doc/${PACKAGE})
    file(COPY ${CPACK_BANKWEAVER_DEBIAN}/copyright DESTINATION ${doc})
    configure_file(${CPACK_BANKWEAVER_DEBIAN}/changelog.in ${doc}/changelog @ONLY)
    set(overrides ${CPACK_BANKWEAVER_DEBIAN}/${PACKAGE}.lintian-overrides)
    if(EXISTS ${overrides})
        configure_file(${overrides} ${share}/lintian/overrides/${PACKAGE} COPYONLY)
    endif()
    file(GLOB pages ${share}/man/man1/*.1)
    execute_process(COMMAND ${GZIP} -9nf ${pages} ${doc}/changelog COMMAND_ERROR_IS_FATAL ANY)
endforeach()

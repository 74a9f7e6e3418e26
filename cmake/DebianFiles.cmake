# Run by cpack between installing and packing: what Debian's policy wants of a package beside the
# program's own files.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
find_program(GZIP gzip REQUIRED)
set(share ${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share)
set(doc ${share}/doc/${CPACK_PACKAGE_NAME})

file(REMOVE ${doc}/LICENSE)  # the copyright file has it
file(COPY ${CPACK_BANKWEAVER_DEBIAN}/copyright DESTINATION ${doc})
file(COPY ${CPACK_BANKWEAVER_CHANGELOG} DESTINATION ${doc})
file(COPY ${CPACK_BANKWEAVER_DEBIAN}/lintian-overrides DESTINATION ${share}/lintian/overrides)
file(RENAME ${share}/lintian/overrides/lintian-overrides
    ${share}/lintian/overrides/${CPACK_PACKAGE_NAME})
file(GLOB pages ${share}/man/man1/*.1)
execute_process(COMMAND ${GZIP} -9nf ${pages} ${doc}/changelog COMMAND_ERROR_IS_FATAL ANY)

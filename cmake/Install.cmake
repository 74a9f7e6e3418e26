# What `cmake --install` puts where, and the Debian package that `cpack -G DEB` makes of it.
include(GNUInstallDirs)

set(share ${CMAKE_INSTALL_DATAROOTDIR})
set(packaging ${PROJECT_SOURCE_DIR}/packaging)

install(TARGETS bankweaver-cli nesasm)
install(FILES ${packaging}/man/bankweaver-cli.1 ${packaging}/man/nesasm.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# Bash looks for a completion by the program's name.
foreach(program bankweaver bankweaver-cli nesasm)
    install(FILES ${packaging}/completions/bankweaver.bash RENAME ${program}
        DESTINATION ${share}/bash-completion/completions)
endforeach()
install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)

if(BANKWEAVER_WINDOW)
    install(TARGETS bankweaver)
    install(FILES ${packaging}/man/bankweaver.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${packaging}/bankweaver.desktop DESTINATION ${share}/applications)
    install(FILES ${packaging}/bankweaver-mime.xml RENAME bankweaver.xml
        DESTINATION ${share}/mime/packages)
    install(DIRECTORY ${BANKWEAVER_ICONS}/ DESTINATION ${share}/icons)
    install(FILES ${packaging}/bankweaver.svg
        DESTINATION ${share}/icons/hicolor/scalable/apps)
    install(FILES ${packaging}/application-x-bankweaver-list.svg
        DESTINATION ${share}/icons/hicolor/scalable/mimetypes)
endif()

set(CPACK_PACKAGE_NAME bankweaver)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Bankweaver authors <authors@bankweaver.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "build multicart ROMs for Famicom and NES flash cartridges")
set(CPACK_PACKAGE_DESCRIPTION
    "Bankweaver gathers game images in one list and builds one multicart ROM from\nthem, for flash cartridges of the COOLBOY, MINDKIDS and COOLGIRL families: the\ngames, a menu that runs on the console, and the tables by which the menu\nswitches the board to the chosen game.\n.\nThe package holds the window program bankweaver, the command line program\nbankweaver-cli and the 6502 assembler nesasm.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
if(BANKWEAVER_WINDOW)
    # A plug-in, and the Chinese of Qt's own dialogs: nothing is linked with either.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n")
endif()

configure_file(${packaging}/debian/changelog.in ${PROJECT_BINARY_DIR}/packaging/changelog @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
set(CPACK_BANKWEAVER_DEBIAN ${packaging}/debian)
set(CPACK_BANKWEAVER_CHANGELOG ${PROJECT_BINARY_DIR}/packaging/changelog)
include(CPack)

# What `cmake --install` puts where, and the Debian packages that packaging/deb makes of it: the
# window, the command line, and what both share.
include(GNUInstallDirs)

set(share ${CMAKE_INSTALL_DATAROOTDIR})
set(doc ${share}/doc/bankweaver)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)

install(TARGETS bankweaver-cli nesasm COMPONENT cli)
install(FILES ${packaging}/man/bankweaver-cli.1 ${packaging}/man/nesasm.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT cli)

# Bash looks for a completion by the program's name.
function(install_completion program component)
    install(FILES ${packaging}/completions/bankweaver.bash RENAME ${program}
        DESTINATION ${share}/bash-completion/completions COMPONENT ${component})
endfunction()
install_completion(bankweaver-cli cli)
install_completion(nesasm cli)

# The pages and what they speak of: samples and designs, built and in source, and a menu to change.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION ${doc} COMPONENT common)
install(DIRECTORY docs samples DESTINATION ${doc} COMPONENT common
    PATTERN CMakeLists.txt EXCLUDE)
install(DIRECTORY ${PROJECT_BINARY_DIR}/samples/ DESTINATION ${doc}/samples COMPONENT common
    FILES_MATCHING PATTERN *.nes PATTERN *.fcl PATTERN *.fcm
    PATTERN work EXCLUDE PATTERN CMakeFiles EXCLUDE)

if(BANKWEAVER_WINDOW)
    install(TARGETS bankweaver COMPONENT window)
    install(FILES ${packaging}/man/bankweaver.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT window)
    install_completion(bankweaver window)
    install(FILES ${packaging}/bankweaver.desktop
        DESTINATION ${share}/applications COMPONENT window)
    install(FILES ${packaging}/bankweaver-mime.xml RENAME bankweaver.xml
        DESTINATION ${share}/mime/packages COMPONENT window)
    install(DIRECTORY ${BANKWEAVER_ICONS}/ DESTINATION ${share}/icons COMPONENT window)
    install(FILES ${packaging}/bankweaver.svg
        DESTINATION ${share}/icons/hicolor/scalable/apps COMPONENT window)
    install(FILES ${packaging}/application-x-bankweaver-list.svg
        DESTINATION ${share}/icons/hicolor/scalable/mimetypes COMPONENT window)
endif()

set(CPACK_PACKAGE_NAME bankweaver)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Bankweaver authors <authors@bankweaver.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_COMPONENTS_ALL cli common)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(purpose "build multicart ROMs for Famicom and NES flash cartridges")
set(text "Bankweaver gathers game images in one list and builds one multicart ROM from\nthem, for flash cartridges of the COOLBOY, MINDKIDS and COOLGIRL families: the\ngames, a menu that runs on the console, and the tables by which the menu\nswitches the board to the chosen game.\n.\n")

set(CPACK_DEBIAN_CLI_PACKAGE_NAME bankweaver-cli)
set(CPACK_COMPONENT_CLI_DESCRIPTION
    "${purpose} (command line)\n${text}This package holds the command line program bankweaver-cli and the 6502\nassembler nesasm.")
set(CPACK_DEBIAN_CLI_PACKAGE_RECOMMENDS "bankweaver-common, fceux")

set(CPACK_DEBIAN_COMMON_PACKAGE_NAME bankweaver-common)
set(CPACK_COMPONENT_COMMON_DESCRIPTION
    "${purpose} (pages and samples)\n${text}This package holds the pages, sample games and designs, and a menu in source to\nchange.")
set(CPACK_DEBIAN_COMMON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_COMMON_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_COMMON_PACKAGE_SECTION doc)

if(BANKWEAVER_WINDOW)
    list(APPEND CPACK_COMPONENTS_ALL window)
    set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME bankweaver)
    set(CPACK_COMPONENT_WINDOW_DESCRIPTION
        "${purpose} (window)\n${text}This package holds the window program.")
    # A plug-in, the Chinese of Qt's own dialogs and a font that has it: nothing is linked with them.
    set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS
        "bankweaver-cli, bankweaver-common, fceux, qt6-wayland, qt6-translations-l10n, fonts-wqy-microhei | fonts-noto-cjk")
endif()

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
set(CPACK_BANKWEAVER_DEBIAN ${packaging}/debian)
set(CPACK_BANKWEAVER_DATE ${BANKWEAVER_DATE})
include(CPack)

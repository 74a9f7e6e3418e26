# What the zip for Windows holds, as `cmake --install --component zip` lays it out: the programs beside
# the pages and samples, so that the folder runs wherever it is put. packaging/windows/build packs it.
install(TARGETS bankweaver-cli nesasm DESTINATION . COMPONENT zip)
if(BANKWEAVER_WINDOW)
    install(TARGETS bankweaver DESTINATION . COMPONENT zip)
endif()
install(FILES README.md CHANGELOG.md LICENSE DESTINATION . COMPONENT zip)
install(DIRECTORY docs DESTINATION . COMPONENT zip)
install(DIRECTORY samples DESTINATION . COMPONENT zip PATTERN CMakeLists.txt EXCLUDE)
install(DIRECTORY ${PROJECT_BINARY_DIR}/samples/ DESTINATION samples COMPONENT zip
    FILES_MATCHING PATTERN *.nes PATTERN *.fcl PATTERN *.fcm
    PATTERN work EXCLUDE PATTERN CMakeFiles EXCLUDE)

# Of all that is within the programs: the libraries' as Debian collects them, the compiler's own parts.
install(DIRECTORY ${BANKWEAVER_WINDOWS_LICENCES}/ DESTINATION licences COMPONENT zip
    FILES_MATCHING PATTERN * PATTERN googletest EXCLUDE)
foreach(package gcc-mingw-w64-base mingw-w64-common)
    install(FILES /usr/share/doc/${package}/copyright DESTINATION licences RENAME ${package}
        COMPONENT zip)
endforeach()
install(FILES packaging/windows/licences.txt DESTINATION licences RENAME READ_ME.txt COMPONENT zip)

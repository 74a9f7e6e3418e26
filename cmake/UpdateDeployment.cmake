# Where this copy of the program looks for a newer one, and whose signature it believes.
set(BANKWEAVER_UPDATE_HOST "" CACHE STRING
    "What stands before /raw/master/Release/update.json, e.g. https://files.example.org/project; empty: no updates")
set(BANKWEAVER_UPDATE_KEY "" CACHE STRING "The minisign public key that new programs are signed with")
option(BANKWEAVER_UPDATE_PLAIN_HTTP "Take the new program over http, too" OFF)

if(NOT "${BANKWEAVER_UPDATE_HOST}${BANKWEAVER_UPDATE_KEY}" STREQUAL "")
    set(bankweaver_see "docs/releasing.md tells how both are made.")
    if("${BANKWEAVER_UPDATE_KEY}" STREQUAL "")
        message(FATAL_ERROR "BANKWEAVER_UPDATE_HOST is set and BANKWEAVER_UPDATE_KEY isn't: nothing that "
            "the host has could be told from anybody's. ${bankweaver_see}")
    elseif("${BANKWEAVER_UPDATE_HOST}" STREQUAL "")
        message(FATAL_ERROR "BANKWEAVER_UPDATE_KEY is set and BANKWEAVER_UPDATE_HOST isn't. ${bankweaver_see}")
    elseif(NOT BANKWEAVER_UPDATE_HOST MATCHES "^https?://[]A-Za-z0-9._~:/@%+,[-]*[]A-Za-z0-9._~:@%+,-]$")
        message(FATAL_ERROR "BANKWEAVER_UPDATE_HOST is \"${BANKWEAVER_UPDATE_HOST}\". Expected http:// or https://, "
            "a name and perhaps folders, no slash at the end, and none of the characters that an address has "
            "another meaning for. ${bankweaver_see}")
    endif()
    string(LENGTH "${BANKWEAVER_UPDATE_KEY}" bankweaver_length)
    # Base64 of the letters "Ed", 8 bytes of the key's number and its 32 bytes.
    if(NOT BANKWEAVER_UPDATE_KEY MATCHES "^RW[Q-T][A-Za-z0-9+/]*$" OR NOT bankweaver_length EQUAL 56)
        message(FATAL_ERROR "BANKWEAVER_UPDATE_KEY is \"${BANKWEAVER_UPDATE_KEY}\". Expected the 56 characters, "
            "beginning with RW, of the second line of minisign.pub. ${bankweaver_see}")
    endif()
endif()

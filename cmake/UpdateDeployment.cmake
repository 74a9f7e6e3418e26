# Where this copy of the program looks for a newer one, and whose signature it believes.
set(BANKWEAVER_UPDATE_HOST "" CACHE STRING
    "What stands before /raw/master/Release/update.json, e.g. https://files.example.org/project; empty: no updates")
set(BANKWEAVER_UPDATE_KEY "" CACHE STRING "The minisign public key that new programs are signed with")
option(BANKWEAVER_UPDATE_PLAIN_HTTP "Take the new program over http, too" OFF)

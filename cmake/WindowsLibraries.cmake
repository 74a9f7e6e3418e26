# Programs for Windows carry their libraries within them, so that they run without any file beside
# them. What such a library needs in turn, and how its header is told that it isn't in a DLL, is not
# said by CMake's modules: it stands here, before any folder asks for a library.
if(NOT WIN32)
    return()
endif()

add_link_options(-static)

find_package(ZLIB REQUIRED)
find_package(BZip2 REQUIRED)
find_package(LibArchive REQUIRED)
find_library(LZMA_LIBRARY lzma REQUIRED)
find_library(ZSTD_LIBRARY zstd REQUIRED)
set_property(TARGET LibArchive::LibArchive APPEND PROPERTY
    INTERFACE_COMPILE_DEFINITIONS LIBARCHIVE_STATIC)
set_property(TARGET LibArchive::LibArchive APPEND PROPERTY
    INTERFACE_LINK_LIBRARIES ${LZMA_LIBRARY} ${ZSTD_LIBRARY} BZip2::BZip2 ZLIB::ZLIB)

add_compile_definitions(UTF8PROC_STATIC SODIUM_STATIC)

# Qt's own libraries and plugins are named by whichever folder looks for Qt first: all others see them
# too. What runs while it builds (moc) is the machine's own.
if(BANKWEAVER_WINDOW)
    set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
    set(QT_HOST_PATH /usr)
    set(QT_HOST_PATH_CMAKE_DIR ${QT_HOST_PATH}/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake)
    find_package(Qt6 REQUIRED COMPONENTS Widgets)
endif()

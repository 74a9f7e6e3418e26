# Settings that every target shares: language level, warnings, sanitizers, the include root.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

find_package(Threads REQUIRED)

# What differs between the systems stands in one file each, named after them.
set(BANKWEAVER_PLATFORM posix)
if(WIN32)
    set(BANKWEAVER_PLATFORM windows)
    # At -O3 g++ 12 for Windows loses arguments of a function in the handlers of what it catches: the name
    # in a refusal came out as whatever stood in memory (NameSearch.BoundsWhatReplacementsMultiply).
    string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
    add_compile_definitions(WIN32_LEAN_AND_MEAN NOMINMAX=1)
    # The stack of the first thread, and of every other that asks for nothing else: 8 MB as on Linux.
    add_link_options(-Wl,--stack,0x800000)
endif()

add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wall> $<$<COMPILE_LANGUAGE:CXX>:-Wextra>
    $<$<COMPILE_LANGUAGE:CXX>:-Wshadow> $<$<COMPILE_LANGUAGE:CXX>:-Wconversion>
    # g++ 12 sees overlapping copies in its own std::string (GCC bug 105651).
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
if(BANKWEAVER_WERROR)
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Werror>)
endif()
if(BANKWEAVER_SANITIZE)
    add_compile_options(-fsanitize=${BANKWEAVER_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all
        # g++ 12 sees uninitialised members in its own std::regex under these.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options(-fsanitize=${BANKWEAVER_SANITIZE})
endif()

# One layer of the house: a static library of the named sources, included from the src folder.
# LINKS names the layers and libraries below it.
function(bankweaver_layer name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${LAYER_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${LAYER_LINKS})
endfunction()

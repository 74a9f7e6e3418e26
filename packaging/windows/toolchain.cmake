# Builds for 64-bit Windows with Debian's mingw-w64. What is found comes from the compiler's own
# folder and from the one that packaging/windows/libraries fills.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(machine x86_64-w64-mingw32)
# The compiler with std::thread and its companions.
set(CMAKE_C_COMPILER ${machine}-gcc-posix)
set(CMAKE_CXX_COMPILER ${machine}-g++-posix)
set(CMAKE_ASM_COMPILER ${machine}-gcc-posix)
set(CMAKE_RC_COMPILER ${machine}-windres)

execute_process(COMMAND bash -c ". '${CMAKE_CURRENT_LIST_DIR}/places.sh' && printf %s \"$prefix\""
    OUTPUT_VARIABLE prefix COMMAND_ERROR_IS_FATAL ANY)
set(CMAKE_FIND_ROOT_PATH /usr/${machine} ${prefix})
set(CMAKE_PREFIX_PATH ${prefix})
set(BANKWEAVER_WINDOWS_LICENCES ${prefix}/licences)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Steps of a build that run a program of its own run it there.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine)

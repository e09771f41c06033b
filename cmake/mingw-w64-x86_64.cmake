# Cross-compiling for 64-bit Windows with Debian's MinGW-w64 (g++-mingw-w64-x86-64). The POSIX thread
# flavour of the compiler is taken, since the library's locks are std::mutex.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TOOLCHAIN_PREFIX x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${TOOLCHAIN_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TOOLCHAIN_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${TOOLCHAIN_PREFIX}-windres)

# Headers and libraries of the target come from the MinGW tree (and from the prefixes the caller adds
# to CMAKE_FIND_ROOT_PATH, such as a cross-built expat); programs from the build machine.
set(CMAKE_FIND_ROOT_PATH /usr/${TOOLCHAIN_PREFIX} ${CMAKE_FIND_ROOT_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The programs carry the compiler's runtime (libstdc++, libgcc, winpthread) inside, so that they run
# under Wine or on Windows without MinGW's DLLs beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# Tests and tools run through Wine on the build machine.
find_program(TAVI_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(TAVI_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${TAVI_WINE})
endif()

# Shared by the two MinGW-w64 toolchains (mingw-x86_64.cmake, mingw-i686.cmake),
# which name the target triple in VELMARIN_MINGW before including this file.
# The -posix compilers give the standard threads (through winpthreads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${VELMARIN_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VELMARIN_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${VELMARIN_MINGW}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${VELMARIN_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Programs of the build run under Wine, each in the build's own prefix (see
# esegui_wine.sh). Only where a Wine for this architecture is installed: the
# 32-bit loader comes with Debian's wine32, which not every machine has.
find_program(VELMARIN_WINE_LOADER NAMES ${VELMARIN_WINE_LOADER_NOME}
             PATHS /usr/lib/wine NO_DEFAULT_PATH)
if(VELMARIN_WINE_LOADER)
  set(CMAKE_CROSSCOMPILING_EMULATOR
      ${CMAKE_CURRENT_LIST_DIR}/esegui_wine.sh;${CMAKE_BINARY_DIR}/wine;${VELMARIN_WINE_LOADER})
endif()

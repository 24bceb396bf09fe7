# 32-bit Windows with MinGW-w64: velmarin.dll as a 32-bit host loads it.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(VELMARIN_MINGW i686-w64-mingw32)
set(VELMARIN_WINE_LOADER_NOME wine)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-comune.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/sse2-x86-32.cmake)

# 64-bit Windows with MinGW-w64: the build whose tests run under Wine.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(VELMARIN_MINGW x86_64-w64-mingw32)
set(VELMARIN_WINE_LOADER_NOME wine64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-comune.cmake)

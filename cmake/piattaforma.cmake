# Sources for one platform only are named by suffix: *_posix.cpp build only
# on POSIX systems, *_win32.cpp only on Windows. Everything else builds on both.
function(velmarin_sorgenti_piattaforma lista)
  if(WIN32)
    list(FILTER ${lista} EXCLUDE REGEX "_posix\\.cpp$")
  else()
    list(FILTER ${lista} EXCLUDE REGEX "_win32\\.cpp$")
  endif()
  set(${lista} ${${lista}} PARENT_SCOPE)
endfunction()

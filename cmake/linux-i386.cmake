# 32-bit x86 Linux, with the system's g++ and its 32-bit libraries
# (g++-multilib): the library's 32-bit code under test on a 64-bit machine.
# Its programs run under qemu-user (qemu-i386), which needs nothing from the
# kernel; GoogleTest is built from Debian's sources with the same flags.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_C_FLAGS_INIT "-m32")
set(CMAKE_CXX_FLAGS_INIT "-m32")
include(${CMAKE_CURRENT_LIST_DIR}/sse2-x86-32.cmake)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
find_program(VELMARIN_QEMU_I386 qemu-i386)
if(VELMARIN_QEMU_I386)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${VELMARIN_QEMU_I386})
endif()
# The machine's benchmark and GDAL libraries are 64-bit: a 32-bit build has
# no benchmarks, and its host program is built without GIS output.
set(CMAKE_DISABLE_FIND_PACKAGE_benchmark ON)
set(CMAKE_DISABLE_FIND_PACKAGE_GDAL ON)

# Cross toolchain: 64-bit Windows binaries from Linux with MinGW-w64 (posix threads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(KXUI_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER   ${KXUI_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KXUI_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER  ${KXUI_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${KXUI_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# The SDK consumer looks for the installed package outside the sysroot.
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

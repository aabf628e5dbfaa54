# Toolchain: programs for Windows on x86-64, from Debian's package g++-mingw-w64-x86-64-posix. What
# they need at run time is linked in.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TRIPLE}-g++-posix)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# Packages are looked for in CMAKE_FIND_ROOT_PATH alone: this system's are for this system.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What the toolchain files of both widths share; KV_MINGW is the name that the tools of one width begin with.
#
# The compilers are those with POSIX threads: the others have no std::mutex. -static leaves no library of the
# compiler to be carried along.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${KV_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KV_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${KV_MINGW}-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

set(CMAKE_FIND_ROOT_PATH /usr/${KV_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

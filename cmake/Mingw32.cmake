# Toolchain file: Windows, 32 bits, by mingw-w64.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KV_MINGW i686-w64-mingw32)
include("${CMAKE_CURRENT_LIST_DIR}/Mingw.cmake")

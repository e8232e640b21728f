# Toolchain file: Windows, 64 bits, by mingw-w64.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(KV_MINGW x86_64-w64-mingw32)
include("${CMAKE_CURRENT_LIST_DIR}/Mingw.cmake")

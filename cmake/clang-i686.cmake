# 32-bit Windows programs, made on Linux by clang
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KX_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-clang.cmake)

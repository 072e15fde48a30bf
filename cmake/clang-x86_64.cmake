# 64-bit Windows programs, made on Linux by clang
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(KX_TRIPLE x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-clang.cmake)

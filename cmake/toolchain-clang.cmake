# What the two toolchain files for clang share: its compiler and linker, with the headers and libraries of the mingw-w64 GCC.
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw.cmake)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=include OUTPUT_VARIABLE gcc
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(gcc "${gcc}" DIRECTORY)

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET ${KX_TRIPLE})
set(CMAKE_CXX_COMPILER_TARGET ${KX_TRIPLE})
# GCC's libraries keep the values of threads in its own way; clang does not look for their headers beside this GCC.
set(CMAKE_C_FLAGS_INIT "-femulated-tls")
set(CMAKE_CXX_FLAGS_INIT "-femulated-tls -nostdinc++ -isystem ${gcc}/include/c++ -isystem ${gcc}/include/c++/${KX_TRIPLE} \
-isystem ${gcc}/include/c++/backward")
# libstdc++ has the comparison of types, and so has each object that compares them.
set(link "-Qunused-arguments -fuse-ld=lld -B${gcc} -L${gcc} -Wl,--allow-multiple-definition")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${link}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${link}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${link}")
set(CMAKE_CXX_STANDARD_LIBRARIES "-lpthread -lkernel32 -luser32 -lgdi32 -lwinspool -lshell32 -lole32 -loleaut32 -luuid \
-lcomdlg32 -ladvapi32" CACHE STRING "")

# What the two mingw-w64 toolchain files share; KX_TRIPLE is set by them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 6.1)

# The unsuffixed names are alternatives that may point at the compiler without std::thread.
set(CMAKE_C_COMPILER ${KX_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KX_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${KX_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${KX_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# Tests and try_run execute their programs by this.
get_filename_component(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run" ABSOLUTE)
list(APPEND CMAKE_CROSSCOMPILING_EMULATOR --test)

# LLVM's linker makes a test program in half a second, GNU's takes up to 15. GCC knows GNU's by its path and looks for
# the program that calls it in the folder of -B first.
find_program(KX_LLD ld.lld)
if(KX_LLD)
    set(CMAKE_EXE_LINKER_FLAGS_INIT "-B${CMAKE_CURRENT_LIST_DIR}/lld")
    set(CMAKE_SHARED_LINKER_FLAGS_INIT "-B${CMAKE_CURRENT_LIST_DIR}/lld")
endif()

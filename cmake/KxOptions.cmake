# How all code of this project is compiled. What must hold for GoogleTest too (it shares objects with the tests) is set
# for the directory tree; the rest, warnings above all, is the interface target kx_options.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT MSVC)
    # -O2 with line numbers is the one build type: tests run what users get. More debug information would double the
    # time that a build takes. DWARF 4 is the newest that Wine's debugger reads, and its stack is what a crashed test
    # leaves behind. assert() and the library's checks stay on.
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -gdwarf-4 -g1")
    set(CMAKE_C_FLAGS_RELWITHDEBINFO "-O2 -gdwarf-4 -g1")
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

if(MINGW)
    # One file per program: libgcc, libstdc++ and winpthread go in, unused functions stay out.
    add_compile_options(-ffunction-sections -fdata-sections)
    add_link_options(-static -Wl,--gc-sections)
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
        # x87 registers keep extra digits; with SSE both word sizes compute the same.
        add_compile_options(-msse2 -mfpmath=sse)
    endif()
    # Resource scripts are UTF-8.
    set(CMAKE_RC_FLAGS "${CMAKE_RC_FLAGS} -c 65001")
endif()

add_library(kx_options INTERFACE)
if(WIN32)
    # The ANSI functions are called, so UNICODE stays undefined; Windows 7 is the oldest system.
    target_compile_definitions(kx_options INTERFACE
        NOMINMAX WIN32_LEAN_AND_MEAN STRICT _WIN32_WINNT=0x0601 WINVER=0x0601)
endif()
if(MSVC)
    target_compile_options(kx_options INTERFACE
        /W4 /WX /permissive- /utf-8 /EHsc /Zc:__cplusplus /Zc:preprocessor)
else()
    target_compile_options(kx_options INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor
        -Wsuggest-override -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 reports "may overlap" for plain "text" + std::string (its bug 105329).
        target_compile_options(kx_options INTERFACE -Wno-restrict)
    endif()
endif()

option(KX_PCH "Precompile the Windows and the test headers. Switch it off to see that every file includes what it uses." ON)
set(KX_SANITIZE "" CACHE STRING "Sanitizers of the native build, as for -fsanitize=")
if(KX_SANITIZE)
    add_compile_options(-fsanitize=${KX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KX_SANITIZE})
endif()

set(KX_LEAVE_OUT "" CACHE STRING "Tests that are not run: patterns as GoogleTest has them, with colons between")
option(KX_GUARD "Let test programs fail for faults that would pass in silence: tests/guard" OFF)
if(KX_GUARD AND NOT MINGW)
    message(FATAL_ERROR "KX_GUARD needs MinGW")
endif()
if(KX_GUARD AND CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
    add_compile_options(-fno-omit-frame-pointer) # by which it finds its way up the stack
endif()

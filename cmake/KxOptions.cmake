# How all code of this project is compiled. What must hold for GoogleTest too (it shares objects with the tests) is set
# for the directory tree; the rest, warnings above all, is the interface target kx_options. Inside another project only
# what the code itself needs is set: warnings, debug information and how programs are linked are the project's own affair.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
    set(CMAKE_DEBUG_POSTFIX d)
endif()

if(PROJECT_IS_TOP_LEVEL AND NOT MSVC)
    # -Os with line numbers is the one build type: tests run what users get. A dialog waits for its user: -O2 makes
    # programs a quarter larger and no row of the benchmark better. More debug information would double the time that a
    # build takes. DWARF 4 is the newest that Wine's debugger reads, and its stack is what a crashed test leaves behind.
    # assert() and the library's checks stay on.
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-Os -gdwarf-4 -g1")
    set(CMAKE_C_FLAGS_RELWITHDEBINFO "-Os -gdwarf-4 -g1")
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

if(MINGW)
    # Unused functions stay out of programs.
    add_compile_options(-ffunction-sections -fdata-sections)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        # x87 registers keep extra digits; with SSE both word sizes compute the same.
        add_compile_options(-msse2 -mfpmath=sse)
    endif()
    # Resource scripts are UTF-8.
    set(CMAKE_RC_FLAGS "${CMAKE_RC_FLAGS} -c 65001")
    if(PROJECT_IS_TOP_LEVEL)
        add_link_options(-Wl,--gc-sections)
    endif()
    if(PROJECT_IS_TOP_LEVEL AND NOT BUILD_SHARED_LIBS)
        # One file per program: libgcc, libstdc++ and winpthread go in. Between a program and a DLL exceptions pass only
        # when both take them from the same DLLs, as programs with the property KX_SHARED_RUNTIME do.
        add_link_options("$<$<NOT:$<BOOL:$<TARGET_PROPERTY:KX_SHARED_RUNTIME>>>:-static>")
    endif()
endif()

add_library(kx_options INTERFACE)
if(WIN32)
    # The ANSI functions are called by their own names: UNICODE, which others may define, changes nothing. Windows 7 is the
    # oldest system.
    target_compile_definitions(kx_options INTERFACE
        NOMINMAX WIN32_LEAN_AND_MEAN STRICT _WIN32_WINNT=0x0601 WINVER=0x0601)
endif()
if(MSVC)
    # clang-cl, which MSVC means too, has that preprocessor, and no such option.
    target_compile_options(kx_options INTERFACE
        /permissive- /utf-8 /EHsc /bigobj /Zc:__cplusplus $<$<CXX_COMPILER_ID:MSVC>:/Zc:preprocessor>)
endif()
if(PROJECT_IS_TOP_LEVEL AND MSVC)
    # Left out: what faults constant conditions of templates (4127), a constant cast to what it is meant to become (4310),
    # what is aligned as it says (4324), a variable that has the name of a function like log() or time() (4459), code that
    # the optimizer finds needless (4702), and the standard's functions that have a safe sister nowhere else.
    target_compile_options(kx_options INTERFACE /W4 /WX /wd4127 /wd4310 /wd4324 /wd4459 /wd4702)
    target_compile_definitions(kx_options INTERFACE _CRT_SECURE_NO_WARNINGS)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "MSVC")
        # The system's headers are not ours to mend; those before Windows 11 do not suit the standard's preprocessor.
        target_compile_options(kx_options INTERFACE /external:anglebrackets /external:W0 /wd5105)
    endif()
elseif(PROJECT_IS_TOP_LEVEL)
    target_compile_options(kx_options INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor
        -Wsuggest-override -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 reports "may overlap" for plain "text" + std::string (its bug 105329).
        target_compile_options(kx_options INTERFACE -Wno-restrict)
    endif()
endif()

# The programs that this project makes, by the functions that others use too (programs/KxPrograms.cmake)
set(KX_PROGRAM_LIBRARIES kx_options)

# Visual C++ keeps the precompiled headers' object in a library of its own, which users of the installed ones would lack.
if(PROJECT_IS_TOP_LEVEL AND NOT MSVC)
    set(precompile ON)
else()
    set(precompile OFF)
endif()
option(KX_PCH "Precompile the Windows and the test headers. Switch it off to see that every file includes what it uses."
    ${precompile})
if(KX_PCH AND WIN32)
    set(KX_PROGRAM_PRECOMPILED kx_pch)
endif()

# A program takes from an archive just the sources that it needs, unless they were compiled as one.
if(PROJECT_IS_TOP_LEVEL)
    option(KX_UNITY_LIBRARIES "Compile the libraries' sources several at once too: a faster build of larger programs"
        OFF)
endif()

set(KX_SANITIZE "" CACHE STRING "Sanitizers of the native build, as for -fsanitize=")
if(KX_SANITIZE)
    add_compile_options(-fsanitize=${KX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KX_SANITIZE})
endif()

if(KX_TESTS)
    set(KX_LEAVE_OUT "" CACHE STRING "Tests that are not run: patterns as GoogleTest has them, with colons between")
    option(KX_TEST_DLL "Make the DLL of all libraries besides, and test it" OFF)
endif()
option(KX_GUARD "Let test programs fail for faults that would pass in silence: tests/guard" OFF)
if(KX_GUARD AND NOT MINGW)
    message(FATAL_ERROR "KX_GUARD needs MinGW")
endif()
if(KX_GUARD AND CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
    add_compile_options(-fno-omit-frame-pointer) # by which it finds its way up the stack
endif()

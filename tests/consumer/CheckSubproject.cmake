# A project that takes the library's sources into its build: nothing of how this project is compiled reaches it, and no more is
# built than its programs link.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

set(build "${WORK}/build")
configure("${CMAKE_CURRENT_LIST_DIR}/program" "${build}" "-DSUBPROJECT=${SOURCE}")

# flags_of(PATTERN VARIABLE): how the source whose path matches is compiled
file(READ "${build}/compile_commands.json" commands)
function(flags_of pattern variable)
    string(JSON count LENGTH "${commands}")
    math(EXPR last "${count} - 1")
    foreach(i RANGE ${last})
        string(JSON file GET "${commands}" ${i} file)
        if(file MATCHES "${pattern}")
            string(JSON command GET "${commands}" ${i} command)
            set(${variable} "${command}" PARENT_SCOPE)
            return()
        endif()
    endforeach()
    message(FATAL_ERROR "no source like ${pattern} is compiled")
endfunction()

# The consumer has -Wall -Wextra -Werror of its own, and nothing of ours but the folders of the headers.
flags_of("/program/Consumer\\.cpp$" flags)
foreach(leak Wconversion Wshadow Wpedantic restrict sections mfpmath _GLIBCXX_ASSERTIONS _WIN32_WINNT NOMINMAX STRICT gdwarf
        Zc:__cplusplus precompile cmake_pch)
    if(flags MATCHES "${leak}")
        message(FATAL_ERROR "${leak} has reached the consumer: ${flags}")
    endif()
endforeach()
# Our sources have to compile with warnings that we have never seen.
flags_of("/core/Version\\.cpp$" flags)
foreach(leak -Werror -Wall -Wshadow /WX /W4 _GLIBCXX_ASSERTIONS gdwarf)
    if(flags MATCHES "${leak}")
        message(FATAL_ERROR "the library is compiled with ${leak}: ${flags}")
    endif()
endforeach()

# Its cache has our switches, all off, and no others.
file(STRINGS "${build}/CMakeCache.txt" entries REGEX "^(KX_|BUILD_TESTING|BUILD_SHARED_LIBS|INSTALL_GTEST|CMAKE_INSTALL_LIBDIR|CPACK_)")
foreach(entry IN LISTS entries)
    if(NOT entry MATCHES "^KX_(TESTS|APPS|EXAMPLES|INSTALL|PCH|GUARD):BOOL=OFF$" AND NOT entry MATCHES "^KX_(SANITIZE:STRING=$|LLD:)")
        message(FATAL_ERROR "its cache has ${entry}")
    endif()
endforeach()

# What would be built: nothing but libraries of ours, and for a program only those that it links.
function(builds target has lacks)
    run("${CMAKE_COMMAND}" --build "${build}" --config "${CONFIG}" -- -t commands ${target})
    if(NOT output MATCHES "${has}")
        message(FATAL_ERROR "${target} would not build ${has}: ${output}")
    endif()
    foreach(pattern IN LISTS lacks)
        if(output MATCHES "${pattern}")
            message(FATAL_ERROR "${target} would build ${pattern}: ${output}")
        endif()
    endforeach()
endfunction()
builds(all kx_designer "gallery;kx-form;windows_probe;minimal;googletest;kx_support;Test\\.cpp;kx_pch")
builds(consumer kx_opensave "kx_folder;kx_designer;kx_colorprint;kx_design_")

# One source of each is compiled; all of them would take as long as the whole library does.
run("${CMAKE_COMMAND}" --build "${build}" --config "${CONFIG}" --target
    CMakeFiles/consumer_forms.dir/PreviewForm.cpp.obj _deps/kxqdlgs70-build/platform/kx/core/CMakeFiles/kx_core.dir/Version.cpp.obj)

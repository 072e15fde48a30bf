# GTest::gmock and GTest::gtest_main, built from the sources that Debian installs: no binary package fits a cross
# compiler. Elsewhere (MSYS2, vcpkg) an installed package serves.
set(KX_GTEST_SOURCE /usr/src/googletest CACHE PATH "Sources of GoogleTest; without them a package is looked for")
if(EXISTS "${KX_GTEST_SOURCE}/CMakeLists.txt")
    set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    block()
        set(BUILD_SHARED_LIBS OFF)
        add_subdirectory("${KX_GTEST_SOURCE}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
    endblock()
    foreach(target gtest gtest_main gmock gmock_main)
        # It asks for -Werror; its warnings and faults are not ours to mend, and its speed does not matter.
        if(MSVC)
            target_compile_options(${target} PRIVATE /w)
        else()
            target_compile_options(${target} PRIVATE -w -O0 -g0 -fno-sanitize=all)
        endif()
        if(NOT TARGET GTest::${target})
            add_library(GTest::${target} ALIAS ${target})
        endif()
    endforeach()
else()
    find_package(GTest CONFIG REQUIRED)
endif()

# The tests' own code: hardly optimized, since it is most of what is compiled, and what it tests is optimized fully. With
# sanitizers, whose checks the optimizer would have to work through, not at all.
add_library(kx_test_options INTERFACE)
target_link_libraries(kx_test_options INTERFACE kx_options GTest::gmock)
if(KX_SANITIZE)
    target_compile_options(kx_test_options INTERFACE -O0)
elseif(NOT MSVC)
    target_compile_options(kx_test_options INTERFACE -Og)
endif()

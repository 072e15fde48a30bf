# The functions by which the folders describe what they build, beside those that users have too. All of them take the
# sources of the calling folder by pattern (*.cpp, *.rc, *.dfm), so a new file is picked up by the next build.
include("${CMAKE_CURRENT_LIST_DIR}/programs/KxPrograms.cmake")

# kx_add_precompiled(): sets of precompiled headers, each made once for all targets that use it. They hold what never
# changes and takes long to read. kx_pch: the Windows and the common standard headers. For tests GoogleTest besides:
# kx_test_pch, and kx_portable_test_pch without Windows.
function(kx_add_precompiled)
    set(standard <algorithm> <array> <atomic> <functional> <map> <memory> <optional> <string> <string_view>
        <unordered_map> <vector>)
    set(windows <kx/win/Windows.h> <commdlg.h> <shlobj.h>)
    set(testing <gtest/gtest.h> <gmock/gmock.h>)
    if(WIN32)
        kx_add_header_set(kx_pch kx_options ${standard} ${windows})
    endif()
    if(KX_TESTS)
        kx_add_header_set(kx_portable_test_pch kx_test_options ${standard} ${testing})
    endif()
    if(KX_TESTS AND WIN32)
        kx_add_header_set(kx_test_pch kx_test_options ${standard} ${windows} ${testing})
    endif()
endfunction()

# kx_add_header_set(NAME OPTIONS header...): OPTIONS is the target whose compile settings the users have.
function(kx_add_header_set name options)
    set(empty "${PROJECT_BINARY_DIR}/empty.cpp") # a target needs a source
    file(CONFIGURE OUTPUT "${empty}" CONTENT "// carries precompiled headers\n" @ONLY)
    add_library(${name} OBJECT "${empty}")
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/platform")
    target_link_libraries(${name} PRIVATE ${options})
    target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# kx_use_precompiled(TARGET SET): unless they are switched off
function(kx_use_precompiled target set)
    if(TARGET ${set})
        target_precompile_headers(${target} REUSE_FROM ${set})
    endif()
endfunction()

# kx_add_library(NAME [PORTABLE] [LINK library...])
#
# A static library of the calling folder; kx_folder is kx::folder to its users. Its headers are included by their path from
# kx on, "kx/folder/Unit.h"; those that no user of ours sees by their path in the project, "support/Unit.h". LINK names what its
# users need too. PORTABLE: the folder includes no Windows header. With BUILD_SHARED_LIBS what users have is in one DLL, and
# the libraries are names of it.
function(kx_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "PORTABLE" "" "LINK")
    kx_glob()
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE folder)
    set(root "${PROJECT_SOURCE_DIR}")
    set(unity ${CMAKE_UNITY_BUILD})
    set(for_users OFF)
    if(folder MATCHES "^((platform|src)/kx/|designer$)")
        set(for_users ON)
    endif()
    if(folder MATCHES "^(platform|src)/kx/")
        string(APPEND root "/${CMAKE_MATCH_1}")
        set(unity ${KX_UNITY_LIBRARIES})
    endif()
    set(compiled ${name})
    set(holder ${name}) # of the resources
    set(scope PUBLIC)
    if(BUILD_SHARED_LIBS AND for_users)
        set(compiled ${name}_objects)
        set(holder kxqdlgs70)
        set(scope INTERFACE)
        add_library(${compiled} OBJECT ${KX_SOURCES})
        target_include_directories(${compiled} PRIVATE "${root}" "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/platform")
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE kxqdlgs70)
    else()
        add_library(${name} STATIC ${KX_SOURCES})
    endif()
    if(TARGET kxqdlgs70 AND for_users)
        target_sources(kxqdlgs70 PRIVATE $<TARGET_OBJECTS:${compiled}>)
        set(system ${arg_LINK})
        list(FILTER system EXCLUDE REGEX "^kx_")
        target_link_libraries(kxqdlgs70 PRIVATE ${system})
    endif()
    set_target_properties(${compiled} PROPERTIES UNITY_BUILD "${unity}")
    if(NOT KX_INSTALL)
        set_target_properties(${compiled} PROPERTIES EXCLUDE_FROM_ALL ON)
    endif()
    target_link_libraries(${compiled} PRIVATE $<BUILD_INTERFACE:kx_options>)
    target_include_directories(${name} ${scope} "$<BUILD_INTERFACE:${root}>")
    target_link_libraries(${name} ${scope} ${arg_LINK})
    # What the headers need of a program that includes them: __VA_OPT__, in KX_FIELDS, besides the language
    target_compile_features(${name} ${scope} cxx_std_20)
    target_compile_options(${name} ${scope} $<$<CXX_COMPILER_ID:MSVC>:/Zc:preprocessor>)
    if(NOT arg_PORTABLE)
        kx_use_precompiled(${compiled} kx_pch)
    endif()
    kx_add_resources(${holder} ${KX_SCRIPTS})
    kx_add_forms(${holder} ${KX_FORMS})
    get_target_property(resources ${holder} KX_RESOURCES)
    if(TARGET kxqdlgs70 AND for_users AND resources)
        foreach(resource IN LISTS resources)
            target_sources(kxqdlgs70 PRIVATE $<TARGET_OBJECTS:${resource}>)
        endforeach()
    endif()
    if(for_users)
        string(REGEX REPLACE "^kx_" "" public_name "${name}")
        add_library(kx::${public_name} ALIAS ${name})
        set_target_properties(${name} PROPERTIES EXPORT_NAME ${public_name})
        kx_install_library(${name} "${folder}")
    endif()
endfunction()

# kx_add_version(PROGRAM DESCRIPTION): what the Explorer shows of a program or DLL of this project
function(kx_add_version program description)
    if(NOT WIN32)
        return()
    endif()
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${program}_version.rc")
    set(type 0x1) # VFT_APP
    set(extension exe)
    get_target_property(kind ${program} TYPE)
    if(kind STREQUAL "SHARED_LIBRARY")
        set(type 0x2) # VFT_DLL
        set(extension dll)
    endif()
    string(REPLACE "." "," numbers "${PROJECT_VERSION},0")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/Version.rc.in" "${script}" @ONLY)
    target_sources(${program} PRIVATE "${script}")
endfunction()

# kx_add_test(NAME LABEL label [MANIFEST] [PORTABLE] [NO_SUITES] [FILTER filter] [SAME_AS test | SOURCES file...] [LINK library...])
#
# A GoogleTest program. Its suites are tests named preset/label/Suite, small ones together preset/label/Suite+Suite, and
# carry the label: `ctest -L label`. SOURCES defaults to all of the calling folder; SAME_AS takes what another test
# program has compiled. FILTER, as GoogleTest has it, leaves out tests that another program runs, and KX_LEAVE_OUT what
# another preset runs. NO_SUITES: somebody else runs them all. KX_TEST_DATA is the folder's data folder, as the program reaches it.
function(kx_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "MANIFEST;PORTABLE;NO_SUITES" "LABEL;FILTER;SAME_AS" "SOURCES;LINK")
    kx_glob()
    if(arg_SAME_AS)
        set(KX_SOURCES $<TARGET_OBJECTS:${arg_SAME_AS}>)
        set(KX_SCRIPTS)
        set(KX_FORMS)
    elseif(arg_SOURCES)
        set(KX_SOURCES ${arg_SOURCES})
    endif()
    if(NOT KX_SOURCES)
        return()
    endif()
    add_executable(${name} ${KX_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    # The libraries come before gtest_main: one of them may bring a main of its own.
    target_link_libraries(${name} PRIVATE ${arg_LINK} GTest::gtest_main kx_test_options)
    set(drive "")
    if(CMAKE_CROSSCOMPILING)
        set(drive "Z:") # where Wine shows the root of the Linux files
    endif()
    if(TARGET kx_guard AND NOT arg_PORTABLE) # those run natively, under sanitizers
        target_link_libraries(${name} PRIVATE kx_guard)
    endif()
    target_compile_definitions(${name} PRIVATE KX_TEST_DATA="${drive}${CMAKE_CURRENT_SOURCE_DIR}/data")
    if(arg_PORTABLE)
        kx_use_precompiled(${name} kx_portable_test_pch)
    else()
        kx_use_precompiled(${name} kx_test_pch)
    endif()
    kx_add_resources(${name} ${KX_SCRIPTS})
    kx_add_forms(${name} ${KX_FORMS})
    if(arg_MANIFEST)
        kx_add_manifest(${name})
    endif()
    if(arg_NO_SUITES)
        return()
    endif()
    set(filter "${arg_FILTER}")
    if(KX_LEAVE_OUT AND filter)
        string(APPEND filter ":${KX_LEAVE_OUT}")
    elseif(KX_LEAVE_OUT)
        set(filter "-${KX_LEAVE_OUT}")
    endif()
    # At test time, since the program has to run for it: the first run under Wine makes the prefix, which takes its time.
    set(suites "${CMAKE_CURRENT_BINARY_DIR}/${name}-suites")
    set(config "${CMAKE_BUILD_TYPE}")
    get_property(many GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
    if(many)
        set(config "\${CTEST_CONFIGURATION_TYPE}") # ctest -C
    endif()
    file(CONFIGURE OUTPUT "${suites}.cmake" CONTENT "include(\"${suites}-${config}.cmake\")\n" @ONLY)
    file(GENERATE OUTPUT "${suites}-$<CONFIG>.cmake" CONTENT
"set(program [==[$<TARGET_FILE:${name}>]==])
set(emulator [==[$<TARGET_PROPERTY:${name},CROSSCOMPILING_EMULATOR>]==])
set(filter [==[${filter}]==])
set(prefix [==[${KX_TEST_PREFIX}${arg_LABEL}/]==])
set(label [==[${arg_LABEL}]==])
set(list [==[${suites}-$<CONFIG>.txt]==])
include([==[${PROJECT_SOURCE_DIR}/cmake/KxSuites.cmake]==])
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${suites}.cmake")
endfunction()

# kx_add_fuzzer(NAME LINK library...)
#
# A libFuzzer program of NAME.cpp. It starts from the inputs in seeds/NAME and collects new ones in the build folder.
# As a test it runs KX_FUZZ_SECONDS seconds; `make fuzz` runs it as long as one likes.
function(kx_add_fuzzer name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK")
    add_executable(${name} ${name}.cpp)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${arg_LINK} kx_options)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set(corpus "${CMAKE_CURRENT_BINARY_DIR}/corpus/${name}")
    file(MAKE_DIRECTORY "${corpus}")
    set(seeds "${CMAKE_CURRENT_SOURCE_DIR}/seeds/${name}")
    if(NOT IS_DIRECTORY "${seeds}")
        set(seeds "")
    endif()
    add_test(NAME "${KX_TEST_PREFIX}fuzz/${name}" COMMAND ${name}
        -max_total_time=${KX_FUZZ_SECONDS} -timeout=10 -print_final_stats=1
        "-artifact_prefix=${CMAKE_CURRENT_BINARY_DIR}/${name}-"
        "${corpus}" ${seeds})
    math(EXPR limit "${KX_FUZZ_SECONDS} + 120")
    # COST: the long ones start first and run beside the others.
    set_tests_properties("${KX_TEST_PREFIX}fuzz/${name}" PROPERTIES LABELS fuzz TIMEOUT ${limit} COST 1000)
endfunction()

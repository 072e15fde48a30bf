# The functions by which the folders describe what they build. All of them take the sources of the calling folder by
# pattern (*.cpp, *.rc, *.dfm), so a new file is picked up by the next build.

# kx_add_forms(TARGET file.dfm...)
#
# Embeds text form files as RCDATA resources, each named by the class in its first line:
# "object PreviewForm: TPreviewForm" becomes TPREVIEWFORM. Given a library, every program that links it gets the forms.
function(kx_add_forms target)
    if(NOT WIN32 OR NOT ARGN)
        return()
    endif()
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}_forms.rc")
    set(content "#pragma code_page(65001)\n")
    set(forms)
    set(names)
    foreach(form IN LISTS ARGN)
        get_filename_component(path "${form}" ABSOLUTE)
        file(STRINGS "${path}" first LIMIT_COUNT 1 ENCODING UTF-8)
        if(NOT first MATCHES "^[ \t]*(object|inherited|inline)[ \t]+([A-Za-z0-9_]+[ \t]*:[ \t]*)?([A-Za-z0-9_]+)[ \t]*$")
            message(FATAL_ERROR "${path}: the first line must read \"object Name: TClass\", not \"${first}\"")
        endif()
        string(TOUPPER "${CMAKE_MATCH_3}" name)
        if(name IN_LIST names)
            message(FATAL_ERROR "${path}: a second form of class ${CMAKE_MATCH_3}")
        endif()
        list(APPEND names ${name})
        list(APPEND forms "${path}")
        string(APPEND content "${name} RCDATA \"${path}\"\n")
    endforeach()
    file(CONFIGURE OUTPUT "${script}" CONTENT "${content}" @ONLY)
    # The resource compilers report no dependencies; a changed first line needs a new script besides.
    set_source_files_properties("${script}" PROPERTIES OBJECT_DEPENDS "${forms}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${forms}")
    kx_add_resources(${target} "${script}")
endfunction()

# kx_add_resources(TARGET script.rc...): compiles resource scripts into a program, or into every program that links a
# library. The linker takes no member out of an archive that defines no symbol, so a library cannot hold them itself:
# its users get the object files.
function(kx_add_resources target)
    if(NOT WIN32 OR NOT ARGN)
        return()
    endif()
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        target_sources(${target} PRIVATE ${ARGN})
        return()
    endif()
    if(NOT TARGET ${target}_resources)
        add_library(${target}_resources OBJECT)
        target_sources(${target} INTERFACE $<TARGET_OBJECTS:${target}_resources>)
    endif()
    target_sources(${target}_resources PRIVATE ${ARGN})
endfunction()

# kx_add_manifest(TARGET): gives a program apps/utf8.manifest: UTF-8 as its ANSI code page, common controls 6.
function(kx_add_manifest target)
    if(NOT WIN32)
        return()
    endif()
    set(manifest "${PROJECT_SOURCE_DIR}/apps/utf8.manifest")
    if(MSVC)
        target_sources(${target} PRIVATE "${manifest}")
        return()
    endif()
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}_manifest.rc")
    # 1 24: CREATEPROCESS_MANIFEST_RESOURCE_ID, RT_MANIFEST
    file(CONFIGURE OUTPUT "${script}" CONTENT "1 24 \"${manifest}\"\n" @ONLY)
    set_source_files_properties("${script}" PROPERTIES OBJECT_DEPENDS "${manifest}")
    target_sources(${target} PRIVATE "${script}")
endfunction()

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

# Sets KX_SOURCES, KX_SCRIPTS and KX_FORMS to what the calling folder holds.
macro(kx_glob)
    file(GLOB KX_SOURCES CONFIGURE_DEPENDS *.cpp)
    file(GLOB KX_SCRIPTS CONFIGURE_DEPENDS *.rc)
    file(GLOB KX_FORMS CONFIGURE_DEPENDS *.dfm)
endmacro()

# kx_add_library(NAME [PORTABLE] [LINK library...])
#
# A static library of the calling folder. Its headers are included by their path from kx on, "kx/folder/Unit.h"; those
# that no user of ours sees by their path in the project, "support/Unit.h". LINK names what its users need too. PORTABLE: the
# folder includes no Windows header. A folder without sources gives a library of headers.
function(kx_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "PORTABLE" "" "LINK")
    kx_glob()
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE folder)
    set(unity ${CMAKE_UNITY_BUILD})
    if(folder MATCHES "^(platform|src)/kx/")
        set(root "${PROJECT_SOURCE_DIR}/${CMAKE_MATCH_1}")
        set(unity OFF) # a program takes from the archive just the sources that it needs
    else()
        set(root "${PROJECT_SOURCE_DIR}")
    endif()
    if(NOT KX_SOURCES)
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE "${root}")
        target_link_libraries(${name} INTERFACE ${arg_LINK})
        return()
    endif()
    add_library(${name} STATIC ${KX_SOURCES})
    set_target_properties(${name} PROPERTIES UNITY_BUILD "${unity}")
    target_include_directories(${name} PUBLIC "${root}")
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE kx_options)
    if(NOT arg_PORTABLE)
        kx_use_precompiled(${name} kx_pch)
    endif()
    kx_add_resources(${name} ${KX_SCRIPTS})
    kx_add_forms(${name} ${KX_FORMS})
endfunction()

# kx_add_program(NAME [CONSOLE] [MANIFEST] [LINK library...])
#
# A program of the sources of the calling folder, without a console window unless CONSOLE is given.
function(kx_add_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "CONSOLE;MANIFEST" "" "LINK")
    kx_glob()
    if(NOT KX_SOURCES)
        return()
    endif()
    add_executable(${name} ${KX_SOURCES})
    if(NOT arg_CONSOLE)
        set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
    endif()
    target_link_libraries(${name} PRIVATE ${arg_LINK} kx_options)
    kx_use_precompiled(${name} kx_pch)
    kx_add_resources(${name} ${KX_SCRIPTS})
    kx_add_forms(${name} ${KX_FORMS})
    if(arg_MANIFEST)
        kx_add_manifest(${name})
    endif()
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
    file(GENERATE OUTPUT "${suites}.cmake" CONTENT
"set(program [==[$<TARGET_FILE:${name}>]==])
set(emulator [==[$<TARGET_PROPERTY:${name},CROSSCOMPILING_EMULATOR>]==])
set(filter [==[${filter}]==])
set(prefix [==[${KX_TEST_PREFIX}${arg_LABEL}/]==])
set(label [==[${arg_LABEL}]==])
set(list [==[${suites}.txt]==])
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

# kx_add_designer(NAME REGISTER function... LINK library...)
#
# A form designer whose palette has the components of the framework and those that the functions register. Each is a
# void function() of one of the libraries, with its namespace: sample::RegisterStars. Bitmap resources of the calling
# folder (*.rc) that are named like the classes, in capital letters, are their pictures; the icon MAINICON in one of them
# is the program's.
function(kx_add_designer name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "REGISTER;LINK")
    kx_glob()
    set(declarations "")
    foreach(function IN LISTS arg_REGISTER)
        if(NOT function MATCHES "^((.*)::)?([A-Za-z_0-9]+)$")
            message(FATAL_ERROR "${name}: ${function} is no name of a function")
        endif()
        if(CMAKE_MATCH_2)
            string(APPEND declarations "namespace ${CMAKE_MATCH_2} {\nvoid ${CMAKE_MATCH_3}();\n}\n")
        else()
            string(APPEND declarations "void ${CMAKE_MATCH_3}();\n")
        endif()
    endforeach()
    list(JOIN arg_REGISTER ", " functions)
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT
"#include \"designer/DesignerProgram.h\"
#include \"kx/win/Windows.h\"

${declarations}
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) { return kx::designer::RunDesigner({${functions}}); }
" @ONLY)
    add_executable(${name} "${source}")
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
    target_link_libraries(${name} PRIVATE ${arg_LINK} kx_designer kx_options)
    kx_use_precompiled(${name} kx_pch)
    set(icon "${PROJECT_SOURCE_DIR}/designer/icon/Designer.rc")
    foreach(script IN LISTS KX_SCRIPTS)
        file(STRINGS "${script}" found REGEX "^MAINICON[ \t]")
        if(found)
            set(icon)
        endif()
    endforeach()
    kx_add_resources(${name} ${KX_SCRIPTS} ${icon})
    kx_add_manifest(${name})
endfunction()

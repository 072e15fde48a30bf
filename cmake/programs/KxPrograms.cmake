# The functions by which programs that use the library describe what they build: in this project, in projects that take it
# into their own build, and with the installed library.
#
#   KX_PROGRAM_LIBRARIES    libraries that every program of kx_add_program and kx_add_designer links, such as one that holds a
#                           project's compile options
#   KX_PROGRAM_PRECOMPILED  the target whose precompiled headers they use
include_guard(GLOBAL)

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
    if(type MATCHES "^(EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY)$")
        target_sources(${target} PRIVATE ${ARGN})
        return()
    endif()
    get_target_property(excluded ${target} EXCLUDE_FROM_ALL)
    foreach(script IN LISTS ARGN)
        cmake_path(GET script STEM LAST_ONLY stem)
        string(REGEX REPLACE "^${target}_" "" stem "${stem}")
        set(resource "${target}_${stem}_rc")
        add_library(${resource} OBJECT "${script}")
        set_target_properties(${resource} PROPERTIES EXCLUDE_FROM_ALL "${excluded}")
        target_sources(${target} INTERFACE "$<BUILD_INTERFACE:$<TARGET_OBJECTS:${resource}>>")
        set_property(TARGET ${target} APPEND PROPERTY KX_RESOURCES ${resource})
    endforeach()
endfunction()

# kx_add_manifest(TARGET): gives a program utf8.manifest: UTF-8 as its ANSI code page, common controls 6, sizes in pixels of
# the screen.
function(kx_add_manifest target)
    if(NOT WIN32)
        return()
    endif()
    set(manifest "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/utf8.manifest")
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

# kx_link_program(TARGET library...): with what all programs have
function(kx_link_program target)
    target_link_libraries(${target} PRIVATE ${ARGN} ${KX_PROGRAM_LIBRARIES})
    if(KX_PROGRAM_PRECOMPILED)
        target_precompile_headers(${target} REUSE_FROM ${KX_PROGRAM_PRECOMPILED})
    endif()
endfunction()

# Sets KX_SOURCES, KX_SCRIPTS and KX_FORMS to what the calling folder holds.
macro(kx_glob)
    file(GLOB KX_SOURCES CONFIGURE_DEPENDS *.cpp)
    file(GLOB KX_SCRIPTS CONFIGURE_DEPENDS *.rc)
    file(GLOB KX_FORMS CONFIGURE_DEPENDS *.dfm)
endmacro()

# kx_add_program(NAME [CONSOLE] [MANIFEST] [LINK library...])
#
# A program of the sources of the calling folder (*.cpp, *.rc, *.dfm; a new file is picked up by the next build), without a
# console window unless CONSOLE is given. MANIFEST: with kx_add_manifest.
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
    kx_link_program(${name} ${arg_LINK})
    kx_add_resources(${name} ${KX_SCRIPTS})
    kx_add_forms(${name} ${KX_FORMS})
    if(arg_MANIFEST)
        kx_add_manifest(${name})
    endif()
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
    kx_link_program(${name} ${arg_LINK} kx::designer)
    set(icon "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/Designer.rc")
    foreach(script IN LISTS KX_SCRIPTS)
        file(STRINGS "${script}" found REGEX "^MAINICON[ \t]")
        if(found)
            set(icon)
        endif()
    endforeach()
    kx_add_resources(${name} ${KX_SCRIPTS} ${icon})
    kx_add_manifest(${name})
endfunction()

# All libraries in one DLL; kx_add_library fills it. Everything is exported without a mark in the sources, which is what the
# linkers of MinGW do by themselves. Visual C++ would need marks for what is data; there the libraries stay static. With
# KX_TEST_DLL alone the libraries are static too, and the DLL is made of their objects for its tests.
if(NOT MINGW)
    message(STATUS "The DLL of kxqdlgs70 needs MinGW, so its libraries are static")
    set(BUILD_SHARED_LIBS OFF)
    set(KX_TEST_DLL OFF)
    return()
endif()
set(folder "${PROJECT_BINARY_DIR}/bin")
add_library(kxqdlgs70 SHARED)
add_library(kx::kxqdlgs70 ALIAS kxqdlgs70)
set_target_properties(kxqdlgs70 PROPERTIES PREFIX "" LINKER_LANGUAGE CXX KX_SHARED_RUNTIME ON)
target_link_options(kxqdlgs70 PRIVATE -Wl,--export-all-symbols)
kx_add_version(kxqdlgs70 "Dialogs of Windows, extended")

# The compiler's DLLs, which program and DLL share
set(runtime "")
foreach(name libgcc_s_dw2-1.dll libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${name} OUTPUT_VARIABLE file
        OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(IS_ABSOLUTE "${file}" AND EXISTS "${file}")
        list(APPEND runtime "${file}")
    endif()
endforeach()
if(PROJECT_IS_TOP_LEVEL)
    set_target_properties(kxqdlgs70 PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${folder}")
    file(COPY ${runtime} DESTINATION "${folder}")
endif()
if(NOT BUILD_SHARED_LIBS)
    return()
endif()
if(PROJECT_IS_TOP_LEVEL AND CMAKE_CROSSCOMPILING)
    # The programs of the tests find the DLLs.
    set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_COMMAND}" -E env "WINEPATH=Z:${folder}" ${CMAKE_CROSSCOMPILING_EMULATOR})
endif()

if(KX_INSTALL)
    install(TARGETS kxqdlgs70 EXPORT kxqdlgs70 RUNTIME COMPONENT Runtime ARCHIVE COMPONENT Development)
    install(FILES ${runtime} TYPE BIN COMPONENT Runtime)
    add_dependencies(kx_installed kxqdlgs70)
endif()

# What is installed, in components: Development (libraries, headers, CMake files), Runtime (the DLL, if any), Gallery, Designer, Tools (kx-form and
# windows_probe), Docs, Examples. The folders name what they have; packaging/ adds the rest.
if(KX_INSTALL)
    include(GNUInstallDirs)
    # Where find_package looks, and the functions with what they embed
    set(KX_PACKAGE_FOLDER "${CMAKE_INSTALL_LIBDIR}/cmake/kxqdlgs70")
    # Builds all that is installed, and nothing else
    add_custom_target(kx_installed)
endif()

# kx_install_library(NAME FOLDER): a library of FOLDER, its headers, and the resources that programs get with it. Headers of
# folders without a path from kx on lie below include/kxqdlgs70.
function(kx_install_library name folder)
    if(NOT KX_INSTALL)
        return()
    endif()
    set(root "${CMAKE_INSTALL_INCLUDEDIR}")
    if(folder MATCHES "^(platform|src)/(.*)$")
        set(path "${CMAKE_MATCH_2}")
    else()
        string(APPEND root /kxqdlgs70)
        set(path "${folder}")
    endif()
    file(GLOB headers CONFIGURE_DEPENDS *.h)
    install(FILES ${headers} DESTINATION "${root}/${path}" COMPONENT Development)
    target_include_directories(${name} INTERFACE "$<INSTALL_INTERFACE:${root}>")

    install(TARGETS ${name} EXPORT kxqdlgs70 ARCHIVE COMPONENT Development)
    add_dependencies(kx_installed ${name})
    get_target_property(resources ${name} KX_RESOURCES)
    foreach(resource IN LISTS resources)
        if(NOT TARGET "${resource}")
            continue() # it has none
        endif()
        set(file "${resource}${CMAKE_RC_OUTPUT_EXTENSION}")
        install(FILES $<TARGET_OBJECTS:${resource}> DESTINATION "${CMAKE_INSTALL_LIBDIR}/kxqdlgs70"
            RENAME "${file}" COMPONENT Development)
        target_link_libraries(${name} INTERFACE "$<INSTALL_INTERFACE:$<INSTALL_PREFIX>/${CMAKE_INSTALL_LIBDIR}/kxqdlgs70/${file}>")
        add_dependencies(kx_installed ${resource})
    endforeach()
endfunction()

# kx_install_program(NAME COMPONENT)
function(kx_install_program name component)
    if(KX_INSTALL)
        install(TARGETS ${name} RUNTIME COMPONENT ${component})
        add_dependencies(kx_installed ${name})
    endif()
endfunction()

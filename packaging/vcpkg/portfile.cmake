# An overlay port, which builds the sources that it lies among: vcpkg install kxqdlgs70 --overlay-ports=packaging/vcpkg
if(NOT VCPKG_TARGET_IS_MINGW)
    vcpkg_check_linkage(ONLY_STATIC_LIBRARY)
endif()
get_filename_component(SOURCE_PATH "${CURRENT_PORT_DIR}/../.." ABSOLUTE)

vcpkg_check_features(OUT_FEATURE_OPTIONS options FEATURES tools KX_APPS)
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS ${options} -DKX_INSTALL=ON -DKX_TESTS=OFF -DKX_EXAMPLES=OFF
)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME kxqdlgs70 CONFIG_PATH lib/cmake/kxqdlgs70)
if("tools" IN_LIST FEATURES)
    vcpkg_copy_tools(TOOL_NAMES designer gallery kx-form windows_probe AUTO_CLEAN)
endif()

# vcpkg keeps its own account of what it installs.
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
file(REMOVE "${CURRENT_PACKAGES_DIR}/share/kxqdlgs70/files.txt" "${CURRENT_PACKAGES_DIR}/share/kxqdlgs70/uninstall.cmake")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")

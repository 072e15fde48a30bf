# The archives, unpacked in another folder: they hold what they should, both the same, and a consumer and an example can be
# built from them.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

run("${CMAKE_CPACK_COMMAND}" --config "${BUILD}/CPackConfig.cmake" -C "${CONFIG}" -B "${WORK}/archives")
file(GLOB archives "${WORK}/archives/kxqdlgs70-${VERSION}-*.zip" "${WORK}/archives/kxqdlgs70-${VERSION}-*.tar.gz")
list(LENGTH archives count)
if(NOT count EQUAL 2)
    message(FATAL_ERROR "a ZIP and a TGZ are expected: ${archives}")
endif()
foreach(archive IN LISTS archives)
    cmake_path(GET archive EXTENSION LAST_ONLY kind)
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${WORK}/unpacked${kind}")
    file(GLOB folder${kind} "${WORK}/unpacked${kind}/*")
    files_below("${folder${kind}}" files${kind})
endforeach()
if(NOT files.zip STREQUAL files.gz)
    message(FATAL_ERROR "in the ZIP:\n${files.zip}\nin the TGZ:\n${files.gz}")
endif()

set(prefix "${folder.zip}")
foreach(file bin/gallery.exe bin/designer.exe bin/kx-form.exe bin/windows_probe.exe include/kx/opensave/KxOpenDlg.h
        include/kx/core/Version.h lib/cmake/kxqdlgs70/utf8.manifest share/doc/kxqdlgs70/LICENSE share/doc/kxqdlgs70/README.md
        share/doc/kxqdlgs70/docs/architecture.md share/kxqdlgs70/examples/minimal/Minimal.cpp)
    if(NOT file IN_LIST files.zip)
        message(FATAL_ERROR "${file} is missing in ${files.zip}")
    endif()
endforeach()
# The Explorer shows the version of each program: a key in UTF-16 with its end, two zeros before the value.
string(HEX "FileVersion" key)
string(HEX "${VERSION}" value)
string(REGEX REPLACE "(..)" "\\100" key "${key}")
string(REGEX REPLACE "(..)" "\\100" value "${value}")
foreach(program gallery designer kx-form windows_probe)
    file(READ "${prefix}/bin/${program}.exe" bytes HEX)
    string(FIND "${bytes}" "${key}00000000${value}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "${program} does not tell its version")
    endif()
endforeach()
run(${EMULATOR} "${prefix}/bin/kx-form.exe" check "${prefix}/share/kxqdlgs70/examples/minimal/PreviewForm.dfm")

configure("${CMAKE_CURRENT_LIST_DIR}/program" "${WORK}/build" "-DCMAKE_PREFIX_PATH=${prefix}")
run_consumer("${WORK}/build")
configure("${prefix}/share/kxqdlgs70/examples" "${WORK}/examples" "-DCMAKE_PREFIX_PATH=${prefix}")
run("${CMAKE_COMMAND}" --build "${WORK}/examples" --config "${CONFIG}" --target minimal)

uninstall("${prefix}")

# The installed library, moved to another folder: a consumer finds it, programs of another word size do not, and it can be
# taken away without a rest.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/first" --config "${CONFIG}")

# CMake's own list and ours name what is there, and nothing else.
files_below("${WORK}/first" files)
file(STRINGS "${BUILD}/install_manifest.txt" listed)
list(TRANSFORM listed REPLACE "^${WORK}/first/" "")
file(STRINGS "${WORK}/first/share/kxqdlgs70/files.txt" ours)
foreach(list listed ours)
    list(SORT ${list})
    if(NOT ${list} STREQUAL files)
        message(FATAL_ERROR "installed:\n${files}\nbut ${list}:\n${${list}}")
    endif()
endforeach()

# No header of ours stands where one of another library might.
file(GLOB roots RELATIVE "${WORK}/first/include" "${WORK}/first/include/*")
list(SORT roots)
if(NOT roots STREQUAL "kx;kxqdlgs70")
    message(FATAL_ERROR "below include: ${roots}")
endif()

set(prefix "${WORK}/moved")
file(RENAME "${WORK}/first" "${prefix}")
foreach(file IN LISTS files)
    if(file MATCHES "\\.(cmake|rc|h)$")
        file(READ "${prefix}/${file}" text)
        foreach(folder "${SOURCE}/" "${BUILD}/" "${WORK}/")
            string(FIND "${text}" "${folder}" at)
            if(NOT at EQUAL -1)
                message(FATAL_ERROR "${file} names the folder ${folder}")
            endif()
        endforeach()
    endif()
endforeach()

configure("${CMAKE_CURRENT_LIST_DIR}/program" "${WORK}/build" "-DCMAKE_PREFIX_PATH=${prefix}")
run_consumer("${WORK}/build")

# One who asks for another version, another part or another word size is told so.
function(is_refused pattern)
    execute_process(COMMAND "${CMAKE_COMMAND}" -S "${WORK}/asks" -B "${WORK}/asks/build" ${options} ${ARGN}
        "-DCMAKE_PREFIX_PATH=${prefix}" RESULT_VARIABLE result OUTPUT_VARIABLE text ERROR_VARIABLE text)
    if(result EQUAL 0 OR NOT text MATCHES "${pattern}")
        message(FATAL_ERROR "not refused with \"${pattern}\", but ${result}: ${text}")
    endif()
    file(REMOVE_RECURSE "${WORK}/asks/build")
endfunction()
set(start "cmake_minimum_required(VERSION 3.25)\nproject(asks LANGUAGES CXX)\nfind_package(kxqdlgs70")
set(own "-DCMAKE_CXX_COMPILER=${COMPILER}")
if(TOOLCHAIN)
    set(own "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
endif()
foreach(major 6 8)
    file(WRITE "${WORK}/asks/CMakeLists.txt" "${start} ${major} CONFIG REQUIRED)\n")
    is_refused("requested[ \n]+version[ \n]+\"${major}\"" ${own})
endforeach()
file(WRITE "${WORK}/asks/CMakeLists.txt" "${start} 7 CONFIG REQUIRED COMPONENTS opensave telepathy)\n")
is_refused("telepathy" ${own})
if(OTHER_TOOLCHAIN)
    file(WRITE "${WORK}/asks/CMakeLists.txt" "${start} 7 CONFIG REQUIRED)\n")
    is_refused("version: ${VERSION} \\((32|64)bit\\)" "-DCMAKE_TOOLCHAIN_FILE=${OTHER_TOOLCHAIN}")
endif()

uninstall("${prefix}")

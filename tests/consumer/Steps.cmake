# What the checks of consumers share. Given are
#   SOURCE, BUILD     folders of this project
#   WORK              folder that a check has for itself; it is emptied
#   CONFIG            configuration of the libraries
#   VERSION           of the library
#   GENERATOR, TOOLCHAIN, COMPILER, EMULATOR    how programs are built and run
#   OTHER_TOOLCHAIN   that of the other word size, if there is one
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
set(options -G "${GENERATOR}" "-DCMAKE_BUILD_TYPE=${CONFIG}")

# run(COMMAND...): must succeed; its output is in `output`
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE text ERROR_VARIABLE text)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\nended with ${result}:\n${text}")
    endif()
    set(output "${text}" PARENT_SCOPE)
endfunction()

# configure(SOURCE BUILD [-D...]): a project of somebody else
function(configure source build)
    if(TOOLCHAIN)
        list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
    else()
        list(APPEND options "-DCMAKE_CXX_COMPILER=${COMPILER}")
    endif()
    run("${CMAKE_COMMAND}" -S "${source}" -B "${build}" ${options} ${ARGN})
endfunction()

# run_consumer(BUILD): builds the programs and runs the one that looks at its dialog
function(run_consumer build)
    run("${CMAKE_COMMAND}" --build "${build}" --config "${CONFIG}")
    file(GLOB_RECURSE program "${build}/consumer.exe")
    run(${EMULATOR} "${program}")
    message(STATUS "${output}")
    if(NOT output MATCHES "kxqdlgs70 ${VERSION}, [36][24] bits: 0 failures")
        message(FATAL_ERROR "the consumer says: ${output}")
    endif()
endfunction()

# files_below(FOLDER VARIABLE): paths of all files, from the folder on
function(files_below folder variable)
    file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${folder}" "${folder}/*" "${folder}/.*")
    list(SORT files)
    set(${variable} "${files}" PARENT_SCOPE)
endfunction()

# uninstall(PREFIX): takes away all that the prefix has, but for a file of somebody else
function(uninstall prefix)
    file(WRITE "${prefix}/include/kx/core/OfSomebodyElse.h" "")
    run("${CMAKE_COMMAND}" -P "${prefix}/share/kxqdlgs70/uninstall.cmake")
    file(GLOB_RECURSE rest LIST_DIRECTORIES true RELATIVE "${prefix}" "${prefix}/*")
    list(SORT rest)
    if(NOT rest STREQUAL "include;include/kx;include/kx/core;include/kx/core/OfSomebodyElse.h")
        message(FATAL_ERROR "left after uninstalling: ${rest}")
    endif()
endfunction()

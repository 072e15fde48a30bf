# cmake -D PROGRAM=file -D STRIP=tool -D LIMIT=bytes -P CheckSize.cmake: fails when the stripped program is larger.
set(stripped "${PROGRAM}.stripped")
execute_process(COMMAND "${STRIP}" -o "${stripped}" "${PROGRAM}" COMMAND_ERROR_IS_FATAL ANY)
file(SIZE "${stripped}" size)
file(REMOVE "${stripped}")
if(size GREATER LIMIT)
    message(FATAL_ERROR "${PROGRAM} has ${size} bytes stripped, more than ${LIMIT}")
endif()
message(STATUS "${size} bytes")

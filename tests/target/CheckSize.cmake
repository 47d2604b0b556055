# cmake -DADDIN=... -DSTRIP=... -DLIMIT=... -P CheckSize.cmake: the stripped add-in has at most LIMIT octets.
set(stripped "${ADDIN}.stripped")
execute_process(COMMAND "${STRIP}" -o "${stripped}" "${ADDIN}" COMMAND_ERROR_IS_FATAL ANY)
file(SIZE "${stripped}" octets)
file(REMOVE "${stripped}")
message("the stripped add-in has ${octets} octets")
if(octets GREATER LIMIT)
    message(FATAL_ERROR "at most ${LIMIT} octets are allowed")
endif()

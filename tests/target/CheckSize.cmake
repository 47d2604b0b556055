# cmake -DADDIN=... -DSTRIP=... -DLIMIT=... -P: the stripped add-in has no more octets than that.
set(stripped "${ADDIN}.stripped")
execute_process(COMMAND "${STRIP}" -o "${stripped}" "${ADDIN}" COMMAND_ERROR_IS_FATAL ANY)
file(SIZE "${stripped}" octets)
file(REMOVE "${stripped}")
message("the stripped add-in has ${octets} octets")
if(octets GREATER LIMIT)
    message(FATAL_ERROR "at most ${LIMIT} are wanted")
endif()

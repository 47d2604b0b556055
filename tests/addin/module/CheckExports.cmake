# cmake -DNM=... -DADDIN=... -P CheckExports.cmake: the add-in exports its entry and nothing else.
execute_process(COMMAND "${NM}" -D --defined-only "${ADDIN}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${symbols}" symbols)
if(NOT symbols MATCHES "^[0-9a-f]+ T InitAddin$")
    message(FATAL_ERROR "exported symbols:\n${symbols}")
endif()

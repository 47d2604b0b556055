# Run at installation with FILE, a program or library of the build, READELF and OBJCOPY: puts its debug symbols where
# debuggers look for them.

execute_process(COMMAND "${READELF}" -n "${FILE}" OUTPUT_VARIABLE notes COMMAND_ERROR_IS_FATAL ANY)
if(NOT notes MATCHES "Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+)")
    message(FATAL_ERROR "${FILE} has no build id: link it with -Wl,--build-id")
endif()
set(folder "${CMAKE_INSTALL_PREFIX}/lib/debug/.build-id/${CMAKE_MATCH_1}")
set(symbols "${folder}/${CMAKE_MATCH_2}.debug")
message(STATUS "Installing: $ENV{DESTDIR}${symbols}")
file(MAKE_DIRECTORY "$ENV{DESTDIR}${folder}")
execute_process(COMMAND "${OBJCOPY}" --only-keep-debug --compress-debug-sections "${FILE}" "$ENV{DESTDIR}${symbols}"
                COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD "$ENV{DESTDIR}${symbols}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# cmake -DSOURCE=... -DBIN=... -DLUA_LIBRARY=... -DLUA_INCLUDE=... -DNM=... -DCOMPILER=... [-DTOOLCHAIN=...] -DWORK=... -P
#
# Puts together what the runtime's vendor ships, from our own headers and libraries in BIN, in another place, and builds
# the add-in against that alone. Then without one of its files: that has to be told by name.

file(REMOVE_RECURSE "${WORK}")
set(sdk "${WORK}/sdk")
file(MAKE_DIRECTORY "${sdk}/lib")
file(COPY "${SOURCE}/host/include" DESTINATION "${sdk}")
file(COPY "${LUA_INCLUDE}/" DESTINATION "${sdk}/include" FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
if(LUA_MACHINE_INCLUDE)
    file(COPY "${LUA_MACHINE_INCLUDE}/lua5.4-deb-multiarch.h" DESTINATION "${sdk}/include")
endif()
foreach(library opcua dorvelshare dorvel)
    file(COPY "${BIN}/${library}.so" DESTINATION "${sdk}/lib")
endforeach()
file(COPY "${LUA_LIBRARY}" DESTINATION "${sdk}/lib" FOLLOW_SYMLINK_CHAIN)

# configure(FOLDER): gives what was told, as text, in `output`, and the exit code in `result`.
function(configure folder)
    set(options -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS=-O0" "-DDORVEL_SDK=${sdk}")
    if(TOOLCHAIN)
        list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
    else()
        list(APPEND options "-DCMAKE_CXX_COMPILER=${COMPILER}")
    endif()
    execute_process(COMMAND "${CMAKE_COMMAND}" -S "${SOURCE}" -B "${WORK}/${folder}" -G Ninja ${options}
                    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    set(result "${result}" PARENT_SCOPE)
    set(output "${output}" PARENT_SCOPE)
endfunction()

configure(build)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${output}")
endif()
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${WORK}/build" COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
file(GLOB built RELATIVE "${WORK}/build/bin" "${WORK}/build/bin/*")
if(NOT built STREQUAL "dorvel_bacnet.so")
    message(FATAL_ERROR "built: ${built}")
endif()
set(ADDIN "${WORK}/build/bin/dorvel_bacnet.so")
include("${SOURCE}/tests/addin/module/CheckExports.cmake")

foreach(missing include/opcua/OpcUa_Variant.h lib/dorvelshare.so)
    file(RENAME "${sdk}/${missing}" "${sdk}/${missing}.away")
    configure(without)
    file(RENAME "${sdk}/${missing}.away" "${sdk}/${missing}")
    if(result EQUAL 0 OR NOT output MATCHES "DORVEL_SDK: there is no ${missing}")
        message(FATAL_ERROR "without ${missing}: ${output}")
    endif()
endforeach()
file(REMOVE_RECURSE "${WORK}")

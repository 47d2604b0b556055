# The runtime as its vendor ships it, in DORVEL_SDK: include/ with the host contract and Lua's headers, lib/ with
# opcua.so, dorvelshare.so, dorvel.so and Lua. The targets replace those of host/ and have the same names.

function(find_in_sdk variable)
    cmake_parse_arguments(SOUGHT "" "HEADER" "LIBRARY" ${ARGN})
    if(SOUGHT_HEADER)
        find_path(${variable} "${SOUGHT_HEADER}" PATHS "${DORVEL_SDK}/include" PATH_SUFFIXES lua5.4 lua NO_DEFAULT_PATH
                  NO_CMAKE_FIND_ROOT_PATH)
        set(file "include/${SOUGHT_HEADER}")
    else()
        find_library(${variable} NAMES ${SOUGHT_LIBRARY} PATHS "${DORVEL_SDK}/lib" NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
        list(JOIN SOUGHT_LIBRARY " or " file)
        set(file "lib/${file}")
    endif()
    if(NOT ${variable})
        message(FATAL_ERROR "DORVEL_SDK: there is no ${file} in ${DORVEL_SDK}")
    endif()
endfunction()

foreach(header dorvel/ScadaProtocol.h dorvelshare/NLSocket.h opcua/OpcUa_Variant.h)
    string(MAKE_C_IDENTIFIER "SDK_${header}" found)
    find_in_sdk(${found} HEADER "${header}")
endforeach()
add_library(host_contract INTERFACE)
target_include_directories(host_contract SYSTEM INTERFACE "${DORVEL_SDK}/include")

find_in_sdk(SDK_LUA_INCLUDE HEADER lua.hpp)
find_in_sdk(SDK_LUA LIBRARY liblua5.4.so liblua.so lua5.4 lua)
add_library(dorvel_lua INTERFACE)
target_include_directories(dorvel_lua SYSTEM INTERFACE "${SDK_LUA_INCLUDE}")
target_link_libraries(dorvel_lua INTERFACE "${SDK_LUA}")

foreach(library opcua dorvelshare dorvel)
    find_in_sdk(SDK_${library} LIBRARY ${library}.so)
    add_library(${library} INTERFACE IMPORTED)
    target_link_libraries(${library} INTERFACE host_contract "${SDK_${library}}")
endforeach()

# RapidJSON may come from this machine, but not with its parent folder, which has this machine's C library.
find_path(RAPIDJSON_INCLUDE rapidjson/document.h HINTS "${DORVEL_SDK}/include" PATHS /usr/include /usr/local/include
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/include")
file(CREATE_LINK "${RAPIDJSON_INCLUDE}/rapidjson" "${PROJECT_BINARY_DIR}/include/rapidjson" SYMBOLIC)
add_library(dorvel_rapidjson INTERFACE)
target_include_directories(dorvel_rapidjson SYSTEM INTERFACE "${PROJECT_BINARY_DIR}/include")

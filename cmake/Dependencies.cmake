# Libraries of the system. scripts/setup installs them, and scripts/sysroot-armhf their counterparts for the target.

find_package(Threads REQUIRED)

if(DORVEL_SYSROOT AND NOT DORVEL_SDK)
    execute_process(COMMAND "${PROJECT_SOURCE_DIR}/scripts/sysroot-armhf" "${DORVEL_SYSROOT}" COMMAND_ERROR_IS_FATAL ANY)
endif()

if(DORVEL_SDK)
    include(Sdk)
    return()
endif()

find_package(PkgConfig REQUIRED)
pkg_check_modules(LUA REQUIRED IMPORTED_TARGET lua5.4)

# Boost 1.81 is the first with boost::unordered_flat_map.
find_path(BOOST_FLAT_MAP_INCLUDE boost/unordered/unordered_flat_map.hpp REQUIRED)
find_path(RAPIDJSON_INCLUDE rapidjson/document.h REQUIRED)

add_library(dorvel_lua INTERFACE)
target_link_libraries(dorvel_lua INTERFACE PkgConfig::LUA)
if(DORVEL_SYSROOT)
    # Debian's luaconf.h includes a header from an architecture's folder.
    set(DORVEL_LUA_MACHINE_INCLUDE "${DORVEL_SYSROOT}/usr/include/arm-linux-gnueabihf")
    target_include_directories(dorvel_lua SYSTEM INTERFACE "${DORVEL_LUA_MACHINE_INCLUDE}")
endif()

add_library(dorvel_boost INTERFACE)
target_include_directories(dorvel_boost SYSTEM INTERFACE "${BOOST_FLAT_MAP_INCLUDE}")

add_library(dorvel_rapidjson INTERFACE)
target_include_directories(dorvel_rapidjson SYSTEM INTERFACE "${RAPIDJSON_INCLUDE}")

find_path(CSV_INCLUDE csv.h REQUIRED)
find_library(CSV_LIBRARY csv REQUIRED)
add_library(dorvel_csv INTERFACE)
target_include_directories(dorvel_csv SYSTEM INTERFACE "${CSV_INCLUDE}")
target_link_libraries(dorvel_csv INTERFACE "${CSV_LIBRARY}")

# What the page and the metrics of the workbench are served with. The header and the library must agree on their
# options, which are those of the library's pkg-config file.
if(DORVEL_PAGE OR DORVEL_METRICS)
    pkg_check_modules(HTTPLIB REQUIRED IMPORTED_TARGET cpp-httplib)
endif()
if(DORVEL_PAGE)
    find_path(DYGRAPHS_FOLDER dygraph.min.js PATHS /usr/share/javascript/dygraphs NO_CMAKE_FIND_ROOT_PATH REQUIRED)
endif()

if(DORVEL_MQTT)
    pkg_check_modules(MOSQUITTO REQUIRED IMPORTED_TARGET libmosquitto)
    find_package(OpenSSL REQUIRED)
    find_package(Protobuf REQUIRED)
endif()
if(DORVEL_RECORD)
    pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
endif()
if(DORVEL_SYSTEMD)
    pkg_check_modules(SYSTEMD REQUIRED IMPORTED_TARGET libsystemd)
endif()

# What the system has to offer; scripts/setup installs it.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(LUA REQUIRED IMPORTED_TARGET lua5.4)

# Boost 1.81 is the first with boost::unordered_flat_map.
find_path(BOOST_FLAT_MAP_INCLUDE boost/unordered/unordered_flat_map.hpp REQUIRED)
find_path(RAPIDJSON_INCLUDE rapidjson/document.h REQUIRED)

add_library(dorvel_lua INTERFACE)
target_link_libraries(dorvel_lua INTERFACE PkgConfig::LUA)

add_library(dorvel_boost INTERFACE)
target_include_directories(dorvel_boost SYSTEM INTERFACE "${BOOST_FLAT_MAP_INCLUDE}")

add_library(dorvel_rapidjson INTERFACE)
target_include_directories(dorvel_rapidjson SYSTEM INTERFACE "${RAPIDJSON_INCLUDE}")

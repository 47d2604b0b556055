# The host's Lua may be built as C, as the one that is linked elsewhere, or as C++, where an error is an exception. The
# programs that use Lua are linked a second time, with the whole archive of Lua as C++ in them. A program's symbols take
# precedence, so the host's libraries and the add-in use the program's Lua too.

find_library(LUA_AS_CPP_ARCHIVE liblua5.4-c++.a REQUIRED)
set(lua_as_cpp "${CMAKE_CURRENT_BINARY_DIR}/liblua-as-c++.a")

# Debian 12's archive has the names of C, Debian 13's those of C++: _Z9lua_errorP9lua_State for lua_error. The objects
# that are linked with it are those of the original program and use the names of C.
execute_process(COMMAND "${CMAKE_NM}" --defined-only --extern-only --format=posix "${LUA_AS_CPP_ARCHIVE}"
                OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "_Z[0-9]+lua(L?_|open_)[A-Za-z0-9_]+" cpp_names "${symbols}")
list(LENGTH cpp_names LUA_AS_CPP_HAS_CPP_NAMES)
set(new_names "")
foreach(cpp_name IN LISTS cpp_names)
    string(REGEX MATCH "^_Z([0-9]+)(.*)$" matched "${cpp_name}")
    string(SUBSTRING "${CMAKE_MATCH_2}" 0 "${CMAKE_MATCH_1}" c_name)
    string(APPEND new_names "${cpp_name} ${c_name}\n")
endforeach()
file(WRITE "${lua_as_cpp}.names" "${new_names}")
execute_process(COMMAND "${CMAKE_OBJCOPY}" "--redefine-syms=${lua_as_cpp}.names" "${LUA_AS_CPP_ARCHIVE}" "${lua_as_cpp}"
                COMMAND_ERROR_IS_FATAL ANY)

# add_lua_as_cpp_test(PROGRAM): links the unit test program again and runs it as one test.
function(add_lua_as_cpp_test program)
    set(other "${program}-lua-as-c++")
    get_target_property(objects ${program} SOURCES)
    list(FILTER objects INCLUDE REGEX "TARGET_OBJECTS")
    get_target_property(libraries ${program} LINK_LIBRARIES)
    add_executable(${other} $<TARGET_OBJECTS:${program}> ${objects})
    set_target_properties(${other} PROPERTIES LINKER_LANGUAGE CXX LINK_DEPENDS "${lua_as_cpp}")
    target_link_options(${other} PRIVATE -Wl,--export-dynamic)
    target_link_libraries(${other} PRIVATE -Wl,--whole-archive "${lua_as_cpp}" -Wl,--no-whole-archive ${libraries})
    add_test(NAME lua-as-c++.${program} COMMAND ${other} --gtest_brief=1)
    set_tests_properties(lua-as-c++.${program} PROPERTIES LABELS unit TIMEOUT 600 ENVIRONMENT DORVEL_TEST_LUA=c++)
endfunction()

foreach(program addin_test host_test lua_test fresh_process_test module_test tools_test workbench_test
        simulator_test)
    add_lua_as_cpp_test(${program})
endforeach()

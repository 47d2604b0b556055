# Run at each build with SOURCE, the tree, and OUTPUT: a source file that defines tools::Commit(). It is written only if it
# changes, so that nothing else is built again. Without OUTPUT, the commit and its time are printed.

include("${CMAKE_CURRENT_LIST_DIR}/Commit.cmake")
find_commit("${SOURCE}")

if(NOT OUTPUT)
    execute_process(COMMAND "${CMAKE_COMMAND}" -E echo "${COMMIT} ${COMMIT_TIME}")
    return()
endif()

if(COMMIT MATCHES "^([0-9a-f]+)(.*)$" AND NOT COMMIT STREQUAL "unknown")
    string(SUBSTRING "${CMAKE_MATCH_1}" 0 12 short)
    set(COMMIT "${short}${CMAKE_MATCH_2}")
endif()
set(content "#include \"Version.h\"

namespace tools {

char const* Commit() {
    return \"${COMMIT}\";
}

}  // namespace tools
")
set(before "")
if(EXISTS "${OUTPUT}")
    file(READ "${OUTPUT}" before)
endif()
if(NOT before STREQUAL content)
    file(WRITE "${OUTPUT}" "${content}")
endif()

# find_commit(SOURCE): sets COMMIT, the commit that the tree in SOURCE is of (40 hexadecimal digits, with "+changes" if a
# file differs from it), and COMMIT_TIME, its time in seconds since 1970. Both are from git in a clone, and from
# Commit.txt in a source archive, which `git archive` fills in. Elsewhere COMMIT is "unknown" and COMMIT_TIME empty.
function(find_commit source)
    set(COMMIT "unknown" PARENT_SCOPE)
    set(COMMIT_TIME "" PARENT_SCOPE)
    file(STRINGS "${source}/cmake/Commit.txt" line LIMIT_COUNT 1)
    if(line MATCHES "^([0-9a-f]+) ([0-9]+)$")
        set(COMMIT "${CMAKE_MATCH_1}" PARENT_SCOPE)
        set(COMMIT_TIME "${CMAKE_MATCH_2}" PARENT_SCOPE)
        return()
    endif()
    # An archive that was unpacked in somebody else's clone is not of that clone's commit.
    find_program(GIT git)
    if(NOT GIT OR NOT EXISTS "${source}/.git")
        return()
    endif()
    execute_process(COMMAND "${GIT}" -C "${source}" log -1 "--format=%H %ct" OUTPUT_VARIABLE line RESULT_VARIABLE failed
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(failed OR NOT line MATCHES "^([0-9a-f]+) ([0-9]+)$")
        return()
    endif()
    set(commit "${CMAKE_MATCH_1}")
    set(COMMIT_TIME "${CMAKE_MATCH_2}" PARENT_SCOPE)
    execute_process(COMMAND "${GIT}" -C "${source}" --no-optional-locks status --porcelain --untracked-files=no
                    OUTPUT_VARIABLE changes ERROR_QUIET)
    if(changes)
        string(APPEND commit "+changes")
    endif()
    set(COMMIT "${commit}" PARENT_SCOPE)
endfunction()

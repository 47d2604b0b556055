# shellcheck shell=bash
# Sourced by scripts/demo and scripts/test, with the root of the tree as the working folder.

# build PRESET [CMAKE-OPTION ...] [-- TARGET ...]: configures and builds. Only where the output is a terminal or $verbose
# is set does it all pass by; otherwise it stands in build/PRESET/build.log, of which the end is shown if it fails.
build() {
    local preset=$1
    shift
    local options=() targets=()
    while [ $# -gt 0 ] && [ "$1" != -- ]; do options+=("$1"); shift; done
    [ $# -eq 0 ] || { shift; targets=(--target "$@"); }
    # A compiler cache, where there is one, is taken when a build folder is made. It serves every clone of the tree, and
    # the tests with their precompiled header.
    if command -v ccache >/dev/null; then
        export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi

    local log="build/$preset/build.log" begin=$SECONDS
    mkdir -p "build/$preset"
    printf 'build: %s (log: %s)\n' "$preset" "$log"
    if ! cmake --preset "$preset" "${options[@]}" >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        printf 'build: configuring %s failed\n' "$preset" >&2
        return 1
    fi
    if [ -t 1 ] || [ -n "${verbose:-}" ]; then
        cmake --build --preset "$preset" "${targets[@]}" || return 1
    elif ! cmake --build --preset "$preset" "${targets[@]}" >>"$log" 2>&1; then
        grep -A 20 -m 1 '^FAILED:' "$log" >&2 || tail -n 40 "$log" >&2
        printf 'build: %s failed\n' "$preset" >&2
        return 1
    fi
    printf 'build: %s is ready (%d s)\n' "$preset" $((SECONDS - begin))
}

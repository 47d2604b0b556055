# shellcheck shell=bash
# Sourced by the scripts that build, with the root of the tree as the working folder.

# build PRESET [CMAKE-OPTION ...] [-- TARGET ...]: configures and builds. The output is shown only on a terminal or if
# $verbose is set; otherwise it is in build/PRESET/build.log, and its end is shown when the build fails.
build() {
    local preset=$1
    shift
    local options=() targets=()
    while [ $# -gt 0 ] && [ "$1" != -- ]; do options+=("$1"); shift; done
    [ $# -eq 0 ] || { shift; targets=(--target "$@"); }
    # CMake takes up a compiler cache when it creates the build folder. These settings let it serve every clone of the
    # tree, and the tests with their precompiled header.
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

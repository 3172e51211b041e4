# SPDX-License-Identifier: Apache-2.0
# Shared by ./run and ./test. Sourced by bash in the repository's root; must work with macOS's bash 3.2.

# Messages go to standard error; standard output belongs to the program being run.
say() { printf '%s\n' "$*" >&2; }
fail() { say "orvane: $*"; exit 1; }

. scripts/progress.sh

is_mac() { [ "$(uname -s)" = Darwin ]; }

# prepare_build PRESET [CMAKE OPTION...]: finds llama.cpp (fetching it once) and configures build/PRESET.
prepare_build() {
    local preset=$1 prefix
    shift
    # Prefer the distribution's llama.cpp; fetch and build the pinned one only if there is none. macOS always uses the
    # pinned one, which becomes part of the bundle. Its compiler and Qt are newer than those we test with, so warnings
    # are no errors.
    if is_mac; then
        prefix=$(scripts/fetch-llama) || exit
        prefix="$prefix;$(brew --prefix)"
        set -- -DORVANE_WARNINGS_AS_ERRORS=OFF "$@"
    elif pkg-config --exists llama; then
        prefix=
    else
        prefix=$(scripts/fetch-llama) || exit
    fi
    # Reconfiguring takes a second; show its output only on failure.
    local log launcher
    launcher=${CMAKE_CXX_COMPILER_LAUNCHER-$(command -v ccache || true)}
    log=$(cmake --preset "$preset" ${prefix:+-DCMAKE_PREFIX_PATH="$prefix"} -DCMAKE_C_COMPILER_LAUNCHER="$launcher" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" "$@" 2>&1) || {
        say "$log"
        fail "the build could not be configured; the last lines above say why."
    }
}

# build PRESET [TARGET...]: the compilers' output goes to build/PRESET/build.log.
build() {
    local preset=$1 log=build/$1/build.log
    shift
    [ $# -eq 0 ] || set -- --target "$@"
    with_progress "Building Orvane" "$log" cmake --build "build/$preset" "$@" || {
        first_failure "$log" >&2
        fail "the build failed; the lines above say why, and $log has all of it."
    }
}

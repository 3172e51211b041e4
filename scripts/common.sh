# SPDX-License-Identifier: Apache-2.0
# Shared by ./run and ./test. Sourced by bash in the repository's root; must work with macOS's bash 3.2.

# Messages go to standard error; standard output belongs to the program being run.
say() { printf '%s\n' "$*" >&2; }
fail() { say "orvane: $*"; exit 1; }

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
    local log
    log=$(cmake --preset "$preset" ${prefix:+-DCMAKE_PREFIX_PATH="$prefix"} "$@" 2>&1) || {
        say "$log"
        fail "the build could not be configured; the last lines above say why."
    }
}

# build PRESET [TARGET...]: prints one line per step.
build() {
    local preset=$1
    shift
    [ $# -eq 0 ] || set -- --target "$@"
    cmake --build "build/$preset" "$@" >&2 || fail "the build failed; the first error above says why."
}

# SPDX-License-Identifier: Apache-2.0
# What ./run and ./test share. Sourced by bash, from the repository's root. What runs on macOS has to do with its bash 3.2.

# Progress and problems go to standard error: standard output belongs to the program that is run.
say() { printf '%s\n' "$*" >&2; }
fail() { say "orvane: $*"; exit 1; }

is_mac() { [ "$(uname -s)" = Darwin ]; }

# prepare_build PRESET [CMAKE OPTION...]: finds llama.cpp (fetching it once) and configures build/PRESET.
prepare_build() {
    local preset=$1 prefix
    shift
    # The distribution's own llama.cpp comes first; only where there is none is the pinned one fetched and built. On macOS
    # it is always that one: as part of the program, it goes along in the bundle. The compiler and Qt there are newer than
    # those that our code is checked with, so their warnings stay warnings.
    if is_mac; then
        prefix=$(scripts/fetch-llama) || exit
        prefix="$prefix;$(brew --prefix)"
        set -- -DORVANE_WARNINGS_AS_ERRORS=OFF "$@"
    elif pkg-config --exists llama; then
        prefix=
    else
        prefix=$(scripts/fetch-llama) || exit
    fi
    # A configuration that is up to date costs a second; its output matters only when it fails.
    local log
    log=$(cmake --preset "$preset" ${prefix:+-DCMAKE_PREFIX_PATH="$prefix"} "$@" 2>&1) || {
        say "$log"
        fail "the build could not be configured; the last lines above say why."
    }
}

# build PRESET [TARGET...]: visible progress, one line a step.
build() {
    local preset=$1
    shift
    [ $# -eq 0 ] || set -- --target "$@"
    cmake --build "build/$preset" "$@" >&2 || fail "the build failed; the first error above says why."
}

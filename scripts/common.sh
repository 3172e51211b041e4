# SPDX-License-Identifier: Apache-2.0
# What ./run and ./test share. Sourced by bash, from the repository's root.

# Progress and problems go to standard error: standard output belongs to the program that is run.
say() { printf '%s\n' "$*" >&2; }
fail() { say "orvane: $*"; exit 1; }

# prepare_build PRESET [CMAKE OPTION...]: finds llama.cpp (fetching it once) and configures build/PRESET.
prepare_build() {
    local preset=$1 prefix
    shift
    # The distribution's own llama.cpp comes first; only where there is none is the pinned one fetched and built.
    if pkg-config --exists llama; then
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
    cmake --build "build/$preset" ${1:+--target "$@"} >&2 || fail "the build failed; the first error above says why."
}

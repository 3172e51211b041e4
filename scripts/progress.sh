# SPDX-License-Identifier: Apache-2.0
# Runs long commands with one line of progress. Sourced by bash; must work with macOS's bash 3.2. Uses say() of its caller.

# show_steps WHAT: reads lines of ninja's form "[step/steps] text" and shows them: on a terminal in one line, elsewhere at
# every tenth of the steps. Ignores other lines.
show_steps() {
    local what=$1 line number total shown=-1 columns
    columns=$(tput cols 2>/dev/null || echo 80)
    while IFS= read -r line; do
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\ (.*) ]] || continue
        number=${BASH_REMATCH[1]} total=${BASH_REMATCH[2]}
        if [ -t 2 ]; then
            line="$what, $number/$total: ${BASH_REMATCH[3]}"
            printf '\r\033[K%s' "${line:0:$((columns - 1))}" >&2
        elif [ $((10 * number / total)) -gt $shown ]; then
            shown=$((10 * number / total))
            say "$what, $number/$total"
        fi
    done
    [ ! -t 2 ] || printf '\r\033[K' >&2
}

# with_progress WHAT LOG COMMAND...: runs ninja, or what prints its output, with the output in LOG.
with_progress() {
    local what=$1 log=$2
    shift 2
    "$@" 2>&1 | tee "$log" | show_steps "$what"
    return "${PIPESTATUS[0]}"
}

# first_failure LOG: the errors of the first step that failed, without its command, which is long.
first_failure() {
    local failure
    # awk reads to the end; head would leave the others with a broken pipe.
    failure=$(sed -n '/^FAILED: /,$p' "$1" | sed -e 2d -e '/^\[[0-9]*\/[0-9]*\] /d' | cut -c 1-300 | awk 'NR <= 40')
    if [ -n "$failure" ]; then printf '%s\n' "$failure"; else tail -n 20 "$1"; fi
}

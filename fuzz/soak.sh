#!/bin/sh
# Runs every fuzz target in turn under AddressSanitizer and UndefinedBehaviorSanitizer for HOURS in all, keeps what it
# has learnt in CORPUS (made small again at the end of each turn), and prints a row of a table for each target. Then
# runs the tests of what works with threads under ThreadSanitizer, a row for each program. Exit status 1 when something
# was found: an input is left in the folder fuzz/found, and belongs into fuzz/regressions; the words of ThreadSanitizer
# are in CORPUS/threads_*.log. With TARGETS, those targets alone.
#   fuzz/soak.sh HOURS [CORPUS FOLDER [TARGETS...]]
set -eu
cd "$(dirname "$0")/.."
hours=${1:?usage: fuzz/soak.sh HOURS [CORPUS FOLDER [TARGETS...]]}
corpus=${2:-build-fuzz/corpus}
[ $# -lt 2 ] || shift
shift
cmake --preset fuzz >/dev/null
cmake --build build-fuzz >/dev/null
targets=${*:-$(cd build-fuzz/bin && ls -d fuzz_* | sed 's/fuzz_//')}
count=$(echo "$targets" | wc -w)
seconds=$(echo "$hours $count" | awk '{ printf "%d", $1 * 3600 / $2 }')
mkdir -p fuzz/found
status=0

# The row of what ran for so many seconds with so many executions, inputs and findings.
row() {
    echo "| $(date +%F) | $(git rev-parse --short HEAD) | $1 | $2 | $3 | $4 | $5 |"
    [ "$5" -eq 0 ] || status=1
}

# One of several processes that share what they learn. An input that breaks it is written down, and it goes on.
worker() {
    while [ "$(date +%s)" -lt "$end" ]; do
        "build-fuzz/bin/fuzz_$1" "$kept" "fuzz/seeds/$1" "fuzz/regressions/$1" -max_total_time=$((end - $(date +%s) + 1)) \
            -print_final_stats=1 -artifact_prefix="fuzz/found/$1-" >>"$log.$2" 2>&1 || sleep 1
    done
}

fuzz() {
    kept=$corpus/$1
    small=$kept.small
    log=$corpus/$1.log
    end=$(($(date +%s) + seconds))
    mkdir -p "$kept" "fuzz/regressions/$1"
    rm -f "$log".*
    for number in $(seq "$(nproc)"); do
        worker "$1" "$number" &
    done
    wait
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log".* | awk '{ n += $1 } END { print n + 0 }')
    rm -rf "$small"
    mkdir "$small"
    "build-fuzz/bin/fuzz_$1" -merge=1 "$small" "$kept" >/dev/null 2>&1
    rm -rf "$kept"
    mv "$small" "$kept"
    row "$1" "$seconds" "$executions" "$(find "$kept" -type f | wc -l)" "$(find fuzz/found -name "$1-*" | wc -l)"
}

# What the further words call, under ThreadSanitizer.
threads() {
    log=$corpus/threads_$1.log
    name=$1
    begin=$(date +%s)
    shift
    "$@" >"$log" 2>&1 || true
    tests=$(sed -n -e 's/^\[=*\] \([0-9]*\) tests.* ran.*/\1/p' -e 's/.* tests failed out of \([0-9]*\)$/\1/p' "$log")
    row "threads: $name" "$(($(date +%s) - begin))" "${tests:-0}" - \
        "$(grep -cE 'WARNING: ThreadSanitizer|^\[ *FAILED|\*\*\*(Failed|Timeout|Exception)' "$log" || true)"
}

echo "| date | commit | target | seconds | executions | corpus | found |"
echo "|---|---|---|---|---|---|---|"
for target in $targets; do
    fuzz "$target"
done
[ $# -eq 0 ] || exit $status
cmake --preset threads >/dev/null
cmake --build build-threads --target kestrane-cli kestrane-sim test_platform test_files test_server test_calc \
    test_download test_app >/dev/null
for program in platform files server calc download app; do
    threads "$program" "build-threads/bin/test_$program"
done
threads "command_line" ctest --test-dir build-threads --output-on-failure \
    -R '^cli_(view_verbs|calls|analyse_verb)$'
exit $status

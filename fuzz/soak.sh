#!/bin/sh
# Runs every fuzz target in turn under AddressSanitizer and UndefinedBehaviorSanitizer for HOURS in all, keeps what it
# has learnt in CORPUS (made small again at the end of each turn), and prints a row of a table for each target. Exit
# status 1 when something was found: the input is left in the folder fuzz/found, and belongs into fuzz/regressions.
#   fuzz/soak.sh HOURS [CORPUS FOLDER]
set -eu
cd "$(dirname "$0")/.."
hours=${1:?usage: fuzz/soak.sh HOURS [CORPUS FOLDER]}
corpus=${2:-build-fuzz/corpus}
cmake --preset fuzz >/dev/null
cmake --build build-fuzz >/dev/null
targets=$(cd build-fuzz/bin && ls -d fuzz_* | sed 's/fuzz_//')
count=$(echo "$targets" | wc -l)
seconds=$(echo "$hours $count" | awk '{ printf "%d", $1 * 3600 / $2 }')
mkdir -p fuzz/found
status=0
echo "| date | commit | target | seconds | executions | corpus | found |"
echo "|---|---|---|---|---|---|---|"
for target in $targets; do
    kept=$corpus/$target
    small=$kept.small
    mkdir -p "$kept"
    log=$corpus/$target.log
    # Several workers, each of which ends after the time; an input that breaks one is written down and the rest go on.
    "build-fuzz/bin/fuzz_$target" "$kept" "fuzz/seeds/$target" -max_total_time="$seconds" -fork="$(nproc)" \
        -ignore_crashes=1 -ignore_timeouts=1 -ignore_ooms=1 -print_final_stats=1 \
        -artifact_prefix="fuzz/found/$target-" >"$log" 2>&1 || true
    executions=$(sed -n 's/^#\([0-9]*\):.*/\1/p' "$log" | tail -n 1)
    rm -rf "$small"
    mkdir "$small"
    "build-fuzz/bin/fuzz_$target" -merge=1 "$small" "$kept" >/dev/null 2>&1
    rm -rf "$kept"
    mv "$small" "$kept"
    found=$(find fuzz/found -name "$target-*" | wc -l)
    [ "$found" -eq 0 ] || status=1
    echo "| $(date +%F) | $(git rev-parse --short HEAD) | $target | $seconds | ${executions:-0} |" \
        "$(find "$kept" -type f | wc -l) | $found |"
done
exit $status

#!/bin/sh
# clang-tidy over the sources of a configured build folder. Without --all, over those that the commits since BASE have
# changed, or without BASE those of the last three hours of commits. Exit status: 0 clean, 1 findings.
#   packaging/tidy.sh [--all | BASE] [BUILD FOLDER]
set -eu
cd "$(dirname "$0")/.."
case ${1:-} in
--all)
    shift
    files=$(git ls-files 'src/*.cpp')
    ;;
*)
    base=${1:-$(git rev-list -1 --before="$(($(git log -1 --format=%ct) - 3 * 3600))" HEAD)}
    [ $# -eq 0 ] || shift
    [ -n "$base" ] || base=$(git rev-list --max-parents=0 HEAD)
    files=$(git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp')
    ;;
esac
build=${1:-build}
# Those of another system are not built here.
files=$(for file in $files; do grep -qF "/$file\"" "$build/compile_commands.json" && echo "$file"; done) || true
[ -n "$files" ] || exit 0
# clang cannot read the headers that the compiler has compiled once.
commands=$(mktemp -d)
trap 'rm -rf "$commands"' EXIT
sed 's/ -Winvalid-pch//; s/ -include [^ ]*cmake_pch\.hxx//' "$build/compile_commands.json" >"$commands/compile_commands.json"
echo "$files" | xargs -P "$(nproc)" -n 4 clang-tidy -p "$commands" --quiet

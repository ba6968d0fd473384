#!/bin/sh
# sources.sh FOLDER PACKAGE...: puts the source of each Debian package, as Debian builds it, into FOLDER/PACKAGE, from
# where this machine has its packages. A package whose folder is there is left alone, so what that place does not have can be
# put there by hand.
set -eu
mkdir -p "$1"
cd "$1"
shift
missing=""
for package in "$@"; do
    [ -d "$package" ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

mkdir -p apt/sources apt/lists/partial
for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    [ -f "$file" ] || continue
    case $file in
        *.sources) sed 's/^Types:.*/Types: deb-src/' "$file" ;;
        *.list) sed -n 's/^deb /deb-src /p' "$file" ;;
        *) continue ;;
    esac >"apt/sources/$(basename "$file")"
done
set -- -q -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$PWD/apt/sources" \
    -o "Dir::State::lists=$PWD/apt/lists" -o Acquire::Retries=3 -o Acquire::http::Timeout=60
apt-get "$@" update >&2
for package in $missing; do
    if ! apt-get "$@" source --download-only "$package" >&2; then
        echo "The source of $package cannot be had; unpacked by hand, it belongs into $PWD/$package" >&2
        exit 1
    fi
    rm -rf "$package.new"
    dpkg-source --no-check -x "$package"_*.dsc "$package.new" >&2
    mv "$package.new" "$package"
done

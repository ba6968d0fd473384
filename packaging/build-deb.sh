#!/bin/sh
# Builds the Debian packages, source and binary, of the files that git knows, as they are now.
#   packaging/build-deb.sh [FOLDER]     where to put them; without it, build/packages
set -eu
cd "$(dirname "$0")/.."
out=${1:-build/packages}
mkdir -p "$out"
out=$(cd "$out" && pwd)
packaging/setup.sh
packaging/setup.sh dpkg-dev debhelper
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/kestrane"
git ls-files -z | tar -c --null -T - | tar -x -C "$work/kestrane"
(cd "$work/kestrane" && dpkg-buildpackage -us -uc)
find "$work" -maxdepth 1 -type f -exec mv -t "$out" {} +
ls "$out"/*.deb

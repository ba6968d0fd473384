#!/bin/sh
# icon.sh DRAWING ICON: draws an icon of Windows at the sizes that it shows.
set -eu
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for size in 16 20 24 32 40 48 64 256; do
    rsvg-convert -w "$size" -h "$size" -o "$scratch/$size.png" "$1"
done
cd "$scratch"
icotool --create --output="$2" 16.png 20.png 24.png 32.png 40.png 48.png 64.png --raw=256.png

#!/bin/sh
# Runs a Windows program with Wine, without a window and without a word of Wine's own. WINEPREFIX is the folder of the
# Windows to run it in.
# The names of files need a locale that knows all letters.
export LC_ALL=C.UTF-8 WINEPREFIX="${WINEPREFIX:?the folder of the Windows to run it in}" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
for wine in wine64 /usr/lib/wine/wine64; do
    command -v "$wine" >/dev/null && exec "$wine" "$@"
done
echo "wine64 is missing" >&2
exit 127

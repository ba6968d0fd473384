#!/bin/sh
# build.sh [FOLDER]: installs what is missing, builds the core, kestrane-cli without what draws and connects, and their
# tests for Windows, and runs the tests with Wine. The folder of the build is build-windows; a compiler launcher is taken
# from CMAKE_CXX_COMPILER_LAUNCHER. When there is a kestrane-cli of this system (build/bin, or KESTRANE_CLI), what both
# save and export is compared byte by byte.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
folder=${1:-$root/build-windows}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
# shellcheck disable=SC2046
"$here/../setup.sh" $(cat "$here/packages.txt")
"$here/libraries.sh" "$folder/libraries"

export WINEPREFIX="$folder/wine" KESTRANE_LIBRARIES="$folder/libraries"
[ -d "$WINEPREFIX" ] || "$here/wine.sh" wineboot -i >/dev/null 2>&1
cmake -S "$root" -B "$folder/programs" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_BUILD_TYPE=None \
    -DCMAKE_CXX_FLAGS="-O1" -DKESTRANE_QT=OFF -DKESTRANE_BENCH=OFF \
    -DKESTRANE_TESTS_LEFT_OUT="$(sed 's/ .*//' "$here/left-out.txt" | paste -sd :)" >/dev/null
cmake --build "$folder/programs" -j "$(nproc)"
ctest --test-dir "$folder/programs" --output-on-failure -j "$(nproc)"

linux=${KESTRANE_CLI:-$root/build/bin/kestrane-cli}
if [ -x "$linux" ]; then
    "$here/compare.py" "$linux" "$folder/programs/bin/kestrane-cli.exe" "$root/samples"
fi

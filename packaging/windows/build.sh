#!/bin/sh
# build.sh [--desktop] [FOLDER]: installs what is missing, builds the core, kestrane-cli without what draws and connects,
# and their tests for Windows, and runs the tests with Wine. --desktop: builds all of it, with the Qt that qt.sh builds
# before that in the folder KESTRANE_QT_FOLDER (build-windows-qt). Then the installer is made and tried, and what this
# kestrane-cli and one of this system (build/bin, or KESTRANE_CLI) save and export is compared byte by byte. The folder of
# the build is build-windows. A compiler launcher is taken from CMAKE_CXX_COMPILER_LAUNCHER.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
programs=programs
qt=OFF
if [ "${1:-}" = "--desktop" ]; then
    programs=desktop
    qt=ON
    shift
fi
folder=${1:-$root/build-windows}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
# shellcheck disable=SC2046
"$here/../setup.sh" $(cat "$here/packages.txt")
"$here/libraries.sh" "$folder/libraries"

export WINEPREFIX="$folder/wine" KESTRANE_LIBRARIES="$folder/libraries"
if [ "$qt" = ON ]; then
    qt_folder=${KESTRANE_QT_FOLDER:-$root/build-windows-qt}
    "$here/qt.sh" "$qt_folder"
    KESTRANE_LIBRARIES="$KESTRANE_LIBRARIES;$(cd "$qt_folder" && pwd)/installed"
fi
[ -d "$WINEPREFIX" ] || timeout 300 "$here/wine.sh" wineboot -i >/dev/null 2>&1 || exit 1
cmake -S "$root" -B "$folder/$programs" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_BUILD_TYPE=None \
    -DCMAKE_CXX_FLAGS="-O1" -DKESTRANE_QT=$qt -DKESTRANE_BENCH=OFF -DQT_HOST_PATH=/usr \
    -DKESTRANE_TESTS_LEFT_OUT="$(sed 's/ .*//' "$here/left-out.txt" | paste -sd :)" >/dev/null
cmake --build "$folder/$programs" -j "$(nproc)"

# shellcheck source=session.sh
. "$here/session.sh"
keep_windows
# What ends by itself is not tried again; a start of Wine that hangs is.
QT_QPA_PLATFORM=offscreen ctest --test-dir "$folder/$programs" --output-on-failure --timeout 180 --repeat after-timeout:2 \
    -j "$(nproc)" 9>&-
end_windows

(cd "$folder/$programs" && cpack --config CPackConfig.cmake >/dev/null)
"$here/check-installer.sh" "$folder/$programs"/kestrane-*-setup.exe

linux=${KESTRANE_CLI:-$root/build/bin/kestrane-cli}
if [ -x "$linux" ]; then
    "$here/compare.py" "$linux" "$folder/$programs/bin/kestrane-cli.exe" "$root/samples"
fi

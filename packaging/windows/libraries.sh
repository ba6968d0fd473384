#!/bin/sh
# libraries.sh FOLDER: builds the libraries of others for Windows into FOLDER, from the sources of their Debian packages.
# Does nothing when they are there.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
stamp="$folder/complete-2"
[ -f "$stamp" ] && exit 0
"$here/sources.sh" "$folder/sources" libxlsxwriter

export KESTRANE_LIBRARIES="$folder"
build() { # SOURCE, further words for cmake
    source=$1
    shift
    cmake -S "$source" -B "$folder/build/$(basename "$source")" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$folder" "$@" >/dev/null
    cmake --build "$folder/build/$(basename "$source")" --target install >/dev/null
}
build "$here/libraries" -DXLSXWRITER="$folder/sources/libxlsxwriter"
build /usr/src/googletest -DBUILD_GMOCK=OFF

# Those that are headers alone are taken as they are.
mkdir -p "$folder/include" "$folder/share/cmake"
cp -R /usr/include/CLI /usr/include/nlohmann "$folder/include/"
cp -R /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$folder/share/cmake/"
touch "$stamp"

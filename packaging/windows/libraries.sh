#!/bin/sh
# libraries.sh FOLDER: builds the libraries of others for Windows into FOLDER, from the sources of their Debian packages.
# Does nothing when they are there.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
stamp="$folder/complete-1"
[ -f "$stamp" ] && exit 0

# The sources come from where this machine has its packages from.
apt="$folder/apt"
mkdir -p "$apt/sources" "$apt/lists/partial" "$folder/sources"
for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    [ -f "$file" ] || continue
    case $file in
        *.sources) sed 's/^Types:.*/Types: deb-src/' "$file" ;;
        *) sed -n 's/^deb /deb-src /p' "$file" ;;
    esac >"$apt/sources/$(basename "$file")"
done
cd "$folder/sources"
set -- -q -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$apt/sources" -o "Dir::State::lists=$apt/lists"
apt-get "$@" update >&2
apt-get "$@" source --download-only libxlsxwriter >&2
mkdir -p xlsxwriter
tar -xzf libxlsxwriter_*.orig.tar.gz -C xlsxwriter --strip-components=1

export KESTRANE_LIBRARIES="$folder"
build() { # SOURCE, further words for cmake
    source=$1
    shift
    cmake -S "$source" -B "$folder/build/$(basename "$source")" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$folder" "$@" >/dev/null
    cmake --build "$folder/build/$(basename "$source")" --target install >/dev/null
}
build "$here/libraries" -DXLSXWRITER="$folder/sources/xlsxwriter"
build /usr/src/googletest -DBUILD_GMOCK=OFF

# Those that are headers alone are taken as they are.
mkdir -p "$folder/include" "$folder/share/cmake"
cp -R /usr/include/CLI /usr/include/nlohmann "$folder/include/"
cp -R /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$folder/share/cmake/"
touch "$stamp"

#!/bin/sh
# qt.sh FOLDER: builds for Windows what the desktop program needs of Qt, and QCustomPlot, from the sources of their Debian
# packages. It is in FOLDER/installed then. That takes long, but once: what is done is not done again, and what was
# interrupted goes on where it was.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
# shellcheck disable=SC2046
"$here/../setup.sh" $(cat "$here/packages.txt" "$here/desktop-packages.txt")
"$here/sources.sh" "$folder/sources" qt6-base qt6-svg qt6-serialport qcustomplot

export KESTRANE_LIBRARIES="$folder/installed"
build() { # PACKAGE, further words for cmake
    package=$1
    shift
    [ -f "$folder/$package-is-installed" ] && return
    if [ ! -f "$folder/build/$package/build.ninja" ]; then
        cmake -S "$folder/sources/$package" -B "$folder/build/$package" -G Ninja \
            -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release \
            -DCMAKE_INSTALL_PREFIX="$folder/installed" -DBUILD_SHARED_LIBS=ON -DQT_HOST_PATH=/usr \
            -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_BUILD_MULTIARCH)/cmake" \
            -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF "$@"
    fi
    cmake --build "$folder/build/$package" -j "$(nproc)"
    cmake --install "$folder/build/$package" --strip >/dev/null
    touch "$folder/$package-is-installed"
}
without() {
    printf -- '-DFEATURE_%s=OFF ' "$@"
}
# The header of tabletevent is not in the Debian package, and a drawing by Direct2D or OpenGL is not wanted. Without
# Direct2D, what uses DirectWrite does not link.
# shellcheck disable=SC2046
build qt6-base -DINPUT_opengl=no \
    $(without concurrent dbus direct2d directwrite directwrite3 glib icu openssl sql tabletevent tuiotouch vulkan xml zstd) \
    $(without system_freetype system_harfbuzz system_jpeg system_pcre2 system_png system_zlib)
build qt6-svg
build qt6-serialport
build qcustomplot -DUSE_QT_VERSION=6

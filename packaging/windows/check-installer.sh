#!/bin/sh
# check-installer.sh SETUP: installs, tries, installs over it and uninstalls with Wine, without a question, in the
# Windows of WINEPREFIX. Fails when what is installed does not work, when anything of it is left at the end, or when what
# is the user's is not.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
export WINEPREFIX="${WINEPREFIX:?the folder of the Windows to install in}"
user="$WINEPREFIX/drive_c/users/$(id -un)"
folder="$user/AppData/Local/Programs/Kestrane"
settings="$user/AppData/Roaming/check-installer.ini"
wine() {
    timeout 120 "$here/wine.sh" "$@" 2>/dev/null 9>&-
}
fail() {
    echo "check-installer: $*" >&2
    wine wineboot --kill || true # what runs yet
    exit 1
}
# What there is of the program: keys of the registry, shortcuts and files.
traces() {
    for key in Classes Microsoft\\Windows\\CurrentVersion\\Uninstall; do
        wine reg query "HKCU\\Software\\$key" /s | grep -i kestrane || true
    done
    find "$user/AppData/Roaming/Microsoft" -iname '*kestrane*' 2>/dev/null || true
    find "$folder" 2>/dev/null || true
}

uninstall() {
    wine "$folder/uninstall.exe" /S || fail "it does not uninstall"
    for _ in $(seq 60); do # the uninstaller goes on in a copy of itself
        [ -e "$folder" ] || break
        sleep 1
    done
}

# Starts the desktop program and closes its window, which ends it.
starts() {
    wine "$folder/bin/kestrane.exe" &
    program=$!
    timeout 100 xdotool search --sync --onlyvisible --name '^Kestrane - ' >/dev/null 9>&- || return 1
    while wine taskkill /im kestrane.exe >/dev/null; do # until it hears, and is gone
        sleep 1
    done
    wait "$program"
}

# A display of its own, from the beginning: the first program decides whether the Windows has one.
if command -v Xvfb >/dev/null; then
    rm -f "$WINEPREFIX/display"
    mkfifo "$WINEPREFIX/display"
    Xvfb -nolisten tcp -displayfd 3 2>/dev/null 3>"$WINEPREFIX/display" &
    server=$!
    trap 'kill "$server"' EXIT
    DISPLAY=:$(head -n 1 "$WINEPREFIX/display")
    export DISPLAY
fi

# shellcheck source=session.sh
. "$here/session.sh"
keep_windows
if [ -f "$folder/uninstall.exe" ]; then # left by a check that failed
    uninstall
fi
[ -z "$(traces)" ] || fail "it is installed already"
echo "[x]" >"$settings"
wine "$1" /S || fail "it does not install"
wine "$1" /S || fail "it does not install over itself"
wine "$folder/bin/kestrane-cli.exe" protectors list >/dev/null || fail "the installed program does not find its data"
if [ -f "$folder/bin/kestrane.exe" ]; then
    wine "$folder/bin/kestrane-cli.exe" report "$here/../../samples/roadworks-selection.xml" -o "$folder/report.pdf" \
        >/dev/null || fail "the installed program prints no report"
    rm "$folder/report.pdf"
    starts || fail "the desktop program does not start"
fi
traces | grep -qF 'Uninstall\Kestrane' || fail "Windows does not know of it"
uninstall
left=$(traces)
[ -z "$left" ] || fail "this is left: $left"
[ -f "$settings" ] || fail "the settings are gone"
rm "$settings"
end_windows

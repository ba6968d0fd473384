#!/bin/sh
# Sourced by scripts that run many Windows programs, one after the other: keeps the Windows of WINEPREFIX running from
# keep_windows to end_windows. Without it, a program that starts while the services of Wine are about to end may wait for them
# for ever; and these write where the first program writes, so that what reads that would not come to its end. Programs
# in between are started with 9>&-.

# Waits until the services of Wine have ended, which takes a few seconds. Ends them when they do not.
wait_for_windows() {
    for services in wineserver /usr/lib/wine/wineserver64 /usr/lib/wine/wineserver; do
        command -v "$services" >/dev/null || continue
        timeout 60 "$services" -w || "$services" -k || true
        return 0
    done
}

keep_windows() {
    wait_for_windows
    rm -f "$WINEPREFIX/keeper"
    mkfifo "$WINEPREFIX/keeper"
    timeout 1500 "${here:?the folder of wine.sh}/wine.sh" cmd /c "set /p line=" <"$WINEPREFIX/keeper" >/dev/null 2>&1 &
    keeper=$!
    exec 9>"$WINEPREFIX/keeper"
    timeout 120 "$here/wine.sh" cmd /c exit >/dev/null 2>&1 9>&- || exit 1
}

end_windows() {
    exec 9>&-
    wait "$keeper" || true
    wait_for_windows
}

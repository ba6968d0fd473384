#!/bin/sh
# Installs the Debian packages of packages.txt, or those that are named, that this machine lacks. As root, or through sudo.
# Prints nothing when there is nothing to do.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck disable=SC2046
[ $# -gt 0 ] || set -- $(cat "$here/packages.txt")
missing=""
for package in "$@"; do
    if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
        missing="$missing $package"
    fi
done
[ -z "$missing" ] && exit 0
if [ "$(id -u)" = 0 ]; then
    as_root=""
elif command -v sudo >/dev/null 2>&1; then
    as_root="sudo"
else
    echo "These packages are missing and can be installed by root only:$missing" >&2
    exit 1
fi
echo "Installing:$missing" >&2
patience="-q -o Acquire::Retries=3 -o Acquire::http::Timeout=60"
export DEBIAN_FRONTEND=noninteractive
# shellcheck disable=SC2086
if ! { $as_root apt-get update $patience && $as_root apt-get install $patience -y --no-install-recommends $missing; } >&2; then
    echo "These packages cannot be installed:$missing" >&2
    exit 1
fi

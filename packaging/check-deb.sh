#!/bin/bash
# Builds the packages twice and compares the bytes, looks at them with lintian, and, as root, installs, starts, upgrades
# and purges them in a system of their own, which is made from the package sources of this one. Exit status 0: all is well.
#   packaging/check-deb.sh [FOLDER WITH PACKAGES]     takes these in place of building
# shellcheck disable=SC1091,SC2016
set -eu
shopt -s nullglob
cd "$(dirname "$0")/.."
packaging/setup.sh lintian debootstrap dpkg-dev
work=$(mktemp -d)
trap 'umount "$work"/system/{proc,dev/pts,dev} 2>/dev/null || true; rm -rf --one-file-system "$work"' EXIT

say() { echo "== $*"; }

fail() {
    echo "check-deb.sh: $*" >&2
    exit 1
}

all=(kestrane kestrane-cli kestrane-sim kestrane-common)
packages=$work/first
if [ $# -gt 0 ]; then
    cp -r "$1" "$packages"
else
    say "Two builds"
    packaging/build-deb.sh "$packages" >"$work/build.log" 2>&1 || { tail -n 50 "$work/build.log"; fail "the build failed"; }
    sleep 2 # so that times differ
    (umask 077 && TZ=Pacific/Auckland LC_ALL=C.UTF-8 TMPDIR=$(mktemp -d -p "$work") packaging/build-deb.sh "$work/second") \
        >"$work/build.log" 2>&1 || { tail -n 50 "$work/build.log"; fail "the second build failed"; }
    for package in "$packages"/*.deb; do
        cmp "$package" "$work/second/${package##*/}" || fail "two builds differ"
    done
fi

say "lintian"
lintian --fail-on error,warning "$packages"/*.changes

if [ "$(id -u)" != 0 ]; then
    say "Not root: not installed"
    exit 0
fi

say "A system of their own"
system=$work/system
codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
sources() { apt-get indextargets 'Created-By: Packages' --format "$1" | sort -u; }
mirror=$(sources '$(CODENAME) $(REPO_URI)' | sed -n "s/^$codename //p" | head -n 1)
[ -n "$mirror" ] || fail "no package source for $codename"
debootstrap --variant=minbase "$codename" "$system" "$mirror" >"$work/debootstrap.log" 2>&1 ||
    { tail "$work/debootstrap.log"; fail "debootstrap failed"; }
sources 'deb $(REPO_URI) $(CODENAME) $(COMPONENT)' >"$system/etc/apt/sources.list"
apt-config dump | grep '^Acquire::\(Check-\|http::Proxy\)' >"$system/etc/apt/apt.conf.d/90host" || true
for folder in dev dev/pts; do mount --bind "/$folder" "$system/$folder"; done
mount -t proc proc "$system/proc"

inside() { chroot "$system" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/tmp/home LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
install() { # FOLDER NAME...: packages that lie in a folder of that system
    local folder=$1 names=() name file
    shift
    for name in "$@"; do
        for file in "$system$folder/${name}"_*.deb; do names+=("${file#"$system"}"); done
    done
    inside apt-get install -q -y --no-install-recommends "${names[@]}" >"$work/apt.log" 2>&1 ||
        { tail -n 30 "$work/apt.log"; fail "cannot install $*"; }
}
version_of() { inside dpkg-query -W -f '${Version}' "$1"; }
contents() { # all files but those that packages leave anywhere: lists, logs and caches of the system
    (cd "$system" && find . -xdev \( -path ./proc -o -path ./dev -o -path ./tmp -o -path ./var/lib/dpkg -o -path ./var/lib/apt \
        -o -path ./var/cache -o -path ./var/log \) -prune -o -print | sort)
}

inside apt-get update -q >"$work/apt.log" 2>&1 || { tail "$work/apt.log"; fail "apt-get update failed"; }
contents >"$work/before"
mkdir "$system/tmp/packages"
cp "$packages"/kestrane*.deb "$system/tmp/packages"
rm -f "$system"/tmp/packages/*dbgsym*
sample=/usr/share/kestrane/samples/shift-dosimeter.xml

say "kestrane-cli alone"
install /tmp/packages kestrane-cli kestrane-common
inside dpkg-query -W | grep -i 'qt6gui\|qt6widgets\|libgl1' && fail "kestrane-cli brought a desktop"
inside kestrane-cli show "$sample" >/dev/null
inside kestrane-cli ports >/dev/null
inside kestrane-cli protectors list >/dev/null
said=$(inside kestrane-cli report "$sample" -o /tmp/report.pdf 2>&1) && fail "a report without what draws it"
case $said in *"'kestrane'"*) ;; *) fail "no package is named: $said" ;; esac

say "All four"
install /tmp/packages "${all[@]}"
inside kestrane-cli report "$sample" -o /tmp/report.pdf
inside kestrane-cli chart "$sample" --tab 0 -o /tmp/chart.png
for program in kestrane kestrane-cli kestrane-sim; do
    inside "$program" --version | grep -q "^$program " || fail "$program does not start"
done
status=0
inside env QT_QPA_PLATFORM=offscreen timeout 5 kestrane "$sample" 2>/dev/null || status=$?
[ "$status" = 124 ] || fail "kestrane ended by itself with $status"

say "Upgrade"
mkdir "$work/new" "$system/tmp/new"
for package in "$packages"/kestrane*.deb; do
    case $package in *dbgsym*) continue ;; esac
    dpkg-deb -R "$package" "$work/new/tree"
    sed -i "s/^\(Version: .*\)/\1+next/; s/(\(=\|<<\) \([0-9.]*\))/(\1 \2+next)/g" "$work/new/tree/DEBIAN/control"
    dpkg-deb --root-owner-group -b "$work/new/tree" "$system/tmp/new" >/dev/null
    rm -rf "$work/new/tree"
done
install /tmp/new "${all[@]}"
for package in "${all[@]}"; do
    case $(version_of "$package") in *+next) ;; *) fail "$package was not upgraded" ;; esac
done
inside kestrane-cli report "$sample" -o /tmp/report.pdf

say "Purge"
inside apt-get purge -q -y --autoremove "${all[@]}" >"$work/apt.log" 2>&1 ||
    { tail "$work/apt.log"; fail "cannot purge"; }
contents >"$work/after"
comm -13 "$work/before" "$work/after" >"$work/left"
[ ! -s "$work/left" ] || { cat "$work/left"; fail "files are left"; }
say "All is well"

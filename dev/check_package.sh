#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Makes the packages, checks them, and installs, starts and removes them in a bare Debian
# system of their own. Needs root. Usage: check_package.sh [folder for the pictures]
set -euo pipefail

sources=$(cd "$(dirname "$0")/.." && pwd)
pictures=${1:-$sources/build/package/pictures}
suite=bookworm
build=$sources/build/package
work=$(mktemp -d)
root=$work/root

finish() {
    local status=$?
    [ "$status" -eq 0 ] || echo "Failed: $current" >&2
    # Nothing is mounted that this process sees; a mount that a tool has left is not entered.
    rm -rf --one-file-system "$work"
}
current=start
trap finish EXIT

step() {
    current=$1
    printf '\n== %s\n' "$1"
}

# The mounts and the processes of a command end with it, whatever becomes of it.
in_root() {
    unshare --mount --pid --fork --kill-child --mount-proc="$root/proc" chroot "$root" \
        env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}

# Every file of the root but those that installing anything at all rewrites.
files_of_root() {
    (cd "$root" && find . -xdev \( -path ./proc -o -path ./tmp -o -path ./var/cache \
        -o -path ./var/lib/apt -o -path ./var/lib/dpkg -o -path ./var/log \) -prune \
        -o -print | sort)
}

# make_packages <sources> <folder of the build>
make_packages() {
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
        -DAEROLITH_BUILD_TESTS=OFF > "$work/configure.log"
    cmake --build "$2" > "$work/build.log"
    (umask 022 && cd "$2" && rm -f ./*.deb && cpack -G DEB > "$work/cpack.log" 2>&1)
}

check_manual() {
    LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings --local-file "$1" > /dev/null 2> "$work/man-warnings"
    cat "$work/man-warnings"
    [ ! -s "$work/man-warnings" ]
}

files_of_package() {
    dpkg-deb --fsys-tarfile "$1" | tar -t | grep -v '/$'
}

# The system is again what it was before the packages.
no_trace() {
    in_root update-mime-database /usr/share/mime
    files_of_root > "$work/after"
    diff "$work/before" "$work/after"
    echo "No trace is left."
}

"$sources/dev/install_packages.sh" package

step 'Files of the desktop'
desktop-file-validate "$sources"/share/applications/*.desktop
appstreamcli validate --no-net "$sources"/share/metainfo/*.xml
xmllint --noout "$sources"/share/mime/packages/*.xml
check_manual "$sources/share/man/aerolith.1"

step 'Packages'
make_packages "$sources" "$build"
check_manual "$build/share/aerolith-cli.1"
window=$(ls "$build"/aerolith_*.deb)
companion=$(ls "$build"/aerolith-cli_*.deb)
for package in "$companion" "$window"; do
    dpkg-deb --field "$package" Package Version Depends Recommends Breaks Replaces Installed-Size
    files_of_package "$package" >> "$work/packed"
done
lintian --allow-root --fail-on error,warning "$companion" "$window"
[[ $(dpkg-deb --field "$companion" Depends) != *libqt6widgets* ]]
DESTDIR=$work/installed cmake --install "$build" > "$work/install-all.log"
(cd "$work/installed" && find . ! -type d | sort) | diff - <(sort "$work/packed")
echo "$(wc -l < "$work/packed") files, each in one package, none lost."

step 'The same bytes from another folder'
# Everything is compiled anew, under other rights, another time zone and another language.
(
    umask 077
    mkdir -p "$work/another/folder"
    cd "$work/another/folder"
    tar -C "$sources" --exclude=./build --exclude=./.git -c . | tar -x --no-same-permissions
    export CCACHE_DISABLE=1 TZ=Pacific/Auckland LC_ALL=C
    make_packages "$PWD" "$work/b"
)
for package in "$companion" "$window"; do
    cmp "$package" "$work/b/${package##*/}"
done
sha256sum "$companion" "$window" | sed 's,/.*/,,'

step 'Bare system'
unshare --mount debootstrap --variant=minbase "$suite" "$root" > "$work/debootstrap.log"
# What the check itself needs comes before the packages, so that only their own traces count.
in_root apt-get -qq install --no-install-recommends -y xvfb openbox xdotool x11-apps \
    desktop-file-utils shared-mime-info hicolor-icon-theme > "$work/install-tools.log"
cp "$window" "$root/tmp/aerolith.deb"
cp "$companion" "$root/tmp/aerolith-cli.deb"
in_root apt-get -qq install --no-install-recommends -y --download-only /tmp/aerolith.deb \
    /tmp/aerolith-cli.deb > "$work/download.log"
files_of_root > "$work/before"

step 'The companion alone'
in_root apt-get -qq install --no-install-recommends -y /tmp/aerolith-cli.deb \
    > "$work/install-companion.log"
in_root dpkg-query --show '*qt6*'
[ -z "$(find "$root/usr" -name 'libQt6Widgets*')" ]
cat > "$root/tmp/companion.sh" <<'COMPANION'
set -eu
version=$(dpkg-query --show --showformat '${Version}' aerolith-cli)
[ "$(aerolith-cli --version)" = "aerolith-cli $version" ]
cd /usr/share/aerolith/samples
aerolith-cli check .
aerolith-cli fit naca-4412-cambered.dat --output /tmp/fitted.spl
for kind in svg pdf png; do
    aerolith-cli draw naca-0012-outline.dat symmetric.spl --output "/tmp/sections.$kind"
done
bash -c '. /usr/share/bash-completion/completions/aerolith-cli; complete -p aerolith-cli'
COMPANION
in_root sh /tmp/companion.sh
[ "$(identify -format '%k' "$root/tmp/sections.png")" -gt 5 ]
in_root apt-get -qq purge --autoremove -y aerolith-cli > "$work/purge-companion.log"
no_trace

step 'Upgrade'
# Version 1.0.0 was one package. This one has all files of today, so that each of them moves.
old=$work/old
mkdir -p "$old/DEBIAN"
dpkg-deb --extract "$window" "$old"
dpkg-deb --extract "$companion" "$old"
cat > "$old/DEBIAN/control" <<CONTROL
Package: aerolith
Version: 1.0.0
Architecture: $(dpkg-deb --field "$window" Architecture)
Maintainer: Aerolith developers <aerolith@localhost>
Depends: $(dpkg-deb --field "$window" Depends), $(dpkg-deb --field "$companion" Depends)
Description: both programs in one package
CONTROL
dpkg-deb --root-owner-group --build "$old" "$root/tmp/old.deb" > "$work/old.log"
upgrade() {
    in_root apt-get -qq install --no-install-recommends --allow-downgrades -y /tmp/old.deb \
        > "$work/install-old.log"
    [ "$(in_root aerolith-cli --version)" != '' ]
    "$@" > "$work/upgrade.log" 2>&1 || { cat "$work/upgrade.log"; return 1; }
    in_root dpkg --audit
    in_root dpkg --verify aerolith aerolith-cli
    in_root dpkg-query --show aerolith aerolith-cli
    in_root sh -c 'aerolith-cli check /usr/share/aerolith/samples > /tmp/checked'
}
upgrade in_root dpkg --auto-deconfigure --install /tmp/aerolith-cli.deb /tmp/aerolith.deb
in_root apt-get -qq purge -y aerolith aerolith-cli > "$work/purge-both.log"
upgrade in_root apt-get -qq install --no-install-recommends -y /tmp/aerolith.deb \
    /tmp/aerolith-cli.deb

step 'The window alone'
in_root apt-get -qq purge -y aerolith-cli > "$work/purge-shared.log"
in_root update-mime-database /usr/share/mime
in_root sh -c 'grep -H "\*.spl" /usr/share/mime/globs2'
cat > "$root/tmp/start.sh" <<'START'
set -eu
mkdir -m 700 /tmp/runtime
mkfifo /tmp/display
# The server chooses a display that is free: its sockets reach beyond this root.
Xvfb -displayfd 3 -nolisten tcp -screen 0 1280x800x24 3> /tmp/display > /dev/null 2>&1 &
server=$!
read -r number < /tmp/display
export DISPLAY=":$number" HOME=/tmp XDG_RUNTIME_DIR=/tmp/runtime
openbox &
manager=$!
# A window that appears while the manager starts may stay out of sight.
timeout 60 sh -c 'until xdotool get_num_desktops > /dev/null 2>&1; do sleep 0.2; done'
aerolith &
program=$!
timeout 60 xdotool search --sync --onlyvisible --name '^Aerolith$' > /dev/null
sleep 2
xwd -root -silent -out /tmp/picture.xwd
kill -0 "$program"
kill "$program" "$manager"
wait "$program" || true
kill "$server"
START
in_root sh /tmp/start.sh
mkdir -p "$pictures"
convert "xwd:$root/tmp/picture.xwd" "$pictures/installed.png"
colours=$(identify -format '%k' "$pictures/installed.png")
echo "The window has $colours colours."
[ "$colours" -gt 5 ]

step 'Removed'
in_root apt-get -qq purge --autoremove -y aerolith > "$work/purge.log"
no_trace

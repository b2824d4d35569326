#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Makes the package, checks it, and installs, starts and removes it in a bare Debian
# system of its own. Needs root. Usage: check_package.sh [folder for the pictures]
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

"$sources/dev/install_packages.sh" package

step 'Files of the desktop'
desktop-file-validate "$sources"/share/applications/*.desktop
appstreamcli validate --no-net "$sources"/share/metainfo/*.xml
xmllint --noout "$sources"/share/mime/packages/*.xml
LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings --local-file "$sources/share/man/aerolith.1" \
    > /dev/null 2> "$work/man-warnings"
cat "$work/man-warnings"
[ ! -s "$work/man-warnings" ]

step 'Package'
cmake -S "$sources" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DAEROLITH_BUILD_TESTS=OFF > "$work/configure.log"
cmake --build "$build" > "$work/build.log"
(cd "$build" && rm -f ./*.deb && cpack -G DEB > "$work/cpack.log")
package=$(ls "$build"/*.deb)
dpkg-deb --field "$package" Package Version Depends Installed-Size
lintian --allow-root --fail-on error,warning "$package"

step 'Bare system'
unshare --mount debootstrap --variant=minbase "$suite" "$root" > "$work/debootstrap.log"
# What the check itself needs comes before the package, so that only the package's own
# traces count.
in_root apt-get -qq install --no-install-recommends -y xvfb openbox xdotool x11-apps \
    desktop-file-utils shared-mime-info hicolor-icon-theme > "$work/install-tools.log"
cp "$package" "$root/tmp/aerolith.deb"
in_root apt-get -qq install --no-install-recommends -y --download-only /tmp/aerolith.deb \
    > "$work/download.log"
files_of_root > "$work/before"

step 'Installed and started'
in_root apt-get -qq install --no-install-recommends -y /tmp/aerolith.deb > "$work/install.log"
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

step 'Pictures without a display'
# shellcheck disable=SC2016
in_root sh -c 'cd /usr/share/aerolith/samples && for kind in svg pdf png; do
    aerolith-cli draw naca-0012-outline.dat symmetric.spl --output "/tmp/sections.$kind"
done'

step 'Removed'
in_root apt-get -qq purge --autoremove -y aerolith > "$work/purge.log"
in_root update-mime-database /usr/share/mime
files_of_root > "$work/after"
diff "$work/before" "$work/after"
echo 'No trace is left.'

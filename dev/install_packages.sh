#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Installs the Debian packages of the named groups (build, window, bench, test, package, ci)
# that are missing.
# With all of them there it asks neither the network nor for rights.
set -euo pipefail

build=(cmake g++ ninja-build qt6-base-dev)
# What it takes to run the program in a real window without a display.
window=(fonts-dejavu-core openbox python3 x11-utils xdotool xvfb)
# Desktops with Wayland alone need the toolkit's plugin for it.
wayland=(qt6-wayland)
# Benchmarks: the other reader of long tables.
bench=("${build[@]}" python3-numpy)
test=("${build[@]}" "${window[@]}")
ci=("${test[@]}" clang-14 clang-format-14 clang-tidy-14 git libclang-rt-14-dev llvm-14 shellcheck)

package=("${build[@]}" appstream debootstrap desktop-file-utils dpkg-dev fakeroot imagemagick
    libxml2-utils lintian man-db)

wanted=()
for group in "$@"; do
    case $group in
    build) wanted+=("${build[@]}") ;;
    window) wanted+=("${window[@]}") ;;
    wayland) wanted+=("${wayland[@]}") ;;
    bench) wanted+=("${bench[@]}") ;;
    test) wanted+=("${test[@]}") ;;
    package) wanted+=("${package[@]}") ;;
    ci) wanted+=("${ci[@]}") ;;
    *)
        echo "$0: unknown group '$group'" >&2
        exit 2
        ;;
    esac
done

missing=()
for name in "${wanted[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$name")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [[ $(id -u) -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "Neither root nor sudo: ask your administrator for the packages above." >&2
        exit 1
    fi
    as_root=(sudo)
fi
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=600)
"${apt[@]}" update
"${apt[@]}" install -y --no-install-recommends "${missing[@]}"

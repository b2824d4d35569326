#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Installs the Debian packages of the named groups that are missing: install_packages.sh <group>...
# With all of them there it asks neither the network nor for rights.
set -euo pipefail

build=(cmake cmark-gfm g++ libcli11-dev libeigen3-dev libpolyclipping-dev ninja-build qt6-base-dev)
# What it takes to run the program in a real window without a display.
window=(fonts-dejavu-core libxtst6 openbox python3 x11-utils xdotool xvfb)
# Desktops with Wayland alone need Qt's plugin for it.
wayland=(qt6-wayland)
# Benchmarks: the other reader of long tables.
bench=("${build[@]}" python3-numpy)
# The tests of the command line need a locale with a decimal comma.
test=("${build[@]}" "${window[@]}" locales python3-jsonschema python3-numpy python3-scipy)
coverage=("${test[@]}" gcovr)
icons=(librsvg2-bin)
style=(appstream clang-format-14 codespell desktop-file-utils git libxml2-utils shellcheck)
tidy=(clang-tidy-14 git)
# Programs that read what is drawn, and shells; without them their tests are skipped.
readers=(fish librsvg2-bin poppler-utils python3-ezdxf python3-html5lib python3-matplotlib zsh)
# The largest of them.
browser=(chromium)
ci=("${test[@]}" "${readers[@]}" "${style[@]}" "${tidy[@]}" clang-14 libclang-rt-14-dev lld-14
    llvm-14)
# What makes the package; the other tools check it.
deb=("${build[@]}" dpkg-dev file)
package=("${deb[@]}" appstream debootstrap desktop-file-utils fakeroot imagemagick libxml2-utils
    lintian man-db)

wanted=()
for group in "$@"; do
    case $group in
    build) wanted+=("${build[@]}") ;;
    window) wanted+=("${window[@]}") ;;
    wayland) wanted+=("${wayland[@]}") ;;
    bench) wanted+=("${bench[@]}") ;;
    test) wanted+=("${test[@]}") ;;
    coverage) wanted+=("${coverage[@]}") ;;
    icons) wanted+=("${icons[@]}") ;;
    readers) wanted+=("${readers[@]}") ;;
    browser) wanted+=("${browser[@]}") ;;
    style) wanted+=("${style[@]}") ;;
    tidy) wanted+=("${tidy[@]}") ;;
    ci) wanted+=("${ci[@]}") ;;
    deb) wanted+=("${deb[@]}") ;;
    package) wanted+=("${package[@]}") ;;
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

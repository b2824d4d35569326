#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Makes the pictures of the documents from the programs as they are, in a real window of fixed size
# and in a browser.
set -euo pipefail
cd "$(dirname "$0")/.."

dev/install_packages.sh test browser
# shellcheck source=dev/build.sh
. dev/build.sh
configured build/release || configure build/release --preset release
cmake --build build/release --target aerolith aerolith-cli

out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
python3 tests/ui/road.py --program build/release/aerolith --size 1280x800 --out "$out"

take() {
    local found=("$out"/*-"$1"-1280x800.png)
    cp "${found[0]}" "docs/images/$2.png"
}
take template template
take symmetric symmetric
take nose nose
take section section
dev/make_report_picture.py build/release/aerolith-cli

#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Makes the icons of the usual sizes from the drawings.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dev/install_packages.sh icons
cd share/icons/hicolor
for size in 16 22 24 32 48 64 128 256; do
    for drawing in scalable/*/*.svg; do
        icon="${size}x${size}/${drawing#scalable/}"
        mkdir -p "$(dirname "$icon")"
        rsvg-convert --width="$size" --height="$size" --output="${icon%.svg}.png" "$drawing"
    done
done

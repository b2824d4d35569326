#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Formats every C++ file of the tree in place.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dev/install_packages.sh style
git ls-files -z --cached --others --exclude-standard -- '*.cpp' '*.h' |
    xargs -0 --no-run-if-empty clang-format-14 -i

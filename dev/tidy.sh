#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Runs clang-tidy over the sources of the layers: dev/tidy.sh <folder built with clang>
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${1:?name a folder that was built with clang, for example build/asan}
dev/install_packages.sh tidy
git ls-files -z -- {numerics,document,airfoil,editor,app,tables,sections,fitting,drawings,cli}/'*.cpp' |
    xargs -0 -P "$(nproc)" -n 1 clang-tidy-14 -p "$build" --quiet --warnings-as-errors='*' \
        2> >(grep -v 'warnings generated' >&2)

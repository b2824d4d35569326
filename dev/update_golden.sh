#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Rewrites the paint logs in tests/editor/golden from what the editor draws now, and shows what
# has changed. Takes the build folder, build/release without an argument.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=${1:-build/release}
cmake --build "$build" --target tst_editspline_paint
AEROLITH_UPDATE_GOLDEN=1 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 \
    "$build/tests/editor/tst_editspline_paint" golden
git --no-pager diff --stat -- tests/editor/golden

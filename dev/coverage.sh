#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Prints the line coverage of the layers by the tests and fails below a percentage:
# dev/coverage.sh [<percent> [<ctest argument>...]]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
percent=${1:-97}
shift $(($# > 0))

dev/install_packages.sh coverage
# shellcheck source=dev/build.sh
. dev/build.sh
build=build/coverage
layers=(numerics document airfoil editor app)
configure "$build" --preset coverage -DAEROLITH_BUILD_TESTS=ON
cmake --build "$build"
# Tests of saving run as another user, who writes counts too.
umask 000
chmod -R a+rwX "$build"
# Counts of an earlier run would be added to those of this one.
find "$build" -name '*.gcda' -delete
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)" "$@"

# The compiler finds headers in the view folders, which are links: their names are made
# those of the layers before the lines are summed up.
gcovr --root . --object-directory "$build" --json "$build/lines.json" \
    "${layers[@]/#/--filter=}" --filter="$build/layers/" "${layers[@]/#/$build/}"
sed -i -E "s#\"$build/layers/[a-z]+/#\"#g" "$build/lines.json"
gcovr --root . --add-tracefile "$build/lines.json" --fail-under-line "$percent"

#!/bin/bash
# SPDX-FileCopyrightText: Aerolith developers
# Runs a command on a virtual X server of its own.
set -eu
dir=$(mktemp -d)
mkfifo "$dir/display"
Xvfb -displayfd 3 -screen 0 2400x1000x24 -nolisten tcp 3>"$dir/display" 2>"$dir/log" &
server=$!
trap 'kill "$server" 2>/dev/null || true; rm -rf "$dir"' EXIT
read -r display <"$dir/display" || { cat "$dir/log" >&2; exit 1; }
DISPLAY=":$display" QT_QPA_PLATFORM=xcb "$@"

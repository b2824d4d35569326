#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Draws which folder's sources include which folder's headers, as the build saw it.
# Usage: draw_includes.py [--check] BUILD-FOLDER PICTURE.svg
# With --check it fails when the picture is another one, and leaves it.
import re
import subprocess
import sys
from collections import defaultdict

LAYERS = ["app", "editor", "airfoil", "document", "numerics"]
WIDTH, HEIGHT, GAP, LEFT = 300, 54, 46, 40


def includes(build):
    """Counts, for each pair of layers, the pairs of a source and a header it reads."""
    deps = subprocess.run(["ninja", "-C", build, "-t", "deps"], capture_output=True, text=True,
                          check=True).stdout
    pairs = defaultdict(set)
    source = None
    for line in deps.splitlines():
        if line and not line.startswith(" "):
            target = line.split(":")[0]
            built = re.match(r"(\w+)/CMakeFiles/aerolith_?\w*\.dir/(\w+)\.cpp\.o$", target)
            source = built.groups() if built and built.group(1) in LAYERS else None
        elif source:
            header = re.search(r"layers/(\w+)/\1/(\w+\.h)$", line.strip())
            if header and header.group(1) != source[0]:
                pairs[source[0], header.group(1)].add((source[1], header.group(2)))
    return {pair: len(found) for pair, found in pairs.items()}


def drawing(counts):
    top = {layer: 20 + i * (HEIGHT + GAP) for i, layer in enumerate(LAYERS)}
    right = LEFT + WIDTH
    shapes = []
    for layer in LAYERS:
        shapes.append(f'<rect x="{LEFT}" y="{top[layer]}" width="{WIDTH}" height="{HEIGHT}" rx="8" '
                      'fill="#f4f4f6" stroke="#3a3a5c" stroke-width="2"/>')
        shapes.append(f'<text x="{LEFT + WIDTH / 2}" y="{top[layer] + HEIGHT / 2 + 6}" '
                      f'text-anchor="middle">{layer}</text>')
    for (user, used), count in sorted(counts.items()):
        distance = LAYERS.index(used) - LAYERS.index(user)
        colour = "#1a1a1a" if distance > 0 else "#c00020"
        if distance == 1:
            x = LEFT + WIDTH / 2
            begin, end = top[user] + HEIGHT, top[used] - 3
            path = f"M {x} {begin} V {end}"
            label = (x + 8, (begin + end) / 2 + 5)
        else:
            begin = top[user] + HEIGHT / 2 + 5 * distance
            end = top[used] + HEIGHT / 2 - 5 * distance
            reach = right + 42 * abs(distance)
            path = f"M {right} {begin} C {reach} {begin}, {reach} {end}, {right + 3} {end}"
            label = (right + 31 * abs(distance) + 4, (begin + end) / 2 + 5)
        shapes.append(f'<path d="{path}" fill="none" stroke="{colour}" stroke-width="1.5" '
                      'marker-end="url(#arrow)"/>')
        shapes.append(f'<text x="{label[0]}" y="{label[1]}" font-size="13">{count}</text>')
    height = 40 + len(LAYERS) * (HEIGHT + GAP) - GAP
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" width="560" height="{height}" '
        'font-family="sans-serif" font-size="17">',
        '<defs><marker id="arrow" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" '
        'markerHeight="7" orient="auto"><path d="M 0 0 L 8 4 L 0 8 z"/></marker></defs>',
        f'<rect width="560" height="{height}" fill="#ffffff"/>',
        *shapes, "</svg>", ""])


def main():
    *check, build, picture = sys.argv[1:]
    counts = includes(build)
    if not counts:
        sys.exit("The build has no dependencies: build it first.")
    for (user, used), count in sorted(counts.items()):
        print(f"{user} -> {used}: {count}")
    if check == ["--check"]:
        with open(picture, encoding="utf-8") as file:
            if file.read() != drawing(counts):
                sys.exit(f"Out of date: dev/draw_includes.py {build} {picture}")
    else:
        with open(picture, "w", encoding="utf-8") as file:
            file.write(drawing(counts))
    upwards = [pair for pair in counts if LAYERS.index(pair[1]) < LAYERS.index(pair[0])]
    sys.exit(f"Includes against the layers: {upwards}" if upwards else 0)


main()

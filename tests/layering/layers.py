#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
"""A layer sees itself and the layers below it in its stack, and every header is complete.

layers.py SOURCES SEEN COMPILER: SEEN has a line "layer;folder;folder..." for each layer, the
include folders of its target, as CMake gives them to the compiler.
"""
import re
import subprocess
import sys
from pathlib import Path

BELOW = {
    "numerics": "",
    "document": "numerics",
    "document_widgets": "numerics document widgets",
    "airfoil": "numerics document",
    "editor": "numerics document airfoil widgets",
    "app": "numerics document document_widgets airfoil editor widgets",
    "tables": "numerics document airfoil",
    "sections": "numerics document airfoil tables",
    "fitting": "numerics document airfoil tables sections",
    "drawings": "numerics document airfoil tables sections",
    "cli": "numerics document airfoil tables sections fitting drawings",
}


def layer_of(folder):
    """The layer whose headers a folder holds; None for a folder of a library."""
    if found := re.search(r"/layers/(\w+)$", folder):
        return found[1]
    return "widgets" if folder.endswith("QtWidgets") else None


def compiles(compiler, folders, *headers):
    text = "".join(f'#include "{header}"\n' for header in headers)
    done = subprocess.run(
        [compiler, "-std=c++17", "-fPIC", "-fsyntax-only", "-x", "c++", "-"]
        + [f"-I{folder}" for folder in folders],
        cwd="/", input=text, text=True, capture_output=True, check=False)
    return done.returncode == 0, done.stderr


def main():
    sources, seen, compiler = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
    folders_of = {}
    for line in seen.read_text(encoding="utf-8").splitlines():
        layer, *folders = line.split(";")
        folders_of[layer] = folders
    wrong = []
    if set(folders_of) != set(BELOW):
        wrong.append(f"the layers are {sorted(folders_of)}")
    for layer, folders in folders_of.items():
        visible = {layer_of(folder) for folder in folders} - {None, layer}
        if visible != set(BELOW[layer].split()):
            wrong.append(f"{layer} sees {sorted(visible)}")

    # A folder that is not visible cannot be reached, and of a folder that two targets share each
    # sees only its own headers.
    for layer, header in [("tables", "cli/run.h"), ("document", "document/openfile.h")]:
        done, words = compiles(compiler, folders_of[layer], header)
        if done or not re.search(re.escape(header) + "'?:? (No such file|file not found)", words):
            wrong.append(f"{layer} includes {header}")

    # A source includes its own header first, so that the build compiles it alone.
    for layer, folders in folders_of.items():
        for path in sorted(Path(folder) for folder in folders if layer_of(folder) == layer):
            for header in sorted(path.glob("*/*.h")):
                name = f"{header.parent.name}/{header.name}"
                public = sources / name.replace("_p.h", ".h")
                has_public = name.endswith("_p.h") and public.exists()
                source = public.with_suffix(".cpp")
                if not has_public and source.exists():
                    if re.search(r'^#include ["<](.*)[">]', source.read_text(encoding="utf-8"),
                                 re.MULTILINE)[1] != name:
                        wrong.append(f"{source.name} includes another header first")
                elif not compiles(compiler, folders, name, name)[0]:
                    wrong.append(f"{name} is not complete in itself")
    sys.exit("\n".join(wrong) or 0)


main()

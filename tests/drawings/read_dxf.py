#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
"""Prints what ezdxf reads from a DXF file, one record per line."""
import sys

import ezdxf
from ezdxf import recover


def outline(entity):
    kind = entity.dxftype()
    if kind == "POLYLINE":
        points = [vertex.dxf.location for vertex in entity.vertices]
        return ("closed" if entity.is_closed else "open"), points
    if kind == "LINE":
        return "open", [entity.dxf.start, entity.dxf.end]
    if kind == "CIRCLE":
        c, r = entity.dxf.center, entity.dxf.radius
        return "circle", [(c[0] - r, c[1] - r), (c[0] + r, c[1] + r)]
    if kind == "POINT":
        return "point", [entity.dxf.location]
    return "text", [entity.dxf.insert]


def main(name):
    strict = ezdxf.readfile(name)
    document, auditor = recover.readfile(name)
    found = auditor.errors + auditor.fixes
    again = strict.audit()
    found += again.errors + again.fixes
    for finding in found:
        print("finding", finding.code, finding.message)
    print("version", strict.dxfversion)
    print("unit", strict.header.get("$INSUNITS", 0))
    for corner in ("$EXTMIN", "$EXTMAX"):
        x, y = strict.header[corner][:2]
        print("extent", repr(x), repr(y))
    for layer in strict.layers:
        print("layer", layer.dxf.name)
    for entity in strict.modelspace():
        kind, points = outline(entity)
        print("entity", entity.dxf.layer, kind)
        for point in points:
            print("vertex", repr(point[0]), repr(point[1]))
    # ezdxf decodes \U+XXXX, as drawing programs do.
    for entity in document.modelspace().query("TEXT"):
        print("text", entity.plain_text())


if __name__ == "__main__":
    main(sys.argv[1])

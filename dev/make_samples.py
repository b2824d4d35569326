#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Makes the folder samples/: NACA 4-digit sections as coordinate tables in every
# layout that the editor opens, and spline files, one of them with an air intake;
# and docs/old/: tables as old folders hold them, most of which it does not open.
"""
usage: make_samples.py [--check] [FOLDER]

Writes samples/ and docs/old/ below FOLDER (the project if none is given). With
--check nothing is written: the files there are compared with what would be, and
missing, unexpected and different ones are listed; the exit status is then 1.

The sections follow the published formulas of the 4-digit series (NACA Report 460).
The last coefficient of the thickness is -0.1036, which closes the trailing edge.
"""

import math
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "docs"))
import spline_file  # noqa: E402

STATIONS = 61


def stations():
    """Chord stations from the nose to the trailing edge, dense at both."""
    last = STATIONS - 1
    inner = [0.5 * (1.0 - math.cos(math.pi * i / last)) for i in range(1, last)]
    return [0.0] + inner + [1.0]


def half_thickness(x, thickness):
    polynomial = -0.1260 + x * (-0.3516 + x * (0.2843 + x * -0.1036))
    return 5.0 * thickness * (0.2969 * math.sqrt(x) + x * polynomial)


def mean_line(x, camber, crest):
    """Height and slope of the mean line at the station x."""
    if camber == 0.0:
        return 0.0, 0.0
    if x < crest:
        part = camber / crest**2
        return part * x * (2.0 * crest - x), 2.0 * part * (crest - x)
    part = camber / (1.0 - crest) ** 2
    return part * (1.0 - 2.0 * crest + x * (2.0 * crest - x)), 2.0 * part * (crest - x)


def sides(digits):
    """Upper and lower side of the section NACA `digits`, each from the nose."""
    camber, crest, thickness = int(digits[0]) / 100, int(digits[1]) / 10, int(digits[2:]) / 100
    upper, lower = [], []
    for x in stations():
        half = half_thickness(x, thickness) if x < 1.0 else 0.0
        height, slope = mean_line(x, camber, crest)
        angle = math.atan(slope)
        across, up = half * math.sin(angle), half * math.cos(angle)
        upper.append((x - across, height + up))
        lower.append((x + across, height - up))
    return upper, lower


def number(value, width=9):
    return f"{value + 0.0:{width}.6f}"


def outline(title, digits):
    """One outline: trailing edge, upper side, nose, lower side, trailing edge."""
    upper, lower = sides(digits)
    rows = [f"{number(x)} {number(y)}" for x, y in upper[::-1] + lower[1:]]
    return "\n".join([title] + rows) + "\n"


def half_contour(title, digits):
    """Upper side alone. The reader takes a table for a half contour only if its nose
    row is none of the first four lines; the empty lines see to that."""
    upper, _ = sides(digits)
    header = f"{STATIONS}. {STATIONS}."
    rows = [f"{number(x)} {number(y)}" for x, y in upper]
    return "\n".join([title, "", "", header] + rows) + "\n"


def three_columns(title, digits):
    """Station, upper and lower ordinate of a section without camber."""
    upper, lower = sides(digits)
    rows = [f"{number(u[0])} {number(u[1])} {number(l[1])}" for u, l in zip(upper, lower)]
    return "\n".join([title, "x  upper  lower"] + rows) + "\n"


def decimal_commas(title, digits):
    """The outline as spreadsheets of many countries save it, with CR LF."""
    upper, lower = sides(digits)
    rows = [f"{number(x, 0)};\t{number(y, 0)}" for x, y in upper[::-1] + lower[1:]]
    return "\r\n".join([title] + rows).replace(".", ",") + "\r\n"


def spline(name, points, openings=(0.0, 0.0)):
    """A spline file with control points in the pixels of an editor of 1024 x 768."""
    knots = spline_file.uniform_knots(len(points))
    return spline_file.encode(spline_file.Spline(points, knots, openings, name))


def symmetric():
    table = [
        (1.0, 0.0), (0.7, 0.025), (0.3, 0.07), (0.05, 0.08), (0.0, 0.01),
        (0.0, -0.01), (0.05, -0.08), (0.3, -0.07), (0.7, -0.025), (1.0, 0.0),
    ]  # fmt: skip
    return [(102 + x * 819, 383 + y * 819) for x, y in table]


def ram_air():
    """A section for a ram-air wing: laid by `aerolith-cli fit` over NACA 2318."""
    return [
        (921, 383), (863.2, 367.3), (754.4, 341.8), (613.2, 315.5), (463.8, 296.7),
        (324, 291), (220.4, 302.8), (141.7, 329), (99.3, 364.9), (105.5, 403.2),
        (163.4, 429.2), (269.8, 440.7), (433.4, 439.9), (635.7, 421.8), (826.5, 397.5),
        (921, 383),
    ]  # fmt: skip


def samples():
    texts = {
        "naca-0021-thick.dat": outline("NACA 0021, thick", "0021"),
        "naca-0006-thin.dat": outline("NACA 0006, thin", "0006"),
        "naca-4412-cambered.dat": outline("NACA 4412, cambered", "4412"),
        "naca-0012-outline.dat": outline("NACA 0012, one outline", "0012"),
        "naca-0012-half-contour.dat": half_contour("NACA 0012, half contour", "0012"),
        "naca-0012-three-columns.txt": three_columns("NACA 0012, three columns", "0012"),
        "naca-0012-decimal-commas.txt": decimal_commas("NACA 0012, decimal commas", "0012"),
    }
    files = {name: text.encode("ascii") for name, text in texts.items()}
    files["symmetric.spl"] = spline("symmetric.spl", symmetric())
    files["ram-air-intake.spl"] = spline("ram-air-intake.spl", ram_air(), (1.1, 4.25))
    return files


def old_outline(row, digits="2318", chord=1):
    """Rows of an outline round the nose; `row` is a format of its number, x and y."""
    upper, lower = sides(digits)
    return [row.format(i, chord * x, chord * y)
            for i, (x, y) in enumerate(upper[::-1] + lower[1:], start=1)]


def old_sides(row, digits="2318"):
    """Rows with the points of both sides, from the nose."""
    return [row.format(*u, *l) for u, l in zip(*sides(digits))]


def profile(start, end):
    """A paragliding profile with an intake from the row `start` to the row `end`: its chord runs
    from the row of least x, at (0, 0), to the trailing edge at (1, 0)."""
    upper, lower = sides("2318")
    points = [complex(x, y) for x, y in upper[::-1] + lower[1:]]
    nose = min(points, key=lambda point: point.real)
    turned = [(point - nose) / (points[0] - nose) for point in points]
    counts = [len(points), start, end - start + 1, len(points) - end + 1]
    rows = [f"{point.real + 0.0:.6f} {point.imag + 0.0:.6f}" for point in turned]
    return ["NACA_2318_with_intake", *map(str, counts), *rows]


def old_tables():
    """Tables of many programs: each file is a list of its lines."""
    plain = "{1:.6f} {2:.6f}"
    upper, lower = (old_sides(row) for row in ("{0:9.6f} {1:9.6f}", "{2:9.6f} {3:9.6f}"))
    lists = {
        "column-of-zeros.dat": ["NACA 0018, upper side"] +
                               old_sides("{0:.6f} {1:.6f} 0.000000", "0018"),
        "columns.csv": ["x,upper,lower"] + old_sides("{0:.6f},{1:.6f},{3:.6f}", "0018"),
        "cut-off.dat": ["NACA 2318"] + old_outline(plain)[: STATIONS + 8],
        "exponents.dat": ["NACA 2318"] + old_outline("{1:.6E} {2:.6E}"),
        "flag.af": ["An airfoil", "NACA 2318", "0 Sym Flag (0 - No, 1 - Yes)",
                    f"{STATIONS} Num Pnts Upper", f"{STATIONS} Num Pnts Lower", *upper, "", *lower],
        "four-columns.dat": ["xu yu xl yl"] + old_sides("{0:.6f} {1:.6f} {2:.6f} {3:.6f}"),
        "from-the-nose.dat": ["NACA 2318", *lower, *upper[-2::-1]],
        "half.dat": ["NACA 0018, one side"] + old_sides("{0:.6f} {1:.6f}", "0018"),
        "in-turn.dat": ["xl yl and xu yu in turn"] +
                       old_sides("{2:.6f} {3:.6f}\n{0:.6f} {1:.6f}"),
        "lednicer.dat": ["NACA 2318", f"  {STATIONS}.  {STATIONS}.", "", *upper, "", *lower],
        "letter.txt": ["Dear Sir,", "the tables of the wing are on the second disk."],
        "numbered.dat": ["NACA 2318"] + old_outline("{0:3d} " + plain),
        "outline.dat": ["NACA 2318"] + old_outline(plain),
        "profile.txt": profile(67, 73),
        "semicolons.csv": ["x;y"] + old_outline("{1:.6f};{2:.6f}"),
        "tips/millimetres.dat": ["NACA 2310, chord 1800 mm"] +
                                old_outline("{1:.0f} {2:.0f}", "2310", 1800),
    }
    return {name: "".join(f"{line}\n" for line in lines).encode("ascii")
            for name, lines in lists.items()}


def check(folder, files):
    present = {str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_file()}
    faults = [f"missing: {name}" for name in sorted(files.keys() - present)]
    faults += [f"unexpected: {name}" for name in sorted(present - files.keys())]
    for name in sorted(files.keys() & present):
        if (folder / name).read_bytes() != files[name]:
            faults.append(f"different: {name}")
    for fault in faults:
        print(fault)
    return 1 if faults else 0


def main(arguments):
    checking = "--check" in arguments
    names = [argument for argument in arguments if argument != "--check"]
    base = pathlib.Path(names[0] if names else pathlib.Path(__file__).resolve().parent.parent)
    folders = {base / "samples": samples(), base / "docs/old": old_tables()}
    if checking:
        return max(check(folder, files) for folder, files in folders.items())
    for folder, files in folders.items():
        for name, data in files.items():
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            (folder / name).write_bytes(data)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

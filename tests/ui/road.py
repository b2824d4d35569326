#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Plays a typical session in a real window by mouse and keyboard, from the start to a spline
# reopened at another window size, and compares the screen and the saved files with the results
# expected from the gestures.
import argparse
import pathlib
import re
import shutil
import sys
import tempfile

import section
from desk import Desk, Failure, wait_for
from sight import BLACK, DARK_RED, Sight, text_blocks

OTHER_SIZE = {(1280, 800): (1920, 1080), (1920, 1080): (1280, 800)}
# The form: margins 9, spacing 6, table pane 141 pixels wide.
MARGIN, BESIDE_EDITOR = 9, 9 + 6 + 141 + 9
FOLDER = "Desktop/Kavrund/Airfoils"
OPEN_TABLE, OPEN_SPLINE, EXIT = 0, 1, 2
SAVE_TABLE, SAVE_SPLINE = 0, 1
APPEND, INSERT, REMOVE, SET_HULL = 2, 3, 4, 6
DESKTOP_FILE = (pathlib.Path(__file__).resolve().parents[2] /
                "share/applications/org.kavrund.Aerolith.desktop")
WINDOW_CLASS = re.search(r"^StartupWMClass=(.*)$", DESKTOP_FILE.read_text(), re.M).group(1)
# The program's points and ours differ only by rounding; a wrong gesture shifts them by pixels.
POINT_TOLERANCE = 0.01


def read_outline(path):
    """The outline of a table of lines of x and y, one chord long, its first point at (1, 0)."""
    points = []
    for line in path.read_text(errors="replace").splitlines():
        try:
            x, y = map(float, line.split())
        except ValueError:
            continue
        points.append((x, y))
    chord = max(x for x, _ in points) - min(x for x, _ in points)
    x0, y0 = points[0]
    return [((x - x0) / chord + 1.0, (y - y0) / chord) for x, y in points]


def height_at(side, x):
    """The y of a polyline at x, interpolated."""
    for (x0, y0), (x1, y1) in zip(side, side[1:]):
        if min(x0, x1) <= x <= max(x0, x1) and x0 != x1:
            return y0 + (y1 - y0) * (x - x0) / (x1 - x0)
    return side[-1][1]


class Road(Sight):
    def __init__(self, desk, folder, out, program):
        super().__init__(desk, out)
        self.folder, self.program = folder, program

    # Doing

    def start(self):
        self.desk.start(self.program)
        window = self.desk.main
        screen = (0, 0, self.desk.width, self.desk.height)
        wait_for(lambda: self.desk.geometry(window) == screen, "a window that fills the screen")
        frame = self.desk.ask("xprop", "-id", window, "_NET_FRAME_EXTENTS")
        if "= 0, 0, 0, 0" not in frame:
            raise Failure(f"the window has a frame: {frame}")
        # Task bars find the desktop file by it.
        name = self.desk.ask("xprop", "-id", window, "WM_CLASS")
        if f'= "{WINDOW_CLASS}",' not in name:
            raise Failure(f"{DESKTOP_FILE.name} names {WINDOW_CLASS!r}, the window has {name}")
        width = self.desk.width - BESIDE_EDITOR
        self.x = MARGIN
        axis = MARGIN + section.Mapping(width, 1).xc

        def top():
            picture = self.desk.look()
            rows = range(self.desk.height)
            return next((y for y in rows if picture.pixel(axis, y) in (BLACK, DARK_RED)
                         and picture.pixel(axis - 2, y) not in (BLACK, DARK_RED)), None)

        self.rest()
        self.y = wait_for(top, "the leading edge's axis")
        self.map = section.Mapping(width, self.desk.height - MARGIN - self.y)
        self.drawing = section.Drawing(self.map)

        def bars():
            picture, y = self.desk.look(), self.y
            self.menus = text_blocks(picture, 0, 300, 4, y - 12, 10)
            self.buttons = text_blocks(picture, self.x + 190, self.x + 471, y + 54, y + 73, 10)
            return len(self.menus) == 3 and len(self.buttons) == 6

        wait_for(bars, "three menus and six buttons")

    def main_menu(self, menu, entry, entries):
        self.desk.click(self.menus[menu], 10)
        self.desk.choose(entry, entries)

    def menu(self, place, entry):
        """Chooses an entry of the editor's own menu at a screen pixel."""
        self.desk.click(*place, button=3)
        self.desk.choose(entry, 7)

    def button(self, index):
        self.desk.click(self.buttons[index], self.y + 63)
        self.rest()

    def unlock(self):
        """The menu took the release of the right button: Return makes the editor respond again."""
        self.desk.key("Return")

    def pick(self, index):
        self.desk.click(*self.screen(self.drawing.seen(self.drawing.CP[index])))
        self.drawing.selected = index

    def unselect(self):
        self.desk.click(*self.at(0.5, 0.3))
        self.drawing.selected = -1

    def append(self, x, y):
        place = self.at(x, y)
        self.menu(place, APPEND)
        self.drawing.append(self.in_editor(place))
        self.expect(f"appended-{len(self.drawing.CP)}", self.markers, self.curve)

    def insert_at(self, x, y):
        """Inserts after the selected point so that the new point is at (x, y)."""
        goal = self.map.pixels((x, y))
        after = self.drawing.CP[self.drawing.selected + 1]
        place = self.screen((2 * goal[0] - after[0], 2 * goal[1] - after[1]))
        self.menu(place, INSERT)
        self.drawing.insert(self.in_editor(place))
        self.unlock()

    def drag_to(self, index, x, y, name=None):
        start = self.screen(self.drawing.seen(self.drawing.CP[index]))
        goal = self.at(x, y)
        third = tuple(s + (g - s) // 3 for s, g in zip(start, goal))
        halfway = (lambda: self.keep(name)) if name else None
        # A drag sets the point's place; its path must not matter.
        self.desk.drag([start, third, goal] if name else [start, goal], halfway=halfway)
        self.drawing.selected = index
        # A pointer that stays on its pixel moves nothing, not even by a fraction of a pixel.
        if goal != start:
            self.drawing.drag(self.in_editor(goal))

    def save(self, entry, name):
        title = "Save Spline (.spl) (as...)" if entry == SAVE_SPLINE else "Save File (...as)"
        self.main_menu(1, entry, 2)
        self.desk.answer_dialog(title, name)
        path = self.folder / name
        wait_for(path.is_file, f"the file {name}")
        shutil.copy(path, self.out)
        return path

    def save_and_check(self, name):
        """Saves both files and compares them with the gestures and with each other."""
        spline = self.save(SAVE_SPLINE, f"{name}.spl")
        table = self.save(SAVE_TABLE, f"{name}.txt")
        held, drawn = section.SplineFile(spline.read_bytes()), self.drawing
        count = len(drawn.CP)
        facts = {
            "length": (held.size_error, 0),
            "name": (held.name, str(spline)),
            "counts": ((held.num_pnt, held.num_knt), (count, count + 3)),
            "degree and order": ((held.degree, held.order), (2, 3)),
            "knots": (held.knots[: count + 3], drawn.knots),
            "openings": ((held.startVent, held.endVent), (drawn.startVent, drawn.endVent)),
            "unused fields": ((set(held.rd_CP), held.L_T_S), ({(0.0, 0.0)}, 0.0)),
        }
        for fact, (found, expected) in facts.items():
            if found != expected:
                raise Failure(f"{spline.name}: {fact}: {found}, not {expected}")
        for i, (found, expected) in enumerate(zip(held.CP, drawn.CP)):
            if max(abs(f - e) for f, e in zip(found, expected)) > POINT_TOLERANCE:
                raise Failure(f"{spline.name}: point {i} is {found}, not {expected}")
        curve = [self.map.chord(point) for point in held.curve()]
        if table.read_bytes() != section.table(str(table), curve):
            raise Failure(f"{table.name} is not the table of the curve in {spline.name}")

    def leave(self):
        self.main_menu(0, EXIT, 3)
        code, printed = self.desk.wait_for_end()
        if code != 0 or printed:
            raise Failure(f"the program ended with {code} and printed {printed!r}")

    # The road

    def open_template(self, path):
        self.outline = read_outline(path)
        self.main_menu(0, OPEN_TABLE, 3)
        self.desk.answer_dialog("Open airfoil", path.name)
        self.expect("template", self.template)

    def draw_from_nothing(self):
        for point in ((1.0, 0.0), (0.0, 0.07), (0.0, -0.06), (0.25, -0.08), (0.7, -0.03),
                      (1.0, 0.0)):
            self.append(*point)
        self.unlock()
        self.pick(1)
        self.expect("picked", self.markers, self.curve)
        self.insert_at(0.0, 0.04)
        self.expect("inserted", self.markers, self.curve)
        self.drag_to(1, 0.35, 0.12, "dragging")
        self.expect("dragged", self.markers, self.curve)
        self.desk.key("Up", "Up", "Up", "Left", "Left")
        for dx, dy in ((0, -1), (0, -1), (0, -1), (-1, 0), (-1, 0)):
            self.drawing.nudge(dx, dy)
        self.expect("nudged", self.markers, self.curve)
        self.pick(4)
        self.insert_at(0.5, -0.12)
        self.expect("inserted-below", self.markers, self.curve)
        self.pick(5)
        self.menu(self.at(0.5, 0.3), REMOVE)
        self.drawing.remove()
        self.unlock()
        self.expect("removed", self.markers, self.curve)
        self.pick(3)
        self.menu(self.at(0.5, 0.3), SET_HULL)
        self.drawing.sharpen()
        self.unlock()
        self.expect("set-hull", self.markers, self.curve)

    def view(self):
        self.desk.click(*self.at(0.5, 0.3), button=4, times=3)
        self.drawing.zoom = 2.0 ** (3 * 120 / 1080.0)
        self.expect("zoomed", self.markers, self.curve)
        self.desk.drag([self.at(0.5, 0.0), self.at(0.45, 0.05), self.at(0.4, 0.1)], button=2)
        self.drawing.pan = tuple(a - b for a, b in zip(self.at(0.4, 0.1), self.at(0.5, 0.0)))
        self.expect("panned", self.markers, self.curve)
        self.whole()
        self.expect("double-clicked", self.markers, self.curve)

    def whole(self):
        self.desk.click(*self.at(0.5, 0.3), times=2)
        self.drawing.zoom, self.drawing.pan, self.drawing.selected = 1.0, (0.0, 0.0), -1

    def nose(self):
        """The nose at the greatest zoom, at half the height of the picture."""
        self.desk.click(*self.at(0.5, 0.3), button=4, times=18)
        self.drawing.zoom = 4.0
        rise = 3 * self.map.yc // 4
        for _ in range(4):
            start = self.at(0.5, -0.2)
            self.desk.drag([start, (start[0], start[1] - rise // 2), (start[0], start[1] - rise)],
                           button=2)
        self.drawing.pan = (0.0, -4.0 * rise)
        self.expect("nose", self.markers, self.curve)
        self.whole()

    def targets_over_template(self):
        """Control points that make the curve follow the template, x kept, in chord units."""
        nose = min(range(len(self.outline)), key=lambda i: self.outline[i][0])
        upper, lower = self.outline[: nose + 1], self.outline[nose:]
        points = [self.map.chord(point) for point in self.drawing.CP]
        for _ in range(60):
            curve = section.sample(points, 2, self.drawing.knots)
            for i in range(1, len(points) - 1):
                middle = 0.5 * (self.drawing.knots[i + 1] + self.drawing.knots[i + 2])
                x, y = curve[round(1000 * middle) - 1]
                side = lower if i < len(points) // 2 else upper
                points[i] = points[i][0], points[i][1] + 0.8 * (height_at(side, x) - y)
        return points, upper, lower

    def draw_over_template(self):
        self.button(4)
        self.drawing.symmetric()
        self.expect("symmetric", self.markers, self.curve)
        targets, upper, lower = self.targets_over_template()
        for i in range(1, len(targets) - 1):
            self.drag_to(i, *targets[i])
            self.expect(f"over-template-{i}", self.markers, self.curve)
        self.worst = max(
            min(abs(height_at(side, x) - y) for side in (upper, lower))
            for x, y in map(self.map.chord, self.drawing.curve()) if 0.02 < x < 0.98)
        if self.worst > 0.01:
            raise Failure(f"the curve is {self.worst} chords off the template")
        for y, text, leave in ((22, "1.1", "Tab"), (52, "4.25", "Return")):
            self.desk.click(self.x + 75, self.y + y)
            self.desk.key("Control_L+a")
            self.desk.type(text)
            self.desk.key(leave)
        self.drawing.startVent, self.drawing.endVent = 1.1, 4.25
        self.expect("openings", self.markers, self.curve, self.openings)

    def turn_and_thicken(self):
        for _ in range(2):
            self.button(2)
            self.drawing.rotate(1)
        self.button(0)
        self.drawing.thicken(1.0)
        self.expect("turned-thickened", self.markers, self.curve, self.openings)

    def reopen(self, spline, table):
        """Opens a spline that was saved at another size: the same shape in chord units."""
        held = section.SplineFile(spline.read_bytes())
        self.main_menu(0, OPEN_SPLINE, 3)
        self.desk.answer_dialog("Open airfoil spline (*.spl)", spline.name)
        self.drawing.CP = list(held.CP[: held.num_pnt])
        self.drawing.knots = held.knots[: held.num_knt]
        self.drawing.startVent, self.drawing.endVent = held.startVent, held.endVent
        self.drawing.settle()
        self.expect("reopened", self.markers, self.curve, self.openings)
        self.save_and_check("reopened")
        old = section.table_rows(table.read_bytes())
        new = section.table_rows((self.folder / "reopened.txt").read_bytes())
        if len(old) != len(new):
            raise Failure(f"{len(new)} rows after reopening, {len(old)} before")
        off = max(abs(a - b) for row in zip(old, new) for a, b in zip(*row))
        if off > 1.0001e-5:
            raise Failure(f"reopening moved the curve by {off} chords")

    def refuse_a_point(self):
        """A spline takes 30 points; a tool tip at the mouse refuses another."""
        x, y = self.at(0.5, 0.3)
        for i in range(30 - len(self.drawing.CP)):
            self.menu((x + 3 * i, y), APPEND)
        self.menu((x, y), APPEND)
        # The focus that returns from the menu hides tool tips: one must be visible after that.
        for _ in range(2):
            wait_for(lambda: self.desk.windows("tip"), "the word that there are points enough")
            self.desk.settle()
        self.keep("refused")


def play(arguments, out, home):
    size = tuple(map(int, arguments.size.split("x")))
    folder = home / FOLDER
    folder.mkdir(parents=True)
    template = pathlib.Path(shutil.copy(arguments.template, folder))
    program = str(arguments.program.resolve())
    with Desk(*size, home) as desk:
        road = Road(desk, folder, out, program)
        road.start()
        road.expect("start", road.grid, road.no_drawing)
        road.open_template(template)
        road.draw_from_nothing()
        road.view()
        road.save_and_check("from-nothing")
        road.draw_over_template()
        road.save_and_check("over-template")
        road.unselect()
        road.expect("section", road.markers, road.curve, road.openings)
        road.nose()
        road.turn_and_thicken()
        road.save_and_check("turned")
        road.leave()
        pictures, worst = road.pictures, road.worst
    with Desk(*OTHER_SIZE[size], home) as desk:
        road = Road(desk, folder, out, program)
        road.pictures = pictures
        road.start()
        road.reopen(folder / "turned.spl", folder / "turned.txt")
        road.refuse_a_point()
        road.leave()
    print(f"{arguments.size}: {road.pictures} pictures, "
          f"the curve follows the template to {worst:.4f} chords, files are exact")


def main():
    here = pathlib.Path(__file__).resolve().parent
    parser = argparse.ArgumentParser(description="Plays a typical use of the editor.")
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--size", choices=["%dx%d" % size for size in OTHER_SIZE], required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True,
                        help="where pictures and saved files go; what is there is replaced")
    parser.add_argument("--template", type=pathlib.Path,
                        default=here.parent.parent / "samples" / "naca-4412-cambered.dat",
                        help="a coordinate table from the trailing edge round to it")
    arguments = parser.parse_args()
    out = arguments.out.resolve()
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir(parents=True)
    with tempfile.TemporaryDirectory(prefix="aerolith home ") as home:
        try:
            play(arguments, out, pathlib.Path(home))
        except Failure as failure:
            print(f"{arguments.size}: {failure}\nPictures so far: {out}", file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

# SPDX-FileCopyrightText: Aerolith developers
# What the screen must show after the gestures so far.
from desk import Failure, wait_for

BLACK, WHITE, RED = (0, 0, 0), (255, 255, 255), (255, 0, 0)
DARK_RED, DARK_BLUE = (128, 0, 0), (0, 0, 128)


def text_blocks(picture, x0, x1, y0, y1, gap):
    """The centres of the dark texts in a strip; texts closer than the gap count as one."""
    columns = [x for x in range(x0, x1)
               if any(max(picture.pixel(x, y)) < 110 for y in range(y0, y1))]
    blocks = []
    for x in columns:
        if blocks and x - blocks[-1][1] <= gap:
            blocks[-1][1] = x
        else:
            blocks.append([x, x])
    return [(first + last) // 2 for first, last in blocks]


class Sight:
    """Compares the screen with self.drawing, the state computed from the same gestures. The editor
    is at self.x and self.y, self.map is its mapping and self.outline the template."""

    def __init__(self, desk, out):
        self.desk, self.out = desk, out
        self.pictures = 0

    def keep(self, name):
        self.pictures += 1
        size = f"{self.desk.width}x{self.desk.height}"
        self.desk.look_at_rest().write_png(self.out / f"{self.pictures:02}-{name}-{size}.png")

    def rest(self):
        """Moves the pointer off the editor, so that neither it nor a tool tip is in the way."""
        self.desk.move(3, self.desk.height - 3)
        self.desk.no_window("tip")

    def expect(self, name, *checks):
        """Waits until no check finds a fault in the picture, and saves the picture."""
        self.rest()
        amiss = []

        def nothing_amiss():
            picture = self.desk.look()
            amiss[:] = [what for check in checks for what in check(picture)]
            return not amiss

        try:
            wait_for(nothing_amiss, name)
        except Failure as failure:
            self.keep(f"{name}-failed")
            raise Failure(f"{failure}: " + "; ".join(amiss[:8])) from None
        self.keep(name)

    def screen(self, place):
        """The screen pixel of a place in the editor."""
        return round(self.x + place[0]), round(self.y + place[1])

    def at(self, x, y):
        """The screen pixel of a place in chord units."""
        return self.screen(self.map.pixels((x, y)))

    def in_editor(self, place):
        """The same pixel in the coordinates of the editor."""
        return place[0] - self.x, place[1] - self.y

    def visible(self, place, room):
        """Whether a place in the editor lies below its fields and off its borders."""
        x, y = place
        return room < x < self.map.wr - room and 80 + room < y < self.map.H - room

    def markers(self, picture):
        for i, point in enumerate(map(self.drawing.seen, self.drawing.CP)):
            if not self.visible(point, 10):
                continue
            x, y = self.screen(point)
            white = picture.colours(x - 4, y - 4, 9, 9).count(WHITE)
            if white < 8:
                yield f"no marker of point {i} at {x},{y}"
        if self.drawing.selected >= 0:
            x, y = self.screen(self.drawing.seen(self.drawing.CP[self.drawing.selected]))
            r, s = 9 * self.drawing.zoom, 6.4 * self.drawing.zoom
            around = ((r, 0), (-r, 0), (0, r), (0, -r), (s, s), (s, -s), (-s, s), (-s, -s))
            if sum(picture.near(x + i, y + j, RED) for i, j in around) < 6:
                yield f"no ring around the selected point at {x},{y}"

    def curve(self, picture):
        # The curve of a single point is not a line.
        samples = self.drawing.curve() if len(self.drawing.CP) > 1 else []
        for j, point in enumerate(map(self.drawing.seen, samples)):
            if j % 9 == 0 and self.visible(point, 3):
                x, y = self.screen(point)
                if not picture.near(x, y, RED):
                    yield f"no curve at sample {j}, {x},{y}"

    def no_drawing(self, picture):
        x, y = self.at(0.0, 0.4)
        if RED in picture.colours(x, y, self.map.L_T, self.map.L_T * 8 // 10):
            yield "something red although nothing is drawn yet"

    def openings(self, picture):
        for percent in (self.drawing.startVent, self.drawing.endVent):
            x, y = self.at(percent / 100.0, 0.0)
            if not all(picture.near(x, y + below, DARK_BLUE) for below in (60, 120, 180)):
                yield f"no opening line at {percent} per cent"

    def grid(self, picture):
        """The lines are where the editor's actual rectangle puts them, to the pixel."""
        m, x, y = self.map, self.x, self.y
        if not (picture.pixel(x + 3, y + m.yc) == BLACK != picture.pixel(x + 3, y + m.yc + 1)):
            yield "the chord axis is not in the middle"
        end = x + 2 * m.xc + m.L_T
        if not (picture.pixel(end, y + m.yc) == BLACK != picture.pixel(end + 2, y + m.yc)):
            yield "the chord axis does not end where it should"
        place = float(m.xc)
        for i in range(101):
            last = x + int(place)
            # The opening lines lie over the first tick.
            if i and picture.pixel(last, y + m.yc + 8) != DARK_RED:
                yield f"no tick {i} at {last}"
            place += m.L_T / 100.0
        dots = [j for j in range(self.desk.height) if picture.pixel(last, j) == DARK_RED]
        if not dots or not (0 <= y + m.H - dots[-1] <= 2 and 0 <= dots[0] - y <= 2):
            yield f"the grid spans {dots[:1]} to {dots[-1:]}, not {y} to {y + m.H}"
        for k in range(-4, 5):
            row = y + m.yc - k * (m.L_T // 10)
            if not y <= row <= y + m.H:
                continue
            if picture.colours(x + m.xc + 30, row, m.L_T // 2, 1).count(DARK_RED) < m.L_T // 8:
                yield f"no dotted line {k / 10} at row {row}"

    def template(self, picture):
        for i, point in enumerate(self.outline):
            x, y = self.at(*point)
            if 0.005 < point[0] < 0.995 and not picture.near(x, y, RED, 3):
                yield f"no template point {i} at {x},{y}"
        if not text_blocks(picture, self.x + 300, self.x + 700, self.y + 8, self.y + 24, 12):
            yield "no status line of the template"
        pane = picture.colours(self.desk.width - 140, self.y + 10, 120, 300)
        if sum(max(pixel) < 110 for pixel in pane) < 1000:
            yield "the table pane is not filled"

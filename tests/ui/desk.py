# SPDX-FileCopyrightText: Aerolith developers
# A virtual display with a window manager, and a program operated on it by mouse and keyboard.
import ctypes
import mmap
import os
import shlex
import shutil
import signal
import struct
import subprocess
import tempfile
import time
import zlib

from hand import Hand

PATIENCE = 90.0  # seconds; a loaded machine is slow, and a broken program never responds
TOOLS = ("Xvfb", "openbox", "xdotool", "xprop")


class Failure(Exception):
    """A deviation of the program from what is expected."""


def wait_for(condition, what):
    """Polls until the condition holds and returns its value."""
    end = time.monotonic() + PATIENCE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure(f"in vain waited for: {what}")
        time.sleep(0.03)


def _end_with_parent():
    ctypes.CDLL(None).prctl(1, signal.SIGTERM)


class Picture:
    """A copy of the screen; pixel(x, y) is (red, green, blue)."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data

    def pixel(self, x, y):
        if not (0 <= x < self.width and 0 <= y < self.height):
            return None
        at = 4 * (y * self.width + x)
        return self.data[at + 2], self.data[at + 1], self.data[at]

    def colours(self, x, y, width, height):
        """The pixels of a rectangle, as a list."""
        return [self.pixel(x + i, y + j) for j in range(height) for i in range(width)]

    def near(self, x, y, colour, reach=1):
        """Whether a pixel of the colour is close to the place."""
        column, row = round(x), round(y)
        square = range(-reach, reach + 1)
        return any(self.pixel(column + i, row + j) == colour for j in square for i in square)

    def write_png(self, path):
        rgb = bytearray(3 * self.width * self.height)
        rgb[0::3], rgb[1::3], rgb[2::3] = self.data[2::4], self.data[1::4], self.data[0::4]
        stride = 3 * self.width
        rows = b"".join(b"\0" + rgb[i : i + stride] for i in range(0, len(rgb), stride))

        def chunk(kind, body):
            checksum = zlib.crc32(kind + body)
            return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", checksum)

        head = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head))
            file.write(chunk(b"IDAT", zlib.compress(rows, 6)) + chunk(b"IEND", b""))


class Desk:
    """A screen of the given size with a window manager, and the program on it."""

    def __init__(self, width, height, home):
        for tool in TOOLS:
            if not shutil.which(tool):
                raise Failure(f"{tool} is missing: dev/install_packages.sh window")
        self.width, self.height = width, height
        self.folder = tempfile.mkdtemp(prefix="aerolith-desk-")
        self.processes = []
        self.program = self.main = self.hand = None
        # Settings of the surrounding desktop must not leak in: scaling, styles, other dialogs.
        self.environment = {
            "PATH": os.environ.get("PATH", os.defpath),
            "HOME": str(home),
            "XDG_RUNTIME_DIR": self.folder,
            "LC_ALL": "C.UTF-8",
            "QT_QPA_PLATFORM": "xcb",
        }
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "ASAN_SYMBOLIZER_PATH"):
            if name in os.environ:
                self.environment[name] = os.environ[name]
        self.log = open(os.path.join(self.folder, "log"), "w+b")
        try:
            self._start_display()
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def _start(self, command, **options):
        process = subprocess.Popen(
            command, env=self.environment, stdin=subprocess.DEVNULL, preexec_fn=_end_with_parent,
            **options)
        self.processes.append(process)
        return process

    def _start_display(self):
        # The server chooses a free number, so any number of tests can run in parallel.
        end, server_end = os.pipe()
        self._start(
            ["Xvfb", "-displayfd", str(server_end), "-screen", "0",
             f"{self.width}x{self.height}x24", "-fbdir", self.folder, "-nolisten", "tcp",
             "-noreset"],
            pass_fds=[server_end], stderr=subprocess.DEVNULL)
        os.close(server_end)
        with os.fdopen(end) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb does not start")
        self.environment["DISPLAY"] = f":{number}"
        with open(os.path.join(self.folder, "Xvfb_screen0"), "rb") as file:
            self.frame = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self.frame[:100])
        self.pixels_at = header[0] + 12 * header[19]
        # It announces itself before it manages windows, and a window opened in between stays
        # hidden.
        ready = os.path.join(self.folder, "managed")
        self._start(["openbox", "--startup", f"touch {shlex.quote(ready)}"],
                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: os.path.exists(ready), "the window manager")
        try:
            self.hand = Hand(self.environment["DISPLAY"])
        except OSError as error:
            raise Failure(f"{error}: dev/install_packages.sh window") from None

    def ask(self, *command):
        """The output of a command run on this display."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, check=False)
        return done.stdout

    def start(self, program):
        self.program = self._start([program], stderr=self.log, stdout=self.log)
        self.main = self.window("main")

    def wait_for_end(self):
        """The exit code of the program, and what it printed."""
        wait_for(lambda: self.program.poll() is not None, "the end of the program")
        self.log.seek(0)
        return self.program.returncode, self.log.read().decode(errors="replace")

    def close(self):
        if self.hand:
            self.hand.close()
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
        for process in reversed(self.processes):
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self.log.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    # Seeing

    def look(self):
        end = self.pixels_at + 4 * self.width * self.height
        return Picture(self.width, self.height, self.frame[self.pixels_at : end])

    def look_at_rest(self):
        """The screen once two consecutive pictures agree."""
        def twice():
            picture = self.look()
            time.sleep(0.06)
            return picture if self.look().data == picture.data else None

        return wait_for(twice, "a picture at rest")

    def windows(self, kind):
        """The program's visible windows of a kind: main, dialog, menu or tip."""
        found = []
        for window in self.ask("xdotool", "search", "--onlyvisible", "--class",
                               "aerolith").split():
            properties = self.ask("xprop", "-id", window, "_NET_WM_WINDOW_TYPE", "WM_NAME")
            if "_TOOLTIP" in properties:
                its_kind = "tip"
            elif "_DIALOG" in properties:
                its_kind = "dialog"
            elif '"Aerolith"' in properties:
                its_kind = "main"
            else:
                # A window that has just closed has no type.
                its_kind = "menu" if "_NORMAL" in properties else None
            if its_kind == kind:
                found.append(window)
        return found

    def window(self, kind):
        def shown():
            if self.program.poll() is not None:
                raise Failure(f"the program ended instead of showing a {kind} window: "
                              f"{self.wait_for_end()}")
            return self.windows(kind)

        return wait_for(shown, f"a {kind} window")[-1]

    def no_window(self, kind):
        wait_for(lambda: not self.windows(kind), f"the end of every {kind} window")

    def title(self, window):
        return self.ask("xdotool", "getwindowname", window).rstrip("\n")

    def geometry(self, window):
        text = self.ask("xdotool", "getwindowgeometry", "--shell", window)
        values = dict(line.split("=", 1) for line in text.splitlines())
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    # Doing

    def settle(self):
        """Waits until the program has every event. Qt drops a movement when a later one is
        queued, even with a release in between."""
        wait_for(lambda: not self.hand.holds_a_button(), "the release of every button")
        question = self.hand.ping(int(self.main))
        wait_for(lambda: self.hand.answered(question) or self.program.poll() is not None,
                 "an answer of the program")

    def move(self, x, y):
        self.hand.move(x, y)
        self.settle()

    def click(self, x, y, button=1, times=1):
        self.hand.move(x, y)
        for _ in range(times):
            self.hand.press(button)
            self.hand.release(button)
        self.settle()

    def drag(self, way, button=1, halfway=None):
        """Presses at the first place of a path, moves along it and releases at the last."""
        self.hand.move(*way[0])
        self.hand.press(button)
        for place in way[1:]:
            self.hand.move(*place)
        if halfway:
            halfway()
        self.hand.release(button)
        self.settle()

    def key(self, *keys):
        """Presses keys one by one; keys joined by a plus sign together."""
        for key in keys:
            self.hand.stroke(*key.split("+"))

    def type(self, text):
        for character in text:
            self.hand.stroke(character)

    def choose(self, entry, entries):
        """Clicks an entry of the menu that has just been opened."""
        x, y, width, height = self.geometry(self.window("menu"))
        self.click(x + width // 3, int(y + (entry + 0.5) * height / entries))
        self.no_window("menu")

    def answer_dialog(self, title, text):
        """Types a name into a file dialog and accepts it."""
        dialog = self.window("dialog")
        if self.title(dialog) != title:
            raise Failure(f"the dialog is called {self.title(dialog)!r}, not {title!r}")
        wait_for(lambda: self.ask("xdotool", "getactivewindow").strip() == dialog,
                 f"the focus in the dialog {title!r}")
        self.type(text)
        self.key("Return")
        self.no_window("dialog")

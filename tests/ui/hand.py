# SPDX-FileCopyrightText: Aerolith developers
# The pointer and the keyboard of a display. Everything uses one connection and one extension:
# pointer warps and test buttons may overtake each other, and so may two connections.
import ctypes
from ctypes import POINTER, byref, c_char_p, c_int, c_long, c_uint, c_ulong, c_void_p

CLIENT_MESSAGE, ALL_BUTTONS = 33, 0x1F00
# Replies to pings go to the root window, with either mask.
NOTIFY = 1 << 17 | 1 << 19


class Message(ctypes.Structure):
    """A client message, as large as any event."""
    _fields_ = [("type", c_int), ("serial", c_ulong), ("sent", c_int), ("display", c_void_p),
                ("window", c_ulong), ("kind", c_ulong), ("format", c_int), ("data", c_long * 5),
                ("rest", c_long * 12)]


FUNCTIONS = {
    "libX11.so.6": {
        "XOpenDisplay": (c_void_p, c_char_p),
        "XCloseDisplay": (c_int, c_void_p),
        "XDefaultRootWindow": (c_ulong, c_void_p),
        "XInternAtom": (c_ulong, c_void_p, c_char_p, c_int),
        "XSelectInput": (c_int, c_void_p, c_ulong, c_long),
        "XSendEvent": (c_int, c_void_p, c_ulong, c_int, c_long, POINTER(Message)),
        "XCheckTypedEvent": (c_int, c_void_p, c_int, POINTER(Message)),
        "XQueryPointer": (c_int, c_void_p, c_ulong, *[POINTER(c_ulong)] * 2,
                          *[POINTER(c_int)] * 4, POINTER(c_uint)),
        "XStringToKeysym": (c_ulong, c_char_p),
        "XKeysymToKeycode": (ctypes.c_ubyte, c_void_p, c_ulong),
        "XSetErrorHandler": (c_void_p, c_void_p),
        "XFlush": (c_int, c_void_p),
    },
    "libXtst.so.6": {
        "XTestFakeMotionEvent": (c_int, c_void_p, c_int, c_int, c_int, c_ulong),
        "XTestFakeButtonEvent": (c_int, c_void_p, c_uint, c_int, c_ulong),
        "XTestFakeKeyEvent": (c_int, c_void_p, c_uint, c_int, c_ulong),
    },
}


@ctypes.CFUNCTYPE(c_int, c_void_p, c_void_p)
def _go_on(_display, _error):
    """A window may end before its message arrives."""
    return 0


class Hand:
    def __init__(self, display):
        self._call = {}
        for library, functions in FUNCTIONS.items():
            loaded = ctypes.CDLL(library)
            for name, (result, *arguments) in functions.items():
                function = getattr(loaded, name)
                function.restype, function.argtypes = result, arguments
                self._call[name] = function
        self._call["XSetErrorHandler"](ctypes.cast(_go_on, c_void_p))
        self._display = self._call["XOpenDisplay"](display.encode())
        if not self._display:
            raise OSError(f"no connection to display {display}")
        self._root = self._do("XDefaultRootWindow")
        self._protocols, self._ping = (
            self._do("XInternAtom", name, 0) for name in (b"WM_PROTOCOLS", b"_NET_WM_PING"))
        self._pings = 0
        self._do("XSelectInput", self._root, NOTIFY)

    def _do(self, name, *arguments):
        return self._call[name](self._display, *arguments)

    def close(self):
        self._do("XCloseDisplay")

    def move(self, x, y):
        self._do("XTestFakeMotionEvent", -1, x, y, 0)
        self._do("XFlush")

    def press(self, button):
        # The delay is needed: two presses within one millisecond are not a double click.
        self._do("XTestFakeButtonEvent", button, 1, 5)
        self._do("XFlush")

    def release(self, button):
        self._do("XTestFakeButtonEvent", button, 0, 0)
        self._do("XFlush")

    def stroke(self, *keys):
        """Presses the keys one after the other and releases them: names of keys, or
        characters that need no Shift."""
        codes = []
        for key in keys:
            # The first 256 key symbols are the characters.
            symbol = ord(key) if len(key) == 1 else self._call["XStringToKeysym"](key.encode())
            codes.append(self._do("XKeysymToKeycode", symbol))
            if not codes[-1]:
                raise ValueError(f"no key is called {key}")
        for code in codes:
            self._do("XTestFakeKeyEvent", code, 1, 0)
        for code in reversed(codes):
            self._do("XTestFakeKeyEvent", code, 0, 0)
        self._do("XFlush")

    def holds_a_button(self):
        """Whether a button of the display is down; delayed events do not count."""
        window, place, buttons = c_ulong(), c_int(), c_uint()
        self._do("XQueryPointer", self._root, *[byref(window)] * 2, *[byref(place)] * 4,
                 byref(buttons))
        return bool(buttons.value & ALL_BUTTONS)

    def ping(self, window):
        """Pings the program of a window; returns the number of the ping."""
        self._pings += 1
        message = Message(type=CLIENT_MESSAGE, window=window, kind=self._protocols, format=32,
                          data=(self._ping, self._pings, window))
        self._do("XSendEvent", window, 0, 0, byref(message))
        self._do("XFlush")
        return self._pings

    def answered(self, question):
        """Whether the reply to a ping has arrived since the last call."""
        message = Message()
        while self._do("XCheckTypedEvent", CLIENT_MESSAGE, byref(message)):
            if message.data[0] == self._ping and message.data[1] == question:
                return True
        return False

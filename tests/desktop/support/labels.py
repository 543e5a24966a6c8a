"""Reads the labels of the desktops and the tour's overlay from the X server and the screen."""

import contextlib
import os
import re
import signal
import subprocess
import threading
import time

from support.processes import Timeout, wait_until
from support.screen import Picture, distance
from support.vembrix import TOLERANCE
from support.window import Window

# Keys of the settings.
SWIPE_ALPHA = 0.78

OPACITY = "_NET_WM_WINDOW_OPACITY"
OPAQUE = 0xFFFFFFFF

OWN_CLASS = '"vembrix", "Vembrix"'

GROUND = (128, 144, 160)
NAMES = ["Desktop 1", "Desktop 2", "Desktop 3", "Desktop 4"]

# The time from a label's appearance to its end, with an allowance for a busy machine.
ARRIVAL = 0.5
LATE = 0.7
# Longer than a label is shown, and longer than the period of the timer that prepares the others.
SETTLED = 1.0


def paint_ground(desktop):
    desktop.run("hsetroot", "-solid", "#%02x%02x%02x" % GROUND)
    wait_until(
        lambda: distance(desktop.picture().pixel(100, 860), GROUND) <= TOLERANCE, "the ground"
    )


def opacity_of(text):
    """The opacity from 0 to 1, from the property's value as xprop writes it; 1 for None,
    no property."""
    return 1.0 if text is None else int(text) / OPAQUE


class Label(Window):
    """One label's window, or the overlay's."""

    @property
    def opacity(self):
        return opacity_of(self.read(OPACITY))

    @property
    def role(self):
        return self.read("WM_WINDOW_ROLE")

    def frame(self):
        """The frame of the label itself, without the shadow that its window draws around
        it."""
        x, y, width, height = super().frame()
        margins = self.read("_GTK_FRAME_EXTENTS")
        left, right, top, bottom = map(int, margins.split(", ")) if margins else (0, 0, 0, 0)
        return x + left, y + top, width - left - right, height - top - bottom

    def inside(self):
        """A point on its fill, left of its text."""
        x, y, _, height = self.frame()
        return x + 45, y + height // 2

    @property
    def is_managed(self):
        """Whether a window manager manages it."""
        text = self._desktop.run("xwininfo", "-id", self.identifier, "-stats")
        listed = self._desktop.root_property("_NET_CLIENT_LIST") or ""
        return "Override Redirect State: yes" not in text or self.identifier in listed.split(", ")


class Showing:
    """The appearance of a window that no window manager manages."""

    def __init__(self, identifier, begin):
        self.identifier = identifier
        self.begin = begin
        # No label is seen while it is shown.
        self.end = None

    @property
    def duration(self):
        return self.end - self.begin if self.end else None


class Showings:
    """Records, with the time, when the program's unmanaged windows appear and disappear,
    from the X server's events. To be created before the program is started, so that it
    misses none."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._showings = []
        self._frozen = None
        process = desktop.start(
            ["xev", "-root", "-event", "substructure"], stdout=subprocess.PIPE, text=True
        )
        self._lines = process.popen.stdout
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        kind = None
        with contextlib.suppress(ValueError):
            for line in self._lines:
                if match := re.match(r"(\w+) event,", line):
                    kind = match[1]
                elif kind in ("MapNotify", "UnmapNotify"):
                    self._note(kind, line)
                    kind = None

    def _note(self, kind, line):
        identifier = re.search(r"window (0x[0-9a-f]+),? ?(?:override|from|$)", line)[1]
        if kind == "UnmapNotify":
            for showing in self._showings:
                if showing.identifier == identifier and not showing.end:
                    showing.end = time.monotonic()
        elif "override YES" in line:
            begin = time.monotonic()
            # Read once, because the other thread may change it in between.
            if frozen := self._frozen:
                os.kill(frozen, signal.SIGSTOP)
            if Window(self._desktop, identifier).read("WM_CLASS") == OWN_CLASS:
                # Windows that appear later do not change the program's state.
                self._frozen = None
                self._showings.append(Showing(identifier, begin))
            elif frozen:
                # Some window managers have windows of this kind of their own.
                os.kill(frozen, signal.SIGCONT)

    def since(self, begin):
        """The showings that began after that moment of time.monotonic()."""
        return [showing for showing in list(self._showings) if showing.begin >= begin]

    def wait_for_one(self, begin, limit=5.0):
        """The first one since then, once it has ended."""

        def ended():
            found = self.since(begin)
            return found[0] if found and found[0].end else None

        return wait_until(ended, "a label to come up and to go", limit)

    @contextlib.contextmanager
    def freezing(self, program):
        """Keeps the next window that appears, by stopping the program at that moment."""
        pid = program.process.popen.pid
        self._frozen = pid
        try:
            yield
        finally:
            self._frozen = None
            os.kill(pid, signal.SIGCONT)


class Labels:
    """The labels of one run of the program."""

    def __init__(self, program, showings=None):
        self.program = program
        self.desktop = program.desktop
        self.showings = showings

    def _windows(self, role):
        found = [
            Label(self.desktop, window.identifier)
            for window in self.desktop.windows_of_class("vembrix")
        ]
        return [window for window in found if window.role == role]

    def all(self):
        """Those that have a window, visible or not."""
        return self._windows("label")

    def shown(self):
        """The names of the visible ones."""
        return [label.name for label in self.all() if label.visible]

    def overlays(self):
        return [overlay for overlay in self._windows("tour-overlay") if overlay.visible]

    def wait_for_rest(self):
        wait_until(lambda: not self.shown(), lambda: f"no label; there are {self.shown()}")

    @contextlib.contextmanager
    def arrival(self, index):
        """Goes to the desktop and yields its label, which stays, as the program is
        stopped meanwhile."""
        # The first label may not be ready, and on a busy machine it may be seen too late.
        for _ in range(5):
            if self.desktop.current == index:
                self._leave(index)
            with self.showings.freezing(self.program):
                label = self._arrive(index)
                if label and label.visible:
                    yield label
                    break
        else:
            raise AssertionError(f"the label of desktop {index + 1} was not seen on arrival")
        self.wait_for_rest()

    def _leave(self, index):
        self.desktop.go_to(0 if index else 1)
        wait_until(lambda: self.desktop.current != index, "another desktop")
        # The half second of a label and the half second in which a timer prepares the others.
        time.sleep(1)

    def _arrive(self, index):
        begin = time.monotonic()
        self.desktop.go_to(index)
        with contextlib.suppress(Timeout):
            showings = wait_until(lambda: self.showings.since(begin), "a label", 3)
            return Label(self.desktop, showings[0].identifier)
        return None


class Hand:
    """The user's mouse."""

    def __init__(self, desktop):
        self._desktop = desktop

    def point_at(self, x, y):
        # The last bit means a device. A pointer that another program moved has only the
        # other bits.
        self._desktop.run(
            "xdotool", "mousemove", str(x + 2), str(y + 2), "mousemove_relative", "--", "-2", "-2"
        )

    def point_aside(self):
        """Moves the pointer to a place below all labels."""
        self.point_at(720, 860)

    def point_at_corner(self):
        # Moved by another program, as the pointer of a remote desktop is.
        self._desktop.run("xdotool", "mousemove", "0", "0")

    def click(self):
        self._desktop.run("xdotool", "click", "1")


class OpacitySpy:
    """Records, with the time, every opacity that a window is given."""

    def __init__(self, window):
        self.samples = []
        self._process = window._desktop.start(
            ["xprop", "-spy", "-id", window.identifier, "-notype", OPACITY],
            stdout=subprocess.PIPE,
            text=True,
        )
        threading.Thread(target=self._read, daemon=True).start()
        wait_until(lambda: self.samples, "the first opacity")

    def _read(self):
        for line in self._process.popen.stdout:
            match = re.search(r"= (\d+)", line)
            self.samples.append((time.monotonic(), opacity_of(match[1] if match else None)))

    def since(self, begin):
        return [opacity for moment, opacity in self.samples if moment >= begin]

    def end(self):
        self._process.end()


# Observations of the screen


def over(*layers):
    """The colour of layers (each red, green, blue and alpha from 0 to 1), the first
    in front, the last opaque: as the 8 bits of a pixel."""
    below = layers[-1][:3]
    for *color, alpha in reversed(layers[:-1]):
        below = [alpha * top + (1 - alpha) * bottom for top, bottom in zip(color, below)]
    return tuple(round(component * 255) for component in below)


def blend(a, b, t):
    return tuple(x + t * (y - x) for x, y in zip(a, b))


def keep(picture: Picture, name):
    """Keeps a picture for inspection where the environment asks for it."""
    folder = os.environ.get("VEMBRIX_PICTURES")
    if folder:
        os.makedirs(folder, exist_ok=True)
        picture.save_png(os.path.join(folder, f"{name}.png"))

"""The labels of the desktops and the tour's overlay, as the window manager and
the screen show them."""

import os
import re
import subprocess
import threading
import time

from desktop import Window
from processes import LIMIT, Timeout, wait_until
from screen import Picture

# Of the settings.
SWIPE_ALPHA = 0.78

# Fades end on an animation's last frame, which a busy machine shows late.
NEARLY = 0.004

OPACITY = "_NET_WM_WINDOW_OPACITY"
OPAQUE = 0xFFFFFFFF
ALL_DESKTOPS = 0xFFFFFFFF


def opacity_of(text):
    """0 to 1, from the property's value as xprop writes it; None is no property."""
    return 1.0 if text is None else int(text) / OPAQUE


class Label(Window):
    """One label's window."""

    @property
    def opacity(self):
        return opacity_of(self.read(OPACITY))

    def frame(self):
        """Of the label itself, without the shadow that its window draws around it."""
        x, y, width, height = super().frame()
        margins = self.read("_GTK_FRAME_EXTENTS")
        left, right, top, bottom = map(int, margins.split(", ")) if margins else (0, 0, 0, 0)
        return x + left, y + top, width - left - right, height - top - bottom

    @property
    def place(self):
        """The index of the desktop on which the window manager has it."""
        index = self.read("_NET_WM_DESKTOP")
        return int(index) if index else None

    @property
    def states(self):
        return set((self.read("_NET_WM_STATE") or "").split(", "))

    def move_to(self, index):
        """As a pager does. Does not wait for it."""
        self._desktop.run("wmctrl", "-i", "-r", self.identifier, "-t", str(index))


def lend(label, look):
    """Moves the label of another desktop to this one, where it is seen until the
    program finds it, and back. Returns look(), which waits until it is seen and may be
    called again: where the program has found the label meanwhile."""
    home, here = label.place, label._desktop.current
    for _ in range(4):
        label.move_to(here)
        try:
            wait_until(lambda: label.place == here, f"{label.name} to be here", 2)
            seen = look()
            if label.place == here:
                return seen
        except Timeout:
            pass
        finally:
            label.move_to(home)
            wait_until(lambda: label.place == home, f"{label.name} to be back")
    raise AssertionError(f"{label.name} was never here for long enough")


class Labels:
    """The labels of one run of the program."""

    def __init__(self, program):
        self.program = program
        self.desktop = program.desktop

    def _windows(self, role, kind):
        found = [
            kind(self.desktop, window.identifier)
            for window in self.desktop.windows_of_class("vembrix")
        ]
        return [window for window in found if window.read("WM_WINDOW_ROLE") == role]

    def all(self):
        return self._windows("label", Label)

    def listed(self):
        """Of the windows that the window manager lists, the labels' desktops, with
        the names of those on each."""
        listed = {int(window.identifier, 16) for window in self.desktop.clients()}
        places = {}
        for label in self.all():
            if int(label.identifier, 16) in listed:
                places.setdefault(label.place, []).append(label.name)
        return places

    def of(self, name):
        """The label of that text."""
        found = [label for label in self.all() if label.name == name]
        if len(found) != 1:
            raise AssertionError(f"{len(found)} labels {name!r}")
        return found[0]

    def wait_for_places(self, places):
        wait_until(
            lambda: self.listed() == places, lambda: f"the labels {places}; they are {self.listed()}"
        )

    def opacities(self):
        return {label.name: round(label.opacity, 3) for label in self.all()}

    def wait_for_opacities(self, opacities, limit=LIMIT):
        wait_until(
            lambda: close(self.opacities(), opacities),
            lambda: f"the opacities {opacities}; they are {self.opacities()}",
            limit,
        )

    def wait_for_rest(self, count, active):
        """Waits until all labels but the active desktop's are faintly there."""
        names = [f"Desktop {number + 1}" for number in range(count)]
        self.wait_for_opacities({n: 0 if n == active else SWIPE_ALPHA for n in names})

    def overlays(self):
        return [overlay for overlay in self._windows("tour-overlay", Label) if overlay.visible]


def close(found, wanted, tolerance=0.005):
    return found.keys() == wanted.keys() and all(
        abs(found[key] - wanted[key]) <= tolerance for key in wanted
    )


class Hand:
    """What a person does with the mouse."""

    def __init__(self, desktop):
        self._desktop = desktop

    def point_at(self, x, y):
        # A pointer that another program puts somewhere was not moved by a hand: the
        # last bit is the device's.
        self._desktop.run(
            "xdotool", "mousemove", str(x + 2), str(y + 2), "mousemove_relative", "--", "-2", "-2"
        )

    def point_aside(self):
        """Below all labels."""
        self.point_at(720, 860)

    def point_at_corner(self):
        # Put there by another program, as pointers of remote desktops are.
        self._desktop.run("xdotool", "mousemove", "0", "0")

    def click(self):
        self._desktop.run("xdotool", "click", "1")


class OpacitySpy:
    """Writes down, with the time, every opacity that a window is given."""

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
        return [(moment - begin, opacity) for moment, opacity in self.samples if moment >= begin]

    def wait_for(self, begin, opacity, limit):
        """Waits until the window is given that opacity after the moment, and gives
        the time that passed until then."""

        def seconds():
            return next(
                (at for at, value in self.since(begin) if abs(value - opacity) <= NEARLY), None
            )

        return wait_until(
            lambda: seconds() or None,
            lambda: f"the opacity {opacity}; there were {self.since(begin)}",
            limit,
        )

    def end(self):
        self._process.end()


# What is seen


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
    """Keeps a picture for a person to look at, where the environment says."""
    folder = os.environ.get("VEMBRIX_PICTURES")
    if folder:
        os.makedirs(folder, exist_ok=True)
        picture.save_png(os.path.join(folder, f"{name}.png"))

"""The program under test, on a private desktop, as its user meets it."""

import os
import plistlib
import signal
import stat
import unittest

from desktop import Desktop
from processes import LIMIT, wait_until
from screen import distance, rgb

# How far a pixel may be off its colour, of 255.
TOLERANCE = 4

PINK = rgb(1.0, 0.71, 0.76)
# Light ink would not show on a light bar: it is darkened there.
HALVED_PINK = rgb(0.5, 0.355, 0.38)
BLUE = rgb(0.69, 0.83, 1.0)
GREEN = rgb(0.72, 0.96, 0.72)
PEACH = rgb(1.0, 0.85, 0.6)
BLACK = (0, 0, 0)


def program_path():
    return os.environ["VEMBRIX_PROGRAM"]


class Defaults:
    """The stored settings, as another program writes and reads them."""

    APPLICATION = "com.vembrix.app"
    LEGACY = "com.zorbalintes.app"

    def __init__(self, desktop, domain=APPLICATION):
        self.folder = desktop.path("config", "vembrix")
        self.path = os.path.join(self.folder, f"{domain}.plist")

    def write(self, values):
        self.write_bytes(plistlib.dumps(values))

    def write_bytes(self, data):
        os.makedirs(self.folder, mode=0o700, exist_ok=True)
        # Replaced in one step: the program may read at any moment.
        temporary = f"{self.path}.test"
        with open(temporary, "wb") as file:
            file.write(data)
        os.replace(temporary, self.path)

    def update(self, values):
        self.write({**self.read(), **values})

    def read(self):
        """A dictionary; empty when there is no file."""
        try:
            with open(self.path, "rb") as file:
                return plistlib.load(file)
        except FileNotFoundError:
            return {}

    def mode(self):
        return stat.S_IMODE(os.stat(self.path).st_mode)


class Vembrix:
    """One run of the program."""

    def __init__(self, desktop, environment=None, arguments=()):
        self.desktop = desktop
        self.process = desktop.start([program_path(), *arguments], environment)
        self._strip = None

    def log_lines(self):
        return [line for line in self.process.output().splitlines() if line.startswith("[Vembrix]")]

    def lines_besides_tour(self):
        """The log without what is there after every start."""
        return [line for line in self.log_lines() if not line.startswith("[Vembrix] tour ")]

    def wait_for_tour(self):
        """Waits until the tour through the desktops, shortly after the start, is over."""
        wait_until(
            lambda: "[Vembrix] tour end" in self.log_lines(),
            lambda: f"the end of the tour; {self._story()}",
        )

    def end(self):
        self.process.send(signal.SIGTERM)
        return self.process.wait()

    # The status item

    def strip(self):
        """The window of the status item, or None."""
        if self._strip and self._strip.read("WM_WINDOW_ROLE") == "status-item":
            return self._strip
        self._strip = None
        for window in self.desktop.windows_of_class("vembrix"):
            if window.read("WM_WINDOW_ROLE") == "status-item":
                self._strip = window
        return self._strip

    def wait_for_settings(self):
        """The settings window, when it is seen."""

        def visible_window():
            for window in self.desktop.windows_of_class("vembrix"):
                if window.read("WM_WINDOW_ROLE") == "settings" and window.visible:
                    return window
            return None

        return wait_until(visible_window, lambda: f"the settings window; {self._story()}")

    def title(self):
        strip = self.strip()
        return strip.name if strip else None

    def wait_for_strip(self):
        def visible_strip():
            strip = self.strip()
            return strip if strip and strip.visible else None

        return wait_until(visible_strip, lambda: f"the status item; {self._story()}")

    def wait_for_title(self, title, limit=LIMIT):
        wait_until(
            lambda: self.title() == title,
            lambda: f"the title {title!r}; it is {self.title()!r}; {self._story()}",
            limit,
        )

    def picture(self):
        """What is on the screen where the status item is."""
        return self.desktop.picture().crop(*self.strip().frame())

    def fill(self):
        """The colour behind the title: that of the pixels at its left end, half
        way up, where neither the rounded corners nor a letter reach."""
        picture = self.picture()
        return picture.pixel(3, picture.height // 2)

    def wait_for_fill(self, color):
        wait_until(
            lambda: distance(self.fill(), color) <= TOLERANCE,
            lambda: f"the fill {color}; it is {self.fill()}; {self._story()}",
        )

    def wait_for_ink(self, color, tolerance=TOLERANCE):
        """Waits until something is drawn in the colour."""
        wait_until(
            lambda: self.picture().nearest(color)[1] <= tolerance,
            lambda: f"ink of {color}; the nearest is {self.picture().nearest(color)}",
        )

    def _story(self):
        state = "it runs" if self.process.running else f"it ended: {self.process.popen.returncode}"
        return f"{state}; its output: {self.process.output()!r}"


class DesktopTest(unittest.TestCase):
    """A test with a desktop of its own."""

    window_manager = "openbox"
    desktops = 4
    compositor = False

    def setUp(self):
        self.desktop = Desktop(self.window_manager, self.desktops, self.compositor)
        # Python 3.11's enterContext, also for earlier ones.
        self.desktop.__enter__()
        self.addCleanup(self.desktop.end)
        self.defaults = Defaults(self.desktop)

    def launch(self, environment=None):
        """Starts the program and waits until its status item is there and, where
        there are desktops to tour, it has come to rest."""
        program = Vembrix(self.desktop, environment)
        program.wait_for_strip()
        if self.window_manager and self.desktops > 1:
            program.wait_for_tour()
        return program

"""The program under test, on a private desktop, as its user meets it."""

import os
import plistlib
import signal
import stat
import unittest

from support.desktop import Desktop
from support.processes import LIMIT, wait_until
from support.screen import distance, rgb

# The largest difference of a pixel's component from its colour, of 255.
TOLERANCE = 4

PINK = rgb(1.0, 0.71, 0.76)
# Light text is darkened on a light bar.
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
        # Replaced in one step, because the program may read it at any time.
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
            lambda: f"the end of the tour; {self.story()}",
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
        """The settings window while it is visible, or None."""

        def visible_window():
            for window in self.desktop.windows_of_class("vembrix"):
                if window.read("WM_WINDOW_ROLE") == "settings" and window.visible:
                    return window
            return None

        return wait_until(visible_window, lambda: f"the settings window; {self.story()}")

    def title(self):
        strip = self.strip()
        return strip.name if strip else None

    def wait_for_strip(self):
        def visible_strip():
            strip = self.strip()
            return strip if strip and strip.visible else None

        return wait_until(visible_strip, lambda: f"the status item; {self.story()}")

    def wait_for_title(self, title, limit=LIMIT):
        wait_until(
            lambda: self.title() == title,
            lambda: f"the title {title!r}; it is {self.title()!r}; {self.story()}",
            limit,
        )

    def picture(self):
        """A picture of the status item on the screen."""
        return self.desktop.picture().crop(*self.strip().frame())

    def fill(self):
        """The colour behind the title: that of the pixels at its left end, half
        way up, where neither the rounded corners nor a letter reach."""
        picture = self.picture()
        return picture.pixel(3, picture.height // 2)

    def wait_for_fill(self, color):
        wait_until(
            lambda: distance(self.fill(), color) <= TOLERANCE,
            lambda: f"the fill {color}; it is {self.fill()}; {self.story()}",
        )

    def wait_for_ink(self, color, tolerance=TOLERANCE):
        """Waits until something is drawn in the colour."""
        wait_until(
            lambda: self.picture().nearest(color)[1] <= tolerance,
            lambda: f"ink of {color}; the nearest is {self.picture().nearest(color)}",
        )

    def story(self):
        """For failures: the state of the program and of its window manager."""
        story = f"{_state(self.process)}; its output: {self.process.output()!r}"
        manager = self.desktop.window_manager
        if manager:
            windows = [
                f"{window.read('WM_WINDOW_ROLE')} {'seen' if window.visible else 'not seen'}"
                for window in self.desktop.windows_of_class("vembrix")
            ]
            story += (
                f"; its windows: {', '.join(windows) or 'none'}; of {manager.name}: "
                f"{_state(manager)}, {manager.output()!r}"
            )
        return story


def _state(process):
    return "it runs" if process.running else f"it ended: {process.popen.returncode}"


# Roles of the windows that exist as long as the program runs.
LASTING_ROLES = ("status-item", "label", "tour-overlay")


class DesktopTest(unittest.TestCase):
    """A test on a private desktop, which those of a class share: each finds it as the
    first did."""

    window_manager = "openbox"
    desktops = 4
    compositor = False

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(cls.window_manager, cls.desktops, cls.compositor)
        # Does what enterClassContext does from Python 3.11 on.
        cls.desktop.__enter__()
        cls.addClassCleanup(cls.desktop.end)

    def setUp(self):
        self.desktop.tidy()
        self.defaults = Defaults(self.desktop)

    @classmethod
    def launch(cls, environment=None):
        """Starts the program and waits until its status item is there and, where
        there are desktops to tour, it has come to rest."""
        program = Vembrix(cls.desktop, environment)
        program.wait_for_strip()
        if cls.window_manager and cls.desktops > 1:
            program.wait_for_tour()
        return program


class SharedRunTest(DesktopTest):
    """Tests that also share one run of the program, since the tour takes seconds. Each
    finds it on the first desktop, with the first settings and no window open."""

    # Keys that each test takes over from the previous one.
    kept_settings = ()

    program = None

    def setUp(self):
        cls = type(self)
        self.defaults = Defaults(self.desktop)
        if self._may_go_on():
            self.desktop.tidy(lasting=[cls.program.process])
        # The desktop may have been restarted, which ends the program.
        if self._may_go_on():
            self._rest()
        else:
            super().setUp()
            cls.program = self.launch()
            wait_until(lambda: "KnownSpaceUUIDs" in self.defaults.read(), "its first settings")
            cls.first_settings = self.defaults.read()

    def _may_go_on(self):
        # The program reads the names once.
        runs = self.program and self.program.process.running
        return runs and not self.defaults.read().get("SpaceNames")

    def _rest(self):
        wait_until(self._is_alone, "its windows to close")
        stored = self.defaults.read()
        kept = {key: stored[key] for key in self.kept_settings if key in stored}
        if stored != {**self.first_settings, **kept}:
            self.defaults.write({**self.first_settings, **kept})
            # The next desktop shows the new values.
            self.desktop.go_to(1)
            self.program.wait_for_title("Desktop 2")
            self.desktop.go_to(0)
        self.program.wait_for_title("Desktop 1")

    def _is_alone(self):
        """Returns whether its menu and its other windows are closed; asks open ones to
        close."""
        open_windows = [
            window
            for window in self.desktop.windows_of_class("vembrix")
            if window.visible and window.read("WM_WINDOW_ROLE") not in LASTING_ROLES
        ]
        for window in open_windows:
            if window.read("WM_WINDOW_ROLE") == "menu":
                self.desktop.run("xdotool", "key", "Escape")
            else:
                self.desktop.run("wmctrl", "-i", "-c", window.identifier)
        return not open_windows

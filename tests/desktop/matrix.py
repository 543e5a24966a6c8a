"""Tries Vembrix on every window manager that it is made for, prints which check holds on
which, and keeps pictures of each.

Usage: matrix.py PROGRAM PICTURE_FOLDER [NAME...]

Status 0 where all hold.
"""

import os
import re
import signal
import sys
import time

from support.dropdown import Dropdown
from support.furniture import NOTES, hang_wallpaper, open_note, open_window
from support.labels import Labels, Showings
from support.matrix_checks import CHECKS, HOME
from support.processes import WindowGone, wait_until
from support.vembrix import Vembrix
from support.window import Window
from support.window_managers import WINDOW_MANAGERS, MatrixDesktop
from support.x11_requests import RequestLog

TREES = {
    "i3": ("i3-msg", "-t", "get_tree"),
    "bspwm": ("bspc", "query", "-N"),
    "herbstluftwm": ("herbstclient", "attr", "clients"),
}
NEW = ("New 1", "New 2", "New 3")


class Session:
    """A window manager with a window on each desktop."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.point_aside()
        hang_wallpaper(desktop)
        for index in range(4):
            desktop.reach(index)
            open_note(desktop, index, "60x16+140+160", 11)
            self.wait_for_focus(NOTES[index][0], "at first")
        # A second time: some window managers announce the way back differently.
        self.focus = {}
        for index in (0, 2, 3, HOME):
            desktop.reach(index)
            self.focus[index] = self.settled(desktop.focused_name)

    def point_aside(self):
        """Moves the pointer to where no window opens, which would take the focus with it."""
        left, top, width, height = self.desktop.primary()
        self.desktop.run("xdotool", "mousemove", str(left + 300), str(top + 300))

    @staticmethod
    def settled(read):
        """The value once it has not changed for half a second."""
        last, since = object(), 0.0

        def stays():
            nonlocal last, since
            value = read()
            if value != last:
                last, since = value, time.monotonic()
            return time.monotonic() - since > 0.5

        wait_until(stays, "an end of changes")
        return last

    def wait_for_focus(self, name, when):
        desktop = self.desktop
        wait_until(
            lambda: desktop.focused_name() == name,
            lambda: f"the focus at {name!r} {when}; {desktop.focused_name()!r} has it",
            10,
        )

    def open(self, title, *options):
        open_window(self.desktop, "xterm", "-title", title, *options)
        return self.find(title)

    def find(self, title):
        for window in self.desktop.windows_of_class("xterm"):
            if window.read("WM_NAME") == title:
                return window
        raise WindowGone(title)

    def close(self, window):
        self.desktop.run("xdotool", "windowkill", window.identifier)
        wait_until(lambda: window.read("WM_CLASS") is None, "the window to close")

    def put_panel(self, frame, strut):
        """Another program's panel, with the usual properties."""
        desktop = self.desktop
        x, y, width, height = frame
        desktop.start(["xev", "-bw", "0", "-name", "Panel", "-geometry", f"{width}x{height}+{x}+{y}"])
        panel = wait_until(lambda: self._named_panel(), "the panel")
        desktop.run("xdotool", "windowunmap", "--sync", panel)
        # Asks for a larger size.
        desktop.run("xprop", "-id", panel, "-remove", "WM_NORMAL_HINTS")
        for name, kind, value in (
            ("_NET_WM_WINDOW_TYPE", "32a", "_NET_WM_WINDOW_TYPE_DOCK"),
            ("_NET_WM_STRUT_PARTIAL", "32c", strut),
            ("_NET_WM_STRUT", "32c", ", ".join(strut.split(", ")[:4])),
        ):
            desktop.run("xprop", "-id", panel, "-f", name, kind, "-set", name, value)
        # The window manager may have framed or tiled the window.
        place = [*map(str, frame)]
        desktop.run(
            "xdotool", "windowsize", panel, *place[2:], "windowmove", panel, *place[:2],
            "windowmap", "--sync", panel, "windowmove", panel, *place[:2],
        )  # fmt: skip
        self.settled(lambda: desktop.root_property("_NET_WORKAREA"))

    def _named_panel(self):
        try:
            return self.desktop.run("xdotool", "search", "--onlyvisible", "--name", "^Panel$").strip()
        except AssertionError:
            # Fails when no window is found.
            return None

    def open_three(self):
        windows = [self.open(title, "-geometry", "40x10") for title in NEW]
        places = [self.settled(window.frame) for window in windows]
        for window in windows:
            self.close(window)
        return places


class Trial(Session):
    """The program on that desktop."""

    def __init__(self, desktop, name, folder):
        super().__init__(desktop)
        self._name = name
        self._folder = folder
        self._kept = set()
        self.names = list(desktop.kind.names)
        self.showings = Showings(desktop)
        self.log = RequestLog(desktop)
        self.program = Vembrix(desktop, self.log.environment)
        self.program.wait_for_strip()
        self.program.wait_for_tour()
        self.focus_after_tour = self.settled(desktop.focused_name)
        self.labels = Labels(self.program, self.showings)

    def visit(self, index):
        self.desktop.reach(index)
        wanted = [self.names[index]]
        # A workspace whose number differs from its place in the list shows its number.
        if self.desktop.kind.on_demand and wanted[0] == f"Desktop {index + 1}":
            wanted.append(str(index + 1))
        wait_until(
            lambda: self.program.title() in wanted,
            lambda: f"the title {wanted}; it is {self.program.title()!r}",
        )
        self.labels.wait_for_rest()

    def places_without_it(self):
        """Where three windows open in another session, in which a panel stands where the
        strip stands here."""
        strip = self.program.strip()
        with MatrixDesktop(self._name) as desktop:
            session = Session(desktop)
            session.put_panel(strip.frame(), strip.read("_NET_WM_STRUT_PARTIAL"))
            return session.open_three()

    def is_label(self, identifier):
        return Window(self.desktop, identifier).read("WM_WINDOW_ROLE") == "label"

    @staticmethod
    def is_panel(window):
        return "DOCK" in (window.read("_NET_WM_WINDOW_TYPE") or "")

    def tree(self):
        command = TREES.get(self._name)
        if not command:
            return None
        text = self.desktop.run(*command)
        # One tool prints the number in decimal, the other as 0x and eight digits.
        numbers = re.findall(r'"window":(\d+)', text) + re.findall(r"0x[0-9a-fA-F]+", text)
        return [hex(int(number, 0)) for number in numbers]

    def add_state(self, window, states):
        # By window number, because pekwm lists its last window late.
        self.desktop.run("wmctrl", "-i", "-r", window.identifier, "-b", f"add,{states}")

    def open_menu(self, menu):
        x, y, width, height = self.program.strip().frame()
        # At the right end, where the button of a stretched strip is.
        menu.point_at(x + width - 10, y + height // 2)
        self.desktop.run("xdotool", "click", "1")
        wait_until(menu.window, "the open menu")
        wait_until(lambda: menu.picture().nearest((0, 0, 0))[1] < 120, "the painted menu")

    def row_count(self):
        menu = Dropdown(self.program)
        self.open_menu(menu)
        count = menu.row_count()
        menu.key("Escape")
        menu.wait_until_closed()
        return count

    def keep(self, what, only_once=False):
        if only_once and what in self._kept:
            return
        self._kept.add(what)
        # The time that a compositor takes to show the present state.
        time.sleep(0.4)
        name = f"{self._name}-{what}" if what else self._name
        self.desktop.picture().save_png(os.path.join(self._folder, f"{name}.png"))

    def recover(self):
        """Closes what a failed check has left open."""
        self.keep("failed")
        for key in ("Escape", "Escape"):
            self.desktop.run("xdotool", "key", key)
        for window in self.desktop.windows_of_class("xterm"):
            if window.read("WM_NAME") in (*NEW, "Wide", "All", "Clicked"):
                self.close(window)
        self.point_aside()


def attempt(trial, name, check):
    """Returns whether the check holds; prints what does not."""
    try:
        check(trial)
    except (AssertionError, OSError) as failure:
        print(f"  {name}: {failure}", flush=True)
        try:
            trial.recover()
        except (AssertionError, OSError) as other:
            print(f"  after {name}: {other}", flush=True)
        return False
    return True


def try_on(name, folder):
    """Which checks hold on that window manager."""
    print(name, flush=True)
    try:
        with MatrixDesktop(name) as desktop:
            trial = Trial(desktop, name, folder)
            held = {key: attempt(trial, key, check) for key, check in CHECKS.items()}
            status = trial.program.end()
            if status != 0:
                print(f"  the program ended with {status}: {trial.program.process.output()}")
                held["tour"] = False
            return held
    except (AssertionError, OSError) as failure:
        print(f"  {failure}", flush=True)
        return dict.fromkeys(CHECKS, False)


def table(results):
    width = max(len(name) for name in results) + 2
    lines = [" " * width + " ".join(CHECKS)]
    for name, held in results.items():
        cells = [("ok" if held[key] else "FAIL").ljust(len(key)) for key in CHECKS]
        lines.append(name.ljust(width) + " ".join(cells))
    return "\n".join(line.rstrip() for line in lines)


def main():
    program, folder, *names = sys.argv[1:]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    os.environ["VEMBRIX_PROGRAM"] = os.path.abspath(program)
    os.makedirs(folder, exist_ok=True)
    unknown = [name for name in names if name not in WINDOW_MANAGERS]
    if unknown:
        print(f"matrix: no such window manager: {', '.join(unknown)}", file=sys.stderr)
        return 2
    results = {name: try_on(name, folder) for name in names or WINDOW_MANAGERS}
    print(table(results))
    return 0 if all(all(held.values()) for held in results.values()) else 1


if __name__ == "__main__":
    sys.exit(main())

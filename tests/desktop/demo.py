"""Drives Vembrix through its main job on a private desktop and keeps a picture
of the screen after each step.

Usage: demo.py PROGRAM PICTURE_FOLDER

Every step is checked by what the window manager and the pixels say; the first
that does not happen ends the demo with a message and status 1.
"""

import os
import signal
import sys
import time

from support.desktop import Desktop
from support.dropdown import Dropdown
from support.furniture import NOTES, hang_wallpaper, open_note, open_window
from support.labels import Labels, Showings
from support.processes import wait_until
from support.settings_portal import Portal
from support.vembrix import BLACK, BLUE, GREEN, HALVED_PINK, PEACH, PINK, Defaults, Vembrix

LONG_NAME = "The quarterly numbers and everything that belongs to them"


class Demo:
    def __init__(self, desktop, folder):
        self._desktop = desktop
        self._folder = folder
        self._defaults = Defaults(desktop)
        self._portal = Portal(desktop, Portal.LIGHT)
        self._program = None
        self._showings = None
        self._pictures = 0

    def run(self):
        self._furnish()
        self._showings = Showings(self._desktop)
        self._program = Vembrix(self._desktop)
        self._program.wait_for_strip()
        self._tour()
        self._four_desktops()
        self._warm_labels()
        self._dropdown()
        self._settings_window()
        self._stored_name()
        self._foreground()
        self._dark()
        self._icon()
        self._fixed_width()
        status = self._program.end()
        if status != 0:
            raise AssertionError(f"Vembrix ended with {status}")

    # Windows of other programs

    def _furnish(self):
        desktop = self._desktop
        hang_wallpaper(desktop)
        for index, (title, _) in NOTES.items():
            desktop.go_to(index)
            wait_until(lambda index=index: desktop.current == index, f"desktop {index + 1}")
            open_note(desktop, index, "64x20+140+120", 11)
            if index % 2 == 0:
                clock = f"{title} clock"
                open_window(
                    desktop, "xclock", "-title", clock, "-geometry", "190x190+1120+120"
                )
        desktop.go_to(1)
        wait_until(lambda: desktop.current == 1, "desktop 2")

    # The steps

    def _go_to(self, index, title):
        self._desktop.go_to(index)
        self._program.wait_for_title(title)
        self._wait_until_faded()

    def _restart(self):
        if self._program.end() != 0:
            raise AssertionError(f"Vembrix did not end in order: {self._program.log_lines()}")
        self._program = Vembrix(self._desktop)
        self._program.wait_for_strip()
        self._program.wait_for_tour()

    def _tour(self):
        """Out to the last desktop, back to the first, and home again, under the
        overlay."""
        pictures = []
        for title in ("Desktop 4", "Desktop 1"):
            self._program.wait_for_title(title)
            pictures.append((title, self._desktop.picture()))
        for title, picture in pictures:
            if picture.crop(460, 402, 520, 96).nearest((255, 255, 255))[1] > 60:
                raise AssertionError(f"nothing covers the tour on {title}")
            self._keep(f"tour-{title.lower().replace(' ', '-')}", picture)
        self._program.wait_for_tour()
        wait_until(lambda: self._desktop.current == 1, "the desktop where the tour began")
        wait_until(lambda: not self._labels().overlays(), "the overlay to go")

    def _four_desktops(self):
        for index, color in enumerate((PINK, BLUE, GREEN, PEACH)):
            self._arrive(index)
            self._program.wait_for_fill(color)
            self._program.wait_for_ink(BLACK, 40)
            self._keep(f"desktop-{index + 1}")

    def _labels(self):
        return Labels(self._program, self._showings)

    def _arrive(self, index):
        """Goes to the desktop, whose label appears and fades."""
        with self._labels().arrival(index) as label:
            if label.name != f"Desktop {index + 1}":
                raise AssertionError(f"{label.name!r} was seen on desktop {index + 1}")
            self._wait_until_still()
            self._keep(f"arrival-on-desktop-{index + 1}", self._desktop.picture())
        self._program.wait_for_title(f"Desktop {index + 1}")

    def _wait_until_still(self):
        """Waits until the compositor has drawn the screen."""
        former = None
        for _ in range(50):
            picture = self._desktop.picture().crop(240, 200, 960, 500)
            pixels = set(picture.pixels())
            if pixels == former:
                return
            former = pixels
            time.sleep(0.05)

    def _wait_until_faded(self):
        self._labels().wait_for_rest()

    def _warm_labels(self):
        """Work on the third and the first desktop warms their labels, as is seen on
        the way back to the first."""
        for index in (2, 0):
            self._go_to(index, f"Desktop {index + 1}")
            self._desktop.run("xdotool", "mousemove", "300", "300", "click", "1")
            wait_until(
                lambda index=index: self._defaults.read().get("SpaceHeatRecency", [""])[0]
                == f"x11-desktop-{index + 1}",
                "the click to be noticed",
            )
        self._desktop.run("xdotool", "mousemove", "720", "860")
        self._go_to(1, "Desktop 2")
        self._arrive(0)
        self._go_to(1, "Desktop 2")

    def _dropdown(self):
        """Names the second desktop and goes to the third."""
        menu = Dropdown(self._program)
        menu.open()
        self._keep("dropdown")
        menu.hover(1)
        menu.wait_for_tint(1)
        self._keep("dropdown-pointed-at")
        menu.click_pencil(1)
        menu.type("Mail")
        self._keep("dropdown-renaming")
        menu.key("Return")
        wait_until(
            lambda: self._defaults.read().get("SpaceNames") == {"x11-desktop-2": "Mail"},
            "the name to be stored",
        )
        menu.wait_for_label(1)
        self._keep("dropdown-renamed")
        menu.click_row(2)
        menu.wait_until_closed()
        self._program.wait_for_title("Desktop 3")
        self._keep("switched-from-dropdown")

    def _settings_window(self):
        menu = Dropdown(self._program)
        menu.open()
        menu.key("ctrl+comma")
        window = self._program.wait_for_settings()
        self._keep("settings")
        self._desktop.run("xdotool", "key", "Escape")
        wait_until(lambda: not window.visible, "the settings window to close")
        # Moves the pointer off the title.
        menu.point_at(720, 700)

    def _stored_name(self):
        self._defaults.update({"SpaceNames": {"x11-desktop-2": "Mail", "x11-desktop-3": LONG_NAME}})
        self._restart()
        self._go_to(1, "Mail")
        self._program.wait_for_fill(BLUE)
        self._keep("named-space")

    def _foreground(self):
        self._defaults.update({"ColorMode": "colorForeground"})
        self._go_to(0, "Desktop 1")
        self._program.wait_for_ink(HALVED_PINK, 24)
        self._keep("color-as-text")

    def _dark(self):
        self._portal.set(Portal.DARK)
        self._program.wait_for_ink(PINK, 24)
        self._keep("color-as-text-dark")

    def _icon(self):
        self._defaults.update({"ShowSpaceNameInMenuBar": False, "ColorMode": "colorBackground"})
        self._desktop.go_to(3)
        wait_until(lambda: self._is_square(self._program.strip().frame()), "a square icon")
        self._program.wait_for_ink((255, 255, 255), 40)
        self._keep("icon-dark")
        self._portal.set(Portal.LIGHT)
        self._program.wait_for_ink(BLACK, 60)
        self._keep("icon")

    @staticmethod
    def _is_square(frame):
        return frame[2] == frame[3]

    def _fixed_width(self):
        self._defaults.update({"ShowSpaceNameInMenuBar": True})
        self._go_to(2, LONG_NAME)
        self._program.wait_for_fill(GREEN)
        self._keep("long-name")
        self._defaults.update({"MenuBarWidthMode": "maxTitleLength"})
        self._go_to(1, "Mail")
        self._go_to(2, LONG_NAME)
        wait_until(lambda: self._program.strip().frame()[2] == 140, "a width of 140")
        self._program.wait_for_fill(GREEN)
        self._keep("long-name-fixed-width")

    def _keep(self, what, picture=None):
        if picture is None:
            # The label of the desktop just arrived at would be seen instead.
            self._wait_until_faded()
            picture = self._desktop.still_picture()
        self._pictures += 1
        path = os.path.join(self._folder, f"{self._pictures:02}-{what}.png")
        picture.save_png(path)
        print(path, flush=True)


def main():
    program, folder = sys.argv[1:]
    # Ends the desktop in order after a signal, too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    os.environ["VEMBRIX_PROGRAM"] = os.path.abspath(program)
    os.makedirs(folder, exist_ok=True)
    for name in os.listdir(folder):
        if name.endswith(".png"):
            os.remove(os.path.join(folder, name))
    try:
        with Desktop(compositor=True) as desktop:
            Demo(desktop, folder).run()
    except AssertionError as failure:
        print(f"demo: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

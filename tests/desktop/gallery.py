"""Takes the pictures of the README on private desktops: the strip and the dropdown
at double scale, a label, and a film of the main job.

Usage: gallery.py PROGRAM FOLDER

Leaves strip-1.png to strip-4.png, dropdown.png and label.png in the folder, and the film as
one picture for each change on the screen in film/, with film/frames.txt: a line
for each frame in its order, with how long it is shown, in hundredths of a second,
and its file.
"""

import os
import signal
import sys
import threading
import time

from support.desktop import Desktop
from support.dropdown import INSET, NAME_X, ROW_HEIGHT, Dropdown
from support.furniture import NOTES, hang_wallpaper, open_note
from support.labels import Labels
from support.processes import wait_until
from support.screen import Picture
from support.settings_portal import Portal
from support.vembrix import Defaults, Vembrix

TICK = 0.1
HUNDREDTHS = 10


class Camera(threading.Thread):
    """Films the screen, ten frames a second; frames that are alike are kept once."""

    def __init__(self, desktop):
        super().__init__(daemon=True)
        self._screen = desktop.path("screen", "Xvfb_screen0")
        self._over = threading.Event()
        # Pairs of a screenshot and the number of ticks for which it is shown.
        self._frames = []

    def run(self):
        begin = time.monotonic()
        taken = 0
        while not self._over.is_set():
            with open(self._screen, "rb") as file:
                screen = file.read()
            taken += 1
            if self._frames and self._frames[-1][0] == screen:
                self._frames[-1][1] += 1
            else:
                self._frames.append([screen, 1])
            self._over.wait(max(begin + taken * TICK - time.monotonic(), 0))

    def develop(self, folder):
        """Ends the film and writes it down."""
        self._over.set()
        self.join()
        os.makedirs(folder, exist_ok=True)
        raw = os.path.join(folder, "screen")
        with open(os.path.join(folder, "frames.txt"), "w", encoding="utf-8") as index:
            for number, (screen, ticks) in enumerate(self._frames):
                name = f"{number:04}.png"
                with open(raw, "wb") as file:
                    file.write(screen)
                Picture.read(raw).save_png(os.path.join(folder, name))
                index.write(f"{ticks * HUNDREDTHS} {name}\n")
        os.remove(raw)


class Hand:
    """Moves the pointer gradually, as a user does."""

    STEP = 10

    def __init__(self, desktop, x, y):
        self._desktop = desktop
        self._place = (x, y)
        self._move(x, y)

    def go(self, x, y):
        left, top = self._place
        count = max(abs(x - left), abs(y - top)) // self.STEP + 1
        for step in range(1, count + 1):
            self._move(left + (x - left) * step // count, top + (y - top) * step // count)
            time.sleep(0.03)
        self._place = (x, y)

    def click(self):
        time.sleep(0.3)
        self._desktop.run("xdotool", "click", "1")

    def _move(self, x, y):
        self._desktop.run("xdotool", "mousemove", str(x), str(y))


class Film:
    """The main job: name a desktop, go there, and come back."""

    SIZE = (720, 450)
    # The steps, in order. Numbers are rows of the dropdown, from 0.
    STEPS = (
        ("rest", 1.2),
        ("open",),
        ("rename", 1, "Mail"),
        ("choose", 1, "Mail"),
        ("rest", 2.5),
        ("open",),
        ("choose", 3, "Desktop 4"),
        ("rest", 2.5),
        ("open",),
        ("choose", 0, "Desktop 1"),
        ("rest", 2.0),
    )

    def __init__(self, desktop):
        self._desktop = desktop
        self._portal = Portal(desktop, Portal.LIGHT)
        furnish(desktop, "46x13+48+72", 10)
        # The usual size of labels relative to the screen.
        Defaults(desktop).write({"SignTextSize": 84})
        self._program = start(desktop)
        self._menu = Dropdown(self._program)
        self._hand = Hand(desktop, 430, 300)

    def shoot(self, folder):
        camera = Camera(self._desktop)
        camera.start()
        for name, *arguments in self.STEPS:
            getattr(self, f"_{name}")(*arguments)
        camera.develop(folder)
        end(self._program)

    @staticmethod
    def _rest(duration):
        time.sleep(duration)

    def _open(self):
        x, y, width, height = self._program.strip().frame()
        self._hand.go(x + width // 2, y + height // 2)
        self._hand.click()
        wait_until(self._menu.window, "the open menu")
        time.sleep(0.6)

    def _point_at(self, row, offset):
        x, y, _, _ = self._menu.window().frame()
        self._hand.go(x + offset, y + INSET + row * ROW_HEIGHT + ROW_HEIGHT // 2)

    def _rename(self, row, name):
        self._point_at(row, NAME_X)
        self._menu.wait_for_tint(row)
        width = self._menu.window().frame()[2]
        self._point_at(row, width - 21)
        self._hand.click()
        time.sleep(0.4)
        for character in name:
            self._menu.type(character)
            time.sleep(0.12)
        time.sleep(0.4)
        self._menu.key("Return")
        self._menu.wait_for_label(row)
        time.sleep(0.5)

    def _choose(self, row, title):
        self._point_at(row, NAME_X)
        self._hand.click()
        self._menu.wait_until_closed()
        self._program.wait_for_title(title)


class Stills:
    """The strip and the dropdown, at double scale."""

    SCALE = 2
    CORNER = (190, 70)
    DROPDOWN = (300, 200)

    def __init__(self, desktop):
        self._desktop = desktop
        self._portal = Portal(desktop, Portal.LIGHT)
        names = {f"x11-desktop-{index + 1}": title for index, (title, _) in NOTES.items()}
        Defaults(desktop).write({"SpaceNames": names})
        hang_wallpaper(desktop)
        self._program = start(desktop, {"QT_SCALE_FACTOR": str(self.SCALE)})

    def shoot(self, folder):
        last = None
        for index, (title, _) in NOTES.items():
            self._desktop.go_to(index)
            self._program.wait_for_title(title)
            # The strip is painted after its window gets the name.
            wait_until(lambda: self._program.fill() != last, f"the colour of {title}")
            last = self._program.fill()
            self._keep(os.path.join(folder, f"strip-{index + 1}.png"), self.CORNER)
        menu = Dropdown(self._program, self.SCALE)
        menu.open()
        menu.hover(1)
        menu.wait_for_tint(1)
        self._keep(os.path.join(folder, "dropdown.png"), self.DROPDOWN)
        menu.key("Escape")
        end(self._program)

    def _keep(self, path, size):
        width, height = (self.SCALE * length for length in size)
        left = self._desktop.size[0] - width
        self._desktop.still_picture().crop(left, 0, width, height).save_png(path)


def shoot_label(desktop, path):
    """Takes a picture on arrival at a desktop where the user has just worked."""
    defaults = Defaults(desktop)
    defaults.write({"SpaceNames": {"x11-desktop-2": NOTES[1][0]}})
    furnish(desktop, "60x16+140+160", 11)
    program = start(desktop)
    desktop.go_to(1)
    program.wait_for_title(NOTES[1][0])
    desktop.run("xdotool", "mousemove", "400", "600", "click", "1")
    is_noticed = lambda: defaults.read().get("SpaceHeatRecency", [""])[0] == "x11-desktop-2"  # noqa: E731
    wait_until(is_noticed, "the click to be noticed")
    desktop.go_to(0)
    program.wait_for_title("Desktop 1")
    Labels(program).wait_for_rest()
    with desktop.pixels() as pixels:
        place = (desktop.size[0] - 3, 12)
        fill = pixels.at(*place)
        desktop.go_to(1)
        wait_until(lambda: pixels.at(*place) != fill, "the strip of the other desktop")
        desktop.picture().save_png(path)
    end(program)


def furnish(desktop, geometry, font_size):
    hang_wallpaper(desktop)
    for index in reversed(NOTES):
        desktop.go_to(index)
        wait_until(lambda index=index: desktop.current == index, f"desktop {index + 1}")
        open_note(desktop, index, geometry, font_size)


def start(desktop, environment=None):
    """Vembrix, after its tour."""
    program = Vembrix(desktop, environment)
    program.wait_for_strip()
    program.wait_for_tour()
    return program


def end(program):
    status = program.end()
    if status != 0:
        raise AssertionError(f"Vembrix ended with {status}")


def main():
    program, folder = sys.argv[1:]
    # Ends the desktops in order after a signal, too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    os.environ["VEMBRIX_PROGRAM"] = os.path.abspath(program)
    os.makedirs(folder, exist_ok=True)
    try:
        with Desktop(compositor=True) as desktop:
            Stills(desktop).shoot(folder)
        with Desktop(compositor=True) as desktop:
            shoot_label(desktop, os.path.join(folder, "label.png"))
        with Desktop(compositor=True, size=Film.SIZE) as desktop:
            Film(desktop).shoot(os.path.join(folder, "film"))
    except AssertionError as failure:
        print(f"gallery: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

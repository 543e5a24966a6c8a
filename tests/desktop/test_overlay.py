"""The overlay that covers the tour through the desktops."""

import time
import unittest

from support.labels import Label, Labels, Showings, keep
from support.processes import wait_until
from support.screen import distance
from support.vembrix import BLUE, GREEN, PEACH, PINK, TOLERANCE, DesktopTest, Vembrix

GROUND = (128, 144, 160)
# Colours of the status item, by desktop.
FILLS = (PINK, BLUE, GREEN, PEACH)
SIZE = (520, 96)
# Black at opacity 0.72 over the background.
COVERED = tuple(round(0.28 * component) for component in GROUND)
# The time from the end of the tour to the end of the overlay, with an allowance for a busy
# machine.
FADE_OUT = 0.25 + 0.5


class OverlayTest(DesktopTest):
    compositor = True

    def setUp(self):
        super().setUp()
        self.desktop.run("xdotool", "mousemove", "720", "860")
        self.desktop.run("hsetroot", "-solid", "#%02x%02x%02x" % GROUND)
        wait_until(lambda: self.pill_pixel() == GROUND, "the ground")

    def pill_pixel(self, pixels=None):
        """The pixel inside the left end, beside spinner and text."""
        width, height = self.desktop.size
        if not pixels:
            with self.desktop.pixels() as pixels:
                return self.pill_pixel(pixels)
        return pixels.at((width - SIZE[0]) // 2 + 30, height // 2)

    def is_covered(self, pixel):
        return distance(pixel, self.covered()) <= TOLERANCE

    def covered(self):
        return COVERED

    def test_covers_every_desktop_of_the_tour(self):
        program = Vembrix(self.desktop)
        labels = Labels(program)
        wait_until(labels.overlays, "the overlay")
        (overlay,) = labels.overlays()
        x, y, width, height = overlay.frame()
        self.assertEqual((width, height), SIZE)
        self.assertLessEqual(abs(x + width / 2 - self.desktop.size[0] / 2), 1)
        self.assertLessEqual(abs(y + height / 2 - self.desktop.size[1] / 2), 1)
        self.assertFalse(overlay.is_managed)
        film = self.film(lambda: "[Vembrix] tour end" in program.log_lines())
        covered = [n for n, (_, pill) in enumerate(film) if self.is_covered(pill)]
        # The overlay fades in and out on the first desktop.
        self.assertLessEqual({1, 2, 3}, {film[n][0] for n in covered}, "covered desktops")
        self.assertEqual(len(covered), covered[-1] - covered[0] + 1, "covered all the time")
        end = time.monotonic()
        wait_until(lambda: not labels.overlays(), "the overlay to go")
        wait_until(lambda: self.pill_pixel() == GROUND, "the ground again")
        self.assertLess(time.monotonic() - end, FADE_OUT)
        labels.wait_for_rest()

    def film(self, is_over):
        """Which desktop the status item showed and what was where the overlay is,
        again and again; keeps a picture."""
        film = []
        width, _ = self.desktop.size
        picture = None
        with self.desktop.pixels() as pixels:
            while not is_over():
                for _ in range(10):
                    strip = pixels.at(width - 4, 4)
                    index = next((n for n, fill in enumerate(FILLS) if strip == fill), None)
                    film.append((index, self.pill_pixel(pixels)))
                    time.sleep(0.004)
                if not picture and self.is_covered(film[-1][1]):
                    picture = self.desktop.picture()
        if picture:
            keep(picture, f"overlay-{type(self).__name__}")
        return film

    def test_no_label_is_seen_during_the_tour(self):
        showings = Showings(self.desktop)
        begin = time.monotonic()
        program = Vembrix(self.desktop)
        program.wait_for_tour()
        roles = [Label(self.desktop, shown.identifier).role for shown in showings.since(begin)]
        self.assertTrue(roles, "the overlay at least")
        self.assertNotIn("label", roles)

    def test_the_focus_is_the_same_after_the_tour(self):
        self.desktop.start(["xev", "-geometry", "500x300+100+300", "-event", "button"])

        def focus():
            return self.desktop.run("xdotool", "getwindowfocus", "getwindowname")

        wait_until(lambda: "Event Tester" in focus(), "another program's window")
        active = self.desktop.root_property("_NET_ACTIVE_WINDOW")
        Vembrix(self.desktop).wait_for_tour()
        wait_until(lambda: self.desktop.current == 0, "the first desktop")
        wait_until(lambda: "Event Tester" in focus(), "its focus again")
        self.assertEqual(self.desktop.root_property("_NET_ACTIVE_WINDOW"), active)


class WithoutCompositorTest(OverlayTest):
    compositor = False

    def covered(self):
        return (0, 0, 0)


class IcewmTest(OverlayTest):
    window_manager = "icewm"


if __name__ == "__main__":
    unittest.main()

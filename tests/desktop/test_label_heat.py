"""The colours of the labels: the more recently used, the warmer."""

import unittest

from support.labels import Labels, Showings, blend, keep, over
from support.preferences import Preferences
from support.processes import wait_until
from support.screen import distance
from support.vembrix import DesktopTest

# Tolerance: 0.02.
TOLERANCE = 5
GROUND = (0.5, 0.5, 0.5, 1)
WHITE = (1, 1, 1)
BLACK = (0, 0, 0)

# Fill when cold, fill when hot, rim.
EMBER = ((0, 0, 0, 0.78), (0.84, 0.19, 0.05, 0.88), (1, 0.64, 0.24))
MONO = ((0, 0, 0, 0.78), (0.93, 0.93, 0.93, 0.92), (1, 1, 1))

# By the number of desktops used since.
HEATS = (1, 0.78, 0.6084)


class HeatTest(DesktopTest):
    compositor = True

    def setUp(self):
        super().setUp()
        self.desktop.run("xdotool", "mousemove", "720", "860")
        self.desktop.run("hsetroot", "-solid", "#808080")

    def start(self):
        showings = Showings(self.desktop)
        self.program = self.launch()
        self.labels = Labels(self.program, showings)

    def go_to(self, number):
        self.desktop.go_to(number - 1)
        self.program.wait_for_title(f"Desktop {number}")

    def work_on(self, *numbers):
        """Clicks on each of the desktops."""
        for number in numbers:
            self.go_to(number)
            self.desktop.run("xdotool", "click", "1")
            wait_until(
                lambda number=number: self.defaults.read().get("SpaceHeatRecency", [""])[0]
                == f"x11-desktop-{number}",
                f"the click on desktop {number} to be noticed",
            )

    def visit(self, number, home):
        """The picture of that desktop's label on arrival from another, and its window's
        opacity in it."""
        self.go_to(home)
        self.labels.wait_for_rest()
        with self.labels.arrival(number - 1) as label:
            self.wait_until_still()
            return self.desktop.picture().crop(*label.frame()), label.opacity

    def wait_until_still(self):
        pictures = [None]

        def is_still():
            pictures.append(bytes(self.desktop.picture().crop(240, 200, 960, 500)._rgb))
            return pictures[-1] == pictures[-2]

        wait_until(is_still, "a still picture")

    def check_label(self, number, heat, palette, home):
        picture, alpha = self.visit(number, home)
        keep(picture, f"{self.id().split('.')[-1]}-desktop-{number}")
        cold, hot, rim = palette
        fill = blend(cold, hot, heat)
        shown = (*fill[:3], fill[3] * alpha)
        middle = picture.height // 2
        with self.subTest(number=number, heat=heat):
            found = picture.pixel(45, middle)
            wanted = over(shown, GROUND)
            self.assertLessEqual(distance(found, wanted), TOLERANCE, f"{found}, not {wanted}")
            width = max(4 * heat, 2) if heat > 0.05 else 0
            # The rim is drawn over the fill. Both have the opacity of the window.
            inside = over_within(((*rim, heat), fill))
            edge = over((*inside[:3], inside[3] * alpha), GROUND)
            for x in range(round(width - 0.5)):
                found = picture.pixel(x, middle)
                self.assertLessEqual(distance(found, edge), TOLERANCE, f"rim {found}, not {edge}")
            found = picture.pixel(round(width + 0.5), middle)
            self.assertLessEqual(distance(found, wanted), TOLERANCE, "the fill beside the rim")
            is_light = sum(w * c for w, c in zip((0.299, 0.587, 0.114), fill)) > 0.6
            ink = over((*(BLACK if is_light else WHITE), alpha), GROUND)
            text = picture.crop(80, middle - 30, picture.width - 160, 60)
            self.assertLessEqual(text.nearest(ink)[1], TOLERANCE, f"text of {ink}")
            # The corners are round.
            self.assertLessEqual(distance(picture.pixel(3, 3), (128, 128, 128)), 40)

    def test_follows_where_one_worked(self):
        self.start()
        self.work_on(3, 1, 2)
        # The current desktop does not count.
        self.check_label(1, HEATS[0], EMBER, home=2)
        self.check_label(3, HEATS[1], EMBER, home=2)
        self.check_label(4, 0, EMBER, home=2)
        for number, heat in zip((2, 1, 3), HEATS):
            self.check_label(number, heat, EMBER, home=4)

    def test_black_text_on_what_is_light(self):
        self.defaults.write({"HeatPaletteName": "Mono"})
        self.start()
        self.work_on(3, 1, 2)
        for number, heat in zip((2, 1, 3), HEATS):
            self.check_label(number, heat, MONO, home=4)

    def test_another_palette_in_the_settings(self):
        self.start()
        self.work_on(3, 1)
        preferences = Preferences(self.program)
        preferences.open()
        preferences.show_tab("Label")
        preferences.focus(5)
        # Goes to the last desktop.
        preferences.key("End")
        wait_until(lambda: self.defaults.read().get("HeatPaletteName") == "Mono", "Mono")
        preferences.key("Escape")
        preferences.wait_until_closed()
        self.desktop.run("xdotool", "mousemove", "720", "860")
        self.check_label(3, HEATS[0], MONO, home=1)


def over_within(layers):
    """The colour and the alpha of one translucent layer over another."""
    (*top, a), (*bottom, b) = layers
    alpha = a + b * (1 - a)
    return (*((a * x + b * (1 - a) * y) / alpha for x, y in zip(top, bottom)), alpha)


if __name__ == "__main__":
    unittest.main()

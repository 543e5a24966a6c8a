"""A label in every desktop, and its visibility."""

import time
import unittest

from support.desktop import Desktop
from support.labels import ARRIVAL, GROUND, LATE, NAMES, SETTLED, paint_ground
from support.labels import Hand, Labels, OpacitySpy, Showings, keep
from support.processes import wait_until
from support.screen import distance
from support.vembrix import TOLERANCE, Vembrix


class LabelsCase(unittest.TestCase):
    """Tests that share one run of the program, since the tour takes seconds: each
    begins on the first desktop, at rest."""

    window_manager = "openbox"
    compositor = True

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(cls.window_manager, 4, cls.compositor)
        cls.desktop.__enter__()
        cls.addClassCleanup(cls.desktop.end)
        cls.hand = Hand(cls.desktop)
        cls.hand.point_aside()
        paint_ground(cls.desktop)
        cls.showings = Showings(cls.desktop)
        cls.program = Vembrix(cls.desktop)
        cls.labels = Labels(cls.program, cls.showings)
        cls.program.wait_for_tour()

    def setUp(self):
        self.hand.point_aside()
        self.go_to(0)
        self.settle()

    def go_to(self, index):
        self.desktop.go_to(index)
        self.program.wait_for_title(f"Desktop {index + 1}")

    def settle(self):
        """Waits until no label is visible and those of the other desktops are ready."""
        time.sleep(SETTLED)
        self.labels.wait_for_rest()

    def shows_ground(self, label):
        with self.desktop.pixels() as pixels:
            return distance(pixels.at(*label.inside()), GROUND) <= TOLERANCE

    def open_below(self):
        """Another program's window behind the labels, with the focus; it reports clicks."""
        program = self.desktop.start(["xev", "-geometry", "500x300+400+300", "-event", "button"])
        self.addCleanup(program.end)
        wait_until(
            lambda: '"Event Tester"' in self.desktop.run("xwininfo", "-root", "-tree"),
            "another program's window",
        )
        wait_until(self.focus, "its focus")
        return program

    def focus(self):
        """The active window and the one with the keyboard focus; None without any."""
        active = self.desktop.root_property("_NET_ACTIVE_WINDOW")
        if not active or int(active.split()[-1].rstrip(","), 16) == 0:
            return None
        return active, self.desktop.run("xdotool", "getwindowfocus")


class PlacesTest(LabelsCase):
    def test_each_is_seen_on_its_desktop_alone(self):
        for index in (1, 2, 3, 0):
            with self.labels.arrival(index) as label:
                self.assertEqual(self.labels.shown(), [NAMES[index]])
                self.assertEqual(label.role, "label")
                self.assertEqual(label.read("WM_CLASS"), '"vembrix", "Vembrix"')
                self.assertFalse(label.is_managed)
                x, y, width, height = label.frame()
                self.assertLessEqual(abs(x + width / 2 - self.desktop.size[0] / 2), 1)
                self.assertLessEqual(abs(y + height / 2 - self.desktop.size[1] / 2), 1)

    def test_none_is_listed_by_the_window_manager(self):
        for index in (1, 2, 3, 0):
            self.go_to(index)
        labels = {label.identifier for label in self.labels.all()}
        listed = self.desktop.root_property("_NET_CLIENT_LIST") or ""
        self.assertTrue(labels)
        self.assertEqual([i for i in labels if i in listed.split(", ")], [])

    def test_the_focus_stays_where_it_is(self):
        self.open_below()
        before = self.focus()
        with self.labels.arrival(0):
            self.assertEqual(self.focus(), before)
        self.assertEqual(self.focus(), before)

    def test_clicks_go_through_one_that_is_seen(self):
        below = self.open_below()
        with self.labels.arrival(0) as label:
            self.assertFalse(self.shows_ground(label))
            before = below.output().count("ButtonPress")
            self.hand.point_at(600, 450)
            self.hand.click()
            wait_until(
                lambda: below.output().count("ButtonPress") > before, "the click below the label"
            )
            self.assertTrue(label.visible)

    def test_one_that_another_program_hides_comes_back(self):
        with self.labels.arrival(1) as label:
            self.desktop.run("xdotool", "windowunmap", label.identifier)
            wait_until(lambda: not label.visible, "the label to be hidden")
        with self.labels.arrival(1) as again:
            self.assertEqual(again.name, "Desktop 2")

    def test_ones_that_another_program_kills_come_back(self):
        with self.labels.arrival(1) as label:
            self.desktop.run("xdotool", "windowkill", label.identifier)
            wait_until(lambda: not label.visible, "the label to be gone")
        for index in (1, 2):
            with self.labels.arrival(index) as again:
                self.assertEqual(again.name, NAMES[index])
        self.assertTrue(self.program.process.running)


class VisibilityTest(LabelsCase):
    def test_rests_where_nobody_is(self):
        for index in (1, 2, 3, 0):
            self.go_to(index)
            self.settle()
            begin = time.monotonic()
            time.sleep(SETTLED)
            self.assertEqual(self.showings.since(begin), [])

    def test_is_seen_on_arrival_and_fades(self):
        for index in (2, 1, 3):
            with self.labels.arrival(index) as label:
                keep(self.desktop.picture(), f"arrival-{label.name}")
            self.go_to(0)
            self.settle()
            spy = OpacitySpy(label)
            begin = time.monotonic()
            self.desktop.go_to(index)
            depths = self.film(label, begin)
            showing = self.showings.wait_for_one(begin)
            self.assertEqual(showing.identifier, label.identifier)
            self.assertLess(showing.duration, ARRIVAL + LATE)
            spy.end()
            fade = spy.since(begin)
            self.assertEqual(fade, sorted(fade, reverse=True), "it only fades")
            self.assertGreater(len(fade), 4, fade)
            self.check_fade(depths)
            wait_until(lambda: self.shows_ground(label), "the ground again", 1.0)

    def film(self, label, begin):
        """The screen's difference from the background at the label's fill, until the
        label must be gone."""
        place = label.inside()
        depths = []
        with self.desktop.pixels() as pixels:
            while time.monotonic() < begin + ARRIVAL + LATE:
                depths.append(distance(pixels.at(*place), GROUND))
                time.sleep(0.004)
        return depths

    def check_fade(self, depths):
        """The label fades gradually."""
        deepest = max(depths)
        self.assertGreater(deepest, 40, depths)
        shown = depths[depths.index(deepest) :]
        for before, after in zip(shown, shown[1:]):
            self.assertLessEqual(after, before + 1, depths)
        self.assertGreater(len(set(shown)), 3, depths)

    def test_the_corner_shows_none_here(self):
        begin = time.monotonic()
        self.hand.point_at_corner()
        # Half a second later the labels of the other desktops are up.
        time.sleep(SETTLED)
        self.assertEqual(self.showings.since(begin), [])

    def test_the_mouse_waves_the_arrived_one_away(self):
        # This fade starts later than the arrival's. The proof is that it ends earlier than
        # that one would.
        self.hand.point_at(720, 450)
        durations = []
        # On a busy machine the pointer may move late.
        for _ in range(8):
            self.go_to(0)
            self.settle()
            begin = time.monotonic()
            self.desktop.go_to(1)
            wait_until(lambda begin=begin: self.showings.since(begin), "the label")
            self.desktop.run("xdotool", "mousemove_relative", "3", "0")
            durations.append(self.showings.wait_for_one(begin).duration)
            if durations[-1] < ARRIVAL - 0.03:
                return
        self.fail(f"it was there for {durations}")


class IcewmPlacesTest(PlacesTest):
    window_manager = "icewm"


class PlacesWithoutCompositorTest(PlacesTest):
    compositor = False


class WithoutCompositorTest(LabelsCase):
    """Opacity has no visible effect then: a label is visible or not."""

    compositor = False

    def test_covers_only_on_arrival(self):
        for index in (3, 1):
            with self.labels.arrival(index) as label:
                frame = label.frame()
                self.assertFalse(self.shows_ground(label))
                keep(self.desktop.picture(), f"without-compositor-{index + 1}-arrival")
                corners = self.desktop.picture().crop(*frame)
                self.assertLessEqual(distance(corners.pixel(2, 2), GROUND), TOLERANCE)
            self.check_only_ground(frame)

    def check_only_ground(self, frame):
        picture = self.desktop.picture().crop(*frame)
        self.assertLessEqual(
            max(distance(pixel, GROUND) for pixel in set(picture.pixels())), TOLERANCE
        )

    def test_is_there_for_half_a_second(self):
        for index in (2, 3):
            self.go_to(index)
            self.go_to(0)
            self.settle()
            begin = time.monotonic()
            self.desktop.go_to(index)
            duration = self.showings.wait_for_one(begin).duration
            self.assertGreater(duration, ARRIVAL - 0.1)
            self.assertLess(duration, ARRIVAL + LATE)


if __name__ == "__main__":
    unittest.main()

"""Labels when desktops, settings or the window manager change."""

import time
import unittest

from support.dropdown import Dropdown
from support.labels import ARRIVAL, LATE, NAMES, SETTLED, SWIPE_ALPHA, paint_ground
from support.labels import Hand, Labels, OpacitySpy, Showings
from support.preferences import Preferences
from support.processes import wait_until
from support.settings_portal import Portal
from support.vembrix import DesktopTest


class ChangesTest(DesktopTest):
    """What happens to desktops, settings and the window manager."""

    compositor = True

    def setUp(self):
        super().setUp()
        self.hand = Hand(self.desktop)
        self.hand.point_aside()
        paint_ground(self.desktop)
        self.showings = Showings(self.desktop)
        self.program = self.launch()
        self.labels = Labels(self.program, self.showings)

    def frame_of(self, index):
        with self.labels.arrival(index) as label:
            return label.frame()

    def opacities_on_arrival(self, index):
        """The requests to the label's window from its appearance to its end."""
        with self.labels.arrival(index) as label:
            pass
        self.desktop.go_to(0)
        time.sleep(SETTLED)
        spy = OpacitySpy(label)
        begin = time.monotonic()
        self.desktop.go_to(index)
        self.showings.wait_for_one(begin)
        spy.end()
        return spy.since(begin)

    def test_with_less_motion_is_seen_for_as_long_and_goes_without_fading(self):
        self.assertGreater(len(set(self.opacities_on_arrival(2))), 4, "it fades at first")
        Portal(self.desktop, Portal.LIGHT, reduced_motion=True)

        def opacities():
            self.desktop.go_to(0)
            time.sleep(SETTLED)
            return set(self.opacities_on_arrival(2))

        # The program needs some time to notice a new portal and to read its settings.
        wait_until(lambda: len(opacities()) <= 1, "no fade any more", 30.0)
        self.desktop.go_to(0)
        time.sleep(SETTLED)
        begin = time.monotonic()
        self.desktop.go_to(2)
        showing = self.showings.wait_for_one(begin)
        self.assertGreater(showing.duration, ARRIVAL / 2)
        self.assertLess(showing.duration, ARRIVAL + LATE)

    def check_no_label_on(self, index):
        begin = time.monotonic()
        self.desktop.go_to(index)
        self.program.wait_for_title(NAMES[index])
        time.sleep(SETTLED)
        self.assertEqual(self.showings.since(begin), [])

    def test_goes_with_its_desktop_and_comes_with_a_new_one(self):
        for index in (1, 2, 3):
            self.frame_of(index)
        self.desktop.go_to(0)
        self.desktop.set_count(2)
        wait_until(lambda: len(self.labels.all()) <= 2, "the others' windows to go")
        self.assertLessEqual({label.name for label in self.labels.all()}, set(NAMES[:2]))
        self.labels.wait_for_rest()
        self.desktop.set_count(3)
        wait_until(lambda: self.desktop.count == 3, "three desktops")
        # A label that was just created does not fade.
        self.check_no_label_on(2)
        with self.labels.arrival(2) as label:
            self.assertEqual(label.name, "Desktop 3")

    def test_none_flashes_up_where_the_active_desktop_vanishes(self):
        self.frame_of(3)
        time.sleep(SETTLED)
        begin = time.monotonic()
        self.desktop.set_count(3)
        self.program.wait_for_title("Desktop 3")
        time.sleep(SETTLED)
        names = {label.identifier: label.name for label in self.labels.all()}
        # The label of the desktop that the user was brought to may be shown.
        for showing in self.showings.since(begin):
            self.assertEqual(names.get(showing.identifier), "Desktop 3")

    def test_takes_a_new_name(self):
        narrow = self.frame_of(1)
        self.desktop.go_to(0)
        menu = Dropdown(self.program)
        menu.open()
        menu.click_pencil(1)
        menu.type("Mail")
        menu.key("Return")
        menu.wait_for_label(1)
        menu.key("Escape")
        menu.wait_until_closed()
        with self.labels.arrival(1) as label:
            self.assertEqual(label.name, "Mail")
            self.assertLess(label.frame()[2], narrow[2])

    def test_the_settings_change_them_at_once(self):
        before = self.frame_of(2)
        self.desktop.go_to(0)
        preferences = Preferences(self.program)
        preferences.open()
        preferences.show_tab("Label")
        preferences.focus(0)
        preferences.key("Home")
        wait_until(lambda: self.defaults.read().get("SignTextSize") == 60, "a smaller label")
        preferences.key("Tab", "End")
        wait_until(lambda: self.defaults.read().get("SignSwipeAlpha") == 1, "an opaque one")
        self.assertLess(self.frame_of(2)[3], before[3])
        self.assertAlmostEqual(max(self.opacities_on_arrival(2)), 1, delta=0.02)
        self.desktop.go_to(0)
        self.program.wait_for_title("Desktop 1")
        # No window may have the focus after the return.
        preferences.focus(1)
        preferences.key("Tab", "space")
        wait_until(lambda: self.defaults.read().get("ShowSignInSwipeMode") is False, "none")
        self.check_no_label_on(2)

    def test_another_programs_settings_are_followed(self):
        self.assertAlmostEqual(max(self.opacities_on_arrival(1)), SWIPE_ALPHA, delta=0.02)
        self.defaults.update({"SignSwipeAlpha": 0.4})
        self.assertAlmostEqual(max(self.opacities_on_arrival(1)), 0.4, delta=0.02)
        self.defaults.update({"ShowSignInSwipeMode": False})
        self.desktop.go_to(0)
        time.sleep(SETTLED)
        self.check_no_label_on(1)

    def test_outlives_the_window_manager(self):
        self.follow_another("openbox")

    def test_takes_another_window_manager(self):
        self.follow_another("icewm")

    def follow_another(self, window_manager):
        self.frame_of(2)
        self.desktop.kill_window_manager()
        self.program.wait_for_title("Desktops")
        self.desktop.start_window_manager(window_manager)
        for index, name in enumerate(NAMES):
            self.desktop.go_to(index)
            self.program.wait_for_title(name)
        for index in (1, 2):
            with self.labels.arrival(index) as label:
                self.assertEqual(label.name, NAMES[index])
                self.assertFalse(label.is_managed)

    def test_nothing_is_left_at_the_end(self):
        self.frame_of(1)
        self.assertEqual(self.program.end(), 0)
        self.assertEqual(self.labels.all(), [])


if __name__ == "__main__":
    unittest.main()

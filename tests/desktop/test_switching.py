"""The status item follows the desktops: which is current, how many there are."""

import time
import unittest

from support.processes import wait_until
from support.vembrix import BLUE, GREEN, PEACH, PINK, DesktopTest, SharedRunTest, Vembrix

# Immediate to a person, with an allowance for a busy machine. Shorter than the periods of all
# polls, so that a change noticed by a poll alone fails.
AT_ONCE = 3.0


class StartTest(DesktopTest):
    def test_starts_on_the_desktop_that_is_current(self):
        self.desktop.go_to(2)
        wait_until(lambda: self.desktop.current == 2, "desktop 3")
        program = Vembrix(self.desktop)
        program.wait_for_title("Desktop 3")
        program.wait_for_fill(GREEN)

    def test_keeps_the_stored_settings_private(self):
        Vembrix(self.desktop)
        wait_until(self.defaults.read, "stored settings")
        self.assertEqual(self.defaults.mode(), 0o600)


class SwitchingTest(SharedRunTest):
    def test_shows_the_desktop_that_is_gone_to(self):
        program = self.program
        for index, color in ((1, BLUE), (3, PEACH), (2, GREEN), (0, PINK)):
            with self.subTest(desktop=index):
                self.desktop.go_to(index)
                program.wait_for_title(f"Desktop {index + 1}", AT_ONCE)
                program.wait_for_fill(color)

    def test_ends_up_right_after_many_quick_switches(self):
        program = self.program
        for step in range(60):
            self.desktop.go_to(step % 4)
        self.desktop.go_to(1)
        program.wait_for_title("Desktop 2")
        time.sleep(0.3)  # Nothing late may overwrite it.
        self.assertEqual(program.title(), "Desktop 2")


class CountTest(SharedRunTest):
    def known(self):
        return set(self.defaults.read().get("KnownSpaceUUIDs", []))

    def wait_for_known(self, uuid):
        wait_until(
            lambda: uuid in self.known(),
            lambda: f"{uuid} among the known Spaces {sorted(self.known())}",
            AT_ONCE,
        )

    def test_follows_added_desktops(self):
        program = self.program
        self.assertEqual(self.known(), {f"x11-desktop-{n}" for n in range(1, 5)})
        self.desktop.set_count(6)
        self.wait_for_known("x11-desktop-6")
        self.desktop.go_to(5)
        program.wait_for_title("Desktop 6", AT_ONCE)

    def test_leaves_a_desktop_that_is_removed(self):
        program = self.program
        self.desktop.go_to(3)
        program.wait_for_title("Desktop 4")
        self.desktop.set_count(2)
        program.wait_for_title("Desktop 2", AT_ONCE)
        self.assertIn("x11-desktop-4", self.known(), "what was seen once stays known")

    def test_one_desktop_only(self):
        program = self.program
        self.desktop.go_to(2)
        program.wait_for_title("Desktop 3")
        self.desktop.set_count(1)
        program.wait_for_title("Desktop 1", AT_ONCE)
        program.wait_for_fill(PINK)

    def test_forty_desktops(self):
        program = self.program
        self.desktop.set_count(40)
        self.wait_for_known("x11-desktop-40")
        self.desktop.go_to(39)
        program.wait_for_title("Desktop 40", AT_ONCE)
        self.desktop.go_to(16)
        program.wait_for_title("Desktop 17", AT_ONCE)
        # The palette has sixteen default colours.
        program.wait_for_fill(PINK)


if __name__ == "__main__":
    unittest.main()

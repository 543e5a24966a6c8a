"""What assistive programs read over their bus."""

import json
import os
import unittest

from support.desktop import HERE, SYSTEM_PYTHON
from support.processes import wait_until
from support.vembrix import DesktopTest

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


class AccessibilityTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.desktop.start([LAUNCHER, "--launch-immediately"])
        self.program = self.launch({"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})

    def ask(self, *arguments):
        reader = os.path.join(HERE, "accessible_tree.py")
        return json.loads(self.desktop.run(SYSTEM_PYTHON, "-B", reader, *arguments))

    def nodes(self, role):
        """All objects of that role in the program."""

        def collect(node):
            found = [node] if node["role"] == role else []
            for child in node["children"]:
                found += collect(child)
            return found

        return collect(self.ask("tree"))

    def press(self, role, name):
        self.assertTrue(self.ask("press", role, name))

    def open_menu(self):
        self.press("push button", "Desktop 1")
        wait_until(lambda: self.nodes("popup menu"), "the menu")

    def test_the_status_item_is_a_button_that_follows_the_desktop(self):
        (button,) = self.nodes("push button")
        self.assertEqual(button["name"], "Desktop 1")
        self.assertIn("Press", button["actions"])
        self.desktop.go_to(2)
        wait_until(lambda: self.nodes("push button")[0]["name"] == "Desktop 3", "its new name")

    def test_the_open_menu_and_its_rows_are_there(self):
        self.assertEqual(self.nodes("popup menu"), [])
        self.open_menu()
        (menu,) = self.nodes("popup menu")
        rows = [node for node in menu["children"] if node["role"] == "radio button"]
        self.assertEqual([row["name"] for row in rows], [f"Desktop {n}" for n in range(1, 5)])
        self.assertEqual([row["checked"] for row in rows], [True, False, False, False])
        commands = [node["name"] for node in menu["children"] if node["role"] == "menu item"]
        self.assertEqual(commands, ["Preferences…", "Quit Vembrix"])

    def test_a_row_switches(self):
        self.open_menu()
        self.press("radio button", "Desktop 3")
        self.program.wait_for_title("Desktop 3")
        wait_until(lambda: not self.nodes("popup menu"), "the menu to close")

    def test_a_popup_is_named_by_its_label(self):
        self.open_menu()
        self.press("menu item", "Preferences…")
        self.program.wait_for_settings()
        (window,) = self.nodes("dialog")
        self.assertEqual(window["name"], "Vembrix Preferences")
        (popup,) = self.nodes("combo box")
        self.assertEqual((popup["name"], popup["description"]), ("Heat Colors", "Ember"))


if __name__ == "__main__":
    unittest.main()

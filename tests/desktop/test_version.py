"""The version that the About page shows, which is the one that it was built as."""

import os
import unittest

from support.preferences import Preferences
from support.processes import wait_until
from support.vembrix import DesktopTest


def shown_version(program):
    """The text that can be copied from the About page, in a theme with a sidebar."""
    preferences = Preferences(program)
    preferences.open()
    preferences.show_tab("About")
    preferences.focus(0)

    def copied():
        preferences.key("ctrl+a", "ctrl+c")
        try:
            return program.desktop.run("xclip", "-selection", "clipboard", "-out")
        except AssertionError:
            return None

    return wait_until(copied, "a text of the About page")


class VersionTest(DesktopTest):
    def test_the_about_page_shows_the_version_that_was_built(self):
        self.assertEqual(shown_version(self.launch()), os.environ["VEMBRIX_VERSION"])


if __name__ == "__main__":
    unittest.main()

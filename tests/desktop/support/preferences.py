"""The settings window, as its user meets it."""

from support.dropdown import INSET, Dropdown
from support.processes import wait_until

TABS = ["Label", "Colors", "Menu Bar", "Theme", "Diagnostics", "About"]

# Heights of a menu's commands and separators.
COMMAND_HEIGHT = 22
SEPARATOR_HEIGHT = 11

# The place of tabs in a theme with a sidebar, from the window's top left.
SIDEBAR_X = 76
SIDEBAR_TOP = 33
SIDEBAR_STEP = 28
# A point without a control.
EMPTY = (595, 515)


class Preferences:
    """The settings window of one run of the program."""

    def __init__(self, program):
        self.program = program
        self.desktop = program.desktop
        self.menu = Dropdown(program)

    def window(self):
        """The window while it is shown, or None."""
        for window in self.desktop.windows_of_class("vembrix"):
            if window.read("WM_WINDOW_ROLE") == "settings" and window.visible:
                return window
        return None

    def choose(self):
        """Opens it by the menu's command."""
        self.menu.open()
        x, y, width, height = self.menu.window().frame()
        below = INSET + COMMAND_HEIGHT + SEPARATOR_HEIGHT + COMMAND_HEIGHT // 2
        self.menu.point_at(x + width // 2 - 1, y + height - below)
        self.menu.point_at(x + width // 2, y + height - below)
        self.desktop.run("xdotool", "click", "1")
        self.wait_until_open()

    def open(self):
        """Opens it by the command's key."""
        self.menu.open()
        self.key("ctrl+comma")
        self.wait_until_open()

    def wait_until_open(self):
        wait_until(self.window, "the settings window")
        wait_until(
            lambda: self._number(self.desktop.root_property("_NET_ACTIVE_WINDOW"))
            == self._number(self.window().identifier),
            lambda: "the keyboard in the settings window; it is in "
            + f"{self.desktop.root_property('_NET_ACTIVE_WINDOW')}; {self.program.story()}",
        )

    def wait_until_closed(self):
        wait_until(lambda: self.window() is None, "the settings window to close")

    @staticmethod
    def _number(identifier):
        return int(identifier.split()[-1], 16) if identifier else None

    def picture(self):
        return self.desktop.picture().crop(*self.window().frame())

    def key(self, *names):
        self.desktop.run("xdotool", "key", "--delay", "20", *names)

    def click(self, x, y):
        left, top, _, _ = self.window().frame()
        self.menu.point_at(left + x, top + y)
        self.desktop.run("xdotool", "click", "1")

    def show_tab(self, name):
        """Selects a tab in a theme with a sidebar."""
        self.click(SIDEBAR_X, SIDEBAR_TOP + SIDEBAR_STEP * TABS.index(name))

    def focus(self, control, tabs=len(TABS)):
        """Gives the keyboard to the page's control of that place, from 0; before
        it the Tab key visits so many tabs."""
        self.click(*EMPTY)
        self.key(*["Tab"] * (tabs + control + 1))

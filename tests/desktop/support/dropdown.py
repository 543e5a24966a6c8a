"""The dropdown menu, as its user meets it."""

from support.processes import wait_until

# Sizes of the native menu, in points.
INSET = 5
ROW_HEIGHT = 24
DOT_X = 21
NAME_X = 60


class Dropdown:
    """The menu of one run of the program."""

    def __init__(self, program, scale=1):
        self.program = program
        self._scale = scale
        self.desktop = program.desktop

    def window(self):
        """The open menu's window, or None."""
        for window in self.desktop.windows_of_class("vembrix"):
            if window.read("WM_WINDOW_ROLE") == "menu" and window.visible:
                return window
        return None

    def open(self):
        x, y, width, height = self.program.strip().frame()
        self.point_at(x + width // 2, y + height // 2)
        self.desktop.run("xdotool", "click", "1")
        wait_until(self.window, lambda: f"the open menu; {self.program.story()}")
        wait_until(lambda: self.picture().nearest((0, 0, 0))[1] < 120, "the painted menu")

    def wait_until_closed(self):
        wait_until(lambda: self.window() is None, "the menu to close")

    def picture(self):
        return self.desktop.picture().crop(*self.window().frame())

    def row_picture(self, index):
        x, y, width, _ = self.window().frame()
        top = y + self._scale * (INSET + index * ROW_HEIGHT)
        return self.desktop.picture().crop(x, top, width, self._scale * ROW_HEIGHT)

    def row_count(self):
        """The number of rows, from the menu's height."""
        x, y, width, height = self.window().frame()
        # Two commands and two separators stand below the rows.
        below = 2 * INSET + 2 * 22 + 2 * 11
        return (height - below) / ROW_HEIGHT

    def point_at(self, x, y):
        self.desktop.run("xdotool", "mousemove", str(x), str(y))

    def hover(self, index, offset=NAME_X):
        x, y, _, _ = self.window().frame()
        middle = y + self._scale * (INSET + index * ROW_HEIGHT + ROW_HEIGHT // 2)
        # Two moves, as with a real mouse.
        self.point_at(x + self._scale * offset - 1, middle)
        self.point_at(x + self._scale * offset, middle)

    def wait_for_tint(self, index):
        """Waits until the row is highlighted and its neighbour is not."""

        def ground(row):
            return self.row_picture(row).pixel(self.window().frame()[2] // 2, 2)

        wait_until(lambda: ground(index) != ground(index + 1), "a tint")

    def wait_for_label(self, index):
        """Waits until the row shows its name, without a field's focus ring."""

        def shows_label():
            row = self.row_picture(index)
            return row.pixel(37, ROW_HEIGHT // 2) == row.pixel(32, ROW_HEIGHT // 2)

        wait_until(shows_label, "the name in place of the field")

    def click_row(self, index, offset=NAME_X):
        self.hover(index, offset)
        self.desktop.run("xdotool", "click", "1")

    def click_pencil(self, index):
        width = self.window().frame()[2]
        self.hover(index)
        self.click_row(index, width - INSET - 10 - 11)

    def key(self, *names):
        self.desktop.run("xdotool", "key", "--delay", "20", *names)

    def type(self, text):
        # Slowly: for characters that no key has, xdotool remaps a key and restores it, and the
        # program must notice both.
        for character in text:
            delay = "40" if character.isascii() else "400"
            self.desktop.run("xdotool", "type", "--delay", delay, character)

"""A window on the screen, as other programs see it."""

import re

from support.processes import WindowGone


class Window:
    def __init__(self, desktop, identifier):
        self._desktop = desktop
        self.identifier = identifier

    def read(self, name):
        """The property's value as xprop writes it, without the quotes of a single string;
        None where there is none, or the window is gone."""
        try:
            text = self._desktop.run("xprop", "-id", self.identifier, "-notype", name)
        except WindowGone:
            return None
        value = property_value(text)
        if value is not None and re.fullmatch(r'"(?:[^"\\]|\\.)*"', value):
            return re.sub(r"\\(.)", r"\1", value[1:-1])
        return value

    @property
    def name(self):
        return self.read("_NET_WM_NAME")

    def frame(self):
        """x, y, width, height in pixels; origin at the top left. Raises WindowGone."""
        text = self._desktop.run("xwininfo", "-id", self.identifier)
        return tuple(
            int(re.search(rf"{label}:\s+(-?\d+)", text)[1])
            for label in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        )

    @property
    def visible(self):
        try:
            return "IsViewable" in self._desktop.run("xwininfo", "-id", self.identifier)
        except WindowGone:
            return False


def property_value(text):
    """The value of `xprop -notype NAME`, or None."""
    text = text.rstrip("\n")
    if " = " in text:
        return text.split(" = ", 1)[1]
    if ": window id # " in text:
        return text.split(": ", 1)[1]
    if ":" in text and not re.search(r":\s+(no such atom|not found)", text):
        return text.split(":", 1)[1].strip()
    return None

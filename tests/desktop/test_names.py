"""Names in any writing."""

import unittest

from support.vembrix import BLACK, PINK, DesktopTest

NAMES = {
    "right to left": "עבודה שלי",
    "mixed directions": "Mail דואר 2",
    "emoji": "🚀 Launch 👩‍💻",
    "combining": "Cafe\u0301 a\u0308",
    "wide": "作業場所",
    "markup": "<b>R&D</b> %s &amp;",
    "quotes": 'a "b" \\c',
}


class NamesTest(DesktopTest):
    desktops = 1

    def test_shows_names_in_any_writing(self):
        for kind, name in NAMES.items():
            with self.subTest(kind):
                self.defaults.write({"SpaceNames": {"x11-desktop-1": name}})
                program = self.launch()
                program.wait_for_title(name)
                program.wait_for_fill(PINK)
                program.wait_for_ink(BLACK, 60)
                self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()

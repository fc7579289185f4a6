# SPDX-License-Identifier: LGPL-2.1-or-later
"""What goes wrong while the program starts is told in its window, and under its name on standard error."""

import unittest

from journey import Journey


class Starting(Journey):
    def setUp(self):
        super().setUp()
        self.configuration = self.installation.folder / "user" / ".config" / "quelm"
        self.options = self.configuration / "features" / "ann.ini"
        self.options.parent.mkdir(parents=True)

    def message_of(self, desktop):
        """The lines in the main window, once it tells something."""
        return desktop.message(desktop.main()).split("\n")

    def lines(self, desktop):
        """What was said on standard error."""
        return desktop.errors().splitlines()

    @staticmethod
    def small(line):
        """A line of the window as it stands behind the program's name."""
        return line[0].lower() + line[1:]

    def test_options_that_cannot_be_read_are_told(self):
        self.options.write_text("garbage")
        desktop = self.start_with_letter()
        told = self.message_of(desktop)
        self.assertEqual(len(told), 1)
        self.assertIn(str(self.options), told[0])
        self.assertEqual(self.lines(desktop), [f"quelm-desktop: {self.small(told[0])}"])
        self.assertEqual(desktop.quit(), 0)
        self.assertEqual(self.options.read_text(), "garbage")

    def test_everything_is_told_the_worst_first(self):
        self.options.write_text("[features]\nLanFax Send Speed=1000\n")
        choices = self.configuration / "desktop.conf"
        choices.write_text("garbage")
        document = self.installation.work / "letter.txt"
        document.write_text("Dear Ann\n")
        desktop = self.start(str(document))
        self.eventually(lambda: len(self.message_of(desktop)) == 3, lambda: self.message_of(desktop))
        told = self.message_of(desktop)
        self.assertIn(str(document), told[0])
        self.assertIn("1000", told[1])
        self.assertIn(str(choices), told[2])
        self.assertEqual(self.lines(desktop), [f"quelm-desktop: warning: {self.small(line)}" for line in told[1:]])
        self.assertEqual(desktop.quit(), 0)


if __name__ == "__main__":
    unittest.main()

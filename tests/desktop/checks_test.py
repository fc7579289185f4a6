# SPDX-License-Identifier: LGPL-2.1-or-later
"""The checks of names and places find what is bad."""

import pathlib
import subprocess
import sys
import unittest

from accessibility import misplaced, nameless
from control import State, has
from desktop import application_of
from journey import Journey
from waiting import wait_for
from window import Window


class Checks(Journey):
    def setUp(self):
        super().setUp()
        program = subprocess.Popen([sys.executable, pathlib.Path(__file__).with_name("bad_window.py")])
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        application = wait_for(lambda: application_of(program.pid), "the bad window's program")
        window = wait_for(lambda: application.get_child_count() and application.get_child_at_index(0), "its window")
        wait_for(lambda: has(window, State.ACTIVE), "the window to be active")
        self.window = Window(window)

    def test_a_button_without_a_name_is_found(self):
        self.eventually(lambda: nameless(self.window.accessible) == ["push button '' (Nameless)"],
                        lambda: nameless(self.window.accessible))

    def test_what_overlaps_or_sticks_out_or_is_cut_off_is_found(self):
        self.eventually(lambda: len(misplaced(self.window)) == 3, lambda: misplaced(self.window))
        found = "\n".join(misplaced(self.window))
        self.assertRegex(found, "One.*overlaps.*Other")
        self.assertRegex(found, "Far out.*sticks out")
        self.assertRegex(found, "Hardly readable.*has letters")


if __name__ == "__main__":
    unittest.main()

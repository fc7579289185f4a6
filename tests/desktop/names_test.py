# SPDX-License-Identifier: LGPL-2.1-or-later
"""What assistive tools are told: every control has a name and a role."""

import unittest

import definition
from accessibility import nameless, vague
from control import below
from journey import Journey
from tour import prepare, tour

CHOOSER = "phonebook-chooser"  # what is inside it is the toolkit's


class Names(Journey):
    def test_every_control_of_every_window_has_a_name_and_a_role(self):
        prepare(self.installation)
        desktop = self.start_with_letter("--device-snmp", self.device_with_directory().address)
        seen = set()
        for stop, window in tour(desktop, self.installation.work / "sent.job", with_directory=True):
            with self.trying(f"at {stop}"):
                if stop != CHOOSER:
                    self.assertEqual(nameless(window.accessible), [])
                    self.assertEqual(vague(window.accessible), [])
                if stop == "main-document":
                    self.check_order(window, ["Main Document Page", "Main Destination Kind", "Main Destination File",
                                              "Main Choose File Button", "Main Job Format", "Main Send Button"])
                seen.add(window.fixed_name)
                self.check_roles(window)
        self.assertLessEqual({one.get("Name") for one in definition.windows()}, seen)
        self.quits_silently(desktop)

    def check_order(self, window, names):
        """Assistive tools are told of these controls in this order."""
        told = [one.fixed_name for one in window.controls()]
        self.assertEqual([name for name in told if name in names], names)

    def check_roles(self, window):
        """Each widget of the definition is there, as what it is."""
        if window.fixed_name not in [one.get("Name") for one in definition.windows()]:
            return
        roles = {one.get_description(): one.get_role_name() for one in below(window.accessible)}
        for element in definition.elements(window.fixed_name):
            if element.tag in definition.ROLES:
                self.assertEqual(roles.get(element.get("Name")), definition.ROLES[element.tag], element.get("Name"))


if __name__ == "__main__":
    unittest.main()

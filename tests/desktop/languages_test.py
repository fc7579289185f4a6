# SPDX-License-Identifier: LGPL-2.1-or-later
"""The windows in other languages: nothing overlaps, nothing is cut off."""

import os
import pathlib
import unittest

import long_catalogue
from accessibility import misplaced
from device import SETTINGS
from journey import Journey
from tour import prepare, tour

CHOOSER = "phonebook-chooser"  # its insides are the toolkit's


class Languages(Journey):
    def check_all_windows(self):
        """Goes through all windows, and returns what the labels and buttons said, by window."""
        prepare(self.installation)
        desktop = self.start_with_letter("--device-snmp", self.device_with_directory().address)
        said = {}
        for stop, window in tour(desktop, self.installation.work / "sent.job", with_directory=True):
            if stop != CHOOSER:
                with self.trying(f"at {stop}"):
                    self.eventually(lambda: misplaced(window) == [], lambda: "\n".join(misplaced(window)))
                said[stop] = {one.fixed_name: one.name for one in window.controls()}
            if stop == "fax-preferences":
                said["directory status"] = window.control("LDAP PB Status").text
        self.quits_silently(desktop)
        return said

    def test_in_english_everything_has_its_place(self):
        said = self.check_all_windows()
        self.assertEqual(said["recipient"]["Recipient Number Label"], "Fax Number:")
        self.assertEqual(said["directory status"], "Enabled")
        self.assertRegex(said["directory-search"]["Search Status"], "^[0-9]+ Records? Found$")

    def test_in_german_everything_has_its_place(self):
        self.installation.use_language("de")
        said = self.check_all_windows()
        self.assertEqual(said["recipient"]["Recipient Number Label"], "Faxnummer:")
        self.assertEqual(said["main-document"]["Main Send Button"], "Senden")
        self.assertEqual(said["question"]["Question Yes"], "Ja")
        self.assertEqual(said["directory status"], "Verfügbar")
        self.assertRegex(said["directory-search"]["Search Status"], "^[0-9]+ (Eintrag|Einträge) gefunden$")

    def test_in_german_a_directory_that_is_not_there_is_told(self):
        self.installation.use_language("de")
        desktop = self.start_with_letter("--device-snmp", self.device(SETTINGS).address)
        desktop.main().press("Main Fax Setup Button")
        fax = desktop.window("Lan Fax Window")
        fax.turn_to("LanFax Preferences Tab")
        self.assertEqual(fax.control("LDAP PB Status").text, "Nicht verfügbar")

    def test_with_texts_that_are_much_longer_everything_has_its_place(self):
        locale = self.installation.home / "locale"
        locale.unlink()
        long_catalogue.write(pathlib.Path(os.environ["QUELM_TEMPLATE"]), locale)
        self.installation.use_language(long_catalogue.LANGUAGE)
        said = self.check_all_windows()
        self.assertEqual(said["recipient"]["Recipient Number Label"], "Fax Number en tov:")
        choice = "Do Not Print a Confirmation Sheet"
        self.assertGreater(len(said["fax-options"]["LanFax No Conf Sheet"]), 1.5 * len(choice))


if __name__ == "__main__":
    unittest.main()

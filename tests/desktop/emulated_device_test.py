# SPDX-License-Identifier: LGPL-2.1-or-later
"""The whole way: from people who are picked in the windows to the pages that they receive."""

import unittest

from emulated_device import EmulatedDevice, dots, rendering
from journey import STAGE, Journey


class EmulatedDeviceJourney(Journey):
    def setUp(self):
        super().setUp()
        self.device = EmulatedDevice(STAGE, self.installation.folder, "--with-directory")
        self.addCleanup(self.device.stop)

    def start_at_the_device(self):
        """A desktop with the letter, which asks the device."""
        return self.start_with_letter("--device-snmp", self.device.place("snmp"))

    def pick_from_directory(self, desktop, fax, text, name):
        """Searches the device's directory in the phonebook dialog, and adds the person of that name."""
        fax.press("AddPBFaxRcpt")
        book = desktop.window("Add Rcpt From PB Window")
        book.control("Current PB Type").choose("Shared LDAP Phonebook")
        book.control("Search String").fill(text)
        book.keys("Return")
        found = book.control("Fax PB List")
        self.eventually(lambda: name in [row[0] for row in found.rows], lambda: found.rows)
        found.select([row[0] for row in found.rows].index(name))
        book.press("Add Button2")
        self.eventually(lambda: book.control("Fax Cur Recipient List").rows)
        book.press("LanFaxRcptPB OK Button")
        book.await_gone()
        fax.await_active()

    def type_recipient(self, desktop, fax, name, number):
        fax.press("AddFaxRcpt")
        dialog = desktop.window("LanFax Add Recipient Window")
        dialog.fill(RecipientName=name, RecipientNumber=number)
        dialog.keys("Return")
        dialog.await_gone()
        fax.await_active()

    def send(self, desktop, main, kind, control, text):
        """Sends to a destination, and waits until the window says that this is done."""
        main.control("Main Destination Kind").choose(kind)
        main.control(control).fill(text)
        main.press("Main Send Button")
        shown = text.rsplit("/", 1)[-1]
        self.eventually(lambda: shown in desktop.message(main), lambda: desktop.message(main))

    def test_who_was_picked_and_who_was_typed_receive_the_pages_dot_by_dot(self):
        desktop = self.start_at_the_device()
        fax = desktop.fax_setup()
        self.pick_from_directory(desktop, fax, "M", "Müller, Jürgen")
        self.type_recipient(desktop, fax, "Ann Lee", "(555) 010-1001")
        recipients = fax.control("LanFax Recipient List")
        self.eventually(lambda: [row[0] for row in recipients.rows] == ["Müller, Jürgen", "Ann Lee"],
                        lambda: recipients.rows)
        fax.turn_to("LanFax Options Tab")
        fax.control("LanFax Cover Sheet").tick()
        fax.control("LanFax Cover Sheet Notes").fill("Please read before Friday.")
        fax.press("LanFax OK Button")
        fax.await_gone()

        main = desktop.main()
        self.send(desktop, main, "Network device", "Main Destination Device", self.device.place("jobs"))
        self.device.await_line("job 1: done, 2 of 2 sent")
        written = self.installation.work / "written.job"
        self.send(desktop, main, "File", "Main Destination File", str(written))
        self.quits_silently(desktop)

        pages = dots(rendering(written, "204x98", self.installation.work / "expected.tif"))
        self.assertEqual(len(pages), 3, "the cover sheet and the letter")
        received = self.device.received()
        self.assertEqual(sorted(received), ["0015550101201", "5550101001"])
        for number, files in received.items():
            self.assertEqual([dots(file) for file in files], [pages], number)

    def test_the_window_shows_the_devices_settings(self):
        desktop = self.start_at_the_device()
        fax = desktop.fax_setup()
        fax.turn_to("LanFax Preferences Tab")
        fax.press("LDAP More Info Button")
        info = desktop.window("LDAP Info Dialog")
        self.assertEqual(info.control("LDAP HostPort").text, self.device.place("directory"))
        self.assertEqual(info.control("LDAP Search Directory Root").text, "dc=example")
        self.assertEqual(info.control("LDAP Server Type").text, "Quelm emulated fax device")
        self.assertEqual(info.control("LDAP Fax").text, "facsimileTelephoneNumber")


if __name__ == "__main__":
    unittest.main()

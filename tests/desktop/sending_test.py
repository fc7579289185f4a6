# SPDX-License-Identifier: LGPL-2.1-or-later
"""Sending to a device on the network: what arrives, what is told, and what remains usable."""

import socket
import unittest

from device_journey import DeviceJourney
from waiting import wait_for


class Sending(DeviceJourney):
    def start_with_fax(self, document):
        """A desktop with a document and one recipient, whose jobs go to the listener."""
        desktop = self.start_with(document)
        fax = desktop.fax_setup()
        self.add_recipient(desktop, fax)
        fax.keys("alt+o")
        fax.await_gone()
        main = desktop.main()
        main.control("Main Destination Kind").choose("Network device")
        main.control("Main Destination Device").fill(self.address)
        return desktop, main

    def start_with(self, document):
        desktop = self.start(str(document))
        main = desktop.main()
        wait_for(lambda: main.control("Main Send Button").sensitive, "the document to be open")
        wait_for(lambda: main.control("Main Document Pages").showing, "its pages to be counted")
        return desktop

    def long_letter(self):
        """A document that does not go through a connection at once."""
        letter = self.installation.work / "long.ps"
        line = "% " + "waiting " * 12 + "\n"
        head = "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%Page: 1 1\n"
        letter.write_text(head + line * 160_000 + "showpage\n%%EOF\n")
        return letter

    def test_what_arrives_is_what_a_file_would_hold(self):
        desktop, main = self.start_with_fax(self.letter)
        main.press("Main Send Button")
        with self.listener.accept()[0] as connection:
            arrived = self.arriving(connection)
        message = desktop.message(main)
        self.assertIn(self.address, message)
        self.assertIn("1 recipient", message)
        self.assertNotIn("delivered", message)

        main.control("Main Destination Kind").choose("File")
        written = self.installation.work / "written.job"
        main.control("Main Destination File").fill(str(written))
        main.press("Main Send Button")
        self.eventually(lambda: "written.job" in desktop.message(main))
        self.assertEqual(arrived, written.read_bytes())
        self.quits_silently(desktop)

    def test_progress_shows_until_a_slow_device_has_taken_all(self):
        desktop, main = self.start_with_fax(self.long_letter())
        self.assertFalse(main.control("Main Progress").showing)
        main.press("Main Send Button")
        with self.listener.accept()[0] as connection:
            self.eventually(lambda: main.control("Main Progress").showing)
            self.assertFalse(main.control("Main Send Button").sensitive)
            self.assertFalse(main.control("Main Fax Setup Button").sensitive)
            arrived = self.arriving(connection)
        message = desktop.message(main)
        self.assertIn(self.address, message)
        self.assertFalse(main.control("Main Progress").showing)
        self.assertTrue(arrived.startswith(b"%!PS-Adobe-3.0"))
        self.assertEqual(arrived.count(b"waiting " * 12), 160_000)
        self.quits_silently(desktop)

    def test_sending_can_be_cancelled_and_begun_again(self):
        desktop, main = self.start_with_fax(self.long_letter())
        main.press("Main Send Button")
        with self.listener.accept()[0]:
            main.press("Main Cancel Button")
            self.eventually(lambda: not main.control("Main Progress").showing)
            self.assertIn("cancel", desktop.message(main))
        main.press("Main Send Button")
        with self.listener.accept()[0] as connection:
            self.assertEqual(self.arriving(connection).count(b"waiting " * 12), 160_000)
        self.eventually(lambda: self.address in desktop.message(main))
        self.quits_silently(desktop)

    def test_closing_the_window_in_mid_send_asks_first(self):
        desktop, main = self.start_with_fax(self.long_letter())
        main.press("Main Send Button")
        with self.listener.accept()[0] as connection:
            self.eventually(lambda: main.control("Main Progress").showing)
            main.close_from_frame()
            question = desktop.window("Main Quit Question")
            question.press("Main Quit Question No")
            question.await_gone()
            self.assertEqual(self.arriving(connection).count(b"waiting " * 12), 160_000)
        self.eventually(lambda: self.address in desktop.message(main))
        main.press("Main Send Button")
        with self.listener.accept()[0]:
            self.eventually(lambda: main.control("Main Progress").showing)
            main.close_from_frame()
            desktop.window("Main Quit Question").press("Main Quit Question Yes")
            self.assertEqual((desktop.ended(), desktop.errors()), (0, ""))

    def test_a_device_that_refuses_is_told_and_the_window_stays_usable(self):
        desktop, main = self.start_with_fax(self.letter)
        # Nobody can have the port meanwhile, as it is bound.
        with socket.socket() as deaf:
            deaf.bind(("127.0.0.1", 0))
            refusing = "127.0.0.1:%d" % deaf.getsockname()[1]
            main.control("Main Destination Device").fill(refusing)
            main.press("Main Send Button")
            message = desktop.message(main)
            self.assertIn(refusing, message)
            self.assertNotIn("\n", message)
        main.press("Main Message Close Button")
        self.eventually(lambda: not main.control("Main Message").showing)
        main.control("Main Destination Device").fill(self.address)
        main.press("Main Send Button")
        with self.listener.accept()[0] as connection:
            self.assertIn(b"5550101", self.arriving(connection))
        self.eventually(lambda: self.address in desktop.message(main))
        self.quits_silently(desktop)

    def test_a_job_without_a_recipient_opens_the_fax_dialog_instead(self):
        desktop = self.start_with(self.letter)
        main = desktop.main()
        main.control("Main Destination Kind").choose("Network device")
        main.control("Main Destination Device").fill(self.address)
        main.press("Main Send Button")
        fax = desktop.window("Lan Fax Window")
        self.assertEqual(main.control("Main Message").text, "Add a recipient first.")
        fax.keys("Escape")
        fax.await_gone()
        self.quits_silently(desktop)


if __name__ == "__main__":
    unittest.main()

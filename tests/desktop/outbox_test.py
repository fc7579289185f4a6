# SPDX-License-Identifier: LGPL-2.1-or-later
"""Faxes for later: what is said ahead, where they wait, who sends them, and what is asked."""

import json
import unittest

from desktop import question_text
from device_journey import DeviceJourney


class Outbox(DeviceJourney):
    def jobs(self):
        return json.loads(self.installation.driver("outbox", "list", "--json"))

    def states(self):
        return [job["state"] for job in self.jobs()]

    def fax_setup(self, desktop, at_ten=None):
        """Adds a recipient, and chooses whether the fax waits for ten o'clock."""
        fax = desktop.fax_setup()
        self.add_recipient(desktop, fax)
        if at_ten is not None:
            self.choose_time(fax, at_ten)
        fax.press("LanFax OK Button")
        fax.await_gone()

    def choose_time(self, fax, at_ten):
        fax.turn_to("LanFax Options Tab")
        fax.control("LanFax Send At" if at_ten else "LanFax Send Now").tick()
        if at_ten:
            fax.control("SendAtHr").fill("10")

    def send_to_device(self, main):
        main.control("Main Destination Kind").choose("Network device")
        main.control("Main Destination Device").fill(self.address)
        main.press("Main Send Button")

    def send_to_file(self, desktop, name):
        main = desktop.main()
        main.control("Main Destination Kind").choose("File")
        written = self.installation.work / name
        main.control("Main Destination File").fill(str(written))
        main.press("Main Send Button")
        self.eventually(lambda: name in desktop.message(main), lambda: desktop.message(main))
        return written

    def summary_says(self, main, *parts):
        summary = main.control("Main Job Summary")
        self.eventually(lambda: all(part in summary.text for part in parts), lambda: summary.text)

    def put_in(self, time):
        """Puts a fax for Ann into the outbox, as the command line does."""
        self.installation.driver("fax", str(self.letter), "--to", "Ann Lee=555-0101", "--device", self.address,
                                 "--send-at", time)

    # --- Waiting ---------------------------------------------------------------------------------

    def test_a_fax_for_later_goes_out_when_it_is_due_as_it_would_have_gone_at_once(self):
        desktop = self.start_with_letter()
        self.fax_setup(desktop)
        at_once = self.send_to_file(desktop, "now.job").read_bytes()
        fax = desktop.fax_setup()
        self.choose_time(fax, at_ten=True)
        fax.press("LanFax OK Button")
        fax.await_gone()
        main = desktop.main()
        self.send_to_device(main)
        self.eventually(lambda: "waits as job 1 of the outbox until today at 10:00" in desktop.message(main),
                        lambda: desktop.message(main))
        self.summary_says(main, "today at 10:00", self.address)
        self.nothing_has_arrived()

        main.keys("ctrl+q")
        question = desktop.window("Main Quit Question")
        self.assertIn("A fax job waits in the outbox until today at 10:00.", question_text(question))
        question.press("Main Quit Question No")
        question.await_gone()
        main.await_active()
        main.keys("ctrl+q")
        desktop.window("Main Quit Question").press("Main Quit Question Yes")
        self.assertEqual((desktop.ended(), desktop.errors()), (0, ""))

        self.installation.clock = "2026-03-05T10:00"
        desktop = self.start()
        self.assertEqual(self.next_job(), at_once)
        self.eventually(lambda: "was handed over to" in desktop.message(desktop.main()))
        self.assertEqual(self.states(), ["handed over"])
        self.quits_silently(desktop)

    def test_a_file_for_later_is_written_later(self):
        desktop = self.start_with_letter()
        self.fax_setup(desktop, at_ten=True)
        main = desktop.main()
        written = self.installation.work / "later.job"
        main.control("Main Destination File").fill(str(written))
        main.press("Main Send Button")
        self.eventually(lambda: "waits as job 1" in desktop.message(main), lambda: desktop.message(main))
        self.assertFalse(written.exists())
        self.installation.set_timer("active")
        self.quits_silently(desktop)

        self.installation.clock = "2026-03-05T10:01"
        desktop = self.start()
        self.eventually(written.exists)
        self.assertIn(b"5550101", written.read_bytes())
        self.quits_silently(desktop)

    # --- Asking ----------------------------------------------------------------------------------

    def test_an_overdue_fax_is_asked_about_once_in_a_session(self):
        self.put_in("10:00")
        self.installation.clock = "2026-03-05T11:30"
        desktop = self.start()
        question = desktop.window("Main Overdue Question")
        for part in ("letter.ps", "today at 10:00", "Ann Lee (555-0101)", self.address):
            self.assertIn(part, question_text(question))
        question.press("Main Overdue Question No")
        question.await_gone()
        self.nothing_has_arrived()
        self.quits_silently(desktop)

        desktop = self.start()
        desktop.window("Main Overdue Question").press("Main Overdue Question Yes")
        self.assertIn(b"5550101", self.next_job())
        self.eventually(lambda: self.address in desktop.message(desktop.main()))
        self.quits_silently(desktop)
        self.assertEqual(self.states(), ["handed over"])

    def test_an_overdue_fax_can_be_cancelled(self):
        self.put_in("10:00")
        self.installation.clock = "2026-03-05T11:30"
        desktop = self.start()
        question = desktop.window("Main Overdue Question")
        question.press("Main Overdue Question Other")
        question.await_gone()
        self.eventually(lambda: self.states() == ["cancelled"])
        self.quits_silently(desktop)
        self.nothing_has_arrived()

    # --- Two windows -----------------------------------------------------------------------------

    def test_a_second_window_sends_when_the_first_is_closed(self):
        self.put_in("10:00")
        first = self.start()
        first_window = first.main()
        self.installation.clock = "2026-03-05T10:00"
        # The letter is sent to a file, behind which a desktop looks into the outbox.
        second = self.start_with_letter()
        self.fax_setup(second)
        self.send_to_file(second, "one.job")
        self.nothing_has_arrived()
        self.assertEqual(self.states(), ["waiting"])
        first_window.bring_to_front()
        first_window.close_from_frame()
        first.window("Main Quit Question").press("Main Quit Question Yes")
        self.assertEqual((first.ended(), first.errors()), (0, ""))
        self.send_to_file(second, "two.job")
        self.assertIn(b"5550101", self.next_job())
        self.eventually(lambda: self.states() == ["handed over"])
        self.quits_silently(second)

    # --- After a restart -------------------------------------------------------------------------

    def test_what_is_kept_is_what_goes_out_after_a_restart(self):
        desktop = self.start_with_letter()
        self.fill_everything(desktop)
        self.quits_silently(desktop)

        desktop = self.start_with_letter()
        pages = 'A cover sheet with the note "Please read before Friday." and 2 pages of letter.ps'
        self.summary_says(desktop.main(), pages, "today at 10:00")
        self.fax_setup(desktop, at_ten=False)
        summary = desktop.main().control("Main Job Summary")
        self.eventually(lambda: pages in summary.text and "today at" not in summary.text,
                        lambda: summary.text)
        straight = self.send_to_file(desktop, "straight.job").read_bytes()
        self.quits_silently(desktop)

        desktop = self.start_with_letter()
        self.confirm_everything(desktop)
        confirmed = self.send_to_file(desktop, "confirmed.job").read_bytes()
        self.quits_silently(desktop)
        self.assertEqual(straight, confirmed)
        for text in (b"Please read", b"Zoe Hill", b"The board", b'"9,5550101"'):
            self.assertIn(text, straight)

    def fill_everything(self, desktop):
        fax = desktop.fax_setup()
        self.choose_time(fax, at_ten=True)
        fax.control("LanFax Cover Sheet").tick()
        fax.control("LanFax Cover Sheet Notes").fill("Please read before Friday.")
        fax.control("LanFax Dialing Prefix").tick()
        fax.control("LanFax Dialing Prefix Info").fill("9")
        self.set_up_cover_sheet(desktop, fax, self.fill_cover_sheet, self.fill_sender)

    def fill_cover_sheet(self, cover):
        cover.control("Show Rcpt Info Checkbox").tick()
        cover.control("Show Custom Text").tick()
        cover.control("Cover Sheet Custom Text").fill("The board")
        cover.control("Show Sender Info Checkbox").tick()

    def fill_sender(self, sender):
        sender.fill(Sender_Fax_Number="555-0100", Sender_Fax_Name="Zoe Hill")

    def confirm_everything(self, desktop):
        """Opens every dialog that shows what was kept, and presses its Ok."""
        fax = desktop.fax_setup()
        self.add_recipient(desktop, fax)
        fax.turn_to("LanFax Options Tab")
        self.set_up_cover_sheet(desktop, fax, lambda cover: None, lambda sender: None)

    def set_up_cover_sheet(self, desktop, fax, fill_cover_sheet, fill_sender):
        """Goes through the dialogs of the cover sheet, and out of the fax dialog."""
        fax.press("LanFax Setup Cover Sheet Button")
        cover = desktop.window("Cover Sheet Setup Window")
        fill_cover_sheet(cover)
        cover.press("Sender Properties Button")
        sender = desktop.window("Sender Information Window")
        fill_sender(sender)
        sender.press("LanFaxSender OK Button")
        sender.await_gone()
        cover.await_active()
        cover.press("LanFaxCover OK Button")
        cover.await_gone()
        fax.await_active()
        fax.press("LanFax OK Button")
        fax.await_gone()


if __name__ == "__main__":
    unittest.main()

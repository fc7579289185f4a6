# SPDX-License-Identifier: LGPL-2.1-or-later
"""The whole way: from a document to the bytes that a device would get."""

import unittest

from desktop import question_text
from journey import Journey


class MainJourney(Journey):
    def setUp(self):
        super().setUp()
        for name, number in (("Bea Stone", "555-0102"), ("Carl Reed", "555-0103")):
            self.installation.driver("phonebook", "add", name, number)
        self.installation.driver("phonebook", "add-group", "Board", "Bea Stone", "Carl Reed")

    def add_by_keys(self, desktop, fax):
        """Types a recipient into the recipient dialog, with nothing but keys behind its first button."""
        fax.press("AddFaxRcpt")
        dialog = desktop.window("LanFax Add Recipient Window")
        dialog.type("Ann Lee")
        dialog.keys("Tab")
        dialog.type("555-0101")
        dialog.keys("Return")
        return dialog

    def rows(self, fax):
        return [row[:2] for row in fax.control("LanFax Recipient List").rows]

    def test_what_is_sent_is_what_the_same_script_writes(self):
        desktop = self.start_with_letter()
        fax = desktop.fax_setup()

        self.add_by_keys(desktop, fax).await_gone()
        self.assertEqual(self.rows(fax), [["Ann Lee", "555-0101"]])

        # The same again: no leaves the dialog as it is, yes adds it.
        dialog = self.add_by_keys(desktop, fax)
        question = desktop.window("Question")
        self.assertIn("This Recipient already exists in your Recipient List.", question_text(question))
        self.assertIn("Ann Lee", question_text(question))
        desktop.answer(False)
        dialog.await_active()
        self.assertEqual(dialog.control("RecipientName").text, "Ann Lee")
        self.assertEqual(len(self.rows(fax)), 1)
        dialog.press("LanFaxAddRcpt OK Button")
        desktop.answer(True)
        dialog.await_gone()
        self.assertEqual(self.rows(fax), [["Ann Lee", "555-0101"]] * 2)

        fax.await_active()
        fax.press("AddPBFaxRcpt")
        book = desktop.window("Add Rcpt From PB Window")
        self.eventually(lambda: self.names(book, "Fax PB List") == ["Bea Stone", "Carl Reed", "[Board]"],
                        lambda: self.names(book, "Fax PB List"))
        book.control("Fax PB List").select(2)
        book.press("Add Button")
        self.eventually(lambda: self.names(book, "Fax Cur Recipient List") == ["Bea Stone", "Carl Reed"])
        book.press("LanFaxRcptPB OK Button")
        book.await_gone()

        fax.await_active()
        fax.turn_to("LanFax Options Tab")
        fax.control("LanFax Cover Sheet").tick()
        fax.press("LanFax Setup Cover Sheet Button")
        cover = desktop.window("Cover Sheet Setup Window")
        cover.control("Show Rcpt Info Checkbox").tick()
        cover.control("Show Custom Text").tick()
        cover.control("Cover Sheet Custom Text").fill("The board")
        cover.control("Show Sender Info Checkbox").tick()
        cover.press("LanFaxCover OK Button")
        cover.await_gone()
        fax.await_active()
        fax.control("LanFax Cover Sheet Notes").fill("Please read before Friday.")
        fax.press("LanFax OK Button")
        fax.await_gone()

        main = desktop.main()
        summary = main.control("Main Fax Summary")
        self.eventually(lambda: summary.text == "4 recipients, with a cover page")
        sent = self.installation.work / "sent.job"
        main.control("Main Destination File").fill(str(sent))
        main.press("Main Send Button")
        self.assertRegex(desktop.message(main), "sent.job")
        self.quits_silently(desktop)

        self.assertEqual(sent.read_bytes(), self.bytes_of_the_script())

    def names(self, window, list_name):
        return [row[0] for row in window.control(list_name).rows]

    def bytes_of_the_script(self):
        """The same journey without a screen, by a user who did nothing before."""
        written = self.installation.work / "script.job"
        self.installation.start_over()
        self.installation.driver("script", "-", text=f"""
            call T40InvokeFaxDialog
            press "AddFaxRcpt"
            type "RecipientName" "Ann Lee"
            type "RecipientNumber" "555-0101"
            press "LanFaxAddRcpt OK Button"
            press "AddFaxRcpt"
            type "RecipientName" "Ann Lee"
            type "RecipientNumber" "555-0101"
            press "LanFaxAddRcpt OK Button"
            answer yes
            press "AddPBFaxRcpt"
            select "Fax PB List" 2
            press "Add Button"
            press "LanFaxRcptPB OK Button"
            tick "LanFax Cover Sheet" on
            press "LanFax Setup Cover Sheet Button"
            tick "Show Rcpt Info Checkbox" on
            tick "Show Custom Text" on
            type "Cover Sheet Custom Text" "The board"
            tick "Show Sender Info Checkbox" on
            press "LanFaxCover OK Button"
            type "LanFax Cover Sheet Notes" "Please read before Friday."
            press "LanFax OK Button"
            fax "{self.letter}" "{written}"
            """)
        # The program signs its jobs.
        return written.read_bytes().replace(b"(quelm-driver ", b"(quelm-desktop ", 1)


if __name__ == "__main__":
    unittest.main()

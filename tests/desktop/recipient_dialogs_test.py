# SPDX-License-Identifier: LGPL-2.1-or-later
"""The fax dialog and the dialogs about its recipients: filled, accepted, and left in every way."""

import unittest

from journey import Journey
from leaving import ways_out

ANN = {"RecipientName": "Ann Lee", "RecipientNumber": "555-0101", "RecipientOrganization": "Lee & Sons",
       "RecipientTelNumber": "555-0199", "RecipientEmailAddr": "ann@lee.example", "RecipientMailbox": "12"}


class RecipientDialogs(Journey):
    def setUp(self):
        super().setUp()
        self.installation.driver("phonebook", "add", "Bea Stone", "555-0102")
        self.desktop = self.start_with_letter()
        self.fax = self.desktop.fax_setup()

    def rows(self):
        return self.fax.control("LanFax Recipient List").rows

    def open_recipient_dialog(self):
        self.fax.await_active()
        self.fax.press("AddFaxRcpt")
        return self.desktop.window("LanFax Add Recipient Window")

    def add(self, fields):
        dialog = self.open_recipient_dialog()
        dialog.fill(**fields)
        dialog.press("LanFaxAddRcpt OK Button")
        dialog.await_gone()

    def test_the_fax_dialog_keeps_what_was_chosen_however_it_is_left(self):
        ways = [("by Ok", lambda window: window.press("LanFax OK Button")), *ways_out("LanFax Cancel Button")]
        fax = self.fax
        for number, (how, leave) in enumerate(ways):
            with self.trying(how):
                fax.turn_to("LanFax Options Tab")
                choice = "LanFax No Conf Sheet" if number % 2 == 0 else "LanFax Print Conf Sheet"
                fax.control(choice).tick()
                leave(fax)
                fax.await_gone()
                fax = self.desktop.fax_setup()
                self.assertTrue(fax.control("LanFax Recipients Tab").showing, "it opens on its first page")
                fax.turn_to("LanFax Options Tab")
                self.assertTrue(fax.control(choice).ticked)
        fax.keys("Escape")
        fax.await_gone()
        self.quits_silently(self.desktop)

    def test_a_recipient_is_added_with_every_field(self):
        self.add(ANN)
        self.assertEqual(self.rows(), [list(ANN.values())])
        self.assertEqual(self.open_recipient_dialog().control("RecipientName").text, "")

    def test_a_recipient_dialog_that_is_left_adds_nobody(self):
        for how, leave in ways_out("LanFaxAddRcpt Cancel Button"):
            with self.trying(how):
                dialog = self.open_recipient_dialog()
                dialog.fill(RecipientName="Ann Lee", RecipientNumber="555-0101")
                leave(dialog)
                dialog.await_gone()
                self.assertEqual(self.rows(), [])

    def test_a_field_takes_no_more_than_it_has_room_for(self):
        dialog = self.open_recipient_dialog()
        dialog.control("RecipientMailbox").fill("123456", kept="1234")

    def test_the_error_window_tells_what_is_missing_and_closes_in_every_way(self):
        dialog = self.open_recipient_dialog()
        for how, leave in (*ways_out("LanFax Add Fax Rcpt Error Close Button"),
                           ("by Enter", lambda window: window.keys("Return"))):
            with self.trying(how):
                dialog.press("LanFaxAddRcpt OK Button")
                error = self.desktop.window("LanFax Add Recipient Error Window")
                self.assertEqual(error.title, "Error!")
                self.assertEqual(error.control("LanFax Add Fax Rcpt Error Label").text,
                                 "The Name is a required field\nPlease enter a Name.")
                leave(error)
                error.await_gone()
                dialog.await_active()
        dialog.fill(RecipientName="Ann Lee", RecipientNumber="no number")
        dialog.press("LanFaxAddRcpt OK Button")
        error = self.desktop.window("LanFax Add Recipient Error Window")
        self.assertNotIn("required", error.control("LanFax Add Fax Rcpt Error Label").text)
        error.keys("Escape")
        error.await_gone()
        self.assertEqual(dialog.control("RecipientNumber").text, "", "a number that cannot be is not kept")

    def test_details_change_the_selected_recipient(self):
        self.add(ANN)
        for how, leave in ways_out("LanFaxAddRcpt Cancel Button"):
            with self.trying(how):
                dialog = self.details()
                self.assertEqual(dialog.title, "Fax Recipient")
                self.assertEqual(dialog.control("RecipientEmailAddr").text, "ann@lee.example")
                dialog.fill(RecipientName="Nobody")
                leave(dialog)
                dialog.await_gone()
                self.assertEqual(self.rows(), [list(ANN.values())])
        dialog = self.details()
        dialog.fill(RecipientNumber="555-0111")
        dialog.press("LanFaxAddRcpt OK Button")
        dialog.await_gone()
        self.assertEqual([row[:2] for row in self.rows()], [["Ann Lee", "555-0111"]])

    def details(self):
        self.fax.await_active()
        self.fax.control("LanFax Recipient List").select(0)
        self.fax.press("LanFax Details Button")
        return self.desktop.window("LanFax Add Recipient Window")

    def test_the_properties_of_a_pick_are_shown_and_changed(self):
        self.fax.press("AddPBFaxRcpt")
        book = self.desktop.window("Add Rcpt From PB Window")
        book.control("Fax PB List").select(0)
        book.press("Add Button")
        picks = book.control("Fax Cur Recipient List")

        def properties():
            book.await_active()
            picks.select(0)
            book.press("Cur Rcpt Prop Button")
            return self.desktop.window("LanFax Recipient Properties Window")

        for how, leave in ways_out("LanFaxRcptProps Cancel Button"):
            with self.trying(how):
                window = properties()
                self.assertEqual(window.control("RcptPropsName").text, "Bea Stone")
                window.fill(RcptPropsName="Nobody")
                leave(window)
                window.await_gone()
                self.assertEqual([row[0] for row in picks.rows], ["Bea Stone"])
        window = properties()
        window.fill(RcptPropsMailbox="7")
        window.press("LanFaxRcptProps OK Button")
        window.await_gone()
        self.assertEqual([(row[0], row[5]) for row in picks.rows], [("Bea Stone", "7")])


if __name__ == "__main__":
    unittest.main()

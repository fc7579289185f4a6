# SPDX-License-Identifier: LGPL-2.1-or-later
"""Questions and choosers over the fax dialog."""

import unittest

from desktop import question_text
from journey import Journey


class Questions(Journey):
    def setUp(self):
        super().setUp()
        self.installation.driver("phonebook", "add", "Bea Stone", "555-0102")
        self.desktop = self.start_with_letter()
        self.fax = self.desktop.fax_setup()

    def add(self, name, number):
        self.fax.await_active()
        self.fax.press("AddFaxRcpt")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        dialog.fill(RecipientName=name, RecipientNumber=number)
        dialog.keys("Return")
        dialog.await_gone()

    def names(self):
        return [row[0] for row in self.fax.control("LanFax Recipient List").rows]

    def ask_for_removal(self):
        self.fax.await_active()
        self.fax.control("LanFax Recipient List").select(0)
        self.fax.press("LanFax Remove Button")
        return self.desktop.window("Question")

    def test_a_removal_is_asked_about_and_only_yes_removes(self):
        self.add("Ann Lee", "555-0101")
        self.add("Carl Reed", "555-0103")
        for how, leave in (("by No", lambda question: question.press("Question No")),
                           ("by Escape", lambda question: question.keys("Escape")),
                           ("by its frame", lambda question: question.close_from_frame())):
            with self.trying(how):
                question = self.ask_for_removal()
                self.assertEqual(question_text(question), "Are you sure you want to remove all 1 Recipients?")
                leave(question)
                question.await_gone()
                self.assertEqual(self.names(), ["Ann Lee", "Carl Reed"])
        question = self.ask_for_removal()
        question.keys("alt+y")
        question.await_gone()
        self.eventually(lambda: self.names() == ["Carl Reed"], self.names)

    def test_several_selected_recipients_are_removed_after_one_question(self):
        for name, number in (("Ann Lee", "1"), ("Bea Stone", "2"), ("Carl Reed", "3")):
            self.add(name, number)
        self.fax.await_active()
        recipients = self.fax.control("LanFax Recipient List")
        recipients.select(0)
        self.fax.keys("ctrl+a")
        self.eventually(lambda: recipients.selected_rows == [0, 1, 2])
        self.fax.press("LanFax Remove Button")
        self.assertEqual(self.desktop.answer(True), "Are you sure you want to remove all 3 Recipients?")
        self.eventually(lambda: self.names() == [])

    def test_nothing_behind_a_question_can_be_pressed(self):
        self.add("Ann Lee", "555-0101")
        question = self.ask_for_removal()
        x, y = question.position
        # Aside, so that the fax dialog's button is not covered.
        question.move_away_from(self.fax)
        self.assertNotEqual(question.position, (x, y))
        self.fax.press("LanFax OK Button")
        question.keys("Escape")
        question.await_gone()
        self.assertIn("Lan Fax Window", self.desktop.shown())
        self.assertEqual(self.names(), ["Ann Lee"])

    def test_unticking_the_preference_removes_without_a_question(self):
        self.add("Ann Lee", "555-0101")
        self.fax.turn_to("LanFax Preferences Tab")
        self.fax.control("LanFax Pref Remove One").tick(False)
        self.fax.turn_to("LanFax Recipients Tab")
        self.fax.control("LanFax Recipient List").select(0)
        self.fax.press("LanFax Remove Button")
        self.eventually(lambda: self.names() == [])
        self.assertNotIn("Question", self.desktop.shown())

    # --- Choosers --------------------------------------------------------------------------------

    def open_chooser(self, button, name):
        self.fax.await_active()
        self.fax.press(button)
        return self.desktop.window(name)

    def test_a_cancelled_chooser_leaves_the_phonebook(self):
        self.fax.turn_to("LanFax Preferences Tab")
        before = self.fax.control("LanFax Personal PB Name").text
        self.assertTrue(before.endswith("/db/phonebook/user/ann.xdb"), before)
        for how, leave in (("by Cancel", lambda chooser: chooser.press(chooser.fixed_name + " Cancel")),
                           ("by Escape", lambda chooser: chooser.keys("Escape")),
                           ("by its frame", lambda chooser: chooser.close_from_frame())):
            with self.trying(how):
                chooser = self.open_chooser("Select Personal PB Button", "PersonalPBSelectFileDialog")
                leave(chooser)
                chooser.await_gone()
                self.assertEqual(self.fax.control("LanFax Personal PB Name").text, before)

    def test_a_chosen_shared_phonebook_is_used(self):
        shared = self.installation.home / "db" / "phonebook" / "office.xdb"
        self.installation.driver("phonebook", "add", "Dora Fields", "555-0104", "--file", str(shared))
        self.fax.turn_to("LanFax Preferences Tab")
        chooser = self.open_chooser("Select Shared PB Button", "SharedPBSelectFileDialog")
        chooser.keys("ctrl+l")
        chooser.type(str(shared))
        chooser.press("SharedPBSelectFileDialog Open")
        chooser.await_gone()
        self.eventually(lambda: self.fax.control("LanFax Shared PB Name").text == str(shared),
                        lambda: self.fax.control("LanFax Shared PB Name").text)
        self.fax.turn_to("LanFax Recipients Tab")
        self.fax.press("AddPBFaxRcpt")
        book = self.desktop.window("Add Rcpt From PB Window")
        book.control("Current PB Type").choose("Shared Phonebook")
        entries = book.control("Fax PB List")
        self.eventually(lambda: [row[0] for row in entries.rows] == ["Dora Fields"], lambda: entries.rows)
        book.keys("Escape")
        book.await_gone()
        self.fax.keys("Escape")
        self.fax.await_gone()
        self.quits_silently(self.desktop)

    def test_a_new_personal_phonebook_is_begun_by_its_name(self):
        self.fax.turn_to("LanFax Preferences Tab")
        chooser = self.open_chooser("Select Personal PB Button", "PersonalPBSelectFileDialog")
        begun = self.installation.work / "mine.xdb"
        chooser.keys("ctrl+a")
        chooser.type(str(begun))
        chooser.press("PersonalPBSelectFileDialog Open")
        chooser.await_gone()
        self.eventually(lambda: self.fax.control("LanFax Personal PB Name").text == str(begun),
                        lambda: self.fax.control("LanFax Personal PB Name").text)
        self.fax.await_active()
        self.fax.turn_to("LanFax Recipients Tab")
        # The next listing makes it.
        self.fax.press("AddPBFaxRcpt")
        book = self.desktop.window("Add Rcpt From PB Window")
        self.eventually(begun.exists)
        self.assertEqual(book.control("Fax PB List").rows, [])
        book.keys("Escape")
        book.await_gone()
        self.fax.await_active()
        self.fax.press("AddFaxRcpt")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        dialog.fill(RecipientName="Ann Lee", RecipientNumber="555-0101")
        dialog.control("AddtoPersonalPB").tick()
        dialog.press("LanFaxAddRcpt OK Button")
        dialog.await_gone()
        self.assertIn("Ann Lee", self.installation.driver("phonebook", "list", "--file", str(begun)))


if __name__ == "__main__":
    unittest.main()

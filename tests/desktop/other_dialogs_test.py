# SPDX-License-Identifier: LGPL-2.1-or-later
"""The dialogs about cover sheet, sender, phonebooks and directory: filled, accepted, and left in every way."""

import os
import shutil
import subprocess
import unittest

from control import State, has
from journey import Journey
from leaving import ways_out

SENDER = {"Sender_Fax_Number": "555-0100", "Sender_Fax_Name": "Zoe Hill", "Sender_Fax_Organization": "Hill Ltd.",
          "Sender_Fax_Tel_Number": "555-0190", "Sender_Fax_Email_Addr": "zoe@hill.example"}


class Terminal:
    """A terminal program that notes what it is to run, and runs until it is told to end."""

    def __init__(self, installation):
        programs = installation.folder / "programs"
        programs.mkdir()
        self.noted = programs / "noted"
        self.ending = programs / "ending"
        os.mkfifo(self.ending)
        for name in ("xdg-terminal-exec",):
            program = programs / name
            program.write_text(f"""#!/bin/sh
printf '%s\\n' "$@" >{self.noted}.new && mv {self.noted}.new {self.noted}
read -r line <{self.ending}
""")
            program.chmod(0o700)
        installation.environment["PATH"] = f"{programs}:{installation.environment['PATH']}"

    def arguments(self):
        return self.noted.read_text().splitlines() if self.noted.exists() else []

    def end(self):
        self.ending.write_text("\n")


class OtherDialogs(Journey):
    def setUp(self):
        super().setUp()
        self.installation.driver("phonebook", "add", "Bea Stone", "555-0102")
        self.desktop = self.start_with_letter()
        self.fax = self.desktop.fax_setup()

    def open_cover_sheet(self):
        self.fax.await_active()
        self.fax.control("LanFax Cover Sheet").tick()
        self.fax.press("LanFax Setup Cover Sheet Button")
        return self.desktop.window("Cover Sheet Setup Window")

    def test_a_cover_sheet_that_is_left_is_as_before(self):
        self.fax.turn_to("LanFax Options Tab")
        self.assertFalse(self.fax.control("LanFax Setup Cover Sheet Button").sensitive)
        for how, leave in ways_out("LanFaxCover Cancel Button"):
            with self.trying(how):
                cover = self.open_cover_sheet()
                cover.control("Show Rcpt Info Checkbox").tick()
                cover.control("Show Custom Text").tick()
                cover.control("Cover Sheet Custom Text").fill("To whom it may concern")
                cover.control("Cover Sheet Size").choose("A4")
                leave(cover)
                cover.await_gone()
                cover = self.open_cover_sheet()
                self.assertFalse(cover.control("Show Rcpt Info Checkbox").ticked)
                self.assertFalse(cover.control("Show Custom Text").ticked)
                self.assertFalse(cover.control("Cover Sheet Custom Text").sensitive)
                self.assertEqual(cover.control("Cover Sheet Custom Text").text, "")
                self.assertEqual(cover.control("Cover Sheet Size").chosen, "Letter")
                cover.keys("Escape")
                cover.await_gone()

    def test_a_cover_sheet_that_is_accepted_stays(self):
        self.fax.turn_to("LanFax Options Tab")
        cover = self.open_cover_sheet()
        cover.control("Show Rcpt Info Checkbox").tick()
        cover.control("Cover Sheet Size").choose("A4")
        cover.press("LanFaxCover OK Button")
        cover.await_gone()
        cover = self.open_cover_sheet()
        self.assertTrue(cover.control("Show Rcpt Info Checkbox").ticked)
        self.assertTrue(cover.control("Show All Rcpt Info").ticked)
        self.assertEqual(cover.control("Cover Sheet Size").chosen, "A4")

    def test_the_sender_is_summed_up_on_the_cover_sheet_once_accepted(self):
        self.fax.turn_to("LanFax Options Tab")
        cover = self.open_cover_sheet()
        cover.control("Show Sender Info Checkbox").tick()
        summary = cover.control("Sender Info")

        def open_sender():
            cover.await_active()
            cover.press("Sender Properties Button")
            return self.desktop.window("Sender Information Window")

        for how, leave in ways_out("LanFaxSender Cancel Button"):
            with self.trying(how):
                sender = open_sender()
                sender.fill(**SENDER)
                leave(sender)
                sender.await_gone()
                self.assertNotIn("Zoe", summary.text)
        sender = open_sender()
        self.assertEqual(sender.control("Sender Fax Name").text, "")
        sender.fill(**SENDER)
        sender.press("LanFaxSender OK Button")
        sender.await_gone()
        self.eventually(lambda: summary.text.split("\n")[:5] == list(SENDER.values()), lambda: summary.text)

    def test_picks_of_a_phonebook_dialog_that_is_left_are_dropped(self):
        for how, leave in ways_out("LanFaxRcptPB Cancel Button"):
            with self.trying(how):
                book = self.open_phonebook()
                book.control("Fax PB List").select(0)
                book.press("Add Button")
                picks = book.control("Fax Cur Recipient List")
                self.eventually(lambda: [row[0] for row in picks.rows] == ["Bea Stone"])
                leave(book)
                book.await_gone()
                self.assertEqual(self.fax.control("LanFax Recipient List").rows, [])
                self.assertEqual(self.open_phonebook().control("Fax Cur Recipient List").rows, [])
                self.desktop.window("Add Rcpt From PB Window").keys("Escape")
                book.await_gone()

    def test_picks_that_are_accepted_become_recipients(self):
        book = self.open_phonebook()
        book.control("Fax PB List").select(0)
        book.press("Add Button")
        book.press("LanFaxRcptPB OK Button")
        book.await_gone()
        recipients = self.fax.control("LanFax Recipient List")
        self.eventually(lambda: [row[:2] for row in recipients.rows] == [["Bea Stone", "555-0102"]])

    def open_phonebook(self):
        self.fax.await_active()
        self.fax.press("AddPBFaxRcpt")
        book = self.desktop.window("Add Rcpt From PB Window")
        self.eventually(lambda: len(book.control("Fax PB List").rows) == 1)
        return book

    def test_the_directory_window_is_only_read_and_closes_in_every_way(self):
        desktop, directory = self.start_with_directory()
        fax = desktop.fax_setup()
        fax.turn_to("LanFax Preferences Tab")
        for how, leave in ways_out("LDAP Info Close"):
            with self.trying(how):
                fax.await_active()
                fax.press("LDAP More Info Button")
                info = desktop.window("LDAP Info Dialog")
                self.assertEqual(info.control("LDAP HostPort").text, directory.address)
                self.assertEqual(info.control("LDAP Search Directory Root").text, "o=Harbour")
                self.assertFalse(has(info.control("LDAP HostPort").accessible, State.EDITABLE))
                info.control("LDAP HostPort").click()
                info.type("elsewhere")
                self.assertEqual(info.control("LDAP HostPort").text, directory.address)
                leave(info)
                info.await_gone()

    def test_people_of_the_directory_are_found_and_added(self):
        desktop, _ = self.start_with_directory()
        fax = desktop.fax_setup()
        fax.press("AddPBFaxRcpt")
        book = desktop.window("Add Rcpt From PB Window")
        self.assertFalse(book.control("Search String").showing)
        book.control("Current PB Type").choose("Shared LDAP Phonebook")
        book.control("Search String").fill("Re")
        book.keys("Return")
        found = book.control("Fax PB List")
        self.eventually(lambda: [row[:2] for row in found.rows] == [["Reed, Carl", "555-0103"]], lambda: found.rows)
        self.assertEqual(book.control("Search Status").text, "1 Record Found")
        found.select(0)
        book.press("Add Button2")
        book.press("LanFaxRcptPB OK Button")
        book.await_gone()
        recipients = fax.control("LanFax Recipient List")
        self.eventually(lambda: [row[:2] for row in recipients.rows] == [["Reed, Carl", "555-0103"]])

    def start_with_directory(self):
        """Another desktop, whose device knows a directory."""
        self.fax.keys("Escape")
        self.fax.await_gone()
        self.quits_silently(self.desktop)
        device = self.device_with_directory()
        return self.start("--device-snmp", device.address), device.directory

    def test_a_shared_phonebook_is_chosen_under_the_very_name_that_it_has(self):
        book = self.installation.work / "teambook"
        self.installation.driver("phonebook", "add", "Dora Fields", "555-0104", "--file", str(book))
        self.type_shared_phonebook(book).await_gone()
        shared = self.fax.control("LanFax Shared PB Name")
        self.eventually(lambda: shared.text == str(book), lambda: shared.text)
        self.fax.turn_to("LanFax Recipients Tab")
        self.fax.press("AddPBFaxRcpt")
        window = self.desktop.window("Add Rcpt From PB Window")
        window.control("Current PB Type").choose("Shared Phonebook")
        entries = window.control("Fax PB List")
        self.eventually(lambda: [row[0] for row in entries.rows] == ["Dora Fields"], lambda: entries.rows)

    def test_a_shared_phonebook_that_does_not_exist_is_refused(self):
        chooser = self.type_shared_phonebook(self.installation.work / "nothere")
        self.eventually(lambda: "there is no such file" in self.told(chooser), lambda: self.told(chooser))
        chooser.keys("Escape")
        chooser.await_gone()
        self.assertEqual(self.fax.control("LanFax Shared PB Name").text, "")

    def type_shared_phonebook(self, file):
        """Types the path of a shared phonebook into the chooser, accepts it and returns the chooser."""
        self.fax.turn_to("LanFax Preferences Tab")
        self.fax.press("Select Shared PB Button")
        chooser = self.desktop.window("SharedPBSelectFileDialog")
        chooser.keys("ctrl+l")
        chooser.type(str(file))
        chooser.press("SharedPBSelectFileDialog Open")
        return chooser

    def told(self, window):
        """What a window says while it refuses something; empty while it does not."""
        message = window.control("Dialog Message")
        return message.text if message.showing else ""

    def test_why_a_phonebook_cannot_be_opened_is_told_in_the_dialog(self):
        self.fax.turn_to("LanFax Preferences Tab")
        self.fax.press("Open Shared PB Button")
        self.eventually(lambda: "No shared phonebook is chosen" in self.told(self.fax), lambda: self.told(self.fax))

    def test_a_phonebooks_name_is_no_command_and_the_windows_wait_for_its_program(self):
        terminal = self.start_stripped_with_terminal()
        book = self.installation.work / "b;touch pwned;$(touch pwned) .xdb"
        self.installation.driver("phonebook", "add", "Dora Fields", "555-0104", "--file", str(book))
        self.type_shared_phonebook(book).await_gone()
        self.fax.press("Open Shared PB Button")
        program = str((self.installation.home / "fennodial").resolve())
        self.eventually(lambda: terminal.arguments() == [program, "-FP", str(book)], terminal.arguments)
        button = self.fax.control("Open Shared PB Button")
        self.assertTrue(button.showing)
        self.assertFalse(button.sensitive)
        terminal.end()
        self.eventually(lambda: button.sensitive)
        self.assertFalse((self.installation.work / "pwned").exists())

    def test_the_desktop_ends_while_a_phonebook_is_open(self):
        terminal = self.start_stripped_with_terminal()
        self.fax.turn_to("LanFax Preferences Tab")
        self.fax.press("Open Personal PB Button")
        self.eventually(lambda: terminal.arguments() != [], terminal.arguments)
        self.desktop.process.terminate()
        self.assertEqual(self.desktop.process.wait(20), 0)
        self.assertEqual(self.desktop.errors(), "")
        terminal.end()

    def start_stripped_with_terminal(self):
        """Another desktop, without its symbols, as packages have it, and a terminal program for it."""
        self.fax.keys("Escape")
        self.fax.await_gone()
        self.quits_silently(self.desktop)
        stripped = self.installation.folder / "stripped"
        stripped.mkdir()
        for program in ("quelm-driver", "quelm-desktop", "quelm-supervisor"):
            shutil.copy(self.installation.stage / program, stripped)
            subprocess.run(["strip", stripped / program], check=True)
        for library in self.installation.stage.glob("libquelm-base.so.*"):
            shutil.copy(library, stripped)
        shutil.copytree(self.installation.stage / "modules", stripped / "modules")
        self.installation.stage = stripped
        terminal = Terminal(self.installation)
        self.desktop = self.start_with_letter()
        self.fax = self.desktop.fax_setup()
        return terminal

    def test_a_group_is_saved_only_when_it_is_accepted(self):
        self.add_ann()
        for how, leave in ways_out("LanFaxAddGroup Cancel Button"):
            with self.trying(how):
                group = self.open_group()
                self.eventually(lambda: [row[0] for row in group.control("LanFaxAddGroup Group List").rows] ==
                                ["Ann Lee"])
                group.fill(LanFaxAddGroup_Group_Name="Team")
                leave(group)
                group.await_gone()
                self.assertNotIn("Team", self.installation.driver("phonebook", "list"))
        group = self.open_group()
        group.fill(LanFaxAddGroup_Group_Name="Team")
        group.press("LanFaxAddGroup Ok Button")
        group.await_gone()
        self.assertIn("[Team]", self.installation.driver("phonebook", "list"))

    def add_ann(self):
        self.fax.press("AddFaxRcpt")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        dialog.fill(RecipientName="Ann Lee", RecipientNumber="555-0101")
        dialog.press("LanFaxAddRcpt OK Button")
        dialog.await_gone()

    def open_group(self):
        self.fax.await_active()
        self.fax.press("LanFax Save Group Button")
        return self.desktop.window("LanFax Add Group Window")


if __name__ == "__main__":
    unittest.main()

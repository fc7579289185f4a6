# SPDX-License-Identifier: LGPL-2.1-or-later
"""Everything from the keyboard alone: the order of Tab, mnemonics, Enter and Escape."""

import unittest

import definition
from journey import Journey
from waiting import wait_for

PAGES = ("LanFax Recipients Tab", "LanFax Options Tab", "LanFax Preferences Tab")


class Keyboard(Journey):
    def setUp(self):
        super().setUp()
        self.installation.driver("phonebook", "add", "Bea Stone", "555-0102")
        self.desktop = self.start_with_letter()

    def fax_setup_by_keys(self):
        self.desktop.main().keys("alt+u")
        return self.desktop.window("Lan Fax Window")

    # --- Tab -------------------------------------------------------------------------------------

    def reachable(self, window):
        """What Tab must stop at, by the definition's order: what shows and can be used. Of radio buttons it is the
        chosen one; arrow keys lead to the others."""
        elements = definition.elements(window.fixed_name)
        by_name = {}
        for control in window.controls():
            if control.showing or control.fixed_name not in by_name:
                by_name[control.fixed_name] = control
        elsewhere = {element for page in elements if page.tag == "NotebookPage"
                     for element in page.iter() if not by_name[page.get("Name")].showing}
        stops = []
        for element in elements:
            if element.tag in definition.OPERATED and element not in elsewhere:
                control = by_name[element.get("Name")]
                if control.showing and control.sensitive and (element.tag != "RadioButtonItem" or control.ticked):
                    stops.append(control)
        return stops

    def check_tab_order(self, window):
        stops = self.reachable(window)
        self.assertTrue(stops)
        start = next(index for index, one in enumerate(stops) if one.role != "combo box")
        stops = stops[start:] + stops[:start]
        for _ in range(2 * len(stops)):
            if stops[0].focused:
                break
            before = window.focused()
            window.keys("Tab")
            wait_for(lambda: window.focused() != before or before == "", "Tab to move on")
        wait_for(lambda: stops[0].focused, f"the focus in {stops[0].fixed_name}")
        for stop in [*stops[1:], stops[0]]:
            window.keys("Tab")
            if stop.role == "combo box":
                self.check_focus_in_combo_box(window, stop)
            else:
                wait_for(lambda: stop.focused,
                         lambda: f"the focus in {stop.fixed_name}; it is in {window.focused() or 'a combo box'}")

    def check_focus_in_combo_box(self, window, combo):
        """The accessibility interface does not tell that a combo box has the focus; that arrow keys change it does."""
        wait_for(lambda: window.focused() == "", f"{combo.fixed_name} to be come to")
        before = combo.chosen
        there, back = ("Down", "Up") if combo.items.index(before) == 0 else ("Up", "Down")
        window.keys(there)
        wait_for(lambda: combo.chosen != before, f"{combo.fixed_name} to answer to keys")
        window.keys(back)
        wait_for(lambda: combo.chosen == before, f"{combo.fixed_name} to turn back")

    def test_tab_reaches_every_control_of_the_fax_dialog_in_its_order(self):
        fax = self.fax_setup_by_keys()
        for number, page in enumerate(PAGES):
            with self.trying(f"on {page}"):
                if number > 0:
                    fax.keys("ctrl+Page_Down")
                    wait_for(lambda: fax.control(page).showing, f"{page} to show")
                self.check_tab_order(fax)

    def test_tab_reaches_every_control_when_all_options_are_on(self):
        fax = self.fax_setup_by_keys()
        fax.turn_to("LanFax Options Tab")
        for box in ("LanFax Cover Sheet", "LanFax Send At", "LanFax Dialing Prefix", "LanFax Credit Card"):
            fax.control(box).tick()
        self.check_tab_order(fax)
        fax.press("LanFax Setup Cover Sheet Button")
        cover = self.desktop.window("Cover Sheet Setup Window")
        self.check_tab_order(cover)
        for box in ("Show Rcpt Info Checkbox", "Show Custom Text", "Show Sender Info Checkbox"):
            cover.control(box).tick()
        self.check_tab_order(cover)
        cover.press("Sender Properties Button")
        self.check_tab_order(self.desktop.window("Sender Information Window"))

    def test_tab_reaches_every_control_of_the_recipients_dialogs_in_its_order(self):
        fax = self.fax_setup_by_keys()
        fax.press("AddFaxRcpt")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        self.check_tab_order(dialog)
        dialog.keys("Escape")
        dialog.await_gone()
        fax.await_active()
        fax.press("AddPBFaxRcpt")
        book = self.desktop.window("Add Rcpt From PB Window")
        self.check_tab_order(book)
        book.control("Fax PB List").select(0)
        book.press("Add Button")
        book.control("Fax Cur Recipient List").select(0)
        self.check_tab_order(book)
        book.press("Cur Rcpt Prop Button")
        properties = self.desktop.window("LanFax Recipient Properties Window")
        self.check_tab_order(properties)
        properties.keys("Escape")
        properties.await_gone()
        book.await_active()
        book.press("LanFaxRcptPB OK Button")
        book.await_gone()
        fax.await_active()
        fax.control("LanFax Recipient List").select(0)
        self.check_tab_order(fax)

    def test_tab_reaches_every_control_of_the_main_window(self):
        main = self.desktop.main()
        expected = ["Main Open Button", "Main Fax Setup Button", "", "Main Destination File", "Main Choose File Button",
                    "", "Main Job Summary Area", "Main Help Button", "Main Preview Button", "Main Send Button", "Main Open Button"]
        wait_for(lambda: main.focused() == expected[0], "the focus at the first control")
        for stop in expected[1:]:
            main.keys("Tab")
            wait_for(lambda: main.focused() == stop, lambda: f"the focus in {stop!r}, not {main.focused()!r}")

    # --- Mnemonics, Enter, Escape ----------------------------------------------------------------

    def test_a_fax_is_set_up_and_sent_by_keys_alone(self):
        fax = self.fax_setup_by_keys()
        fax.keys("Tab")
        wait_for(lambda: fax.focused() == "AddFaxRcpt", "the focus at the first button")
        fax.keys("space")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        dialog.type("Ann Lee")
        dialog.keys("Tab")
        dialog.type("555-0101")
        dialog.keys("alt+o")
        dialog.await_gone()
        fax.await_active()
        fax.keys("alt+o")
        fax.await_gone()
        main = self.desktop.main()
        sent = self.installation.work / "sent.job"
        main.keys("alt+l")
        wait_for(lambda: main.focused() == "Main Destination File", "the focus in the file's field")
        main.type(str(sent))
        main.keys("Return")
        self.desktop.message(main)
        self.assertIn(b'OID_ATT_FAX_DESTINATION_PHONE "5550101"', sent.read_bytes())
        self.quits_silently(self.desktop)

    def test_letters_with_alt_press_the_buttons_of_the_recipients_page(self):
        fax = self.fax_setup_by_keys()
        fax.press("AddFaxRcpt")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        dialog.fill(RecipientName="Ann Lee", RecipientNumber="555-0101")
        dialog.keys("Return")
        dialog.await_gone()
        for key, opened, selects in (("alt+d", "LanFax Add Recipient Window", True),
                                     ("alt+g", "LanFax Add Group Window", False),
                                     ("alt+r", "Question", True),
                                     ("alt+h", "Help Window", False), ("F1", "Help Window", False)):
            with self.trying(f"with {key}"):
                fax.await_active()
                recipients = fax.control("LanFax Recipient List")
                fax.control("LanFax Recipient List").select(0)
                if not selects:
                    fax.keys("ctrl+space")  # the row again, which is selected no more
                    wait_for(lambda: recipients.selected_rows == [], "no row to be selected")
                fax.keys(key)
                window = self.desktop.window(opened)
                window.keys("Escape")
                window.await_gone()
        fax.await_active()
        fax.keys("alt+c")
        fax.await_gone()

    def test_arrow_keys_choose_among_radio_buttons(self):
        fax = self.fax_setup_by_keys()
        fax.turn_to("LanFax Options Tab")
        fax.control("LanFax Print Conf Sheet").click()
        wait_for(lambda: fax.control("LanFax Print Conf Sheet").focused, "the focus at the choice")
        fax.keys("Down")
        wait_for(lambda: fax.control("LanFax No Conf Sheet").ticked, "the next choice")

    def test_enter_opens_the_row_that_the_keys_are_at_though_it_is_not_selected(self):
        fax = self.fax_setup_by_keys()
        fax.press("AddFaxRcpt")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        dialog.fill(RecipientName="Ann Lee", RecipientNumber="555-0101")
        dialog.keys("Return")
        dialog.await_gone()
        fax.await_active()
        recipients = fax.control("LanFax Recipient List")
        recipients.select(0)
        fax.keys("ctrl+space")
        wait_for(lambda: recipients.selected_rows == [], "no row to be selected")
        fax.keys("Return")
        dialog = self.desktop.window("LanFax Add Recipient Window")
        self.assertEqual(dialog.control("RecipientName").text, "Ann Lee")

    def test_keys_in_a_list_open_and_remove_its_row(self):
        fax = self.fax_setup_by_keys()
        fax.press("AddPBFaxRcpt")
        book = self.desktop.window("Add Rcpt From PB Window")
        book.control("Fax PB List").select(0)
        book.keys("Return")
        picks = book.control("Fax Cur Recipient List")
        self.eventually(lambda: [row[0] for row in picks.rows] == ["Bea Stone"], lambda: picks.rows)
        picks.select(0)
        book.keys("Delete")
        self.assertIn("Bea Stone", self.desktop.answer(True))
        self.eventually(lambda: picks.rows == [])


if __name__ == "__main__":
    unittest.main()

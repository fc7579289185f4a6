# SPDX-License-Identifier: LGPL-2.1-or-later
"""Goes through every window of the program, filled as a person's would be.

`tour` yields (picture's name, window) at each stop; where the program was not started with a device that knows a
directory, the stops at the directory are left out.
"""

from waiting import wait_for

PHONEBOOK = (("Bea Stone", "555-0102", "Stone & Daughters"), ("Carl Reed", "555-0103", "Reedhouse"),
             ("Dora Fields", "555-0104", "Fields Nursery"))
SENDER = {"Sender_Fax_Number": "555-0100", "Sender_Fax_Name": "Zoe Hill", "Sender_Fax_Organization": "Hill Ltd.",
          "Sender_Fax_Tel_Number": "555-0190", "Sender_Fax_Email_Addr": "zoe@hill.example"}


def prepare(installation):
    """A phonebook for the tour."""
    for name, number, organization in PHONEBOOK:
        installation.driver("phonebook", "add", name, number, "--organization", organization)
    installation.driver("phonebook", "add-group", "Board", "Bea Stone", "Carl Reed")


def tour(desktop, job, with_directory):
    """Begins at the main window with its document, ends there with the job handed over to the file `job`."""
    main = desktop.main()
    yield "main-document", main
    fax = desktop.fax_setup()
    yield from recipients(desktop, fax)
    yield from options(desktop, fax)
    yield from preferences(desktop, fax, with_directory)
    fax.press("LanFax OK Button")
    fax.await_gone()
    yield from sending(desktop, main, job)


def add(desktop, fax, name, number, **more):
    fax.await_active()
    fax.press("AddFaxRcpt")
    dialog = desktop.window("LanFax Add Recipient Window")
    dialog.fill(RecipientName=name, RecipientNumber=number, **more)
    dialog.press("LanFaxAddRcpt OK Button")
    return dialog


def recipients(desktop, fax):
    fax.press("AddFaxRcpt")
    dialog = desktop.window("LanFax Add Recipient Window")
    dialog.press("LanFaxAddRcpt OK Button")
    error = desktop.window("LanFax Add Recipient Error Window")
    yield "recipient-error", error
    error.keys("Escape")
    error.await_gone()
    dialog.await_active()
    dialog.fill(RecipientName="Ann Lee", RecipientNumber="555-0101", RecipientOrganization="Lee & Sons",
                RecipientTelNumber="555-0199", RecipientEmailAddr="ann@lee.example")
    yield "recipient", dialog
    dialog.press("LanFaxAddRcpt OK Button")
    dialog.await_gone()

    fax.await_active()
    fax.press("AddPBFaxRcpt")
    book = desktop.window("Add Rcpt From PB Window")
    entries = book.control("Fax PB List")
    picks = book.control("Fax Cur Recipient List")
    entries.select(3)
    book.press("Add Button")
    wait_for(lambda: len(picks.rows) == 2, "the members of the group")
    entries.select(2)
    book.press("Add Button")
    wait_for(lambda: len(picks.rows) == 3, "a third pick")
    yield "phonebook", book
    picks.select(0)
    book.press("Cur Rcpt Prop Button")
    properties = desktop.window("LanFax Recipient Properties Window")
    yield "recipient-properties", properties
    properties.keys("Escape")
    properties.await_gone()
    book.await_active()
    book.press("LanFaxRcptPB OK Button")
    book.await_gone()

    dialog = add(desktop, fax, "Ann Lee", "555-0101")
    question = desktop.window("Question")
    yield "question", question
    desktop.answer(False)
    dialog.await_active()
    dialog.keys("Escape")
    dialog.await_gone()

    fax.await_active()
    fax.press("LanFax Save Group Button")
    group = desktop.window("LanFax Add Group Window")
    group.fill(LanFaxAddGroup_Group_Name="Spring Fair")
    yield "save-group", group
    group.keys("Escape")
    group.await_gone()
    fax.await_active()
    fax.control("LanFax Recipient List").select(1)
    yield "fax-recipients", fax
    fax.press("LanFax Help Button")
    guide = desktop.window("Help Window")
    yield "help", guide
    guide.press("Help Close Button")
    guide.await_gone()


def options(desktop, fax):
    fax.await_active()
    fax.turn_to("LanFax Options Tab")
    fax.control("LanFax Cover Sheet").tick()
    fax.control("LanFax Cover Sheet Notes").fill("Please read before Friday.")
    fax.control("LanFax Send At").tick()
    fax.control("LanFax Dialing Prefix").tick()
    fax.control("LanFax Dialing Prefix Info").fill("9")
    yield "fax-options", fax
    fax.control("LanFax Send Now").tick()
    fax.press("LanFax Setup Cover Sheet Button")
    cover = desktop.window("Cover Sheet Setup Window")
    cover.control("Show Rcpt Info Checkbox").tick()
    cover.control("Show Sender Info Checkbox").tick()
    cover.press("Sender Properties Button")
    sender = desktop.window("Sender Information Window")
    sender.fill(**SENDER)
    yield "sender", sender
    sender.press("LanFaxSender OK Button")
    sender.await_gone()
    cover.await_active()
    yield "cover-sheet", cover
    cover.press("LanFaxCover OK Button")
    cover.await_gone()


def preferences(desktop, fax, with_directory):
    fax.await_active()
    fax.turn_to("LanFax Preferences Tab")
    yield "fax-preferences", fax
    fax.press("Select Shared PB Button")
    chooser = desktop.window("SharedPBSelectFileDialog")
    yield "phonebook-chooser", chooser
    chooser.keys("Escape")
    chooser.await_gone()
    if not with_directory:
        return
    fax.await_active()
    fax.press("LDAP More Info Button")
    info = desktop.window("LDAP Info Dialog")
    yield "directory-settings", info
    info.keys("Escape")
    info.await_gone()
    fax.await_active()
    fax.turn_to("LanFax Recipients Tab")
    fax.press("AddPBFaxRcpt")
    book = desktop.window("Add Rcpt From PB Window")
    book.control("Current PB Type").choose_at(2)
    book.control("Search String").fill("Re")
    book.press("Search Button")
    wait_for(lambda: book.control("Fax PB List").rows, "people of the directory")
    yield "directory-search", book
    book.keys("Escape")
    book.await_gone()
    fax.await_active()


def sending(desktop, main, job):
    main.await_active()
    main.press("Main Preview Button")
    preview = desktop.window("Preview Window")
    next_page = preview.control("Preview Next Button")
    wait_for(lambda: next_page.sensitive, "the second page")
    next_page.click()
    wait_for(lambda: preview.control("Preview Previous Button").sensitive, "the second page to show")
    yield "preview", preview
    preview.press("Preview Close Button")
    preview.await_gone()
    main.await_active()
    main.control("Main Destination File").fill(str(job))
    main.press("Main Send Button")
    desktop.message(main)
    yield "main-sent", main

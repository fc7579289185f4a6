# SPDX-License-Identifier: LGPL-2.1-or-later
"""The three ways out of a dialog that change nothing."""


def by_button(button):
    return "by its button", lambda window: window.press(button)


def ways_out(cancel_button):
    """Each as (how, what a person does to the window)."""
    return (by_button(cancel_button),
            ("by Escape", lambda window: window.keys("Escape")),
            ("by its frame", lambda window: window.close_from_frame()))

# SPDX-License-Identifier: LGPL-2.1-or-later
"""A control as an assistive tool sees it, and as a pointer reaches it."""

from collections import namedtuple

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from waiting import wait_for  # noqa: E402

Place = namedtuple("Place", "x y width height")
State = Atspi.StateType


def below(accessible):
    """All that stands in an accessible, in its order, and the accessible itself first."""
    yield accessible
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child is not None:
            yield from below(child)


def has(accessible, state):
    return accessible.get_state_set().contains(state)


def place_of(accessible):
    """Where it is in its window, in pixels of the window's own contents."""
    extents = Atspi.Component.get_extents(accessible, Atspi.CoordType.WINDOW)
    return Place(extents.x, extents.y, extents.width, extents.height)


class Control:
    """Something in a window that bears one of the fixed names."""

    def __init__(self, window, accessible):
        self.window = window
        self.accessible = accessible

    @property
    def fixed_name(self):
        return self.accessible.get_description()

    @property
    def name(self):
        return self.accessible.get_name()

    @property
    def role(self):
        return self.accessible.get_role_name()

    @property
    def showing(self):
        return has(self.accessible, State.SHOWING)

    @property
    def sensitive(self):
        return has(self.accessible, State.SENSITIVE)

    @property
    def ticked(self):
        return has(self.accessible, State.CHECKED)

    @property
    def focused(self):
        return has(self.accessible, State.FOCUSED)

    @property
    def place(self):
        return place_of(self.accessible)

    @property
    def text(self):
        """What a field holds, or a label says."""
        return Atspi.Text.get_text(self.accessible, 0, -1)

    @property
    def number(self):
        return Atspi.Value.get_current_value(self.accessible)

    @property
    def chosen(self):
        """The text of the chosen item of a combo box."""
        item = Atspi.Selection.get_selected_child(self.accessible, 0)
        return item.get_name() if item else None

    @property
    def items(self):
        """The texts of the items of a combo box."""
        return [one.get_name() for one in below(self.accessible) if one.get_role() == Atspi.Role.MENU_ITEM]

    @property
    def rows(self):
        """The cells of a list, row by row."""
        width = Atspi.Table.get_n_columns(self.accessible)
        height = Atspi.Table.get_n_rows(self.accessible)
        return [
            [Atspi.Table.get_accessible_at(self.accessible, row, column).get_name() for column in range(width)]
            for row in range(height)
        ]

    @property
    def selected_rows(self):
        return list(Atspi.Table.get_selected_rows(self.accessible))

    # --- As a person does ------------------------------------------------------------------------

    def click(self, times=1):
        """Clicks in its middle."""
        self._await_usable()
        self.window.click_at(lambda: self.place, times)

    def tick(self, on=True):
        """Ticks a box or chooses a radio button, unless it is so already."""
        if self.ticked != on:
            self.click()
        wait_for(lambda: self.ticked == on, f"{self.fixed_name} to be {'on' if on else 'off'}")

    def fill(self, text, kept=None):
        """Puts a text in the place of what a field holds; `kept` is what it takes of it, by default all."""
        self.click()
        wait_for(lambda: self.focused, f"the focus in {self.fixed_name}")
        self.window.keys("ctrl+a", "BackSpace")
        self.window.type(text)
        expected = text if kept is None else kept
        wait_for(lambda: self.text == expected, lambda: f"{expected!r} in {self.fixed_name}, not {self.text!r}")

    def choose(self, item):
        """Drops a combo box down and chooses an item by its text."""
        self.choose_at(self.items.index(item))

    def choose_at(self, index):
        """The same by the item's place."""
        item = self.items[index]
        self.click()
        menu = [one for one in below(self.accessible) if one.get_role() == Atspi.Role.MENU_ITEM]
        wait_for(lambda: has(menu[index], State.SHOWING), f"the items of {self.fixed_name}")
        self.window.keys("Home", *["Down"] * index)
        wait_for(lambda: has(menu[index], State.SELECTED) or has(menu[index], State.FOCUSED),
                 f"{item!r} to be marked")
        self.window.keys("Return")
        wait_for(lambda: self.chosen == item and not has(menu[index], State.SHOWING), f"{item!r} to be chosen")

    def select(self, row):
        """Selects one row of a list."""
        self._await_usable()
        wait_for(lambda: Atspi.Table.get_n_rows(self.accessible) > row, f"row {row} of {self.fixed_name}")
        self.window.click_at(lambda: place_of(Atspi.Table.get_accessible_at(self.accessible, row, 0)))
        wait_for(lambda: self.selected_rows == [row], f"row {row} of {self.fixed_name} to be selected")

    def _await_usable(self):
        wait_for(lambda: self.showing and self.sensitive, f"{self.fixed_name} to be usable")


__all__ = ["Atspi", "Control", "GLib", "Place", "State", "below", "has", "place_of"]

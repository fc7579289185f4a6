# SPDX-License-Identifier: LGPL-2.1-or-later
"""Checks of what the accessibility interface tells about a window: names, roles, and places."""

from control import Atspi, Place, State, below, has, place_of

# What a person operates, or reads, and a blind one must be told the name of.
NAMED_ROLES = {
    "alert", "check box", "check menu item", "combo box", "dialog", "frame", "list box", "list item", "menu item",
    "page tab", "password text", "progress bar", "push button", "radio button", "radio menu item", "slider",
    "spin button", "table", "table column header", "text", "toggle button", "tree table",
}
# What only holds others.
HOLDERS = {"filler", "menu bar", "page tab list", "panel", "scroll pane", "split pane", "viewport"}
# What shows the user's own texts, which may be empty.
DATA = {"table cell"}
VAGUE_ROLES = {"invalid", "unknown", "redundant object", "extended", "custom", "drawing area"}
# Roles whose insides the toolkit arranges.
WHOLE = {"table", "tree table", "menu", "menu bar", "combo box", "spin button", "text", "scroll bar"}


def showing(root):
    return [one for one in below(root) if has(one, State.SHOWING)]


def told(accessible):
    """How a failure names an accessible."""
    return f"{accessible.get_role_name()} {accessible.get_name()!r} ({accessible.get_description()})"


def nameless(root):
    """What shows below `root` and can be operated, but has no name that could be read aloud."""
    found = []
    for one in showing(root):
        role = one.get_role_name()
        operated = has(one, State.FOCUSABLE) and role not in HOLDERS | DATA
        if (operated or role in NAMED_ROLES) and not one.get_name().strip():
            found.append(told(one))
    return found


def vague(root):
    """What shows below `root` without a role that says what it is."""
    return [told(one) for one in showing(root) if one.get_role_name() in VAGUE_ROLES]


def within(place, view):
    """The part of a place that a view of it shows."""
    if view is None:
        return place
    x, y = max(place.x, view.x), max(place.y, view.y)
    return Place(x, y, max(0, min(place.x + place.width, view.x + view.width) - x),
                 max(0, min(place.y + place.height, view.y + view.height) - y))


def leaves(accessible, view=None):
    """What shows and holds nothing else that shows, and the view that it is scrolled in, or None; the insides of
    lists and the like do not count."""
    if not has(accessible, State.SHOWING):
        return
    if accessible.get_role_name() == "scroll pane":
        view = within(place_of(accessible), view)
    children = []
    if accessible.get_role_name() not in WHOLE:
        children = [accessible.get_child_at_index(index) for index in range(accessible.get_child_count())]
        children = [one for one in children if one is not None and has(one, State.SHOWING)]
    # Scroll bars may lie over what they scroll.
    if not children and accessible.get_role_name() not in HOLDERS | {"scroll bar"}:
        yield accessible, view
    for child in children:
        yield from leaves(child, view)


def overlap(one, other):
    width = min(one.x + one.width, other.x + other.width) - max(one.x, other.x)
    height = min(one.y + one.height, other.y + other.height) - max(one.y, other.y)
    return width > 0 and height > 0


def inside(place, outer):
    return (place.x >= outer.x and place.y >= outer.y and place.x + place.width <= outer.x + outer.width and
            place.y + place.height <= outer.y + outer.height)


def text_place(label):
    """Where a label's letters stand."""
    count = Atspi.Text.get_character_count(label)
    rectangle = Atspi.Text.get_range_extents(label, 0, count, Atspi.CoordType.WINDOW)
    return Place(rectangle.x, rectangle.y, rectangle.width, rectangle.height)


def misplaced(window):
    """What sticks out of the window, overlaps another control, or has too little room for its letters."""
    found = []
    outline = Place(0, 0, *window.size)
    placed = [(one, within(place_of(one), view)) for one, view in leaves(window.accessible)]
    # A label without a text takes no room.
    placed = [(one, place) for one, place in placed if one.get_role() != Atspi.Role.LABEL or one.get_name()]
    for index, (one, place) in enumerate(placed):
        if not inside(place, outline):
            found.append(f"{told(one)} at {tuple(place)} sticks out of {outline.width}x{outline.height}")
        if one.get_role() == Atspi.Role.LABEL and not inside(text_place(one), place_of(one)):
            found.append(f"{told(one)} has letters at {tuple(text_place(one))} and room at {tuple(place_of(one))}")
        for other, other_place in placed[index + 1:]:
            if overlap(place, other_place):
                found.append(f"{told(one)} at {tuple(place)} overlaps {told(other)} at {tuple(other_place)}")
    return found

# SPDX-License-Identifier: LGPL-2.1-or-later
"""A window on the screen: found by its fixed name, acted on with pointer and keys."""

import subprocess

from control import Control, GLib, State, below, has, place_of
from waiting import wait_for


def run(*command):
    """A tool's output; nothing when it fails, for windows come and go."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, timeout=30)
    return done.stdout.strip() if done.returncode == 0 else ""


def act(*command):
    """Has a tool do something, which must succeed."""
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, timeout=30)


def geometry(number):
    """A window's X, Y, WIDTH and HEIGHT; nothing when it is gone."""
    lines = [line.split("=") for line in run("xdotool", "getwindowgeometry", "--shell", number).splitlines()]
    return {name: int(value) for name, value in lines}


class Window:
    """An active window. Its fixed name is the accessible description of the window itself."""

    def __init__(self, accessible):
        self.accessible = accessible
        self.fixed_name = accessible.get_description()
        self.id = wait_for(self._find_id, f"the window of {self.fixed_name}")

    def _find_id(self):
        """The server's number for it: the window that the manager calls active, when it has our size."""
        if not has(self.accessible, State.ACTIVE):
            return None
        number = run("xdotool", "getactivewindow")
        content = place_of(self.accessible.get_child_at_index(0))
        menu_bars_and_margins = 60  # what may stand around the contents
        wide = geometry(number).get("WIDTH", 0) - content.width
        title = run("xdotool", "getwindowname", number)
        # A question's accessible name is its kind, not its title.
        named = self.accessible.get_role_name() == "alert" or title == self.accessible.get_name()
        fits = named and 0 <= wide <= menu_bars_and_margins
        return number if fits else None

    @property
    def title(self):
        return run("xdotool", "getwindowname", self.id)

    @property
    def size(self):
        values = geometry(self.id)
        return values["WIDTH"], values["HEIGHT"]

    @property
    def position(self):
        values = geometry(self.id)
        return values["X"], values["Y"]

    @property
    def active(self):
        return has(self.accessible, State.ACTIVE)

    @property
    def gone(self):
        try:
            return not has(self.accessible, State.SHOWING)
        except GLib.Error:  # not only hidden, but no more
            return True

    def controls(self):
        """All controls with a fixed name, in document order, those that do not show included."""
        return [Control(self, one) for one in below(self.accessible) if one.get_description()]

    def control(self, fixed_name):
        """The control of that name. Of several, such as each page's help button, the one that shows."""

        def find():
            found = [one for one in self.controls() if one.fixed_name == fixed_name]
            return next((one for one in found if one.showing), found[0] if found else None)

        return wait_for(find, f"{fixed_name} in {self.fixed_name}")

    def focused(self):
        """The fixed name of the control that has the keys; empty when none with a name has."""
        found = [one.get_description() for one in below(self.accessible) if has(one, State.FOCUSED)]
        return found[-1] if found else ""

    # --- As a person does ------------------------------------------------------------------------

    def press(self, fixed_name):
        self.control(fixed_name).click()

    def fill(self, **texts):
        """Fills fields: underscores in the names stand for blanks."""
        for name, text in texts.items():
            self.control(name.replace("_", " ")).fill(text)

    def turn_to(self, fixed_name):
        """Turns to the tab of that page."""
        tab = wait_for(lambda: next((one for one in below(self.accessible)
                                     if one.get_role_name() == "page tab" and one.get_child_count() and
                                     one.get_child_at_index(0).get_description() == fixed_name), None),
                       f"the tab {fixed_name}")
        self.click_at(lambda: place_of(tab))
        wait_for(lambda: self.control(fixed_name).showing, f"{fixed_name} to show")

    def click_at(self, find_place, times=1):
        """Points at a place and clicks once it keeps still, for windows settle when they have just opened."""

        def point():
            place = find_place()
            x, y = place.x + place.width // 2, place.y + place.height // 2
            act("xdotool", "mousemove", "--window", self.id, str(x), str(y))
            return find_place() == place

        wait_for(point, "the place of a click to keep still")
        act("xdotool", "click", "--repeat", str(times), "--delay", "40", "1")

    def keys(self, *keys):
        """Presses keys, such as "Tab" or "alt+n", in whichever of our windows has them."""
        act("xdotool", "key", "--delay", "5", *keys)

    def type(self, text):
        act("xdotool", "type", "--delay", "5", "--", text)

    def bring_to_front(self):
        act("wmctrl", "-i", "-a", self.id)
        self.await_active()

    def close_from_frame(self):
        act("wmctrl", "-i", "-c", self.id)

    def move_away_from(self, other):
        """Moves it to the screen's corner, as by its title, off the other window."""
        before = self.position
        act("xdotool", "windowmove", self.id, "0", "0")
        wait_for(lambda: self.position != before, f"{self.fixed_name} to move")

    def await_gone(self):
        wait_for(lambda: self.gone, f"{self.fixed_name} to go")

    def await_active(self):
        wait_for(lambda: self.active, f"{self.fixed_name} to be active again")

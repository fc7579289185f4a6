# SPDX-License-Identifier: LGPL-2.1-or-later
"""A window as none of ours may be, for the checks to find: a button without a name, one that sticks out, two that
overlap, and a label without room for its letters."""

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402


def control(made, name, x, y):
    made.get_accessible().set_description(name)
    area.put(made, x, y)
    return made


def squeeze():
    room = Gdk.Rectangle()
    room.x, room.y, room.width, room.height = 10, 140, 20, 20
    squeezed.size_allocate(room)


area = Gtk.Layout()
control(Gtk.Button(), "Nameless", 10, 10)
control(Gtk.Button(label="One"), "One", 10, 60)
control(Gtk.Button(label="Other"), "Other", 20, 70)
control(Gtk.Button(label="Far out"), "Far out", 280, 10)
squeezed = control(Gtk.Label(label="Hardly readable"), "Squeezed", 10, 140)
window = Gtk.Window(title="Bad", default_width=300, default_height=200)
window.get_accessible().set_description("Bad")
window.add(area)
window.connect("destroy", Gtk.main_quit)
window.connect("map", lambda _: GLib.idle_add(squeeze))
window.show_all()
Gtk.main()

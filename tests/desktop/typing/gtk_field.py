# SPDX-License-Identifier: MIT
"""A window with one field, whose text is in the file of the first argument after each change."""

import os
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

FILE = sys.argv[1]


def write(field):
    with open(FILE + ".new", "w", encoding="utf-8") as text:
        text.write(field.get_text())
    os.replace(FILE + ".new", FILE)


window = Gtk.Window(title="Receiver")
entry = Gtk.Entry(width_chars=80)
entry.connect("changed", write)
window.connect("destroy", Gtk.main_quit)
window.add(entry)
window.show_all()
write(entry)
Gtk.main()

# SPDX-License-Identifier: MIT
"""A session bus of its own on which a screen reader's programs are found where they are on the first one: it says its
address, and lives until nothing more is to be read.

    fake_accessibility.py ADDRESS-OF-THE-ACCESSIBILITY-BUS"""

import subprocess
import sys

from gi.repository import Gio, GLib

INTERFACES = """<node>
<interface name="org.a11y.Bus"><method name="GetAddress"><arg type="s" direction="out"/></method></interface>
<interface name="org.a11y.Status">
  <property name="IsEnabled" type="b" access="read"/><property name="ScreenReaderEnabled" type="b" access="read"/>
</interface>
</node>"""


def answer(*call):
    call[-1].return_value(GLib.Variant("(s)", (sys.argv[1],)))


daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], stdout=subprocess.PIPE,
                          text=True)
address = daemon.stdout.readline().strip()
connection = Gio.DBusConnection.new_for_address_sync(
    address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
bus, status = Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces
connection.register_object("/org/a11y/bus", bus, answer, None, None)
connection.register_object("/org/a11y/bus", status, None, lambda *_: GLib.Variant("b", True), None)
Gio.bus_own_name_on_connection(connection, "org.a11y.Bus", Gio.BusNameOwnerFlags.NONE,
                               lambda *_: print(address, flush=True), None)
loop = GLib.MainLoop()
GLib.io_add_watch(sys.stdin.fileno(), GLib.PRIORITY_DEFAULT, GLib.IOCondition.HUP, lambda *_: loop.quit())
loop.run()
daemon.terminate()
daemon.wait()

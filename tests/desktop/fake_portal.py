# SPDX-License-Identifier: MIT
"""A desktop's portal for files. It writes down each call as a line of JSON, and answers the last panel by what it reads:
the response's code and the URI of a file, or "-" for none."""

import json
import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
INTERFACES = """<node>
<interface name="org.freedesktop.portal.FileChooser">
  <property name="version" type="u" access="read"/>
  <method name="OpenFile"><arg type="s"/><arg type="s"/><arg type="a{sv}"/><arg type="o" direction="out"/></method>
  <method name="SaveFile"><arg type="s"/><arg type="s"/><arg type="a{sv}"/><arg type="o" direction="out"/></method>
</interface>
<interface name="org.freedesktop.portal.Request"><method name="Close"/></interface>
</node>"""


class Portal:
    def __init__(self, bus):
        self._bus = bus
        self._request = None
        node = Gio.DBusNodeInfo.new_for_xml(INTERFACES)
        self._request_interface = node.interfaces[1]
        bus.register_object(PATH, node.interfaces[0], self._show, self._say_version, None)
        GLib.io_add_watch(sys.stdin.fileno(), GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN, self._answer)

    @staticmethod
    def write(**call):
        print(json.dumps(call), flush=True)

    def _say_version(self, *_):
        self.write(method="version")
        return GLib.Variant("u", 4)

    def _show(self, bus, sender, _path, _interface, method, parameters, invocation):
        window, title, options = parameters.unpack()
        self._request = f"{PATH}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        self._asker = sender
        registration = bus.register_object(self._request, self._request_interface, self._close, None, None)
        self._end = lambda: bus.unregister_object(registration)
        invocation.return_value(GLib.Variant("(o)", (self._request,)))
        options = {key: bytes(value).decode() if key == "current_folder" else value for key, value in options.items()}
        self.write(method=method, window=window, title=title, options=options)

    def _close(self, *call):
        self.write(method="Close")
        call[-1].return_value(None)

    def _answer(self, *_):
        line = sys.stdin.readline()
        if not line:
            sys.exit(0)
        code, uri = line.split()
        results = {} if uri == "-" else {"uris": GLib.Variant("as", [uri])}
        self._bus.emit_signal(self._asker, self._request, "org.freedesktop.portal.Request", "Response",
                              GLib.Variant("(ua{sv})", (int(code), results)))
        self._end()
        return True


connection = Gio.bus_get_sync(Gio.BusType.SESSION)
portal = Portal(connection)
Gio.bus_own_name_on_connection(connection, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: Portal.write(method="ready"),
                               None)
GLib.MainLoop().run()

# SPDX-License-Identifier: MIT
"""Two message buses and, on them, what a desktop's session consists of: logind, a portal, a session manager and screen
savers, each as far as a program asks it. They answer on a thread of their own, whatever the test waits for."""

import os
import select
import signal
import subprocess
import threading

from gi.repository import Gio, GLib

SESSION = "/org/freedesktop/login1/session/_31"
LOGIND = """<node>
  <interface name="org.freedesktop.login1.Manager">
    <method name="GetSession"><arg type="s" direction="in"/><arg type="o" direction="out"/></method>
    <method name="Inhibit">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="h" direction="out"/>
    </method>
  </interface>
</node>"""
PORTAL_PATH = "/org/freedesktop/portal/desktop"
PORTAL = """<node>
  <interface name="org.freedesktop.portal.Inhibit">
    <method name="Inhibit">
      <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="a{sv}" direction="in"/>
      <arg type="o" direction="out"/>
    </method>
    <method name="CreateMonitor">
      <arg type="s" direction="in"/><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/>
    </method>
    <method name="QueryEndResponse"><arg type="o" direction="in"/></method>
  </interface>
  <interface name="org.freedesktop.portal.Request"><method name="Close"/></interface>
</node>"""
MANAGER = """<node>
  <interface name="org.gnome.SessionManager">
    <method name="Inhibit">
      <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="u" direction="in"/><arg type="u" direction="out"/>
    </method>
    <method name="Uninhibit"><arg type="u" direction="in"/></method>
  </interface>
</node>"""


class Bus:
    """A message bus of its own."""

    def __init__(self):
        self._daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--nosyslog", "--print-address"],
                                        stdout=subprocess.PIPE, text=True)
        self.address = self._daemon.stdout.readline().strip()

    def hang(self):
        self._daemon.send_signal(signal.SIGSTOP)

    def stop(self):
        self._daemon.kill()
        self._daemon.wait()
        self._daemon.stdout.close()


class Service:
    """Some objects under a name on a bus. `calls` are those that came: method and arguments, in order."""

    def __init__(self, address, name):
        self.calls = []
        self._context = GLib.MainContext()
        self._loop = GLib.MainLoop(self._context)
        ready = threading.Event()
        self._thread = threading.Thread(target=self._run, args=(address, name, ready), daemon=True)
        self._thread.start()
        ready.wait()

    def _run(self, address, name, ready):
        self._context.push_thread_default()
        flags = Gio.DBusConnectionFlags
        self._connection = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self.register()
        self._connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                                   GLib.Variant("(su)", (name, 0)), None, Gio.DBusCallFlags.NONE, -1, None)
        ready.set()
        self._loop.run()
        self._connection.close_sync(None)
        self._context.pop_thread_default()

    def register(self):
        """Puts the objects on the bus."""

    def place(self, path, description, interface):
        node = Gio.DBusNodeInfo.new_for_xml(description)
        self._connection.register_object(path, node.lookup_interface(interface), self._take, None, None)

    def _take(self, connection, sender, path, interface, method, arguments, invocation):
        self.calls.append((method, *arguments.unpack()))
        try:
            self.answer(path, method, arguments.unpack(), invocation)
        except Exception as failure:  # a thread's failure would go unnoticed, and the program would wait
            invocation.return_dbus_error("org.brenvik.Failure", str(failure))

    def answer(self, path, method, arguments, invocation):
        invocation.return_value(None)

    def emit(self, path, interface, signal_name, value):
        self._connection.emit_signal(None, path, interface, signal_name, value)
        self._connection.flush_sync(None)

    def called(self, method):
        return [call[1:] for call in self.calls if call[0] == method]

    def stop(self):
        self._context.invoke_full(GLib.PRIORITY_DEFAULT, self._loop.quit)
        self._thread.join()


class Lock:
    """An inhibitor's other end, which says when the holder has let go."""

    def __init__(self, reason):
        self.reason = reason
        self._end, self.given = os.pipe()

    def is_held(self):
        return not select.select([self._end], [], [], 0)[0]


class Logind(Service):
    def __init__(self, address):
        self.locks = {"sleep": [], "shutdown": []}
        super().__init__(address, "org.freedesktop.login1")

    def register(self):
        self.place("/org/freedesktop/login1", LOGIND, "org.freedesktop.login1.Manager")

    def answer(self, path, method, arguments, invocation):
        if method == "GetSession":
            return invocation.return_value(GLib.Variant("(o)", (SESSION,)))
        what, _, reason, mode = arguments
        assert mode == "delay", mode
        lock = Lock(reason)
        files = Gio.UnixFDList.new_from_array([lock.given])  # which closes it with itself
        self.locks[what].append(lock)
        invocation.return_value_with_unix_fd_list(GLib.Variant("(h)", (0,)), files)

    def held(self, what):
        """The locks that the program has now."""
        return [lock for lock in self.locks[what] if lock.is_held()]

    def lock_session(self, path=SESSION):
        self.emit(path, "org.freedesktop.login1.Session", "Lock", None)

    def change(self, path=SESSION, **properties):
        changed = {name: GLib.Variant("b", value) for name, value in properties.items()}
        self.emit(path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                  GLib.Variant("(sa{sv}as)", ("org.freedesktop.login1.Session", changed, [])))

    def _prepare(self, what, begins):
        self.emit("/org/freedesktop/login1", "org.freedesktop.login1.Manager", f"PrepareFor{what}",
                  GLib.Variant("(b)", (begins,)))

    def sleep(self, begins=True):
        self._prepare("Sleep", begins)

    def shut_down(self, begins=True):
        self._prepare("Shutdown", begins)

    def remove_session(self):
        self.emit("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "SessionRemoved",
                  GLib.Variant("(so)", ("1", SESSION)))


class ScreenSaver(Service):
    """Of any desktop: what counts is the signal."""

    def set_active(self, interface, is_active=True):
        self.emit("/" + interface.replace(".", "/"), interface, "ActiveChanged", GLib.Variant("(b)", (is_active,)))


class Portal(Service):
    def __init__(self, address, can_inhibit=True):
        self._can_inhibit = can_inhibit
        self.monitor = None  # of the last one who asked
        super().__init__(address, "org.freedesktop.portal.Desktop")

    def register(self):
        self.place(PORTAL_PATH, PORTAL, "org.freedesktop.portal.Inhibit")
        for kind in ("monitor", "logout"):
            self.place(f"{PORTAL_PATH}/request/{kind}", PORTAL, "org.freedesktop.portal.Request")

    def answer(self, path, method, arguments, invocation):
        if method == "Inhibit" and not self._can_inhibit:
            return invocation.return_dbus_error("org.freedesktop.portal.Error.Failed", "no")
        if method == "CreateMonitor":
            sender = invocation.get_sender()[1:].replace(".", "_")
            self.monitor = f"{PORTAL_PATH}/session/{sender}/{arguments[1]['session_handle_token']}"
        if method in ("Inhibit", "CreateMonitor"):
            kind = "logout" if method == "Inhibit" else "monitor"
            return invocation.return_value(GLib.Variant("(o)", (f"{PORTAL_PATH}/request/{kind}",)))
        invocation.return_value(None)

    def change(self, screen_saver=False, session=1):
        state = {"screensaver-active": GLib.Variant("b", screen_saver), "session-state": GLib.Variant("u", session)}
        self.emit(PORTAL_PATH, "org.freedesktop.portal.Inhibit", "StateChanged",
                  GLib.Variant("(oa{sv})", (self.monitor, state)))


class SessionManager(Service):
    def __init__(self, address):
        super().__init__(address, "org.gnome.SessionManager")

    def register(self):
        self.place("/org/gnome/SessionManager", MANAGER, "org.gnome.SessionManager")

    def answer(self, path, method, arguments, invocation):
        invocation.return_value(GLib.Variant("(u)", (4711,)) if method == "Inhibit" else None)

# SPDX-License-Identifier: MIT
"""A desktop in memory, the built program on it, and its window as a blind user meets it: through AT-SPI and the keys."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60  # seconds; a loaded machine is slow, and a condition that holds is not waited for


def wait_for(condition, what, patience=PATIENCE):
    """What `condition` gives as soon as it gives something."""
    deadline = time.monotonic() + patience
    while True:
        try:
            result = condition()
        except GLib.Error:  # what was asked went away in between
            result = None
        if result:
            return result
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {patience} seconds: {what}")
        time.sleep(0.05)


class Display:
    """An X server without a screen, and a window manager on it."""

    def __init__(self):
        reading, writing = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-noreset", "-nolisten", "tcp", "-screen", "0", "1280x860x24"],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as pipe:
            os.environ["DISPLAY"] = ":" + pipe.readline().strip()
        os.environ.pop("WAYLAND_DISPLAY", None)
        self._manager = subprocess.Popen(["openbox"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True,
                                        text=True).stdout.count("window id"), "a window manager")

    def stop(self):
        for process in (self._manager, self._server):
            process.terminate()
            process.wait()

    @staticmethod
    def picture(file):
        subprocess.run(["import", "-window", "root", str(file)], check=False)


def press(*keys):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)


def type_text(text):
    """Types what a US keyboard has."""
    subprocess.run(["xdotool", "type", "--delay", "15", text], check=True)


def set_text(field, text):
    """Puts any text into a field, also what no keyboard has."""
    Atspi.EditableText.set_text_contents(field, text)


def click(node):
    area = node.get_extents(Atspi.CoordType.SCREEN)
    subprocess.run(["xdotool", "mousemove", str(area.x + area.width // 2), str(area.y + area.height // 2), "click", "1"],
                   check=True)


class Program:
    """The program with a home of its own, which lasts over restarts."""

    def __init__(self, executable):
        self._executable = executable
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="brenvik-home-"))
        self._process = None

    def start(self):
        environment = dict(os.environ)
        environment.update(HOME=str(self.home), XDG_CONFIG_HOME=str(self.home / "config"), LANG="C.UTF-8",
                           XDG_RUNTIME_DIR=str(self.home), QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        # A process that nobody may trace cannot look for its own leaks.
        environment["ASAN_OPTIONS"] = environment.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        self.home.chmod(0o700)
        self._process = subprocess.Popen([self._executable], env=environment)
        self.window = wait_for(self._find_window, "the program's window")

    def _find_window(self):
        if self._process.poll() is not None:
            raise AssertionError(f"the program ended with {self._process.returncode}")
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == self._process.pid and application.get_child_count() > 0:
                return application
        return None

    def end(self, how=subprocess.Popen.terminate):
        """Asks the process to end; its exit code."""
        how(self._process)
        return self._process.wait(PATIENCE)

    def stop(self):
        if self._process and self._process.poll() is None:
            self._process.kill()
            self._process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    # What is in the window.

    def nodes(self, role=None, name=None):
        """Every node that shows, by role and name where they are given."""
        found = []
        waiting = [self.window]
        while waiting:
            node = waiting.pop()
            if node is None:
                continue
            states = node.get_state_set()
            is_shown = states.contains(Atspi.StateType.SHOWING) or node.get_role_name() in ("application", "list item")
            if not is_shown:
                continue
            if (role is None or node.get_role_name() == role) and (name is None or node.get_name() == name):
                found.append(node)
            waiting.extend(node.get_child_at_index(index) for index in reversed(range(node.get_child_count())))
        return found

    def node(self, role, name):
        return wait_for(lambda: next(iter(self.nodes(role, name)), None), f"a {role} named {name}")

    def is_gone(self, role, name):
        return wait_for(lambda: not self.nodes(role, name), f"no {role} named {name} any more")

    def focused(self):
        return next((node for node in self.nodes() if node.get_state_set().contains(Atspi.StateType.FOCUSED)), None)

    def focus_is_on(self, name):
        return wait_for(lambda: (self.focused() or self.window).get_name() == name, f"the focus on {name}")

    def rows(self, name):
        """The names of a list's rows, in order."""
        rows = self.node("list", name)
        return [rows.get_child_at_index(index).get_name() for index in range(rows.get_child_count())]

    def row(self, list_name, name):
        rows = self.node("list", list_name)
        return wait_for(lambda: next((row for row in map(rows.get_child_at_index, range(rows.get_child_count()))
                                      if row.get_name() == name), None), f"a row {name}")

    def push(self, name):
        button = self.node("push button", name) if self.nodes("push button", name) else self.node("button", name)
        wait_for(lambda: button.do_action(0), f"{name} to be pushed")

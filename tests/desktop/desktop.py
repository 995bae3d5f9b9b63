# SPDX-License-Identifier: MIT
"""A desktop in memory, the built program on it, and its window as a blind user meets it: through AT-SPI and the keys."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# Seconds. A loaded machine is slow, and a condition that holds is not waited for.
PATIENCE = float(os.environ.get("BRENVIK_PATIENCE", "60"))


def wait_for(condition, what, patience=None):
    """What `condition` gives as soon as it gives something."""
    patience = PATIENCE if patience is None else patience
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
        time.sleep(0.03)


class Display:
    """An X server without a screen, and a window manager on it. Without XTEST nobody can type but by AT-SPI."""

    def __init__(self, size="1280x860", can_type=True, manager="openbox"):
        reading, writing = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-noreset", "-nolisten", "tcp", "-screen", "0", f"{size}x24",
             *([] if can_type else ["-extension", "XTEST"])],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as pipe:
            os.environ["DISPLAY"] = ":" + pipe.readline().strip()
        os.environ.pop("WAYLAND_DISPLAY", None)
        self._manager = subprocess.Popen([manager], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True,
                                        text=True).stdout.count("window id"), "a window manager")

    def stop(self):
        for process in (self._manager, self._server):
            process.terminate()
            process.wait()

    @staticmethod
    def picture(file, area=None):
        """The display without its empty edges, or the rectangle of it that `area` names as in "1020x680+10+20"."""
        part = ["-crop", area] if area else ["-trim"]
        subprocess.run(["import", "-window", "root", *part, "+repage", str(file)], check=False)


# Keys and pointer


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def press(*keys):
    """Strikes keys as if no other were held. A held button of the mouse would count as one and be let go."""
    xdotool("key", "--clearmodifiers", *keys)


def cancel_drag():
    xdotool("key", "Escape", "mouseup", 1)


def type_text(text):
    """Types what a US keyboard has."""
    xdotool("type", "--delay", "15", text)


def point_at(node, from_left=0.5):
    """Moves the pointer onto the node, `from_left` of its width from its left edge."""
    x, y = place_of(node, from_left)
    xdotool("mousemove", x, y)


def click(node, button=1, times=1, from_left=0.5):
    x, y = place_of(node, from_left)
    xdotool("mousemove", x, y, "click", "--repeat", times, "--delay", 40, button)


def click_with(key, node):
    """Clicks while a key is held."""
    x, y = place_of(node)
    xdotool("mousemove", x, y, "keydown", key, "click", 1, "keyup", key)


def drag(node, target, drop=True):
    """Drags in steps and rests before the drop, as a hand does: what moves at once is no drag, and what is let go before
    the program has seen where is no drop. Without `drop` the button stays down."""
    x, y = place_of(node)
    end_x, end_y = place_of(target)
    xdotool("mousemove", x, y, "mousedown", 1)
    for step in range(1, 11):
        xdotool("mousemove", "--sync", x + (end_x - x) * step // 10, y + (end_y - y) * step // 10)
        time.sleep(0.02)
    time.sleep(0.3)
    if drop:
        xdotool("mouseup", 1)


def place_of(node, from_left=0.5):
    """The node's middle in the display's own pixels."""
    area = node.get_extents(Atspi.CoordType.SCREEN)
    scale = float(os.environ.get("QT_SCALE_FACTOR", "1"))
    return int((area.x + area.width * from_left) * scale), int((area.y + area.height / 2) * scale)


class Events:
    """Hears what the program tells by itself while it is used in `with`: of events of some kinds, what `read` makes of
    each."""

    def __init__(self, read, *kinds):
        self._read = read
        self._kinds = kinds
        self._heard = []
        self._listener = Atspi.EventListener.new(self._hear)

    def __enter__(self):
        for kind in self._kinds:
            Atspi.EventListener.register(self._listener, kind)
        return self

    def __exit__(self, *_):
        for kind in self._kinds:
            Atspi.EventListener.deregister(self._listener, kind)

    def _hear(self, event):
        try:
            self._heard.append(self._read(event))
        except GLib.Error:
            pass  # its source is gone again

    def heard(self):
        """All so far, in order; to be added to by whoever asks again."""
        while GLib.MainContext.default().iteration(False):
            pass
        return self._heard


class Announcements(Events):
    """Hears what is spoken by itself, also what is gone again before the tree has been walked on a slow machine: what
    comes up with the role of a notification."""

    def __init__(self):
        super().__init__(lambda event: event.source.get_name() if event.detail1 and
                         event.source.get_role_name() == "notification" else None, "object:state-changed:showing")

    def say(self, text):
        wait_for(lambda: text in self.heard(), f"{text!r} spoken")


class FocusEvents(Events):
    """Hears which node takes the focus: what a key has reached, also in a menu."""

    def __init__(self):
        super().__init__(lambda event: (event.detail1, event.source.get_role_name(), event.source.get_name()),
                         "object:state-changed:focused")

    def next_menu_item(self):
        """The name of the next menu item that takes the focus."""
        def find():
            while self.heard():
                is_focused, role, name = self.heard().pop(0)
                if is_focused and "menu item" in role:
                    return name
            return None
        return wait_for(find, "an item of the menu to take the focus", patience=10)


def menu_items():
    """The items that the arrow keys reach in the menu that was just opened. The last one reached is the first again."""
    names = []
    with FocusEvents() as events:
        while not names or names[-1] != names[0] or len(names) == 1:
            press("Down")
            names.append(events.next_menu_item())
    return names[:-1]


def choose_in_menu(name):
    """Walks down the menu that was just opened to an item, and chooses it."""
    reached = []
    with FocusEvents() as events:
        while name not in reached:
            press("Down")
            reached.append(events.next_menu_item())
            assert reached.count(reached[0]) < 2 or reached[-1] == name, f"no {name} among {reached}"
    press("Return")


# Nodes of the accessible tree


def set_text(field, text):
    """Puts any text into a field, also what no keyboard has."""
    Atspi.EditableText.set_text_contents(field, text)


def text_of(field):
    return Atspi.Text.get_text(field, 0, -1)


def has_state(node, state):
    return node.get_state_set().contains(state)


def is_enabled(node):
    return has_state(node, Atspi.StateType.ENABLED)


def is_checked(node):
    return has_state(node, Atspi.StateType.CHECKED)


def act(node):
    """Does what a screen reader's user does with a control: its first action."""
    wait_for(lambda: is_enabled(node), f"{node.get_name()} to be enabled")
    try:
        node.do_action(0)
    except GLib.Error:
        pass  # a dialogue that the action opens holds its answer back


def actions_of(node):
    """The names of what can be done with a node."""
    return [node.get_action_name(index) for index in range(node.get_n_actions())]


def act_by_name(node, name):
    node.do_action(actions_of(node).index(name))


def children_of(node):
    return [child for child in map(node.get_child_at_index, range(node.get_child_count())) if child]


def tree_as_text(node, depth=0):
    """The accessible tree, a line a node, for whoever has to find out what went wrong."""
    states = node.get_state_set()
    marks = "".join(letter for letter, state in (("S", Atspi.StateType.SHOWING), ("E", Atspi.StateType.ENABLED),
                                                 ("f", Atspi.StateType.FOCUSABLE), ("F", Atspi.StateType.FOCUSED),
                                                 ("C", Atspi.StateType.CHECKED), ("s", Atspi.StateType.SELECTED))
                    if states.contains(state))
    line = f"{'  ' * depth}{node.get_role_name()} {node.get_name()!r} {node.get_description()!r} {marks}\n"
    return line + "".join(tree_as_text(child, depth + 1) for child in children_of(node))


def spoken(text):
    """What a screen reader says of a text that names keys by signs: "Kaydet (Ctrl+S)" for "Kaydet (⌘S)"."""
    words = (("⌃", "Super+"), ("⌘", "Ctrl+"), ("⌥", "Alt+"), ("⇧", "Shift+"))
    return re.sub("[⌃⌘⌥⇧]+", lambda signs: "".join(word for sign, word in words if sign in signs.group()), text)


def matches(name, wanted):
    """Whether a name is a text, as it is read or as it is spoken, or fits a pattern."""
    return wanted.search(name) is not None if isinstance(wanted, re.Pattern) else name in (wanted, spoken(wanted))


class Program:
    """The program with a home of its own, which lasts over restarts."""

    def __init__(self, executable):
        self._executable = executable
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="brenvik-home-"))
        self._process = None

    def environment(self, **variables):
        """What it is started in; a variable that is None is not set."""
        environment = dict(os.environ)
        environment.update(HOME=str(self.home), XDG_CONFIG_HOME=str(self.home / "config"),
                           XDG_STATE_HOME=str(self.home / "state"), LANG="C.UTF-8",
                           XDG_RUNTIME_DIR=str(self.home), QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        # A process that nobody may trace cannot look for its own leaks.
        environment["ASAN_OPTIONS"] = environment.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        environment |= variables
        return {name: value for name, value in environment.items() if value is not None}

    def launch(self, *arguments, **variables):
        self.home.chmod(0o700)
        self._process = subprocess.Popen([self._executable, *arguments], env=self.environment(**variables))

    def start(self, *arguments, **variables):
        """Launches it, and waits for its window to have the keyboard."""
        self.launch(*arguments, **variables)
        self.appears()

    def appears(self):
        self.window = wait_for(self._find_window, "the program's window")
        wait_for(lambda: any(has_state(window, Atspi.StateType.ACTIVE) for window in children_of(self.window)),
                 "the window manager to give the window the keyboard")

    def _find_window(self):
        if self._process.poll() is not None:
            raise AssertionError(f"the program ended with {self._process.returncode}")
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == self._process.pid and application.get_child_count() > 0:
                return application
        return None

    def process_id(self):
        return self._process.pid

    def has_ended(self):
        return self._process.poll() is not None

    def wait_for_end(self):
        return self._process.wait(PATIENCE)

    def end(self, how=subprocess.Popen.terminate):
        """Asks the process to end; its exit code."""
        how(self._process)
        return self.wait_for_end()

    def stop(self):
        if self._process and self._process.poll() is None:
            self._process.kill()
            self._process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    # What is in the window.

    def nodes(self, role=None, name=None, within=None):
        """Every node that shows, in the tree's order, by role and by name (a text or a pattern) where they are given."""
        found = []
        waiting = [within or self.window]
        while waiting:
            node = waiting.pop()
            if node is None:
                continue
            own_role = node.get_role_name()
            if not has_state(node, Atspi.StateType.SHOWING) and own_role not in ("application", "list item"):
                continue
            if (role is None or own_role == role) and (name is None or matches(node.get_name(), name)):
                found.append(node)
            waiting.extend(reversed(children_of(node)))
        return found

    def node(self, role, name, within=None):
        return wait_for(lambda: next(iter(self.nodes(role, name, within)), None), f"a {role} named {name}")

    def is_gone(self, role, name):
        return wait_for(lambda: not self.nodes(role, name), f"no {role} named {name} any more")

    def focused(self):
        """Where the keys go: an open menu's item, else the focused control, and in a list its current row."""
        found = [node for node in self.nodes() if has_state(node, Atspi.StateType.FOCUSED)]
        # The viewport of a text that scrolls says that it is focused along with the text.
        found = [node for node in found if node.get_role_name() != "filler" or node.get_parent() not in found]
        # Every list's current row says that it is focused, also while the list is not.
        controls = [node for node in found if node.get_role_name() not in ("list item", "popup menu", "menu bar")]
        items = [node for node in controls if "menu item" in node.get_role_name()]
        focus = next(reversed(items or controls), None)
        if focus is None or focus.get_role_name() != "list":
            return focus
        return next((row for row in children_of(focus) if has_state(row, Atspi.StateType.FOCUSED)), focus)

    def focus_is_on(self, name):
        return wait_for(lambda: (self.focused() or self.window).get_name() == name, f"the focus on {name}")

    def has_keyboard(self, name):
        """A window of its own is shown some time before the window manager gives it the keyboard."""
        return wait_for(lambda: any(has_state(dialog, Atspi.StateType.ACTIVE) for dialog in self.nodes("dialog", name)),
                        f"the keyboard in {name}")

    def press_and_see_focus_move(self, key):
        """A further key before that would go on from a place that was not looked at."""
        def place():
            focused = self.focused()
            if focused is None:
                return None
            area = focused.get_extents(Atspi.CoordType.SCREEN)
            return focused.get_name(), area.x, area.y

        before = place()
        press(key)
        wait_for(lambda: place() not in (None, before), f"the focus to leave {before}")

    def tab_to(self, name, key="Tab", within=40):
        """Presses Tab until the focus is on `name`."""
        for _ in range(within):
            focused = self.focused()
            if focused and focused.get_name() == name:
                return
            self.press_and_see_focus_move(key)
        raise AssertionError(f"{within} times {key} did not reach {name}")

    def rows(self, name):
        """The names of a list's rows, in order."""
        return [row.get_name() for row in children_of(self.node("list", name))]

    def row(self, list_name, name):
        rows = self.node("list", list_name)
        return wait_for(lambda: next((row for row in children_of(rows) if matches(row.get_name(), name)), None),
                        f"a row {name}")

    def button(self, name, within=None):
        """A push button that shows."""
        return self.node("push button", name, within)

    def push(self, name, within=None):
        act(self.button(name, within))

    def menu_item(self, *path):
        """An item of the menu bar, whether its menu is open or not: "Dosya", "Kaydet"."""
        def find():
            place = next(iter(self.nodes("menu bar")), None)
            for name in path:
                places = children_of(place)
                # The items of a menu stand in its popup.
                if [each.get_role_name() for each in places] == ["popup menu"]:
                    places = children_of(places[0])
                place = next((each for each in places if matches(each.get_name(), name)), None)
                if place is None:
                    return None
            return place
        return wait_for(find, f"the menu item {' > '.join(map(str, path))}")

    def open_menu(self):
        """The menu that is open beside the menu bar's: it is a child of the program itself, as a window is."""
        return wait_for(lambda: next((child for child in children_of(self.window)
                                      if child.get_role_name() == "popup menu"), None), "an open menu")

    def has_no_open_menu(self):
        wait_for(lambda: all(child.get_role_name() != "popup menu" for child in children_of(self.window)),
                 "no menu open")

    def choose(self, *path):
        """Chooses an item of the menu bar."""
        act(self.menu_item(*path))

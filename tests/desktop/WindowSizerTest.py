# SPDX-License-Identifier: MIT
"""The window as window managers see it: a card that holds its size while locked, the user's own window otherwise."""

import collections
import re
import subprocess

import desktop
import testcase
from desktop import press, wait_for, xdotool
from testcase import DesktopTest

Size = collections.namedtuple("Size", "width height")
MAIN = Size(1020, 680)
CARD_WIDTH = 480


def told(*command):
    return subprocess.run(list(map(str, command)), capture_output=True, text=True, check=True).stdout


class Window:
    """The program's window from outside."""

    def __init__(self):
        self._id = wait_for(lambda: told("xdotool", "search", "--onlyvisible", "--class", "brenvik").split(),
                            "the window")[-1]

    def _property(self, name):
        return told("xprop", "-id", self._id, name)

    def place(self):
        info = told("xwininfo", "-id", self._id)
        return tuple(int(re.search(rf"{name}: +(-?\d+)", info)[1])
                     for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def size(self):
        return Size(*self.place()[2:])

    def borders(self):
        """Left, right, top, bottom."""
        return tuple(map(int, re.findall(r"\d+", self._property("_NET_FRAME_EXTENTS").partition("=")[2])))

    def frame(self):
        x, y, width, height = self.place()
        left, right, top, bottom = self.borders()
        return x - left, y - top, width + left + right, height + top + bottom

    def middle(self):
        x, y, width, height = self.frame()
        return x + width / 2, y + height / 2

    def limits(self):
        """The smallest and the largest size that the manager is told."""
        hints = self._property("WM_NORMAL_HINTS")
        return tuple(Size(*map(int, found.groups())) if found else None
                     for found in (re.search(rf"program specified {name} size: (\d+) by (\d+)", hints)
                                   for name in ("minimum", "maximum")))

    def is_maximised(self):
        return "MAXIMIZED_HORZ" in self._property("_NET_WM_STATE")

    def comes_to(self, size):
        wait_for(lambda: self.size() == size, f"the size {size}, not {self.size()}")

    def becomes_a_card(self):
        wait_for(lambda: self.size().width == CARD_WIDTH and self.limits() == (self.size(), self.size()),
                 "a card that cannot be resized")

    def rests(self):
        """Waits until the manager has done what it was asked to."""
        former = []

        def is_still():
            former.append((self.frame(), self.borders()))
            return len(former) > 4 and len(set(former[-5:])) == 1
        wait_for(is_still, "the window to rest")

    def move(self, x, y):
        xdotool("windowmove", "--sync", self._id, x, y)
        self.rests()

    def resize(self, size):
        xdotool("windowsize", self._id, *size)
        self.comes_to(size)
        self.rests()

    def maximise(self):
        """By a double click on the title."""
        x, y, width, _ = self.place()
        xdotool("mousemove", x + width // 2, y - self.borders()[2] // 2, "click", "--repeat", 2, "--delay", 60, 1)
        wait_for(self.is_maximised, "the maximised window")
        self.rests()


class ManagedWindow(DesktopTest):
    screen = Size(1280, 860)

    @classmethod
    def setUpClass(cls):
        cls.display = desktop.Display(size=f"{cls.screen.width}x{cls.screen.height}", manager=cls.manager)

    @classmethod
    def tearDownClass(cls):
        cls.display.stop()

    def setUp(self):
        super().setUp()
        self.choose_vault()
        self.window = Window()
        self.window.becomes_a_card()
        self.window.rests()

    def unlock(self, size=MAIN):
        self.enter_password()
        self.program.node("list", "Gruplar")
        if size:
            self.window.comes_to(size)
        self.window.rests()

    def lock(self):
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.window.becomes_a_card()
        self.window.rests()

    def assertMiddle(self, expected):
        # Borders differ by a few pixels between a window that can be resized and one that cannot.
        for here, there in zip(self.window.middle(), expected):
            self.assertAlmostEqual(here, there, delta=4)


class SizerTests:
    """For every window manager."""

    def setUp(self):
        super().setUp()
        # Where a manager puts a window is its own affair; here there is room on all sides.
        self.window.move(400, 150)

    def test_the_first_unlock_gives_the_usual_size_around_the_cards_middle(self):
        middle = self.window.middle()
        self.unlock()
        self.assertMiddle(middle)
        self.assertEqual(self.window.limits()[0], Size(720, 460))
        self.assertNotEqual(self.window.limits()[1], self.window.size())

    def test_the_users_size_comes_back_and_five_turns_move_nothing(self):
        self.unlock()
        self.window.resize(Size(900, 600))
        frame, middle = self.window.frame(), self.window.middle()
        for _ in range(5):
            self.lock()
            self.assertMiddle(middle)
            self.unlock(Size(900, 600))
        self.assertEqual(self.window.frame(), frame)

    def test_a_window_in_the_corner_stays_on_the_screen(self):
        self.window.move(self.screen.width - CARD_WIDTH, self.screen.height - self.window.frame()[3])
        self.unlock()
        x, y, width, height = self.window.frame()
        self.assertGreaterEqual(x, 0)
        self.assertGreaterEqual(y, 0)
        self.assertLessEqual(x + width, self.screen.width)
        self.assertLessEqual(y + height, self.screen.height)

    def test_the_card_grows_for_an_error_and_shrinks_when_it_is_dismissed(self):
        height = self.window.size().height
        middle = self.window.middle()
        self.enter_password("yanlis")
        wait_for(lambda: self.window.size().height > height, "a higher card")
        self.window.becomes_a_card()
        self.window.rests()
        self.assertMiddle(middle)
        self.program.push("Kapat")
        self.window.comes_to(Size(CARD_WIDTH, height))
        self.window.rests()
        self.assertMiddle(middle)

    def test_a_maximised_window_is_a_framed_card_while_locked(self):
        self.unlock()
        self.window.maximise()
        self.lock()
        self.assertFalse(self.window.is_maximised())
        self.assertGreater(self.window.borders()[2], 0)
        x, y, width, height = self.window.frame()
        self.assertTrue(x >= 0 and y >= 0 and x + width <= self.screen.width and y + height <= self.screen.height)
        self.unlock(size=None)
        wait_for(self.window.is_maximised, "the maximised window again")


class SmallScreenTests:
    screen = Size(1280, 500)

    def test_a_card_taller_than_the_screen_leaves_eighty_points_of_it(self):
        wait_for(lambda: self.window.size() == Size(CARD_WIDTH, self.screen.height - 80), "the highest card")
        x, y, width, height = self.window.frame()
        self.assertGreaterEqual(y, 0)
        self.assertLessEqual(y + height, self.screen.height)


class OpenboxTest(SizerTests, ManagedWindow):
    manager = "openbox"


class OpenboxSmallScreenTest(SmallScreenTests, ManagedWindow):
    manager = "openbox"


class XfwmTest(SizerTests, ManagedWindow):
    manager = "xfwm4"


class XfwmSmallScreenTest(SmallScreenTests, ManagedWindow):
    manager = "xfwm4"


if __name__ == "__main__":
    testcase.run(on_display=None)

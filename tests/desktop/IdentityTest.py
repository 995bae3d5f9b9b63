# SPDX-License-Identifier: MIT
"""What the desktop knows the window by: by it a panel finds the program's icon and name."""

import configparser
import pathlib
import re
import subprocess
import unittest

import desktop
import testcase

ENTRY = pathlib.Path(__file__).parents[2] / "packaging" / "desktop" / "org.brenvik.Brenvik.desktop"


def entry():
    parser = configparser.ConfigParser(interpolation=None, delimiters=("=",))
    parser.optionxform = str
    parser.read(ENTRY, encoding="utf-8")
    return parser["Desktop Entry"]


class IdentityTest(testcase.DesktopTest):
    def window_class(self):
        """The two words of WM_CLASS of each of the program's windows on the display that the window manager manages."""
        listed = subprocess.run(["xprop", "-root", "_NET_CLIENT_LIST"], capture_output=True, text=True).stdout
        found = []
        for window in re.findall(r"0x[0-9a-f]+", listed):
            said = subprocess.run(["xprop", "-id", window, "_NET_WM_PID", "WM_CLASS"], capture_output=True,
                                  text=True).stdout
            if re.search(rf"^_NET_WM_PID\(CARDINAL\) = {self.program.process_id()}$", said, re.MULTILINE):
                found.append(re.findall(r'"([^"]*)"', said))
        return found

    def test_the_window_has_the_class_that_the_desktop_entry_names(self):
        windows = desktop.wait_for(self.window_class, "a window of the program")
        for words in windows:
            self.assertIn(entry()["StartupWMClass"], words)

    def test_the_program_is_started_by_the_name_that_it_is_installed_by(self):
        name = testcase.options.program.name
        self.assertEqual(entry()["Exec"].split()[0], name)
        self.assertEqual(entry()["TryExec"], name)


if __name__ == "__main__":
    testcase.run()

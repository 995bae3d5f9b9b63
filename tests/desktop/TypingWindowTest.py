# SPDX-License-Identifier: MIT
"""The service that types, without the program's window: what is typed goes into the window that was in front when the
typing began, or nowhere."""

import json
import os
import subprocess
import time
import unittest

import desktop
import testcase
from AutoTypeTest import NO_TARGET, Forms, Terminal, bring_to_front, helper
from desktop import wait_for, xdotool

NAME, SECRET = "21345678901", "Kumbara!78Kurus"
SEQUENCE = "{USERNAME}{TAB}{PASSWORD}{USERNAME}{ENTER}"
TYPED = f"{NAME}\t{SECRET}{NAME}\r"
ROUNDS = 20


def stopped(name):
    return f"{name} penceresi artık ön planda olmadığı için yazma durduruldu."


def moments():
    """Seconds from the wish to type, from at once to about the end of the typing."""
    return [number * 0.06 for number in range(ROUNDS)]


class TypingWindowTest(unittest.TestCase):
    def setUp(self):
        self.typist = subprocess.Popen([helper("typing-program")], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                       text=True)
        self.addCleanup(self.end_typist)

    def end_typist(self):
        self.typist.stdin.close()
        self.typist.wait()
        self.typist.stdout.close()

    def terminal(self, title):
        terminal = Terminal(title)
        self.addCleanup(terminal.stop)
        return terminal

    def forms(self, *titles):
        forms = Forms(*titles)
        self.addCleanup(forms.stop)
        return forms

    def begin(self, sequence=SEQUENCE):
        """Asks for the typing into the window in front."""
        self.typist.stdin.write(json.dumps({"sequence": sequence, "username": NAME, "password": SECRET}) + "\n")
        self.typist.stdin.flush()

    def failure(self):
        """Why the typing ended, once it has; none where all was typed."""
        return json.loads(self.typist.stdout.readline())["failure"]

    def nothing_is_left_pressed(self, terminal):
        """What the user strikes next is what the user strikes."""
        before = terminal.typed()
        xdotool("key", "q")
        wait_for(lambda: terminal.typed() != before, "the user's own stroke")
        self.assertEqual(terminal.typed(), before + "q")

    def test_nothing_goes_into_a_window_that_comes_to_the_front(self):
        other = self.terminal("Sohbet")
        target = self.terminal("Hesap")
        cut_short = 0
        for moment in moments():
            bring_to_front(target.window)
            before = target.typed()
            self.begin()
            time.sleep(moment)
            bring_to_front(other.window)
            failure = self.failure()
            self.assertEqual(other.typed().replace("q", ""), "", f"after {moment} s")
            self.nothing_is_left_pressed(other)
            typed = target.typed()[len(before):]
            self.assertTrue(TYPED.startswith(typed), typed)
            self.assertEqual(failure, None if typed == TYPED else stopped("XTerm"))
            cut_short += typed != TYPED
        self.assertGreater(cut_short, ROUNDS // 2)

    def test_nothing_goes_anywhere_once_the_target_has_been_closed(self):
        other = self.terminal("Sohbet")
        for number, moment in enumerate(moments()):
            target = self.terminal("Hesap")
            self.begin()
            time.sleep(moment)
            if number % 2:
                xdotool("windowclose", target.window)
            else:
                target.process.kill()
            # Its class is "XTerm", and its process, which is what is left to be asked when it ends at once, "xterm".
            self.assertIn(self.failure(), (None, NO_TARGET, stopped("XTerm"), stopped("xterm")))
            bring_to_front(other.window)
            self.assertEqual(other.typed().replace("q", ""), "", f"after {moment} s")
            self.nothing_is_left_pressed(other)

    def test_another_window_of_the_same_program_is_another_window(self):
        forms = self.forms("Hesap", "Sohbet")
        for moment in (0, 0.05, 0.1, 0.2, 0.4):
            bring_to_front(forms.windows["Hesap"])
            self.begin()
            time.sleep(moment)
            bring_to_front(forms.windows["Sohbet"])
            self.assertEqual(self.failure(), stopped("typing-target"))
            self.assertEqual(forms.typed("Sohbet")[:3], ("", "", 0), f"after {moment} s")
            self.assertEqual(forms.typed("Hesap")[2], 0)

    def test_the_typing_goes_on_where_its_own_enter_has_closed_a_dialogue(self):
        forms = self.forms("Uygulama", "+Hesap", "Sohbet")
        bring_to_front(forms.windows["Uygulama"])  # which is then the one that comes next
        bring_to_front(forms.windows["+Hesap"])
        self.begin("{USERNAME}{TAB}{TAB}{ENTER}{PASSWORD}{ENTER}")
        self.assertIsNone(self.failure())
        self.assertEqual(forms.typed("+Hesap")[:3], (NAME, "", 1))
        forms.receives("Uygulama", SECRET, "")
        self.assertEqual(forms.typed("Sohbet")[:3], ("", "", 0))

    def test_it_goes_on_in_no_window_that_merely_comes_after_the_dialogue(self):
        forms = self.forms("Uygulama", "+Hesap", "Sohbet")
        bring_to_front(forms.windows["Uygulama"])
        bring_to_front(forms.windows["+Hesap"])
        self.begin("{USERNAME}{TAB}{TAB}{ENTER}{DELAY 1000}{PASSWORD}{ENTER}")
        wait_for(lambda: forms.typed("+Hesap")[2] == 1, "the dialogue to be sent")
        bring_to_front(forms.windows["Sohbet"])
        self.assertEqual(self.failure(), stopped("typing-target"))
        for title in ("Uygulama", "Sohbet"):
            self.assertEqual(forms.typed(title)[:3], ("", "", 0))

    def test_a_last_key_that_closes_the_window_is_a_success(self):
        forms = self.forms("Uygulama", "+Hesap")
        bring_to_front(forms.windows["+Hesap"])
        self.begin("{USERNAME}{TAB}{PASSWORD}{ENTER}")
        self.assertIsNone(self.failure())
        forms.receives("+Hesap", NAME, SECRET)
        self.assertEqual(forms.typed("Uygulama")[:3], ("", "", 0))


if __name__ == "__main__":
    testcase.run(on_display=lambda: desktop.Display(manager=os.environ.get("BRENVIK_WINDOW_MANAGER", "openbox")))

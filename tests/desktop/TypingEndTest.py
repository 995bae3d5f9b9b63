# SPDX-License-Identifier: MIT
"""What the program types ends when its window is not in front any more, and with the session."""

import os
import time

import desktop
import testcase
from AutoTypeTest import ACCOUNT, NAME, NO_MATCH, NO_PERMISSION, NO_TARGET, SECRET, TypingTest, bring_to_front
from desktop import press, wait_for, xdotool

SEQUENCE = "{USERNAME}{TAB}{PASSWORD}{USERNAME}{ENTER}"
TYPED = f"{NAME}\t{SECRET}{NAME}\r"
LONGER_THAN_MANY_STROKES = 0.4  # seconds
PAUSE = 5  # of the sequence that waits, in seconds


def stopped(name):
    return f"{name} penceresi artık ön planda olmadığı için yazma durduruldu."


class EndTest(TypingTest):
    def shows_no_failure(self):
        time.sleep(LONGER_THAN_MANY_STROKES)
        for text in (NO_MATCH, NO_TARGET, NO_PERMISSION, "İşlem iptal edildi."):
            self.assertFalse(self.program.nodes(name=text))
        self.assertFalse([node.get_name() for node in self.program.nodes("label")
                          if "yazma durduruldu" in node.get_name()])

    def nothing_is_left_pressed(self, terminal):
        """What the user strikes next is what the user strikes."""
        before = terminal.typed()
        xdotool("key", "q")
        wait_for(lambda: terminal.typed() != before, "the user's own stroke")
        self.assertEqual(terminal.typed(), before + "q")


class OtherWindowTest(EndTest):
    settings_at_start = {"defaultAutoTypeSequence": SEQUENCE}

    def test_another_window_ends_it_and_the_user_is_notified(self):
        other = self.terminal("Sohbet")
        target = self.terminal(ACCOUNT)
        self.press_hot_key()
        wait_for(target.typed, "the first character")
        bring_to_front(other.window)
        self.says(stopped("XTerm"))
        self.assertEqual(other.typed(), "")
        self.assertNotEqual(target.typed(), TYPED)
        self.nothing_is_left_pressed(other)

    def test_the_end_of_the_target_ends_it_and_the_user_is_notified(self):
        other = self.terminal("Sohbet")
        target = self.terminal(ACCOUNT)
        self.press_hot_key()
        wait_for(target.typed, "the first character")
        target.process.kill()
        self.says(stopped("XTerm"))
        bring_to_front(other.window)
        self.nothing_is_left_pressed(other)
        self.assertEqual(other.typed(), "q")

    def test_our_own_window_is_another_window_too(self):
        target = self.terminal(ACCOUNT)
        self.press_hot_key()
        wait_for(target.typed, "the first character")
        self.bring_ourselves_to_front()
        self.says(stopped("XTerm"))
        self.assertNotEqual(target.typed(), TYPED)

    def test_a_run_that_is_not_disturbed_reports_nothing(self):
        target = self.terminal(ACCOUNT)
        self.press_hot_key()
        target.receives(TYPED)
        self.shows_no_failure()


class LastKeyTest(EndTest):
    def test_a_run_whose_last_key_closes_its_window_has_succeeded(self):
        forms = self.forms("Uygulama", f"+{ACCOUNT}")
        bring_to_front(forms.windows[f"+{ACCOUNT}"])
        self.press_hot_key()
        wait_for(lambda: forms.typed(f"+{ACCOUNT}")[2] == 1, "the dialogue to be sent")
        self.assertEqual(forms.typed(f"+{ACCOUNT}")[:2], (NAME, SECRET))
        self.shows_no_failure()
        self.assertEqual(forms.typed("Uygulama")[:3], ("", "", 0))


class SessionTest(EndTest):
    """A run that waits in its sequence's pause when the session ends."""

    settings_at_start = {"defaultAutoTypeSequence": f"{{USERNAME}}{{DELAY {PAUSE}000}}{{PASSWORD}}{{ENTER}}"}

    def press_and_wait_for_the_pause(self):
        target = self.terminal(ACCOUNT)
        self.press_hot_key()
        self.pressed_at = time.monotonic()
        target.receives(NAME)
        return target

    def nothing_more_is_typed(self, target):
        bring_to_front(target.window)
        time.sleep(max(0, self.pressed_at + PAUSE + 1.5 - time.monotonic()))
        self.assertEqual(target.typed(), NAME)
        self.nothing_is_left_pressed(target)

    def test_a_lock_ends_it_without_a_word(self):
        target = self.press_and_wait_for_the_pause()
        self.bring_ourselves_to_front()
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.nothing_more_is_typed(target)
        self.shows_no_failure()

    def test_a_lock_that_is_chosen_over_accessibility_ends_it(self):
        target = self.press_and_wait_for_the_pause()
        self.program.choose("Dosya", "Kasayı Kilitle")
        self.program.node("password text", "Ana parola")
        self.nothing_more_is_typed(target)
        self.shows_no_failure()

    def test_a_close_ends_it(self):
        target = self.press_and_wait_for_the_pause()
        self.bring_ourselves_to_front()
        press("ctrl+shift+w")
        self.program.is_gone("list", "Gruplar")
        self.nothing_more_is_typed(target)
        self.shows_no_failure()

    def test_another_vault_ends_it(self):
        target = self.press_and_wait_for_the_pause()
        self.bring_ourselves_to_front()
        self.choose_vault()
        self.nothing_more_is_typed(target)
        self.shows_no_failure()

    def test_the_end_of_the_program_ends_it(self):
        target = self.press_and_wait_for_the_pause()
        self.assertEqual(self.program.end(), 0)
        self.nothing_more_is_typed(target)

    def test_a_run_that_is_left_alone_goes_on_after_its_pause(self):
        target = self.press_and_wait_for_the_pause()
        target.receives(f"{NAME}{SECRET}\r")


if __name__ == "__main__":
    testcase.run(on_display=lambda: desktop.Display(manager=os.environ.get("BRENVIK_WINDOW_MANAGER", "openbox")))

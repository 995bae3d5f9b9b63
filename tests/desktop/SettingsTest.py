# SPDX-License-Identifier: MIT
"""The settings window's keys and wheel, whether the hot key is in force, and the names of keys everywhere."""

import subprocess

import desktop
import testcase
from AutoTypeTest import KEY_OF_A, BareProgram
from desktop import Atspi, click, point_at, press, wait_for, xdotool
from testcase import DesktopTest

NOT_IN_FORCE = ("Bu kısayol şu anda devrede değil; başka bir uygulama kullanıyor olabilir. Başka bir kombinasyon "
                "seçebilirsin.")
SIGNS = set("⌃⌘⌥⇧")


class SettingsTest(DesktopTest):
    def open_settings(self):
        press("ctrl+comma")
        self.shows("Otomatik temizleme")
        self.program.has_keyboard("Ayarlar")

    def value_of_slider(self):
        return Atspi.Value.get_current_value(self.program.node("slider", "Otomatik temizleme"))


class KeysTest(SettingsTest):
    def test_it_locks_by_the_programs_key(self):
        self.open_vault()
        self.open_settings()
        press("ctrl+l")
        self.program.is_gone("list", "Gruplar")
        self.program.node("password text", "Ana parola")

    def test_it_quits_by_the_programs_key(self):
        self.open_vault()
        self.open_settings()
        press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_while_a_combination_is_recorded_the_key_is_recorded(self):
        self.open_vault()
        self.open_settings()
        self.program.push("Ctrl+Alt+A")
        self.program.button("Tuş kombinasyonuna bas…")
        press("ctrl+l")
        self.setting_becomes("hotKeyCode", 37)
        self.program.node("list", "Gruplar")


class WheelTest(SettingsTest):
    def turn_wheel_over_slider(self):
        point_at(self.program.node("slider", "Otomatik temizleme"))
        xdotool("click", "--repeat", 3, "--delay", 40, 5)

    def test_it_changes_nothing_in_a_window_that_has_just_opened(self):
        self.open_settings()
        self.turn_wheel_over_slider()
        press("ctrl+comma")  # which is answered after the wheel
        self.assertEqual(self.value_of_slider(), 12)
        self.assertNotIn("clipboardTimeout", self.settings())

    def test_it_scrolls_the_page(self):
        self.open_settings()
        window = subprocess.run(["xdotool", "search", "--name", "^Ayarlar$"], capture_output=True, text=True,
                                check=True).stdout.split()[-1]
        xdotool("windowsize", "--sync", window, 420, 380)
        before = self.program.node("label", "Otomatik temizleme").get_extents(Atspi.CoordType.SCREEN).y
        self.turn_wheel_over_slider()
        wait_for(lambda: self.program.node("label", "Otomatik temizleme").get_extents(Atspi.CoordType.SCREEN).y < before,
                 "the page to scroll")
        self.assertEqual(self.value_of_slider(), 12)

    def test_it_changes_the_value_once_the_user_has_chosen_the_slider(self):
        self.open_settings()
        click(self.program.node("radio button", "30 sn"))
        self.setting_becomes("clipboardTimeout", 30)
        press("shift+Tab", "shift+Tab", "shift+Tab")
        self.program.focus_is_on("Otomatik temizleme")
        self.turn_wheel_over_slider()
        wait_for(lambda: self.value_of_slider() < 30, "the wheel to turn the slider")


class HotKeyOfAnotherProgramTest(SettingsTest):
    def setUp(self):
        self.other = BareProgram()
        self.other.perform(f"grab {KEY_OF_A}")
        self.other_runs = True
        self.addCleanup(self.end_other)
        super().setUp()

    def end_other(self):
        if self.other_runs:
            self.other.stop()
        self.other_runs = False

    def test_the_card_says_that_it_is_not_in_force_until_it_is_free(self):
        self.open_settings()
        self.shows(NOT_IN_FORCE)
        recorder = self.program.button("Ctrl+Alt+A")
        self.assertEqual(recorder.get_description(), NOT_IN_FORCE)
        self.end_other()
        self.program.is_gone("label", NOT_IN_FORCE)
        self.assertEqual(recorder.get_description(), "")

    def test_another_combination_is_in_force_at_once(self):
        self.open_settings()
        self.shows(NOT_IN_FORCE)
        self.program.push("Ctrl+Alt+A")
        self.program.button("Tuş kombinasyonuna bas…")
        press("ctrl+shift+k")
        self.setting_becomes("hotKeyCode", 40)
        self.program.button("Ctrl+Shift+K")
        self.program.is_gone("label", NOT_IN_FORCE)
        self.program.push("Varsayılana dön  (Ctrl+Alt+A)")
        self.shows(NOT_IN_FORCE)


class KeyNamesTest(SettingsTest):
    def tearDown(self):
        subprocess.run(["setxkbmap", "us"], check=True)
        super().tearDown()

    def signs_heard(self):
        return [node.get_name() for node in self.program.nodes()
                if SIGNS & set(node.get_name() + (node.get_description() or ""))]

    def test_screen_readers_hear_the_names_of_the_keys(self):
        self.open_vault()
        for name in ("Yeni kayıt (Ctrl+I)", "Kaydet (Ctrl+S)", "Kasayı kilitle (Ctrl+L)", "Yeni grup (Ctrl+Shift+G)"):
            self.assertTrue(self.program.nodes("push button", name), name)
        self.open_settings()
        self.program.button("Ctrl+Alt+A")
        self.program.button("Varsayılana dön  (Ctrl+Alt+A)")
        self.assertEqual(self.signs_heard(), [])

    def test_the_hot_keys_letter_is_the_one_at_its_place(self):
        self.open_settings()
        self.program.button("Ctrl+Alt+A")
        subprocess.run(["setxkbmap", "tr", "f"], check=True)
        self.program.button("Ctrl+Alt+U")
        self.program.button("Varsayılana dön  (Ctrl+Alt+U)")

    def test_the_enter_key_is_called_by_its_name(self):
        self.open_vault()
        item = self.program.menu_item("Kayıt", "Adresi Tarayıcıda Aç")
        self.assertIn("Ctrl+Shift+Enter", Atspi.Action.get_key_binding(item, 0))
        self.assertNotIn("Dönüş", Atspi.Action.get_key_binding(item, 0))


if __name__ == "__main__":
    testcase.run()

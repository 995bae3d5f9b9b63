# SPDX-License-Identifier: MIT
"""The generator and the settings window."""

import re

import desktop
import testcase
from desktop import Atspi, act, is_checked, press, set_text, wait_for
from testcase import DesktopTest, clipboard_text

SETS = {"Büyük harf  A–Z": "upper", "Küçük harf  a–z": "lower", "Rakam  0–9": "digits", "Sembol  !@#$…": "symbols",
        "Karışabilecek karakterleri ele  (l 1 I O 0)": "excludeAmbiguous"}


class GeneratorTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.open_vault()
        press("ctrl+g")
        self.program.button("Yeniden üret")

    def password(self):
        """What the preview shows in the clear: its name is its text, as a label's is."""
        if self.program.nodes("push button", "Göster"):
            self.program.push("Göster")
            self.program.button("Gizle")
        preview = wait_for(lambda: next((node for node in self.program.nodes("label")
                                         if node.get_description() == "Önizleme"), None), "the preview")
        return preview.get_name()

    def test_each_switch_is_stored_and_makes_another_password(self):
        for name, key in SETS.items():
            switch = self.program.node("check box", name)
            before = self.password()
            was_on = is_checked(switch)
            act(switch)
            self.setting_becomes_option(key, not was_on)
            wait_for(lambda: self.password() != before, "another password")
            act(switch)  # without any set there would be no other password
            self.setting_becomes_option(key, was_on)

    def setting_becomes_option(self, key, value):
        wait_for(lambda: self.settings().get("generatorOptions", {}).get(key) == value,
                 f"{key} to be stored as {value}")

    def test_the_length_comes_from_the_slider_and_from_its_buttons(self):
        slider = self.program.node("slider", "Uzunluk")
        Atspi.Value.set_current_value(slider, 77)
        self.setting_becomes_option("length", 77)
        wait_for(lambda: len(self.password()) == 77, "77 characters")
        act(self.program.node("radio button", "12"))
        self.setting_becomes_option("length", 12)
        wait_for(lambda: len(self.password()) == 12, "12 characters")

    def test_without_any_set_there_is_no_password(self):
        for name, key in SETS.items():
            if key != "excludeAmbiguous":
                act(self.program.node("check box", name))
        self.shows("En az bir karakter kümesi seçmelisin.")
        self.assertFalse(desktop.is_enabled(self.program.button("Panoya kopyala")))

    def test_the_password_is_copied_and_the_sheet_closes(self):
        password = self.password()
        self.program.push("Panoya kopyala")
        wait_for(lambda: clipboard_text() == password, "the password on the clipboard")
        self.program.is_gone("push button", "Yeniden üret")

    def test_copying_the_preview_leaves_the_sheet_open(self):
        password = self.password()
        self.program.push("Kopyala")
        wait_for(lambda: clipboard_text() == password, "the password on the clipboard")
        self.program.button("Yeniden üret")
        press("Escape")
        self.program.is_gone("push button", "Yeniden üret")


class SettingsTest(DesktopTest):
    def setUp(self):
        super().setUp()
        press("ctrl+comma")
        self.shows("Otomatik temizleme")
        self.program.has_keyboard("Ayarlar")

    def test_the_clipboards_time_is_set_by_slider_and_by_buttons(self):
        Atspi.Value.set_current_value(self.program.node("slider", re.compile("temizleme")), 45)
        self.setting_becomes("clipboardTimeout", 45)
        self.shows("45 sn")
        act(self.program.node("radio button", "30 sn"))
        self.setting_becomes("clipboardTimeout", 30)

    def test_the_sequence_is_stored_and_goes_back_to_its_default(self):
        set_text(self.program.node("text", "Varsayılan tuş sekansı"), "{PASSWORD}{ENTER}")
        self.setting_becomes("defaultAutoTypeSequence", "{PASSWORD}{ENTER}")
        self.program.push("Varsayılana dön")
        self.setting_becomes("defaultAutoTypeSequence", "{USERNAME}{TAB}{PASSWORD}{ENTER}")

    def test_the_permission_is_reported(self):
        self.shows("Erişilebilirlik izni verildi")
        self.shows("Otomatik yazma kullanılabilir.")

    def start_recording(self):
        """The button takes its time to be pressed, and a key before that would go to the window."""
        self.program.push("⌥⌘A")
        self.program.button("Tuş kombinasyonuna bas…")

    def test_a_hot_key_is_recorded_refused_and_reset(self):
        self.start_recording()
        press("k")
        wait_for(lambda: self.program.nodes(name=re.compile("En az bir değiştirici tuş gerekli")), "the refusal")
        press("ctrl+shift+k")
        wait_for(lambda: "hotKeyCode" in self.settings(), "a stored key")
        self.setting_becomes("hotKeyCode", 40)
        modifiers = self.settings()["hotKeyModifiers"]
        self.assertIn(modifiers, (0x100 | 0x200, 0x1000 | 0x200))
        self.program.push("Varsayılana dön  (⌘⌥A)")
        self.setting_becomes("hotKeyCode", 0)
        self.setting_becomes("hotKeyModifiers", 2304)

    def test_escape_ends_the_recording_and_then_the_window(self):
        self.start_recording()
        press("Escape")
        self.program.button("⌥⌘A")
        press("Escape")
        self.program.is_gone("label", "Otomatik temizleme")


if __name__ == "__main__":
    testcase.run()

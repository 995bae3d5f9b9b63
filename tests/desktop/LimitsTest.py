# SPDX-License-Identifier: MIT
"""What goes beyond what a person would do: texts of megabytes, settings that no control gives or that cannot be kept."""

import re
import subprocess

import testcase
from desktop import choose_in_menu, click, press, set_text
from testcase import DesktopTest

UNSTORED = "Ayarlar kaydedilemiyor; yaptığın değişiklikler yalnızca program kapanana kadar geçerli."


class LongTextTest(DesktopTest):
    def place_vault(self):
        subprocess.run([testcase.options.demo_vault.parent / "long-text-vault", self.vault], check=True)

    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_group("Uzun")

    def test_they_are_turned_over_and_stay_to_the_byte_when_the_entry_is_edited(self):
        for title in ("Adres", "Satır", "Not", "Dev", "Adres"):
            self.select_entry(title)
            self.shows(re.compile("Sayfa 1 / "))
        self.select_entry("Satır")
        self.program.push("Sona")
        self.shows("Sayfa 128 / 128")
        press("ctrl+e")
        self.program.focus_is_on("Başlık")
        set_text(self.program.node("text", "Kullanıcı adı"), "yeni")
        press("ctrl+Return")
        self.program.is_gone("text", "Kullanıcı adı")
        self.save()
        entry = self.saved_entry("Satır")
        self.assertEqual(entry["username"], "yeni")
        self.assertTrue(entry["notes"] == "b" * 1_048_576)


class HugeLengthTest(DesktopTest):
    settings_at_start = {"generatorOptions": {"length": 1_000_000_000}}

    def test_the_generator_opens_at_once(self):
        self.open_vault()
        press("ctrl+g")
        self.shows("Parola üreteci")
        self.shows("128")


class UnstorableSettingsTest(DesktopTest):
    def test_it_is_said_once_and_the_vault_opens_all_the_same(self):
        self.settings_file.mkdir(parents=True)
        press("ctrl+o")
        self.answer_file_panel(self.vault)
        self.shows(UNSTORED)
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.program.is_gone("label", UNSTORED)
        self.select_group("Sosyal")
        click(self.program.button("Sıralama: Başlık"))
        choose_in_menu("Azalan")
        self.lists(["YouTube", "Reddit", "Mastodon", "LinkedIn", "GitHub", "Ekşi Sözlük", "Adsız kayıt"])
        self.assertEqual(list(self.program.nodes("label", UNSTORED)), [])


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""What a screen reader says by itself."""

import subprocess

import testcase
from desktop import Announcements, act_by_name, choose_in_menu, click, click_with, press, type_text, wait_for
from testcase import DesktopTest, clipboard_text


class SpeechTest(DesktopTest):
    """What comes up while the reader is elsewhere is told as a notification that shows, which is spoken at once."""

    def says(self, events, text, times=1):
        wait_for(lambda: events.heard().count(text) >= times, f"{text!r} spoken {times} times")
        self.assertEqual(events.heard().count(text), times)


class ChangesTest(SpeechTest):
    settings_at_start = {"clipboardTimeout": 6}  # time enough to wipe it by hand, also on a slow machine

    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")

    def test_the_number_of_matches_is_spoken_when_the_letters_rest(self):
        press("ctrl+f")
        with Announcements() as events:
            type_text("posta")
            self.says(events, "3 eşleşme")
            press("ctrl+a")
            type_text("yokboyle")
            self.says(events, "Eşleşme yok")
            press("ctrl+a")
            type_text("posta")
            self.says(events, "3 eşleşme", times=2)
            press("Escape")
            self.program.is_gone("label", "Arama sonuçları")
        self.assertFalse(self.program.nodes("notification", "3 eşleşme"))

    def test_a_delete_an_undo_and_a_redo_are_spoken(self):
        with Announcements() as events:
            press("Delete")
            self.says(events, "Kayıt silindi")
            press("ctrl+z")
            self.says(events, "Geri alındı: Kaydı Sil")
            press("ctrl+shift+z")
            self.says(events, "Yinelendi: Kaydı Sil")
            self.select_entry("Reddit")
            press("ctrl+Delete")
            self.says(events, "Kayıt silindi", times=2)
            click(self.program.row("Kayıtlar", "LinkedIn"), from_left=0.4)
            click_with("ctrl", self.program.row("Kayıtlar", "Mastodon"))
            self.shows("2 kayıt seçildi")
            self.program.push("Sil")
            self.says(events, "2 kayıt silindi")
            act_by_name(self.program.row("Gruplar", "E-posta"), "ShowMenu")
            choose_in_menu("Grubu sil")
            self.says(events, "Grup silindi")
            self.program.choose("Düzen", "Geri Al — Grubu Sil")
            self.says(events, "Geri alındı: Grubu Sil")

    def test_the_wipe_of_the_clipboard_is_spoken_and_no_other_end_of_the_countdown(self):
        with Announcements() as events:
            press("ctrl+c")
            self.says(events, "Pano temizlendi")
            press("ctrl+c")
            wait_for(lambda: clipboard_text() != "", "the password on the clipboard again")
            self.program.push("Temizle")
            self.says(events, "Pano temizlendi", times=2)
            press("ctrl+c")
            wait_for(lambda: clipboard_text() != "", "the password on the clipboard once more")
            subprocess.run(["xclip", "-in", "-selection", "clipboard"], input="başkasının", text=True, check=True)
            self.program.is_gone("push button", "Temizle")
            self.assertEqual(events.heard().count("Pano temizlendi"), 2, "another program's text was left there")

    def test_a_group_says_how_deep_it_stands(self):
        self.select_group("Bankacılık")
        press("Right")
        inner = self.program.row("Gruplar", "Kapanan hesaplar")
        depths = [row.get_description().rpartition(", ")[2] for row in
                  (self.program.row("Gruplar", "Kasam"), self.program.row("Gruplar", "Bankacılık"), inner)]
        self.assertEqual(depths, ["düzey 1", "düzey 2", "düzey 3"])


if __name__ == "__main__":
    testcase.run()

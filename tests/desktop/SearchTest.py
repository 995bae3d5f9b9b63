# SPDX-License-Identifier: MIT
"""The search by keys alone: into it, out of it, to what it has found, and the commands that work from it."""

import desktop
import testcase
from desktop import (Atspi, Events, FocusEvents, act, children_of, click, has_state, press, text_of, type_text,
                     wait_for)
from testcase import DesktopTest, clipboard_text

FIELD = "Kayıtlarda ara"


class SearchTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+f")
        self.program.focus_is_on(FIELD)

    def text(self):
        return text_of(self.program.node("text", FIELD))

    def selected(self):
        return [row.get_name() for row in children_of(self.program.node("list", "Kayıtlar"))
                if has_state(row, Atspi.StateType.SELECTED)]

    def find(self, text, found):
        type_text(text)
        self.lists(found)

    def test_escape_ends_the_search_and_goes_to_the_list(self):
        self.find("github", ["GitHub"])
        press("Escape")
        wait_for(lambda: self.text() == "", "the field empty")
        self.program.is_gone("label", "Arama sonuçları")
        self.program.focus_is_on("GitHub")
        self.assertEqual(self.selected(), ["GitHub"])

    def test_escape_in_an_empty_field_goes_to_the_list(self):
        press("Escape")
        self.program.focus_is_on("GitHub")
        self.assertEqual(self.selected(), ["GitHub"], "which is as it was")

    def test_escape_works_where_nothing_matches(self):
        type_text("yokboyle")
        self.shows("Eşleşme yok")
        press("Escape")
        self.program.is_gone("label", "Eşleşme yok")
        wait_for(lambda: self.program.focused().get_role_name() == "list item", "the focus on a row")
        press("ctrl+f")
        type_text("yokboyle")
        self.shows("Eşleşme yok")
        press("Down")  # there is no result, but a button
        self.program.focus_is_on("Aramayı temizle")
        press("Escape")
        self.program.is_gone("label", "Eşleşme yok")
        wait_for(lambda: self.program.focused().get_role_name() == "list item", "the focus on a row again")

    def test_the_way_out_of_an_empty_result_gives_the_focus_to_the_list(self):
        type_text("yokboyle")
        act(self.program.node("push button", "Aramayı temizle", self.program.node("panel", "Eşleşme yok")))
        self.program.is_gone("label", "Eşleşme yok")
        self.assertEqual(self.text(), "")

    def test_return_selects_the_first_result(self):
        self.find("posta", ["İş e-postası", "Kişisel e-posta", "Okul"])
        press("Return")
        self.program.focus_is_on("İş e-postası")
        self.assertEqual(self.selected(), ["İş e-postası"])
        self.shows("isil.kaya@firma.example")

    def test_down_goes_to_the_first_result(self):
        self.find("posta", ["İş e-postası", "Kişisel e-posta", "Okul"])
        press("Down")
        self.program.focus_is_on("İş e-postası")
        self.assertEqual(self.selected(), ["İş e-postası"])
        press("Down")
        self.program.focus_is_on("Kişisel e-posta")
        press("Escape")
        self.program.is_gone("label", "Arama sonuçları")

    def test_down_goes_to_the_result_that_is_selected(self):
        type_text("it")
        self.shows("Arama sonuçları")
        wait_for(lambda: "GitHub" in self.program.rows("Kayıtlar"), "a result")
        press("Down")
        self.program.focus_is_on("GitHub")
        self.assertEqual(self.selected(), ["GitHub"])

    def test_no_command_acts_on_an_entry_that_the_search_hides(self):
        self.find("mastodon", ["Mastodon"])
        self.shows("Kayıt seçilmedi")
        for item in ("Parolayı Kopyala", "Otomatik Yaz", "Düzenle…", "Sil"):
            self.assertFalse(desktop.is_enabled(self.program.menu_item("Kayıt", item)), item)
        press("ctrl+b", "ctrl+shift+v", "ctrl+e")
        press("Escape")
        self.lists(["Adsız kayıt", "Ekşi Sözlük", "GitHub", "LinkedIn", "Mastodon", "Reddit", "YouTube"])
        self.assertEqual(self.selected(), [])
        self.assertEqual(clipboard_text(), "")

    def test_of_several_entries_those_that_the_search_shows_stay_selected(self):
        desktop.click_with("ctrl", self.program.row("Kayıtlar", "Reddit"))
        self.shows("2 kayıt seçildi")
        press("ctrl+f")
        self.find("github", ["GitHub"])
        self.assertEqual(self.selected(), ["GitHub"])
        self.shows("isilkaya")

    def test_commands_work_from_the_field(self):
        type_text("it")
        wait_for(lambda: "GitHub" in self.program.rows("Kayıtlar"), "the selected entry still there")
        press("ctrl+b")
        wait_for(lambda: clipboard_text() == "isilkaya", "the user name on the clipboard")
        for keys, sheet in (("ctrl+e", "Kaydı düzenle"), ("ctrl+i", "Yeni kayıt"), ("ctrl+shift+g", "Yeni grup"),
                            ("ctrl+g", "Parola üreteci")):
            press(keys)
            self.program.node("dialog", sheet)
            press("Escape")
            self.program.is_gone("dialog", sheet)
            self.program.focus_is_on(FIELD)
        press("ctrl+shift+k")
        wait_for(lambda: clipboard_text() == "", "the clipboard wiped")
        self.assertEqual(self.text(), "it")

    def test_letters_announce_no_other_focus(self):
        press("Escape")  # the list has a current row by now
        self.program.focus_is_on("GitHub")
        press("ctrl+f")
        self.program.focus_is_on(FIELD)
        with FocusEvents() as events:
            for letter in "posta":
                type_text(letter)
            self.lists(["İş e-postası", "Kişisel e-posta", "Okul"])
            for _ in range(5):
                press("BackSpace")
            self.lists(["Adsız kayıt", "Ekşi Sözlük", "GitHub", "LinkedIn", "Mastodon", "Reddit", "YouTube"])
            type_text("yokboyle")
            self.shows("Eşleşme yok")
            told = [event for event in events.heard() if event[0]]
        self.assertEqual(told, [])
        self.assertEqual(self.program.focused().get_name(), FIELD)

    def test_the_field_has_its_width_where_there_is_room(self):
        desktop.xdotool("search", "--onlyvisible", "--name", "^Brenvik|Kasam", "windowsize", "--sync", 720, 460)
        wait_for(lambda: self.width() == 260, "260 points in the smallest window")
        desktop.xdotool("search", "--onlyvisible", "--name", "^Brenvik|Kasam", "windowsize", "--sync", 1270, 800)
        wait_for(lambda: 260 < self.width() <= 380, "more in a wide one")

    def width(self):
        return self.program.node("text", FIELD).get_extents(Atspi.CoordType.SCREEN).width


if __name__ == "__main__":
    testcase.run()

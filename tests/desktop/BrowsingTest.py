# SPDX-License-Identifier: MIT
"""Looking for an entry and taking something from it: groups, search, sort, selection, clipboard, drag and drop."""

import re
import subprocess

import desktop
import testcase
from desktop import choose_in_menu, click, click_with, drag, point_at, press, type_text, wait_for
from testcase import DesktopTest, clipboard_text, entries_of

SOCIAL = ["Adsız kayıt", "Ekşi Sözlük", "GitHub", "LinkedIn", "Mastodon", "Reddit", "YouTube"]


class BrowsingTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.open_vault()

    def test_a_group_shows_its_entries(self):
        self.select_group("Sosyal")
        self.lists(SOCIAL)
        self.shows("7 kayıt")
        self.shows("Kayıt seçilmedi")

    def test_a_folded_group_unfolds_and_folds(self):
        self.select_group("Bankacılık")
        press("Right")
        wait_for(lambda: "Kapanan hesaplar" in self.program.rows("Gruplar"), "the group inside")
        self.select_group("Kapanan hesaplar")
        self.shows("Bu grup boş")
        self.select_group("Bankacılık")
        press("Left")
        wait_for(lambda: "Kapanan hesaplar" not in self.program.rows("Gruplar"), "the group gone")

    def test_the_search_runs_through_all_groups_and_escape_ends_it_first(self):
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+f")
        self.program.focus_is_on("Kayıtlarda ara")
        type_text("example.com")
        self.shows("Arama sonuçları")
        found = [entry["title"] or "Adsız kayıt" for entry in entries_of(self.load()["root"])
                 if any("example.com" in entry[field] for field in ("title", "username", "url", "notes"))]
        wait_for(lambda: sorted(self.program.rows("Kayıtlar")) == sorted(found), f"the rows {sorted(found)}")
        self.shows(f"“example.com” · {len(found)} eşleşme")
        self.shows("Kayıt seçilmedi")  # it is not among them
        click(self.program.row("Kayıtlar", "Mastodon") if "Mastodon" in found else
              self.program.row("Kayıtlar", "LinkedIn"), from_left=0.4)
        press("Escape")
        self.program.is_gone("label", "Arama sonuçları")
        press("Escape")
        self.shows("Kayıt seçilmedi")

    def test_a_search_that_finds_nothing_offers_its_end(self):
        press("ctrl+f")
        type_text("yokboyle")
        self.shows("Eşleşme yok")
        self.shows("“yokboyle” için kayıt bulunamadı. Başka bir terim dene ya da aramayı temizle.")
        self.program.push("Aramayı temizle")
        self.program.is_gone("label", "Eşleşme yok")

    def test_several_entries_are_reported_by_their_number(self):
        self.select_in_group("Sosyal", "GitHub")
        click_with("ctrl", self.program.row("Kayıtlar", "Reddit"))
        self.shows("2 kayıt seçildi")
        self.assertTrue(self.program.button("Çoğalt"))
        self.assertFalse(desktop.is_enabled(self.program.menu_item("Kayıt", "Parolayı Kopyala")))
        self.assertTrue(desktop.is_enabled(self.program.menu_item("Kayıt", "Sil")))

    def test_the_sort_is_chosen_in_its_menu_and_remembered(self):
        self.select_group("Sosyal")
        click(self.program.button("Sıralama: Başlık"))
        choose_in_menu("Azalan")
        self.lists(list(reversed(SOCIAL)))
        self.setting_becomes("sortAscending", False)
        click(self.program.button("Sıralama: Başlık"))
        choose_in_menu("Kendi sıram")
        self.setting_becomes("sortColumn", "manual")
        self.lists([entry["title"] or "Adsız kayıt" for entry in self.saved_group("Sosyal")["entries"]])

    def test_the_row_under_the_pointer_offers_to_copy(self):
        self.select_group("Sosyal")
        row = self.program.row("Kayıtlar", "Mastodon")
        width = row.get_extents(desktop.Atspi.CoordType.SCREEN).width
        # The row's own buttons come with the pointer, and are in no tree: the menu says the same to everybody.
        for from_right, copied in ((84, "@isil"), (56, "dişi.fil#Bahçe")):
            point_at(row, 0.4)
            click(row, from_left=1 - from_right / width)
            wait_for(lambda: clipboard_text() == copied, f"{copied} on the clipboard")

    def test_entries_move_to_the_group_that_they_are_dropped_on(self):
        self.select_group("Sosyal")
        drag(self.program.row("Kayıtlar", "Reddit"), self.program.row("Gruplar", "E-posta"))
        wait_for(lambda: "Reddit" not in self.program.rows("Kayıtlar"), "the entry gone from its group")
        self.save()
        self.assertIn("Reddit", [entry["title"] for entry in self.saved_group("E-posta")["entries"]])

    def test_a_drop_on_a_row_makes_the_order_the_users(self):
        self.select_group("Sosyal")
        drag(self.program.row("Kayıtlar", "YouTube"), self.program.row("Kayıtlar", "GitHub"))
        self.shows("Kaydedilmemiş değişiklik")
        wait_for(lambda: self.program.rows("Kayıtlar").index("YouTube") + 1 == self.program.rows("Kayıtlar").index("GitHub"),
                 "YouTube right above GitHub")

    def test_a_drag_ends_without_a_trace_on_the_search_and_with_escape(self):
        self.select_group("Sosyal")
        rows = self.program.rows("Kayıtlar")
        search = self.program.node("text", "Kayıtlarda ara")
        drag(self.program.row("Kayıtlar", "Reddit"), search)
        self.select_group("E-posta")
        self.assertEqual(desktop.text_of(search), "")

        self.select_group("Sosyal")
        drag(self.program.row("Kayıtlar", "Reddit"), self.program.row("Gruplar", "E-posta"), drop=False)
        desktop.cancel_drag()
        self.select_group("E-posta")
        self.assertNotIn("Reddit", self.program.rows("Kayıtlar"))
        self.select_group("Sosyal")
        self.assertEqual(self.program.rows("Kayıtlar"), rows)


class ClipboardTest(DesktopTest):
    settings_at_start = {"clipboardTimeout": 6}  # time enough to look, also on a slow machine

    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")
        self.password = self.saved_entry("GitHub")["password"]

    def test_a_copied_password_is_there_and_is_wiped_after_its_time(self):
        self.program.push("Parola")
        wait_for(lambda: clipboard_text() == self.password, "the password on the clipboard")
        self.shows(re.compile("^Pano [1-6] sn sonra temizlenecek$"))
        wait_for(lambda: clipboard_text() == "", "the clipboard wiped")
        self.program.is_gone("label", re.compile("^Pano"))

    def test_the_clipboard_is_wiped_when_asked_to_and_at_the_end(self):
        press("ctrl+c")
        wait_for(lambda: clipboard_text() == self.password, "the password on the clipboard")
        self.program.push("Temizle")
        wait_for(lambda: clipboard_text() == "", "the clipboard wiped")
        press("ctrl+c")
        wait_for(lambda: clipboard_text() == self.password, "the password on the clipboard again")
        self.program.end()
        self.assertEqual(clipboard_text(), "")

    def test_what_another_program_has_copied_since_is_left_alone(self):
        press("ctrl+c")
        wait_for(lambda: clipboard_text() == self.password, "the password on the clipboard")
        subprocess.run(["xclip", "-in", "-selection", "clipboard"], input="başkasının", text=True, check=True)
        self.program.is_gone("label", re.compile("^Pano"))
        self.assertEqual(clipboard_text(), "başkasının")

    def test_a_name_is_wiped_as_a_password_is(self):
        press("ctrl+b")
        wait_for(lambda: clipboard_text() == "isilkaya", "the user name on the clipboard")
        self.shows(re.compile("^Pano [0-9]+ sn sonra temizlenecek$"))
        self.program.push("Temizle")
        wait_for(lambda: clipboard_text() == "", "the clipboard wiped")

    def test_an_address_is_copied_for_good(self):
        press("ctrl+shift+u")
        wait_for(lambda: clipboard_text() == "https://github.com/login", "the address on the clipboard")
        self.assertFalse(self.program.nodes("label", re.compile("^Pano")), "an address is no secret")

    def test_a_password_shows_only_while_it_is_asked_to_and_never_for_the_next_entry(self):
        self.assertFalse(self.program.nodes(name=re.compile(re.escape(self.password))))
        self.program.push("Göster", within=self.password_row())
        wait_for(lambda: self.program.nodes(name=re.compile(re.escape(self.password))) or self.texts_hold(self.password),
                 "the password in the clear")
        self.select_entry("Mastodon")
        self.select_entry("GitHub")
        self.assertFalse(self.program.nodes(name=re.compile(re.escape(self.password))))
        self.assertFalse(self.texts_hold(self.password))

    def password_row(self):
        """The first row with an eye is the password's."""
        return self.program.button("Göster").get_parent()

    def texts_hold(self, text):
        return any(text in desktop.text_of(node) for node in self.program.nodes("text"))


if __name__ == "__main__":
    testcase.run()

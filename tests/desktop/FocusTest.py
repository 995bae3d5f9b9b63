# SPDX-License-Identifier: MIT
"""Where the keys go: Return on the card, and the focus after an unlock, a save, a sheet and a delete."""

import desktop
import testcase
from desktop import (Announcements, Atspi, act, children_of, choose_in_menu, click, click_with, has_state, press,
                     text_of, type_text, wait_for)
from testcase import PASSWORD, DesktopTest, copy_vault, options

WITH_ENTRIES = "v09-4.0-chacha20-argon2id"
KEY_ONLY = "v02-4.0-aes256-argon2id-key"
WRONG = "Ana parola veya anahtar dosyası hatalı."


class CardTest(DesktopTest):
    """Return on the card."""

    def test_return_presses_the_button_of_the_first_screen_that_has_the_focus(self):
        for name, panel in (("Veritabanı aç…", "Veritabanı Aç"), ("Yeni kasa…", "Yeni Veritabanı")):
            for key in ("Return", "KP_Enter", "space"):
                self.program.tab_to(name)
                press(key)
                self.program.node("dialog", panel)
                self.program.focus_is_on("Dosya adı:")
                press("Escape")
                self.program.is_gone("dialog", panel)

    def choose_key_file(self, file):
        self.program.push("Dosya seç…")
        self.answer_file_panel(file)
        self.program.button("Kaldır")

    def test_return_with_a_key_file_submits_once(self):
        key_file = self.program.home / "anahtar.key"
        key_file.write_bytes(b"A" * 64)
        self.choose_vault()
        self.choose_key_file(key_file)
        self.type_password(PASSWORD)
        with Announcements() as events:
            press("Return")
            self.shows_failure()
            self.assertEqual(events.heard().count(WRONG), 1, "spoken once")
        self.assertEqual(len(self.program.nodes("notification", WRONG)), 1)
        self.program.push("Kaldır")
        self.type_password(PASSWORD)
        press("Return")
        self.program.node("list", "Gruplar")
        self.assertFalse(self.program.nodes(name=WRONG), "nothing failed in the open vault")

    def test_a_vault_that_needs_both_opens_without_a_failure(self):
        key_file = self.make_vault_with_key_file()
        self.choose_vault()
        self.choose_key_file(key_file)
        self.type_password("yeniparola")
        press("Return")
        self.program.node("list", "Gruplar")
        self.assertFalse(self.program.nodes(name=WRONG), "nothing failed")

    def test_a_vault_of_a_key_file_alone_stays_shut_after_a_wrong_password(self):
        copy_vault(KEY_ONLY, self.vault)
        self.choose_vault()
        self.choose_key_file(options.vaults / f"{KEY_ONLY}.key")
        self.type_password("yanlis")
        press("Return")
        self.shows_failure()
        self.assertFalse(self.program.nodes("list", "Gruplar"), "the key file alone was not asked for")
        self.program.focus_is_on("Ana parola")
        press("Return")  # now it is
        self.program.node("list", "Gruplar")

    def make_vault_with_key_file(self):
        key_file = self.program.home / "anahtar.key"
        key_file.write_bytes(b"B" * 40)
        press("ctrl+n")
        self.vault = self.program.home / "Yeni.kdbx"
        self.answer_file_panel(self.vault)
        self.program.node("password text", "Parolayı doğrula")
        self.choose_key_file(key_file)
        self.type_password("yeniparola")
        press("Tab")
        self.type_password("yeniparola", "Parolayı doğrula")
        press("Return")
        self.program.node("list", "Gruplar")
        self.assertEqual(self.load(password="yeniparola", key_file=key_file)["root"]["name"], "Yeni")
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        return key_file

    def type_password(self, password, name="Ana parola"):
        field = self.program.node("password text", name)
        click(field, from_left=0.3)
        self.program.focus_is_on(name)
        type_text(password)

    def shows_failure(self):
        wait_for(lambda: self.program.nodes(name=WRONG), "the failure")

    def test_a_wrong_password_is_spoken_once(self):
        self.choose_vault()
        for _ in range(2):
            with Announcements() as events:
                self.type_password("yanlis")
                press("Return")
                self.shows_failure()
                wait_for(lambda: text_of(self.program.node("password text", "Ana parola")) == "", "the field emptied")
                wait_for(lambda: WRONG in events.heard(), "the failure spoken")
                self.assertEqual(events.heard().count(WRONG), 1)
            self.program.push("Kapat")
            self.program.is_gone("notification", WRONG)


class UnlockTest(DesktopTest):
    def place_vault(self):
        copy_vault(WITH_ENTRIES, self.vault)

    def test_after_an_unlock_the_first_down_selects_the_first_entry(self):
        self.choose_vault()
        entries = self.load()["root"]["entries"]
        self.enter_password()
        wait_for(lambda: len(self.program.rows("Kayıtlar")) == len(entries), "the entries of the root")
        first = self.program.rows("Kayıtlar")[0]
        self.program.focus_is_on(first)
        press("Down")
        wait_for(lambda: has_state(self.program.row("Kayıtlar", first), Atspi.StateType.SELECTED), "the first selected")


class FocusTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.open_vault()

    def selected(self):
        return [row.get_name() for row in children_of(self.program.node("list", "Kayıtlar"))
                if has_state(row, Atspi.StateType.SELECTED)]

    def focus_is_on_a_row(self):
        wait_for(lambda: self.program.focused() and self.program.focused().get_role_name() == "list item",
                 "the focus on a row")

    def test_after_an_unlock_the_keys_do_something(self):
        self.focus_is_on_a_row()  # of the groups: the one that shows is empty
        press("Down")
        wait_for(lambda: self.program.rows("Kayıtlar"), "the entries of the next group")

    def test_save_as_leaves_the_focus_where_it_was(self):
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+shift+s")
        self.program.node("text", "Dosya adı:")
        self.answer_file_panel(self.program.home / "Kopya.kdbx")
        wait_for((self.program.home / "Kopya.kdbx").exists, "the copy")
        self.program.focus_is_on("GitHub")
        press("Down")
        wait_for(lambda: self.selected() == ["LinkedIn"], "the next row selected")

    def test_a_sheet_gives_the_focus_back_also_where_what_had_it_is_gone(self):
        self.select_in_group("Sosyal", "GitHub")
        for way_out in ("Escape", "ctrl+Return", "Vazgeç", "Kaydet"):
            with self.subTest(way_out):
                press("ctrl+e")
                self.program.focus_is_on("Başlık")
                self.leave_sheet(way_out)
                self.program.focus_is_on("GitHub")
        # The button of an empty group goes with the first entry.
        press("ctrl+shift+g")
        self.program.focus_is_on("Grup adı")
        type_text("Bos")
        press("Return")
        self.shows("Bu grup boş")
        self.program.push("Kayıt ekle")
        self.program.focus_is_on("Başlık")
        press("Escape")
        self.program.is_gone("push button", "Vazgeç")
        click(self.program.button("Kayıt ekle"))
        self.program.focus_is_on("Başlık")
        type_text("Ilk")
        press("ctrl+Return")
        self.lists(["Ilk"])
        self.program.focus_is_on("Ilk")

    def leave_sheet(self, way):
        if way in ("Vazgeç", "Kaydet"):
            self.program.push(way)
        else:
            press(way)
        self.program.is_gone("push button", "Vazgeç")

    def test_after_a_delete_one_down_selects_the_next_row(self):
        self.select_group("Sosyal")
        for title, way, following in (("Ekşi Sözlük", "Delete", "GitHub"), ("LinkedIn", "ctrl+Delete", "Mastodon")):
            self.select_entry(title)
            press(way)
            wait_for(lambda: title not in self.program.rows("Kayıtlar"), f"{title} gone")
            press("Down")
            wait_for(lambda: self.selected() == [following], f"{following} selected")
        self.select_entry("Mastodon")
        click(self.program.row("Kayıtlar", "Mastodon"), button=3)
        self.program.open_menu()
        choose_in_menu("Sil")
        wait_for(lambda: "Mastodon" not in self.program.rows("Kayıtlar"), "Mastodon gone")
        press("Down")
        wait_for(lambda: self.selected() == ["Reddit"], "Reddit selected")
        self.select_entry("YouTube")  # the last one: there is no next row
        press("Delete")
        wait_for(lambda: "YouTube" not in self.program.rows("Kayıtlar"), "YouTube gone")
        press("Down")
        wait_for(lambda: self.selected() == ["Reddit"], "the last row selected")
        press("Up")
        wait_for(lambda: self.selected() == ["GitHub"], "the row above")

    def test_after_a_delete_in_the_summary_one_down_selects_the_next_row(self):
        self.select_in_group("Sosyal", "Ekşi Sözlük")
        for way in ("mouse", "Return", "AT-SPI"):
            rows = self.program.rows("Kayıtlar")
            click(self.program.row("Kayıtlar", rows[1]), from_left=0.4)
            click_with("ctrl", self.program.row("Kayıtlar", rows[2]))
            self.shows("2 kayıt seçildi")
            button = self.program.node("push button", "Sil")
            if way == "mouse":
                click(button)
            elif way == "AT-SPI":
                act(button)
            else:
                self.program.tab_to("Sil")
                press("space")
            rest = [rows[0], *rows[3:]]
            self.lists(rest)
            press("Down")
            wanted = rest[1] if len(rest) > 1 else rest[0]
            wait_for(lambda: self.selected() == [wanted], f"{wanted} selected after {way}")

    def test_after_the_last_entry_is_deleted_the_keys_still_do_something(self):
        self.select_group("Sosyal")
        click(self.program.row("Kayıtlar", "GitHub"), from_left=0.4)
        press("ctrl+a")
        self.shows("7 kayıt seçildi")
        self.program.push("Sil")
        self.shows("Bu grup boş")
        wait_for(lambda: self.program.focused() and (self.program.focused().get_role_name() == "list item" or
                                                    self.program.focused().get_name() == "Kayıt ekle"),
                 "the focus on the tree or on the way out")

    def test_a_command_from_the_detail_leaves_the_focus_in_a_list(self):
        self.select_in_group("Sosyal", "GitHub")
        self.program.tab_to("Düzenle (Ctrl+E)")
        press("ctrl+Delete")
        wait_for(lambda: "GitHub" not in self.program.rows("Kayıtlar"), "GitHub gone")
        self.focus_is_on_a_row()
        press("Down")
        wait_for(lambda: self.selected() == ["LinkedIn"], "the next row selected")


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""Making, changing and deleting entries and groups, read back from the file by the probe."""

import re

import desktop
import testcase
from desktop import act, choose_in_menu, click, click_with, is_checked, press, set_text, wait_for
from testcase import DesktopTest, entries_of, groups_of


class EditingTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.open_vault()

    def field(self, name, role="text"):
        return self.program.node(role, name)

    def switch(self, name, on=True):
        control = self.program.node("check box", name)
        if is_checked(control) != on:
            act(control)
        wait_for(lambda: is_checked(control) == on, f"{name} switched")

    def sheet_closes(self):
        self.program.is_gone("push button", "Vazgeç")


class EntryTest(EditingTest):
    def test_a_new_entry_reaches_the_file_with_everything_that_was_typed(self):
        self.select_group("E-posta")
        self.program.push("Yeni kayıt (⌘I)")
        confirm = self.program.button("Oluştur")
        self.assertFalse(desktop.is_enabled(confirm), "an entry needs a title")
        set_text(self.field("Başlık"), "  Yeni posta 😀 ")
        set_text(self.field("Kullanıcı adı"), "ışıl@example.com")
        set_text(self.field("Adres"), " https://yeni.example ")
        set_text(self.field("Etiketler"), "iş, kritik,,")
        set_text(self.field("Parola", "password text"), "gizli-Ğü-1")
        set_text(self.field("Notlar"), "birinci satır\nikinci satır")
        self.add_custom_field("Soru", "Anne kızlık soyadı")
        self.add_custom_field("Cevap", "yanıt-ş", is_protected=True)
        self.choose_icon("Posta")
        self.switch("Son kullanma tarihi var")
        self.program.push("Oluştur")
        self.sheet_closes()
        self.shows("Yeni posta 😀")
        self.save()

        entry = self.saved_entry("Yeni posta 😀")
        self.assertIn(entry["id"], [each["id"] for each in self.saved_group("E-posta")["entries"]])
        expected = {"username": "ışıl@example.com", "url": "https://yeni.example", "tags": ["iş", "kritik"],
                    "password": "gizli-Ğü-1", "notes": "birinci satır\nikinci satır", "iconID": 5,
                    "protectedCustomFields": ["Cevap"], "expires": True, "autoTypeEnabled": True, "historyItems": []}
        self.assertEqual({key: entry[key] for key in expected}, expected)
        self.assertAlmostEqual(entry["expiryTime"], entry["created"] + 365 * 86400, delta=120)
        self.assertEqual(dict(entry["customFields"]), {"Soru": "Anne kızlık soyadı", "Cevap": "yanıt-ş"})

    def add_custom_field(self, name, value, is_protected=False):
        self.program.push("Alan ekle")
        names = wait_for(lambda: [node for node in self.program.nodes("text", "Alan adı") if not desktop.text_of(node)],
                         "the new field's row")
        set_text(names[-1], name)
        if is_protected:
            act(self.program.nodes("push button", "Düz metin")[-1])
            wait_for(lambda: self.program.nodes("push button", "Korumalı"), "the field protected")
            set_text(self.program.nodes("password text", "Değer")[-1], value)
        else:
            set_text(self.program.nodes("text", "Değer")[-1], value)

    def choose_icon(self, name):
        self.program.push("Simge seç")
        icon = wait_for(lambda: next((node for node in self.program.nodes(name=name) if "button" in node.get_role_name()),
                                     None), f"the icon {name}")
        act(icon)

    def test_a_change_keeps_the_former_version(self):
        before = self.saved_entry("Mastodon")
        self.select_in_group("Sosyal", "Mastodon")
        press("ctrl+e")
        self.shows("Kaydı düzenle")
        set_text(self.field("Kullanıcı adı"), "@isil.yeni")
        self.program.push("Parola üret")
        password = desktop.text_of(self.field("Parola"))
        self.assertGreaterEqual(len(password), 6)
        self.switch("Son kullanma tarihi var")
        self.program.push("Kaydet")
        self.sheet_closes()
        self.save()

        after = self.saved_entry("Mastodon")
        self.assertEqual(after["username"], "@isil.yeni")
        self.assertEqual(after["password"], password)
        self.assertTrue(after["expires"])
        self.assertEqual(after["historyItems"][-1]["username"], before["username"])
        self.assertEqual(len(after["historyItems"]), len(before["historyItems"]) + 1)

    def test_cancelling_changes_nothing(self):
        self.select_in_group("Sosyal", "Mastodon")
        press("ctrl+e")
        set_text(self.field("Başlık"), "Vazgeçilecek")
        self.program.push("Vazgeç")
        self.sheet_closes()
        self.assertIn("Mastodon", self.program.rows("Kayıtlar"))
        self.assertFalse(self.program.nodes("label", "Kaydedilmemiş değişiklik"))

    def test_the_window_below_an_open_sheet_is_out_of_reach(self):
        self.select_in_group("Sosyal", "Mastodon")
        press("ctrl+e")
        self.field("Başlık")
        self.assertFalse(desktop.is_enabled(self.program.button("Kasayı kilitle (⌘L)")))

    def test_a_custom_sequence_is_stored_and_dropped(self):
        self.select_in_group("Sosyal", "Reddit")
        press("ctrl+e")
        self.switch("Özel sekans kullan")
        set_text(self.field("Sekans"), "{PASSWORD}{ENTER}")
        self.program.push("Kaydet")
        self.sheet_closes()
        self.save()
        self.assertEqual(self.saved_entry("Reddit")["autoTypeSequence"], "{PASSWORD}{ENTER}")
        press("ctrl+e")
        self.switch("Özel sekans kullan", on=False)
        self.program.push("Kaydet")
        self.sheet_closes()
        self.save()
        self.assertIsNone(self.saved_entry("Reddit")["autoTypeSequence"])

    def test_an_entry_is_duplicated_and_deleted_from_its_menu(self):
        self.select_group("Sosyal")
        self.choose_in_row_menu("Reddit", "Çoğalt")
        wait_for(lambda: len(self.program.rows("Kayıtlar")) == 8, "the copy")
        self.choose_in_row_menu("YouTube", "Sil")
        wait_for(lambda: "YouTube" not in self.program.rows("Kayıtlar"), "the entry gone")
        self.save()
        group = self.saved_group("Sosyal")["entries"]
        self.assertEqual(len(group), 7)
        self.assertEqual(sum("Reddit" in entry["title"] for entry in group), 2)

    def choose_in_row_menu(self, row, item):
        click(self.program.row("Kayıtlar", row), button=3, from_left=0.4)
        choose_in_menu(item)

    def test_several_entries_are_deleted_at_once_and_come_back_with_one_undo(self):
        self.select_in_group("Sosyal", "GitHub")
        click_with("ctrl", self.program.row("Kayıtlar", "Reddit"))
        self.shows("2 kayıt seçildi")
        self.program.push("Sil")
        wait_for(lambda: len(self.program.rows("Kayıtlar")) == 5, "both gone")
        self.program.choose("Düzen", "Geri Al — 2 Kaydı Sil")
        wait_for(lambda: len(self.program.rows("Kayıtlar")) == 7, "both again")


class GroupTest(EditingTest):
    def test_a_new_group_stands_under_the_selected_one(self):
        self.select_group("E-posta")
        self.program.push("Yeni grup (⇧⌘G)")
        self.assertFalse(desktop.is_enabled(self.program.button("Oluştur")), "a group needs a name")
        set_text(self.field("Grup adı"), "Listeler")
        set_text(self.field("Notlar"), "haber bültenleri")
        self.program.push("Oluştur")
        self.sheet_closes()
        self.shows("Listeler")
        self.save()
        parent = self.saved_group("E-posta")
        self.assertEqual([(group["name"], group["notes"], group["iconID"]) for group in parent["groups"]],
                         [("Listeler", "haber bültenleri", 48)])

    def test_a_group_is_changed_from_its_menu(self):
        self.choose_in_group_menu("E-posta", "Grubu düzenle")
        set_text(self.field("Grup adı"), "Postalar")
        self.switch("Bu grup için varsayılan sekans")
        set_text(self.field("Sekans"), "{USERNAME}{ENTER}")
        self.program.push("Kaydet")
        self.sheet_closes()
        wait_for(lambda: "Postalar" in self.program.rows("Gruplar"), "the new name")
        self.save()
        self.assertEqual(self.saved_group("Postalar")["defaultAutoTypeSequence"], "{USERNAME}{ENTER}")

    def test_a_deleted_group_takes_its_entries_along(self):
        self.choose_in_group_menu("E-posta", "Grubu düzenle")
        self.shows("9 kayıt ve tüm alt gruplar silinir.")
        self.program.push("Grubu sil")
        self.sheet_closes()
        wait_for(lambda: "E-posta" not in self.program.rows("Gruplar"), "the group gone")
        self.save()
        self.assertIsNone(self.saved_group("E-posta"))
        self.assertEqual(len(entries_of(self.load()["root"])), 33)

    def test_the_root_can_be_neither_changed_nor_deleted_from_its_menu(self):
        click(self.program.row("Gruplar", "Kasam"), button=3)
        self.assertEqual(desktop.menu_items(), ["Yeni kayıt", "Yeni alt grup", "Daralt"])
        press("Escape")

    def test_a_group_whose_sheet_is_open_may_vanish(self):
        self.select_group("E-posta")
        self.program.push("Yeni grup (⇧⌘G)")
        set_text(self.field("Grup adı"), "Geçici")
        self.program.push("Oluştur")
        self.sheet_closes()
        self.choose_in_group_menu("Geçici", "Grubu düzenle")
        self.field("Grup adı")
        self.program.choose("Düzen", re.compile("^Geri Al"))
        self.shows("Bulunamadı")
        self.shows("Bu kayıt artık mevcut değil.")
        press("Escape")
        self.program.is_gone("label", "Bulunamadı")

    def choose_in_group_menu(self, group, item):
        click(self.program.row("Gruplar", group), button=3)
        choose_in_menu(item)


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""A vault from its choice to its end: open, fail, make, save, lock, close."""

import desktop
import testcase
from desktop import click, press, set_text, type_text, wait_for
from testcase import PASSWORD, DesktopTest, entries_of, groups_of


class UnlockTest(DesktopTest):
    def test_a_start_without_a_vault_offers_to_choose_and_to_make_one(self):
        self.shows("Henüz bir kasa yok")
        self.program.push("Veritabanı aç…")
        self.answer_file_panel(self.vault)
        self.program.focus_is_on("Ana parola")
        self.shows("Kasam.kdbx")
        self.assertFalse(desktop.is_enabled(self.program.button("Kilidi aç")), "there is nothing to open it with")

    def test_a_password_opens_the_vault_and_shows_its_groups(self):
        self.open_vault()
        names = [group["name"] for group in groups_of(self.load()["root"])]
        rows = self.program.rows("Gruplar")
        self.assertEqual(rows, [name for name in names if name not in ("Giyim", "Kapanan hesaplar")])
        self.shows("42 kayıt")

    def test_a_wrong_password_is_reported_and_the_right_one_still_opens(self):
        self.choose_vault()
        self.enter_password("yanlis")
        wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure in words")
        self.program.focus_is_on("Ana parola")
        self.program.push("Kapat")
        wait_for(lambda: not self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure gone")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_the_password_shows_only_while_it_is_asked_to(self):
        self.choose_vault()
        type_text(PASSWORD)
        self.program.push("Göster")
        field = self.program.node("text", "Ana parola")
        self.assertEqual(desktop.text_of(field), PASSWORD)
        self.program.push("Gizle")
        self.program.node("password text", "Ana parola")

    def test_a_new_vault_is_sealed_with_a_password_typed_twice(self):
        new = self.program.home / "Yepyeni.kdbx"
        press("ctrl+n")
        self.answer_file_panel(self.program.home / "Yepyeni")
        self.shows("Ana parolanı belirle, kasayı mühürleyelim.")
        set_text(self.program.node("password text", "Ana parola"), "yağmur-Ş")
        set_text(self.program.node("password text", "Parolayı doğrula"), "yağmur")
        self.shows("Parolalar eşleşmiyor.")
        self.assertFalse(desktop.is_enabled(self.program.button("Kasayı oluştur")))
        set_text(self.program.node("password text", "Parolayı doğrula"), "yağmur-Ş")
        self.program.is_gone("label", "Parolalar eşleşmiyor.")
        self.program.push("Kasayı oluştur")
        self.program.node("list", "Gruplar")
        self.assertEqual(self.program.rows("Gruplar"), ["Yepyeni", "İnternet", "E-posta", "Bankacılık"])
        self.assertEqual([group["name"] for group in groups_of(self.load(new, "yağmur-Ş")["root"])],
                         ["Yepyeni", "İnternet", "E-posta", "Bankacılık"])

    def test_the_last_vault_is_there_at_the_next_start_and_no_secret_is_kept(self):
        self.open_vault()
        self.program.end()
        self.assertNotIn(PASSWORD, self.settings_file.read_text())

        self.program.start()

        self.shows("Kasam.kdbx")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")


class KeyFileTest(DesktopTest):
    name = "v08-4.0-chacha20-argon2id-key"

    def place_vault(self):
        testcase.copy_vault(self.name, self.vault)

    def choose_key_file(self):
        self.choose_vault()
        self.program.push("Dosya seç…")
        self.answer_file_panel(testcase.options.vaults / f"{self.name}.key")
        self.shows(f"{self.name}.key")

    def test_a_key_file_is_the_second_factor(self):
        self.choose_key_file()
        set_text(self.program.node("password text", "Ana parola"), "👩‍👩‍👧 uzun")
        self.program.push("Kilidi aç")
        self.program.node("list", "Gruplar")

    def test_a_key_file_that_was_taken_away_opens_nothing(self):
        self.choose_key_file()
        self.program.push("Kaldır")
        self.program.button("Dosya seç…")
        set_text(self.program.node("password text", "Ana parola"), "👩‍👩‍👧 uzun")
        self.program.push("Kilidi aç")
        wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure in words")


class SavingTest(DesktopTest):
    def delete_an_entry(self, title="Reddit"):
        self.select_in_group("Sosyal", title)
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")

    def titles(self, file=None):
        return [entry["title"] for entry in entries_of(self.load(file)["root"])]

    def test_a_change_reaches_the_file_with_a_save_and_not_before(self):
        self.open_vault()
        content = self.vault.read_bytes()
        self.delete_an_entry()
        self.assertEqual(self.vault.read_bytes(), content, "an edit lives in memory alone")
        self.save()
        self.assertNotIn("Reddit", self.titles())
        self.assertEqual(len(self.titles()), 41)

    def test_the_save_button_works_while_there_is_something_to_save(self):
        self.open_vault()
        self.assertFalse(desktop.is_enabled(self.program.button("Kaydet (⌘S)")))
        self.delete_an_entry()
        self.program.push("Kaydet (⌘S)")
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")
        self.assertFalse(desktop.is_enabled(self.program.button("Kaydet (⌘S)")))
        self.assertNotIn("Reddit", self.titles())

    def test_undo_and_redo_name_what_they_do(self):
        self.open_vault()
        self.delete_an_entry()
        rows = self.program.rows("Kayıtlar")
        self.program.choose("Düzen", "Geri Al — Kaydı Sil")
        wait_for(lambda: "Reddit" in self.program.rows("Kayıtlar"), "the entry again")
        self.program.choose("Düzen", "Yinele — Kaydı Sil")
        self.lists(rows)

    def test_saving_under_another_name_leaves_the_old_file(self):
        self.open_vault()
        content = self.vault.read_bytes()
        self.delete_an_entry()
        press("ctrl+shift+s")
        self.answer_file_panel(self.program.home / "Kopya.kdbx")
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")
        self.assertEqual(self.vault.read_bytes(), content)
        self.assertNotIn("Reddit", self.titles(self.program.home / "Kopya.kdbx"))

    def test_locking_saves_and_asks_for_the_password_again(self):
        self.open_vault()
        self.delete_an_entry()
        self.program.push("Kasayı kilitle (⌘L)")
        self.program.focus_is_on("Ana parola")
        self.assertNotIn("Reddit", self.titles())
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_closing_goes_back_to_the_choice_of_a_vault(self):
        self.open_vault()
        press("ctrl+shift+w")
        self.shows("Henüz bir kasa yok")
        self.assertFalse(desktop.is_enabled(self.program.menu_item("Dosya", "Veritabanını Kapat")))

    def test_a_termination_signal_is_a_normal_end_that_saves_nothing(self):
        self.open_vault()
        content = self.vault.read_bytes()
        self.delete_an_entry()
        self.assertEqual(self.program.end(), 0)
        self.assertEqual(self.vault.read_bytes(), content)

    def test_closing_the_window_quits(self):
        self.open_vault()
        press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)


class FidelityTest(DesktopTest):
    def place_vault(self):
        testcase.copy_vault("v09-4.0-chacha20-argon2id", self.vault)

    def load_as_saved_unchanged(self):
        """What a save of the unchanged vault holds: it puts some foreign elements in an order of its own."""
        saved = self.program.home / "degismeden.kdbx"
        testcase.probe({"op": "save", "file": str(self.vault), "password": PASSWORD, "keyFile": None, "to": str(saved)})
        return self.load(saved)

    def test_a_changed_title_reaches_the_file_and_nothing_else_changes(self):
        expected = self.load_as_saved_unchanged()
        self.open_vault()
        group = next(group for group in expected["root"]["groups"] if group["entries"])
        self.select_group(group["name"] or "Adsız grup")
        row = wait_for(lambda: next(iter(self.program.rows("Kayıtlar")), None), "an entry")
        click(self.program.row("Kayıtlar", row), from_left=0.4)
        press("ctrl+e")
        set_text(self.program.node("text", "Başlık"), "Değiştirilmiş başlık")
        self.program.push("Kaydet")
        wait_for(lambda: "Değiştirilmiş başlık" in self.program.rows("Kayıtlar"), "the new title in the list")
        self.save()

        after = self.load()
        changed = next(entry for entry in entries_of(after["root"]) if entry["title"] == "Değiştirilmiş başlık")
        former = next(entry for entry in entries_of(expected["root"]) if entry["id"] == changed["id"])
        self.assertEqual(former["title"] or "Adsız kayıt", row)
        self.assertEqual(changed["historyItems"][-1], {**former, "historyItems": []})
        self.assertEqual(changed["historyItems"][:-1], former["historyItems"])
        self.assertGreater(changed["modified"], former["modified"])
        for field in ("title", "modified", "historyItems"):
            changed[field] = former[field]
        self.assertEqual(after, expected)


if __name__ == "__main__":
    testcase.run()

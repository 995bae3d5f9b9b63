# SPDX-License-Identifier: MIT
"""The vault's file while others write to it, take it away and bring it back."""

import os
import re

import desktop
import testcase
from desktop import press, set_text, wait_for
from testcase import DesktopTest, entries_of, groups_of

NEW_PASSWORD = "yepyeni parola"
KEPT = re.compile(r"^Dosya diskte değişmişti; oradaki sürüm “(Kasam \(çakışma "
                  r"\d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\)\.kdbx)” adıyla saklandı\.$")


class FilesTest(DesktopTest):
    def replace_vault(self, content):
        """As a sync client does."""
        new = self.vault.with_name("gelen")
        new.write_bytes(content)
        os.replace(new, self.vault)

    def another_version(self):
        """A vault that this program did not write."""
        return (testcase.options.vaults / "v00-4.0-aes256-argon2d.kdbx").read_bytes()

    def delete_an_entry(self):
        self.select_in_group("Sosyal", "Reddit")
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")

    def titles(self):
        return [entry["title"] for entry in entries_of(self.load()["root"])]

    def kept(self, role="label"):
        """The content of the version that the window says was kept."""
        name = KEPT.match(self.program.node(role, KEPT).get_name())[1]
        kept = self.vault.with_name(name)
        self.assertEqual(kept.stat().st_mode & 0o777, self.vault.stat().st_mode & 0o777)
        return kept.read_bytes()

    def files(self):
        return sorted(file.name for file in self.program.home.glob("*.kdbx"))

    def fill_sealing_form(self):
        self.shows("Ana parolanı belirle, kasayı mühürleyelim.")
        for field in ("Ana parola", "Parolayı doğrula"):
            set_text(self.program.node("password text", field), NEW_PASSWORD)


class ChangedElsewhereTest(FilesTest):
    def test_a_change_is_said_and_kept_beside_the_vault_when_it_is_saved(self):
        self.open_vault()
        self.replace_vault(self.another_version())
        self.shows("“Kasam.kdbx” diskte değişti. Yeni hâli için kasayı kilitleyip yeniden aç.")
        self.delete_an_entry()
        self.save()
        self.assertEqual(self.kept(), self.another_version())
        self.assertNotIn("Reddit", self.titles())
        press("ctrl+z")
        self.shows("Kaydedilmemiş değişiklik")
        self.save()
        self.assertEqual(len(self.files()), 2, "what it wrote itself is no change")

    def test_a_lock_keeps_the_change_too_and_the_card_says_so(self):
        self.open_vault()
        self.delete_an_entry()
        self.replace_vault(self.another_version())
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.assertEqual(self.kept(role=None), self.another_version())
        self.assertNotIn("Reddit", self.titles())
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_closing_the_vault_names_the_kept_version_on_the_first_screen(self):
        self.open_vault()
        self.delete_an_entry()
        self.replace_vault(self.another_version())
        press("ctrl+shift+w")
        self.shows("Henüz bir kasa yok")
        self.assertEqual(self.kept(role="notification"), self.another_version())
        self.kept()
        self.program.push("Kapat")
        self.program.is_gone("label", KEPT)

    def test_a_vault_that_is_gone_is_said_and_written_again(self):
        self.open_vault()
        self.delete_an_entry()
        self.vault.unlink()
        self.shows("“Kasam.kdbx” artık yerinde değil. Kaydedersen yeniden yazılır.")
        self.save()
        self.program.is_gone("label", re.compile("artık yerinde değil"))
        self.assertNotIn("Reddit", self.titles())
        self.assertEqual(self.files(), ["Kasam.kdbx"])


class AwayTest(FilesTest):
    def lock_while_away(self):
        """The card of a vault whose stick was pulled out meanwhile."""
        self.open_vault()
        self.away = self.vault.with_name("uzakta")
        os.rename(self.vault, self.away)
        press("ctrl+l")
        self.program.button("Kasayı oluştur")
        self.content = self.away.read_bytes()

    def test_the_card_turns_to_opening_when_the_vault_is_back(self):
        self.lock_while_away()
        self.fill_sealing_form()
        os.rename(self.away, self.vault)
        self.program.button("Kilidi aç")
        wait_for(lambda: self.program.nodes(name="“Kasam.kdbx” yeniden yerinde. Ana parolanla açabilirsin."),
                 "the reason in words")
        self.assertEqual(desktop.text_of(self.program.node("password text", "Ana parola")), "")
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.assertEqual(self.vault.read_bytes(), self.content)

    def test_whatever_is_pressed_when_it_comes_back_it_is_not_sealed_over(self):
        self.lock_while_away()
        submit = self.program.button("Kasayı oluştur")
        ways = {"the button": lambda: submit.do_action(0), "Return": lambda: press("Return")}
        for name, way in ways.items():
            with self.subTest(name):
                self.fill_sealing_form()
                wait_for(lambda: desktop.is_enabled(submit), "a form that can be submitted")
                os.rename(self.away, self.vault)
                way()
                self.program.button("Kilidi aç")
                wait_for(lambda: self.program.nodes(name=re.compile("^“Kasam.kdbx” .* Ana parolanla açabilirsin.$")),
                         "the reason in words")
                self.assertEqual(self.vault.read_bytes(), self.content)
                if name == "Return":
                    return
                self.enter_password()
                self.program.node("list", "Gruplar")
                os.rename(self.vault, self.away)
                press("ctrl+l")
                self.program.button("Kasayı oluştur")


class AwayAtTheStartTest(FilesTest):
    """The vault is on a drive that is not there when the program starts."""

    AWAY = "“Kasam.kdbx” şu anda yerinde değil."
    BACK = "“Kasam.kdbx” yeniden yerinde. Ana parolanla açabilirsin."

    def place_vault(self):
        self.drive = self.program.home / "disk"
        self.drive.mkdir()
        self.vault = self.drive / "Kasam.kdbx"
        super().place_vault()

    def take_away(self):
        self.away = self.drive.with_name("uzakta")
        os.rename(self.drive, self.away)

    def is_away(self):
        wait_for(lambda: self.program.nodes(name=self.AWAY), "the reason in words")
        self.shows("Kasam.kdbx")
        self.shows("Kasa yerine dönünce buradan açabilirsin.")
        self.assertEqual(self.program.nodes("password text", "Parolayı doğrula"), [])
        self.assertFalse(desktop.is_enabled(self.program.button("Kilidi aç")))

    def comes_back(self):
        os.rename(self.away, self.drive)
        wait_for(lambda: self.program.nodes(name=self.BACK), "its return in words")
        self.shows("Parolaların yerel, şifreli ve sende.")

    def test_it_is_named_waited_for_and_opened_when_it_is_back(self):
        self.open_vault()
        self.program.end()
        self.take_away()
        self.program.start()
        self.is_away()
        for key in ("a", "Return"):
            press(key)
        self.is_away()
        self.assertFalse(self.drive.exists(), "nothing is made in its place")
        press("BackSpace")
        self.comes_back()
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_what_was_typed_for_it_meanwhile_opens_it(self):
        self.open_vault()
        self.program.end()
        self.take_away()
        self.program.start()
        self.is_away()
        set_text(self.program.node("password text", "Ana parola"), testcase.PASSWORD)
        self.comes_back()
        self.program.push("Kilidi aç")
        self.program.node("list", "Gruplar")

    def test_one_that_is_given_by_its_path_is_waited_for_too(self):
        self.program.end()
        self.take_away()
        self.program.start(self.vault)
        self.is_away()
        self.comes_back()
        self.drive, self.away = self.vault, self.vault.with_name("uzakta")  # now the file alone
        os.rename(self.drive, self.away)
        self.is_away()
        self.comes_back()


class ReplacingTest(FilesTest):
    def agree_to_replace(self):
        """Answers the panel with the vault itself, and its question with yes."""
        self.program.focus_is_on("Dosya adı:")
        set_text(self.program.node("text", "Dosya adı:"), str(self.vault))
        press("Return")
        self.program.push(re.compile("^(Evet|Üzerine yaz|Yerine koy)$"))
        self.program.is_gone("text", "Dosya adı:")

    def is_sealed_anew(self):
        self.fill_sealing_form()
        self.program.push("Kasayı oluştur")
        self.program.node("list", "Gruplar")
        self.assertEqual([group["name"] for group in groups_of(self.load(password=NEW_PASSWORD)["root"])],
                         ["Kasam", "İnternet", "E-posta", "Bankacılık"])

    def test_the_menu_leads_to_the_sealing_form_over_an_open_vault(self):
        self.open_vault()
        press("ctrl+n")
        self.agree_to_replace()
        self.is_sealed_anew()

    def test_so_does_the_button_of_the_card_for_the_file_at_hand(self):
        self.choose_vault()
        self.program.push("Yeni veritabanı oluştur")
        self.agree_to_replace()
        self.is_sealed_anew()


class OldFormatTest(FilesTest):
    old = "v28-3.1-aes256-aes"

    def place_vault(self):
        testcase.copy_vault(self.old, self.vault)

    def test_the_old_file_with_its_attachments_is_kept_by_the_first_save(self):
        content = self.vault.read_bytes()
        self.choose_vault()
        set_text(self.program.node("password text", "Ana parola"), "çok gizli ş")
        self.program.push("Kilidi aç")
        self.program.node("list", "Gruplar")
        press("ctrl+shift+g")
        set_text(self.program.node("text", "Grup adı"), "Yeni grup")
        press("Return")
        self.shows("Kaydedilmemiş değişiklik")
        self.save()
        self.shows("Ekler yeni biçime taşınmadı; eski dosya “Kasam (KDBX 3).kdbx” adıyla saklandı.")
        self.assertEqual(self.vault.with_name("Kasam (KDBX 3).kdbx").read_bytes(), content)


class KeyFileOfANewVaultTest(FilesTest):
    """What the panel gave as a key file can be something else, or nothing, by the time that the vault is made."""

    def place_vault(self):
        pass

    def choose_key_file(self):
        key = self.program.home / "anahtar"
        key.write_bytes(b"anahtar")
        press("ctrl+n")
        self.answer_file_panel(self.vault)
        self.program.push("Dosya seç…")
        self.answer_file_panel(key)
        self.shows("anahtar")
        key.unlink()
        return key

    def is_sealed_without(self):
        self.fill_sealing_form()
        self.program.push("Kasayı oluştur")
        self.program.node("list", "Gruplar")
        self.shows("Anahtar dosyası okunamadı; kasa anahtar dosyası olmadan oluşturuldu.")
        self.load(password=NEW_PASSWORD)

    def test_a_folder(self):
        self.choose_key_file().mkdir()
        self.is_sealed_without()

    def test_a_pipe_without_a_writer(self):
        os.mkfifo(self.choose_key_file())
        self.is_sealed_without()

    def test_a_device_without_an_end(self):
        self.choose_key_file().symlink_to("/dev/zero")
        self.is_sealed_without()

    def test_a_stick_that_was_pulled_out(self):
        self.choose_key_file()
        self.is_sealed_without()


if __name__ == "__main__":
    testcase.run()

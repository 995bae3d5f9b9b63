# SPDX-License-Identifier: MIT
"""What is left of secrets in the program's memory once a vault is locked, closed or left for another: nothing.

The scan sees eight letters of a secret in a row, as UTF-8, UTF-16 or UTF-32, and at any distance of up to 64 bytes from
one letter to the next, backwards too. It does not see fewer letters, key codes and the shapes of letters, what is masked,
what the kernel, the display and the bus hold, nor memory that was handed back to the system."""

import pathlib
import random
import string
import subprocess

import desktop
import testcase
from AutoTypeTest import Terminal, helper
from DerivationTest import changed_header, parameter
from desktop import act, click, press, text_of, type_text, wait_for
from RescueTest import OFFER
from testcase import DesktopTest, clipboard_text, entries_of

SHORT, LONG = 8, 64


def secret(length):
    """Letters and digits that every keyboard has, no two alike in a row."""
    return "".join(random.SystemRandom().choice(string.ascii_letters + string.digits) for _ in range(length))


class MemoryTest(DesktopTest):
    # What is typed waits before its end, so that there is time to look.
    settings_at_start = {"defaultAutoTypeSequence": "{USERNAME}{TAB}{PASSWORD}{DELAY 2000}{ENTER}"}

    def setUp(self):
        self.secrets = {}
        self.file_secrets = {}
        super().setUp()

    def place_vault(self):
        self.vault = self.program.home / "Gizli.kdbx"
        self.key_file = self.program.home / "gizli.key"
        self.key_file.write_bytes(random.SystemRandom().randbytes(LONG))
        self.secrets["key-file"] = self.key_file.read_bytes()
        self.master_password = self.new("master-password", LONG)
        entries = []
        for title, length in (("Kısa", SHORT), ("Uzun", LONG)):
            entries.append([title, *(self.new(f"{title}-{what}", size) for what, size in (
                ("user-name", length), ("password", length), ("notes", LONG), ("plain-field", length),
                ("protected-field", length)))])
        rows = "".join("\t".join(entry) + "\n" for entry in entries)
        self.run_helper("secret-vault", "make", self.vault, self.master_password, self.key_file, given=rows)
        self.keys_of_the_file("first")

    def new(self, name, length):
        """A secret of that name, which no memory may hold in the end."""
        text = secret(length)
        self.secrets[name] = text.encode()
        return text

    @staticmethod
    def run_helper(name, *words, given=""):
        return subprocess.run([helper(name), *map(str, words)], input=given, capture_output=True, text=True,
                              check=True).stdout

    def keys_of_the_file(self, when):
        """What encrypts the file as it is now."""
        for line in self.run_helper("secret-vault", "keys", self.vault, self.master_password,
                                    self.key_file).splitlines():
            name, key = line.split()
            self.secrets[f"{when}-{name}"] = bytes.fromhex(key)

    def found(self):
        """Where the secrets are: name, form, how often, where at first."""
        lines = "".join(f"{name} {content.hex()}\n" for name, content in self.secrets.items())
        output = self.run_helper("memory-program", self.program.process_id(), given=lines)
        return [line.split("\t") for line in output.splitlines()]

    def found_names(self):
        return {row[0] for row in self.found()}

    def nothing_is_left(self):
        """What goes a moment after the lock, with the loop's next turns, is waited for."""
        try:
            wait_for(lambda: not self.found(), "no secret in memory", patience=5)
        except AssertionError:
            rows = "\n".join("  ".join(row) for row in self.found())
            self.fail(f"of {len(self.secrets)} secrets there are left:\n{rows}")

    # What a user does

    def open_vault(self, password=None):
        self.choose_vault()
        self.program.push("Dosya seç…")
        self.answer_file_panel(self.key_file)
        self.shows(self.key_file.name)
        click(self.program.node("password text", "Ana parola"), from_left=0.3)
        self.program.focus_is_on("Ana parola")
        type_text(password or self.master_password)
        self.program.push("Göster")
        self.program.node("text", "Ana parola")
        self.program.push("Kilidi aç")

    def unlocks(self):
        self.program.node("list", "Gruplar")

    def of_field(self, button, field):
        node = wait_for(lambda: next((each for each in self.program.nodes("push button", button)
                                      if each.get_description() == field), None), f"{button} of {field}")
        act(node)

    def look_at_and_copy(self, title):
        for field, name in (("Parola", "password"), ("Korumalı", "protected-field")):
            self.of_field("Göster", field)
            self.of_field("Kopyala", field)
            wait_for(lambda: clipboard_text().encode() == self.secrets[f"{title}-{name}"], f"{name} copied")
        press("ctrl+b")
        wait_for(lambda: clipboard_text().encode() == self.secrets[f"{title}-user-name"], "the user name copied")

    def retype(self, field, name, length):
        """Writes a new secret over a shown one, with a slip that is taken back."""
        click(field, from_left=0.3)
        press("ctrl+a")
        text = self.new(name, length)
        type_text(text[:4] + "x")
        press("BackSpace")
        type_text(text[4:])
        wait_for(lambda: text_of(field) == text, f"{name} typed")

    def edit(self, length):
        press("ctrl+e")
        self.program.button("Alan ekle")
        act(self.program.button("Göster", within=self.program.node("password text", "Parola")))
        self.retype(self.program.node("text", "Parola"), "later-password", length)
        self.retype(self.program.node("text", "Kullanıcı adı"), "later-user-name", length)
        notes = self.program.node("text", "Notlar", within=self.program.node("dialog", "Kaydı düzenle"))
        notes.grab_focus()
        self.program.focus_is_on("Notlar")
        press("ctrl+End", "Return")
        type_text(self.new("later-notes", LONG))
        self.program.push("Kaydet")
        self.program.is_gone("push button", "Vazgeç")

    def generate(self):
        press("ctrl+e")
        self.program.button("Alan ekle")
        self.program.push("Parola üret")
        wait_for(lambda: self.program.nodes("text", "Parola"), "the password that was made")
        self.program.push("Kaydet")
        self.program.is_gone("push button", "Vazgeç")
        press("ctrl+g")
        self.program.push("Göster", within=self.program.node("dialog", "Parola üreteci"))
        self.program.push("Panoya kopyala")
        self.program.is_gone("dialog", "Parola üreteci")
        self.secrets["copied-password"] = clipboard_text().encode()

    def auto_type(self, meanwhile=None):
        terminal = Terminal("Haberler")
        try:
            click(self.program.row("Kayıtlar", "Uzun"), from_left=0.4)
            press("ctrl+shift+v")
            if meanwhile:
                password = self.secrets["Uzun-password"]
                wait_for(lambda: terminal.typed().encode().endswith(password), "the password typed")
                meanwhile()
            wait_for(lambda: terminal.typed().endswith("\r"), "the entry typed")
        finally:
            terminal.stop()

    def search(self):
        press("ctrl+f")
        type_text(self.new("search", SHORT))
        press("ctrl+a", "BackSpace")

    def use_everything(self):
        self.open_vault()
        self.unlocks()
        self.select_entry("Kısa")
        self.look_at_and_copy("Kısa")
        self.edit(SHORT)
        self.select_entry("Uzun")
        self.look_at_and_copy("Uzun")
        self.generate()
        self.auto_type()
        self.search()
        self.save()
        self.keys_of_the_file("saved")
        loaded = self.load(password=self.master_password, key_file=self.key_file)
        made = next(entry["password"] for entry in entries_of(loaded["root"]) if entry["title"] == "Uzun")
        self.secrets["made-password"] = made.encode()

    # What is looked for

    def test_the_scan_finds_a_secret_that_is_there(self):
        self.open_vault()
        self.unlocks()
        self.select_entry("Kısa")
        self.assertNotIn("Kısa-password", self.found_names(), "what is not shown lies masked")
        self.assertIn("master-password", self.found_names(), "an open session saves under it")
        self.assertIn("Kısa-notes", self.found_names())
        self.of_field("Göster", "Parola")
        press("ctrl+e")
        self.program.button("Alan ekle")
        act(self.program.button("Göster", within=self.program.node("password text", "Parola")))
        wait_for(lambda: "Kısa-password" in self.found_names(), "the password that is shown")

    def test_a_password_is_in_the_clear_only_while_it_is_used(self):
        self.open_vault()
        self.unlocks()
        self.select_entry("Uzun")
        self.shows_no_password("at first")
        self.of_field("Göster", "Parola")
        self.shows_few_copies("shown", 0)  # put together when it is painted
        self.program.node("label", self.secrets["Uzun-password"].decode())
        self.of_field("Gizle", "Parola")
        self.shows_no_password("hidden again")
        press("ctrl+c")
        self.shows_few_copies("copied", 1)
        wait_for(lambda: clipboard_text().encode() == self.secrets["Uzun-password"], "the password pasted")
        self.shows_few_copies("pasted", 2)  # and what the display's connection has sent
        press("ctrl+shift+k")
        self.shows_no_password("taken off the clipboard")
        self.auto_type(meanwhile=lambda: self.shows_few_copies("while it is typed", 1))
        self.shows_no_password("typed")
        press("ctrl+e")
        self.program.button("Alan ekle")
        self.shows_few_copies("in an editor", 1)
        act(self.program.button("Göster", within=self.program.node("password text", "Parola")))
        self.shows_few_copies("shown in an editor", 2)  # the text and its layout
        press("Escape")
        self.program.is_gone("push button", "Vazgeç")
        self.shows_no_password("the editor given up")
        press("ctrl+e")
        self.program.button("Alan ekle")
        act(self.program.button("Göster", within=self.program.node("password text", "Parola")))
        self.retype(self.program.node("text", "Kullanıcı adı"), "later-user-name", SHORT)
        self.program.push("Kaydet")
        self.program.is_gone("push button", "Vazgeç")
        self.shows_no_password("edited")
        self.save()
        self.shows_no_password("saved")

    def copies_of_passwords(self):
        return [row for row in self.found() if row[0] in ("Kısa-password", "Uzun-password")]

    def shows_few_copies(self, when, most):
        """The scan counts a long secret once for each eight letters."""
        wait_for(lambda: sum(int(row[2]) for row in self.copies_of_passwords()) <= most * LONG / SHORT,
                 f"{most} copies of the password {when}", patience=5)

    def shows_no_password(self, when):
        wait_for(lambda: not self.copies_of_passwords(), f"no password {when}", patience=5)

    def test_a_lock_leaves_nothing(self):
        self.use_everything()
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.nothing_is_left()

    def test_a_vault_that_is_closed_leaves_nothing(self):
        self.look_and_edit()
        self.program.choose("Dosya", "Veritabanını Kapat")
        self.shows("Henüz bir kasa yok")
        self.nothing_is_left()

    def test_a_vault_that_is_left_for_another_leaves_nothing(self):
        other = self.program.home / "Başka.kdbx"
        subprocess.run([testcase.options.demo_vault, other], check=True)
        self.look_and_edit()
        press("ctrl+o")
        self.answer_file_panel(other)
        self.shows("Başka.kdbx")
        self.program.focus_is_on("Ana parola")
        # What was copied stays for its time, and can be pasted until then; each look is such a paste.
        wait_for(lambda: clipboard_text() == "", "the countdown's end", patience=20)
        self.nothing_is_left()

    def test_what_is_kept_unsaved_leaves_nothing(self):
        self.open_vault()
        self.unlocks()
        self.select_entry("Uzun")
        self.edit(LONG)
        copies = self.program.home / "state" / "brenvik"
        wait_for(lambda: any(copies.glob("*.kdbx")), "a copy of what is unsaved")
        self.change_a_form("dropped-password")
        self.program.choose("Dosya", "Kasayı Kilitle")
        self.program.focus_is_on("Ana parola")
        self.keys_of_the_file("saved")
        self.nothing_is_left()
        self.open_again()
        self.program.push("Geri getir")
        self.program.is_gone("push button", "Geri getir")
        self.change_a_form("form-password")
        self.program.choose("Dosya", "Kasayı Kilitle")
        self.program.focus_is_on("Ana parola")
        self.keys_of_the_file("later")
        self.open_again()
        self.program.push("Sil", within=self.program.node("notification", OFFER))
        self.program.is_gone("push button", "Geri getir")
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.nothing_is_left()

    def change_a_form(self, name):
        self.select_entry("Uzun")
        press("ctrl+e")
        self.program.button("Alan ekle")
        act(self.program.button("Göster", within=self.program.node("password text", "Parola")))
        self.retype(self.program.node("text", "Parola"), name, LONG)

    def open_again(self):
        self.open_vault()
        self.unlocks()

    def test_a_derivation_that_is_given_up_leaves_nothing(self):
        changed_header(self.vault, lambda parameters: parameter(parameters, "R", "<Q", 2 ** 60))
        given_up = self.new("given-up-password", LONG)
        for give_up in (lambda: press("Escape"), lambda: self.program.push("Vazgeç")):
            self.open_vault(given_up)
            self.program.node("progress bar", "Anahtar türetiliyor")
            give_up()
            self.program.is_gone("progress bar", "Anahtar türetiliyor")
            self.program.push("Kaldır")
            self.program.push("Gizle")
        other = self.program.home / "Başka.kdbx"
        subprocess.run([testcase.options.demo_vault, other], check=True)
        press("ctrl+o")
        self.answer_file_panel(other)
        self.shows("Başka.kdbx")
        self.nothing_is_left()

    def test_a_failed_unlock_leaves_nothing(self):
        for length in (SHORT, LONG):
            self.open_vault(self.new(f"wrong-password-{length}", length))
            wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure in words")
            self.program.push("Kaldır")
            self.program.push("Gizle")
        self.nothing_is_left()

    def test_a_lock_gives_the_memory_of_a_large_vault_back(self):
        large = self.program.home / "Büyük.kdbx"
        subprocess.run([testcase.options.demo_vault, large, "30000"], check=True)
        self.open_vault()  # once, so that what every window needs is there
        self.lock_after_a_look()
        before = self.memory()
        press("ctrl+o")
        self.answer_file_panel(large)
        self.shows("Büyük.kdbx")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.lock_after_a_look()
        wait_for(lambda: self.memory() < before + 15_000_000, "the vault's memory given back", patience=10)

    def lock_after_a_look(self):
        self.unlocks()
        press("ctrl+f")
        type_text("zzz")
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")

    def memory(self):
        """Bytes of its own that the program holds."""
        rollup = pathlib.Path(f"/proc/{self.program.process_id()}/smaps_rollup").read_text()
        return 1024 * sum(int(line.split()[1]) for line in rollup.splitlines() if line.startswith("Private_Dirty"))

    def test_what_is_written_over_typed_letters_is_not_reported(self):
        self.choose_vault()
        type_text("yanlis")
        with desktop.Events(lambda event: event.any_data, "object:text-changed:insert") as events:
            press("Return")
            wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure in words")
            wait_for(lambda: self.program.node("password text", "Ana parola").get_character_count() == 0, "no letters")
            self.assertEqual(events.heard(), [])

    def look_and_edit(self):
        self.open_vault()
        self.unlocks()
        self.select_entry("Uzun")
        self.look_at_and_copy("Uzun")
        self.edit(LONG)
        press("ctrl+z")
        self.search()


if __name__ == "__main__":
    testcase.run()

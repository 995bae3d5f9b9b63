# SPDX-License-Identifier: MIT
"""A program that answers while a key is derived: it is painted and read, takes its end, and the wait can be given up."""

import hashlib
import pathlib
import shutil
import struct
import subprocess
import tempfile

import desktop
import testcase
from desktop import Atspi, press, set_text, text_of, type_text, wait_for
from testcase import PASSWORD, DesktopTest, entries_of

KDF_PARAMETERS = 11
WRITES = "Kasa kaydediliyor"
LOCKS = "Kasa kaydedilip kilitleniyor"
# Two seconds and more on a quiet machine: the countdown of the test below is over by then.
SLOW_ROUNDS = 150_000_000


def changed_header(vault, change):
    """A vault whose key derivation asks for something else. Its header is whole, as a hostile author's would be; that
    no password opens it shows only after the derivation."""
    content = bytearray(vault.read_bytes())
    at = 12
    while content[at] != 0:
        size = struct.unpack_from("<I", content, at + 1)[0]
        if content[at] == KDF_PARAMETERS:
            parameters = bytearray(content[at + 5:at + 5 + size])
            change(parameters)
            content[at + 5:at + 5 + size] = parameters
        at += 5 + size
    end = at + 5 + struct.unpack_from("<I", content, at + 1)[0]
    content[end:end + 32] = hashlib.sha256(content[:end]).digest()
    vault.write_bytes(content)


def parameter(parameters, name, form, value):
    """Overwrites a number in the parameters' dictionary."""
    key = struct.pack("<I", len(name)) + name.encode()
    at = parameters.index(key) + len(key) + 4
    struct.pack_into(form, parameters, at, value)


class Waiting(DesktopTest):
    def progress(self):
        """The bar, which comes after half a second."""
        return self.program.node("progress bar", "Anahtar türetiliyor")

    def is_over(self):
        self.program.is_gone("progress bar", "Anahtar türetiliyor")

    def letters_in_password(self):
        return Atspi.Text.get_character_count(self.program.node("password text", "Ana parola"))

    def anonymous_memory(self):
        """KiB."""
        status = pathlib.Path(f"/proc/{self.program.process_id()}/status").read_text()
        return int(next(line for line in status.splitlines() if line.startswith("RssAnon:")).split()[1])


class HostileTest(Waiting):
    """Files that ask for more than a lifetime."""

    def ask_for(self, **numbers):
        forms = {"I": "<Q", "M": "<Q", "P": "<I"}
        changed_header(self.vault, lambda parameters: [parameter(parameters, name, forms[name], value)
                                                       for name, value in numbers.items()])

    def begin(self, how):
        self.choose_vault()
        type_text("yanlis")
        how()
        self.progress()

    def is_as_it_was(self):
        """The form with what was typed, and nothing said."""
        self.is_over()
        self.program.focus_is_on("Ana parola")
        self.assertEqual(self.letters_in_password(), len("yanlis"))
        self.assertTrue(desktop.is_enabled(self.program.button("Kilidi aç")))
        self.assertTrue(desktop.is_enabled(self.program.button("Değiştir")))
        self.assertEqual(self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), [])

    def test_an_unlock_by_any_way_in_is_given_up_by_any_way_out(self):
        self.ask_for(I=0xFFFFFFFF)
        pushes = (lambda: press("Return"),
                  lambda: self.program.push("Kilidi aç"),
                  lambda: desktop.click(self.program.button("Kilidi aç")))
        ends = (lambda: press("Escape"),
                lambda: self.program.push("Vazgeç"),
                lambda: desktop.click(self.program.button("Vazgeç")))
        self.choose_vault()
        type_text("yanlis")
        for start, end in zip(pushes, ends):
            start()
            bar = self.progress()
            self.assertEqual(Atspi.Value.get_current_value(bar), 0)
            self.shows("Anahtar türetiliyor…")
            self.shows("%0")
            self.program.focus_is_on("Anahtar türetiliyor")
            end()
            self.is_as_it_was()

    def test_escape_works_before_anything_shows_and_the_vault_can_be_opened_after_it(self):
        whole = self.vault.read_bytes()
        self.ask_for(I=0xFFFFFFFF)
        self.choose_vault()
        type_text(PASSWORD)
        press("Return", "Escape")
        self.is_over()
        self.vault.write_bytes(whole)
        press("Return")
        self.program.node("list", "Gruplar")

    def test_what_is_typed_meanwhile_lands_nowhere(self):
        self.ask_for(I=0xFFFFFFFF)
        self.begin(lambda: press("Return"))
        type_text("abc")
        press("Return", "space", "ctrl+o", "ctrl+n")
        self.progress()
        press("Tab", "space")  # the way to the button that gives up
        self.is_as_it_was()
        self.assertEqual(self.program.nodes("text", "Dosya adı:"), [])

    def test_nothing_but_the_wait_itself_can_be_used_by_other_ways(self):
        self.ask_for(I=0xFFFFFFFF)
        self.begin(lambda: press("Return"))
        for name in ("Değiştir", "Dosya seç…"):
            self.assertFalse(desktop.is_enabled(self.program.button(name)), name)
        self.assertFalse(desktop.is_enabled(self.program.node("password text", "Ana parola")))
        for name in ("Yeni Veritabanı…", "Veritabanı Aç…", "Kaydet", "Farklı Kaydet…"):
            self.assertFalse(desktop.is_enabled(self.program.menu_item("Dosya", name)), name)
        self.assertTrue(desktop.is_enabled(self.program.menu_item("Dosya", "Çık")))
        self.program.push("Vazgeç")
        self.is_as_it_was()

    def test_the_memory_goes_back_at_once(self):
        self.ask_for(I=0xFFFFFFFF, M=512 << 20)
        self.choose_vault()
        before = self.anonymous_memory()
        type_text("yanlis")
        press("Return")
        self.progress()
        wait_for(lambda: self.anonymous_memory() > before + (256 << 10), "the memory that was asked for")
        press("Escape")
        self.is_as_it_was()
        self.assertLess(self.anonymous_memory(), before + (64 << 10))

    def test_more_memory_than_there_is_fails_in_words(self):
        self.ask_for(M=1 << 41)
        self.choose_vault()
        self.enter_password("yanlis")
        wait_for(lambda: self.program.nodes(name="Argon2: bellek ayrılamadı."), "the failure in words")
        self.program.focus_is_on("Ana parola")

    def test_a_termination_signal_ends_the_program(self):
        self.ask_for(I=0xFFFFFFFF)
        self.begin(lambda: press("Return"))
        self.assertEqual(self.program.end(), 0)

    def test_closing_the_window_ends_the_program(self):
        self.ask_for(I=0xFFFFFFFF)
        self.begin(lambda: press("Return"))
        press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)


class SlowSaveTest(Waiting):
    """A vault whose key takes seconds."""
    settings_at_start = {"clipboardTimeout": 1}

    @classmethod
    def setUpClass(cls):
        cls._folder = tempfile.TemporaryDirectory()
        cls.slow = pathlib.Path(cls._folder.name) / "Yavas.kdbx"
        subprocess.run([testcase.options.demo_vault, cls.slow, "0", str(SLOW_ROUNDS)], check=True)

    @classmethod
    def tearDownClass(cls):
        cls._folder.cleanup()

    def place_vault(self):
        shutil.copy(self.slow, self.vault)

    def setUp(self):
        super().setUp()
        self.open_vault()
        self.content = self.vault.read_bytes()
        self.select_in_group("Sosyal", "Reddit")

    def delete_the_entry(self):
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")

    def is_open_and_unsaved(self):
        self.is_over()
        self.shows("Kaydedilmemiş değişiklik")
        self.assertEqual(self.vault.read_bytes(), self.content)

    def is_saved(self):
        return "Reddit" not in [entry["title"] for entry in entries_of(self.load()["root"])]

    def test_a_save_is_given_up_by_any_way_and_done_by_the_next(self):
        self.delete_the_entry()
        for start, end in ((lambda: press("ctrl+s"), lambda: press("Escape")),
                           (lambda: press("ctrl+s"), lambda: self.program.push("Vazgeç")),
                           (lambda: desktop.click(self.program.button("Kaydet (⌘S)")),
                            lambda: desktop.click(self.program.button("Vazgeç")))):
            start()
            self.program.node("dialog", WRITES)
            self.progress()
            end()
            self.is_open_and_unsaved()
        press("ctrl+s")
        bar = self.progress()
        wait_for(lambda: Atspi.Value.get_current_value(bar) > 0, "the bar to advance")
        press("Delete", "ctrl+i", "ctrl+z")  # for nobody
        self.is_over()
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")
        self.assertTrue(self.is_saved())

    def test_the_clipboard_is_wiped_while_a_vault_is_saved(self):
        self.delete_the_entry()
        self.select_entry("GitHub")
        press("ctrl+c")
        wait_for(testcase.clipboard_text, "a copied password")
        press("ctrl+s")
        self.progress()
        wait_for(lambda: not testcase.clipboard_text(), "the clipboard's wipe")
        self.assertTrue(self.program.nodes("progress bar", "Anahtar türetiliyor"), "the save was over too soon")
        press("Escape")
        self.is_open_and_unsaved()

    def test_a_lock_that_is_given_up_keeps_the_vault_open_and_unsaved(self):
        self.delete_the_entry()
        press("ctrl+l")
        self.program.node("dialog", LOCKS)
        press("Escape")
        self.is_open_and_unsaved()
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.assertTrue(self.is_saved())

    def test_a_lock_that_is_asked_for_during_a_save_follows_it(self):
        self.delete_the_entry()
        press("ctrl+s")
        self.progress()
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.assertTrue(self.is_saved())

    def test_a_window_that_is_closed_during_a_save_waits_for_it(self):
        self.delete_the_entry()
        press("ctrl+s")
        self.progress()
        press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)
        self.assertTrue(self.is_saved())

    def test_a_termination_signal_during_a_save_is_a_normal_end(self):
        self.delete_the_entry()
        press("ctrl+s")
        self.progress()
        self.assertEqual(self.program.end(), 0)

    def test_an_open_form_is_still_there_after_a_save(self):
        self.delete_the_entry()
        press("ctrl+i")
        set_text(self.program.node("text", "Başlık"), "Yarım kalan")
        press("ctrl+s")
        self.program.node("dialog", WRITES)
        self.assertFalse(desktop.is_enabled(self.program.node("text", "Başlık")))
        self.is_over()
        self.assertEqual(text_of(self.program.node("text", "Başlık")), "Yarım kalan")
        self.assertTrue(desktop.is_enabled(self.program.node("text", "Başlık")))
        self.assertTrue(self.is_saved())


if __name__ == "__main__":
    testcase.run()

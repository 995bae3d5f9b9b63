# SPDX-License-Identifier: MIT
"""What was not saved when a session ended: kept, offered at the next unlock, brought back or deleted."""

import os
import re
import shutil
import stat
import subprocess

import desktop
import testcase
from desktop import Announcements, press, set_text, wait_for
from testcase import DesktopTest, entries_of

OFFER = re.compile(r"Bu kasanın \d{1,2} \S+ \d{4} \d\d:\d\d tarihli, kaydedilmemiş değişiklikleri saklandı\.")


class RescueTest(DesktopTest):
    """A vault from which "Reddit" is deleted, which is not saved."""

    @property
    def folder(self):
        return self.program.home / "state" / "brenvik"

    def copies(self):
        """What is kept, without what is being written."""
        return sorted(self.folder.glob("*.kdbx")) if self.folder.exists() else []

    def copy_is_kept(self, count=1):
        return wait_for(lambda: len(self.copies()) == count and self.copies(), f"{count} copies")

    def delete_an_entry(self, title="Reddit"):
        self.select_in_group("Sosyal", title)
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")

    def change_unsaved(self):
        self.open_vault()
        self.content = self.vault.read_bytes()
        self.delete_an_entry()

    def titles(self, file=None):
        return [entry["title"] for entry in entries_of(self.load(file)["root"])]

    def start_again(self):
        self.program.start()
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")

    def is_offered(self):
        return self.program.node("label", OFFER)

    def nothing_is_offered(self):
        self.assertEqual(self.program.nodes("label", OFFER), [])

    def was_kept(self):
        """The vault is as it was, and the copy has the change."""
        self.assertEqual(self.vault.read_bytes(), self.content)
        copy, = self.copies()
        self.assertNotIn("Reddit", self.titles(copy))
        return copy


class LeavingTest(RescueTest):
    def is_offered_and_brought_back(self):
        self.start_again()
        self.is_offered()
        self.shows("42 kayıt")
        self.program.push("Geri getir")
        self.shows("41 kayıt · kaydedilmedi")
        self.program.is_gone("label", OFFER)

    def test_the_quit_command_keeps_what_is_unsaved(self):
        self.change_unsaved()
        press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)
        self.was_kept()
        self.is_offered_and_brought_back()

    def test_a_closed_window_keeps_what_is_unsaved(self):
        self.change_unsaved()
        press("alt+F4")
        self.assertEqual(self.program.wait_for_end(), 0)
        self.was_kept()

    def test_a_termination_signal_keeps_what_is_unsaved(self):
        self.change_unsaved()
        self.assertEqual(self.program.end(), 0)
        self.was_kept()

    def test_a_crash_costs_a_minute_at_most(self):
        self.change_unsaved()
        self.copy_is_kept()
        self.program.end(subprocess.Popen.kill)
        self.was_kept()
        self.is_offered_and_brought_back()

    def test_another_vault_opened_keeps_what_is_unsaved(self):
        other = self.program.home / "Baska.kdbx"
        shutil.copy(self.vault, other)
        self.change_unsaved()
        press("ctrl+o")
        self.answer_file_panel(other)
        self.program.focus_is_on("Ana parola")
        self.was_kept()
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.nothing_is_offered()
        self.choose_vault()
        self.enter_password()
        self.is_offered()

    def test_a_lock_that_cannot_save_keeps_what_is_unsaved(self):
        self.change_unsaved()
        self.vault.chmod(0o400)
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.was_kept()
        self.vault.chmod(0o600)
        self.enter_password()
        self.is_offered()

    def test_closing_a_vault_that_cannot_be_saved_keeps_what_is_unsaved(self):
        self.change_unsaved()
        self.vault.chmod(0o400)
        press("ctrl+shift+w")
        self.shows("Henüz bir kasa yok")
        self.was_kept()

    def test_a_display_that_goes_away_keeps_what_is_unsaved(self):
        usual = os.environ["DISPLAY"]
        display = desktop.Display()
        try:
            second = desktop.Program(testcase.options.program)
            self.addCleanup(second.stop)
            self.program.stop()
            self.program = second
            self.vault = second.home / "Kasam.kdbx"
            self.place_vault()
            second.start()
            self.change_unsaved()
        finally:
            display.stop()
            os.environ["DISPLAY"] = usual
        self.assertNotEqual(second.wait_for_end(), 0)
        self.was_kept()

    def test_nothing_is_kept_where_nothing_is_unsaved(self):
        self.open_vault()
        self.program.end()
        self.assertEqual(self.copies(), [])

    def test_a_save_and_a_lock_that_saves_leave_no_copy(self):
        self.change_unsaved()
        self.copy_is_kept()
        self.save()
        self.assertEqual(self.copies(), [])
        self.delete_an_entry("GitHub")
        self.program.push("Kasayı kilitle (⌘L)")
        self.program.focus_is_on("Ana parola")
        self.assertEqual(self.copies(), [])
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.nothing_is_offered()

    def test_a_copy_is_encrypted_and_its_users_alone(self):
        self.change_unsaved()
        self.program.end()
        copy = self.was_kept()
        self.assertEqual(stat.S_IMODE(copy.stat().st_mode), 0o600)
        self.assertEqual(stat.S_IMODE(self.folder.stat().st_mode), 0o700)
        self.assertNotIn("Kasam", copy.name)
        self.assertNotIn(b"GitHub", copy.read_bytes())


class OfferTest(RescueTest):
    def setUp(self):
        super().setUp()
        self.change_unsaved()
        self.program.end()
        self.start_again()
        self.is_offered()

    def is_brought_back_by(self, act):
        with Announcements() as spoken:
            act()
            spoken.say("Saklanan değişiklikler geri getirildi")
        self.program.is_gone("label", OFFER)
        self.shows("41 kayıt · kaydedilmedi")

    def test_the_button_brings_it_back_and_a_save_ends_it(self):
        button = self.program.button("Geri getir")
        self.is_brought_back_by(lambda: desktop.click(button))
        self.assertEqual(len(self.copies()), 1, "it is not in the vault yet")
        self.save()
        self.assertNotIn("Reddit", self.titles())
        self.assertEqual(self.copies(), [])

    def test_return_brings_it_back_and_the_focus_goes_where_keys_do_something(self):
        self.program.tab_to("Geri getir", key="shift+Tab")
        self.is_brought_back_by(lambda: press("Return"))
        self.focus_is_in_a_list()

    def focus_is_in_a_list(self):
        wait_for(lambda: self.program.focused() is not None
                 and self.program.focused().get_role_name() in ("list", "list item"), "the focus in a list")

    def test_space_brings_it_back(self):
        self.program.tab_to("Geri getir", key="shift+Tab")
        self.is_brought_back_by(lambda: press("space"))
        self.focus_is_in_a_list()

    def test_an_assistive_program_brings_it_back(self):
        self.is_brought_back_by(lambda: self.program.push("Geri getir"))

    def test_it_is_one_step_that_can_be_undone(self):
        self.is_brought_back_by(lambda: self.program.push("Geri getir"))
        self.program.choose("Düzen", "Geri Al — Saklananı Geri Getir")
        self.is_offered()
        self.shows("42 kayıt · kaydedilmedi")
        self.assertEqual(len(self.copies()), 1)

    def is_deleted_by(self, act):
        with Announcements() as spoken:
            act()
            spoken.say("Saklanan değişiklikler silindi")
        self.program.is_gone("label", OFFER)
        self.assertEqual(self.copies(), [])
        self.shows("42 kayıt")

    def delete_button(self):
        return self.program.button("Sil", self.program.node("notification", OFFER))

    def test_an_assistive_program_deletes_it_for_good(self):
        button = self.delete_button()
        self.is_deleted_by(lambda: desktop.act(button))

    def test_the_button_deletes_it_for_good(self):
        button = self.delete_button()
        self.is_deleted_by(lambda: desktop.click(button))
        self.focus_is_in_a_list()

    def test_return_deletes_it_and_the_focus_goes_where_keys_do_something(self):
        self.program.tab_to("Sil", key="shift+Tab")
        self.is_deleted_by(lambda: press("Return"))
        self.focus_is_in_a_list()

    def test_space_deletes_it_for_good(self):
        self.program.tab_to("Sil", key="shift+Tab")
        self.is_deleted_by(lambda: press("space"))
        self.focus_is_in_a_list()

    def test_it_is_spoken_by_itself_and_leaves_the_focus_where_keys_do_something(self):
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        with Announcements() as spoken:
            self.enter_password()
            wait_for(lambda: any(OFFER.match(name or "") for name in spoken.heard()), "the offer spoken")
            self.focus_is_in_a_list()
            self.assertEqual(sum(bool(OFFER.match(name or "")) for name in spoken.heard()), 1)

    def test_what_is_not_decided_on_stays(self):
        self.program.end()
        self.start_again()
        self.is_offered()
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.program.is_gone("label", OFFER)
        self.enter_password()
        self.is_offered()

    def test_a_copy_that_cannot_be_read_says_so_and_stays(self):
        copy, = self.copies()
        copy.write_bytes(copy.read_bytes()[:-1])
        self.program.push("Geri getir")
        self.program.node("label", re.compile("Geri getirilemedi: .+"))
        self.shows("42 kayıt")
        self.assertEqual(len(self.copies()), 1)


class FormTest(RescueTest):
    def test_a_form_that_a_lock_drops_is_offered(self):
        self.open_vault()
        self.select_in_group("Sosyal", "Reddit")
        press("ctrl+e")
        set_text(self.program.node("text", "Başlık"), "Yarım kalan")
        set_text(self.program.node("password text", "Parola"), "yeni-gizli")
        self.program.choose("Dosya", "Kasayı Kilitle")
        self.program.focus_is_on("Ana parola")
        self.assertIn("Reddit", self.titles())
        self.enter_password()
        self.is_offered()
        self.program.push("Geri getir")
        self.program.is_gone("label", OFFER)
        self.save()
        entry = self.saved_entry("Yarım kalan")
        self.assertEqual(entry["password"], "yeni-gizli")
        self.assertEqual(entry["historyItems"][-1]["title"], "Reddit")

    def test_a_form_in_which_nothing_was_typed_is_not_kept(self):
        self.open_vault()
        self.select_in_group("Sosyal", "Reddit")
        press("ctrl+e")
        self.program.node("text", "Başlık")
        self.program.choose("Dosya", "Kasayı Kilitle")
        self.program.focus_is_on("Ana parola")
        self.assertEqual(self.copies(), [])

    def test_a_form_of_a_new_entry_and_of_a_group_are_kept_at_the_end(self):
        self.open_vault()
        self.program.push("Yeni kayıt (⌘I)")
        set_text(self.program.node("text", "Başlık"), "Yepyeni")
        self.program.end()
        copy, = self.copies()
        self.assertIn("Yepyeni", self.titles(copy))
        self.start_again()
        self.program.push("Geri getir")
        self.program.is_gone("label", OFFER)
        self.save()
        self.assertIn("Yepyeni", self.titles())


if __name__ == "__main__":
    testcase.run()

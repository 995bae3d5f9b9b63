# SPDX-License-Identifier: MIT
"""Files that are chosen in the desktop's own panels."""

import json
import pathlib
import subprocess
import sys

import testcase
from desktop import press, wait_for
from testcase import DesktopTest

OUR_PANEL = ("text", "Dosya adı:")
VAULTS = [["Parola kasaları", [[0, "*.kdbx"], [0, "*.KDBX"]]], ["Tüm dosyalar", [[0, "*"]]]]


class PortalTest(DesktopTest):
    def setUp(self):
        self.portal = subprocess.Popen([sys.executable, pathlib.Path(__file__).with_name("fake_portal.py")], text=True,
                                       stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(self.end_portal)
        self.hears("ready")
        super().setUp()

    def end_portal(self):
        self.portal.kill()
        self.portal.wait()
        self.portal.stdin.close()
        self.portal.stdout.close()

    def hears(self, method):
        """The next call to the portal, which is of that method."""
        call = json.loads(self.portal.stdout.readline())
        self.assertEqual(call["method"], method)
        return call

    def answer(self, code, file=None):
        self.portal.stdin.write(f"{code} {file.as_uri() if file else '-'}\n")
        self.portal.stdin.flush()

    def shows_card_of(self, name):
        self.shows(name)
        self.program.focus_is_on("Ana parola")

    def has_no_panel(self):
        press("Tab")  # which a panel of ours would take
        self.assertEqual(self.program.nodes(*OUR_PANEL), [])


class ChosenTest(PortalTest):
    def setUp(self):
        super().setUp()
        self.hears("version")

    def test_the_panel_says_what_it_is_for_and_its_answer_outlasts_the_program(self):
        press("ctrl+o")
        call = self.hears("OpenFile")
        self.assertEqual(call["title"], "Veritabanı Aç")
        self.assertRegex(call["window"], "^x11:[0-9a-f]+$")
        self.assertEqual(call["options"]["accept_label"], "Aç")
        self.assertEqual(call["options"]["filters"], VAULTS)
        self.assertTrue(call["options"]["current_folder"].endswith("\0"))
        self.assertNotIn("current_name", call["options"])
        document = self.program.home / "doc" / "1a2b3c4d" / "Kasam.kdbx"  # as a sandbox is given it
        document.parent.mkdir(parents=True)
        document.write_bytes(self.vault.read_bytes())
        self.answer(0, document)
        self.shows_card_of("Kasam.kdbx")
        self.program.end()
        self.program.start()
        self.hears("version")
        self.shows_card_of("Kasam.kdbx")
        self.shows("~/doc/1a2b3c4d")
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_a_panel_that_is_left_chooses_nothing(self):
        for code in (1, 2):
            press("ctrl+o")
            self.hears("OpenFile")
            self.answer(code)
            self.has_no_panel()
            self.shows("Henüz bir kasa yok")

    def test_while_it_shows_the_window_is_out_of_reach(self):
        press("ctrl+o")
        self.hears("OpenFile")
        press("ctrl+n", "ctrl+comma")
        self.answer(0, self.vault)
        self.shows_card_of("Kasam.kdbx")
        self.assertEqual(self.program.nodes("dialog", "Ayarlar"), [])
        press("ctrl+o")
        self.hears("OpenFile")  # and nothing before it
        self.answer(1)

    def test_a_new_vault_and_a_copy_are_saved_where_it_says(self):
        press("ctrl+n")
        call = self.hears("SaveFile")
        self.assertEqual(call["title"], "Yeni Veritabanı")
        self.assertEqual(call["options"]["current_name"], "Kasam.kdbx")
        self.assertEqual(call["options"]["accept_label"], "Oluştur")
        self.answer(0, self.program.home / "Yeni ğ")
        self.shows("Yeni ğ.kdbx")
        press("ctrl+o")
        self.hears("OpenFile")
        self.answer(0, self.vault)
        self.shows_card_of("Kasam.kdbx")
        self.enter_password()
        self.program.node("list", "Gruplar")
        press("ctrl+shift+s")
        self.assertNotIn("accept_label", self.hears("SaveFile")["options"])
        copy = self.program.home / "Kopya.kdbx"
        self.answer(0, copy)
        wait_for(copy.exists, "the copy")

    def test_where_the_portal_ends_our_own_panel_comes(self):
        press("ctrl+o")
        self.hears("OpenFile")
        self.portal.kill()
        self.answer_file_panel(self.vault)
        self.shows_card_of("Kasam.kdbx")
        self.choose_vault()


class ThemeTest(PortalTest):
    """Who chooses the toolkit's theme chooses its panels' kind as well."""

    def test_our_own_panel_comes(self):
        self.hears("version")
        self.program.end()
        self.program.start(QT_QPA_PLATFORMTHEME="generic")
        self.choose_vault()


if __name__ == "__main__":
    testcase.run()

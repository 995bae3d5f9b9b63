# SPDX-License-Identifier: MIT
"""The program where nobody may post keys. The test may not either: it goes by the accessible tree alone."""

import desktop
import testcase
from desktop import Atspi, set_text, wait_for
from testcase import PASSWORD, DesktopTest

NO_PERMISSION = ("Otomatik yazma için Erişilebilirlik izni gerekli. Sistem Ayarları → Gizlilik ve Güvenlik → "
                 "Erişilebilirlik bölümünden Brenvik'e izin verin.")


class NoTypingTest(DesktopTest):
    def open_vault(self):
        self.program.choose("Dosya", "Veritabanı Aç…")
        set_text(self.program.node("text", "Dosya adı:"), str(self.vault))
        self.program.push("Aç")
        set_text(self.program.node("password text", "Ana parola"), PASSWORD)
        self.program.push("Kilidi aç")
        self.program.node("list", "Gruplar")

    def select(self, rows, name):
        wait_for(lambda: name in self.program.rows(rows), f"a row {name}")
        Atspi.Table.add_row_selection(self.program.node("list", rows), self.program.rows(rows).index(name))

    def test_the_program_works_and_says_that_it_may_not_type(self):
        self.open_vault()
        set_text(self.program.node("text", "Kayıtlarda ara"), "Vadesiz")
        self.select("Kayıtlar", "Vadesiz hesap")
        self.program.choose("Kayıt", "Otomatik Yaz")
        self.program.node("label", NO_PERMISSION)
        self.assertEqual(self.program.end(), 0)

    def test_the_settings_report_the_missing_permission(self):
        self.program.choose("Düzen", "Ayarlar…")
        self.program.node("label", "Erişilebilirlik izni gerekli")
        self.program.node("label", "İzin olmadan tuş vuruşları gönderilemez.")
        self.assertFalse(self.program.nodes("push button", "İzin ver…"), "nobody can be asked")


if __name__ == "__main__":
    testcase.run(on_display=lambda: desktop.Display(can_type=False))

# SPDX-License-Identifier: MIT
"""What a screen reader meets: in each screen every control has a name and a role that fits what it does."""

import re

import desktop
import testcase
from desktop import Atspi, act, children_of, click, click_with, has_state, press, type_text, wait_for
from testcase import DesktopTest

# Roles of things to be worked with; something that takes the focus and has another role tells nobody what it is.
CONTROLS = {"push button", "toggle button", "check box", "radio button", "text", "password text", "list", "list item",
            "combo box", "slider", "spin button", "menu item", "check menu item", "radio menu item", "date editor",
            "link", "label", "table cell", "tree", "page tab", "menu", "entry", "calendar", "table", "table column header"}
IGNORED = {"separator", "popup menu", "scroll bar"}  # they need no name: nobody goes to them


class AccessibilityTest(DesktopTest):
    def faults_of(self, screen):
        """Each control without a name, and each stop of the keyboard with an odd role."""
        faults = []
        for node in self.program.nodes():
            role = node.get_role_name()
            states = node.get_state_set()
            can_act = node.get_n_actions() > 0
            can_focus = states.contains(Atspi.StateType.FOCUSABLE)
            if role in IGNORED or not (can_act or can_focus):
                continue
            if not node.get_name():
                faults.append(f"{screen}: a {role} without a name in {self.way_to(node)}")
            if role not in CONTROLS:
                faults.append(f"{screen}: {node.get_name()!r} is a {role} in {self.way_to(node)}")
        return faults

    @staticmethod
    def way_to(node):
        names = []
        while node is not None and node.get_role_name() != "application":
            names.append(node.get_name() or node.get_role_name())
            node = node.get_parent()
        return " > ".join(reversed(names))

    def check(self, screen):
        self.checked += 1
        self.faults += self.faults_of(screen)

    def setUp(self):
        super().setUp()
        self.faults = []
        self.checked = 0

    def test_every_control_of_the_card_has_a_name_and_a_role(self):
        self.check("the chooser")
        press("ctrl+n")
        self.program.node("text", "Dosya adı:")
        self.check("the file panel")
        self.answer_file_panel(self.program.home / "Yeni.kdbx")
        self.program.node("password text", "Parolayı doğrula")
        type_text("abc")
        self.check("the card to seal")
        self.choose_vault()
        self.enter_password("yanlis")
        wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure")
        self.check("the card with a failure")
        self.assertEqual(self.faults, [])
        self.assertEqual(self.checked, 4)

    def test_every_control_of_the_main_window_has_a_name_and_a_role(self):
        self.open_vault()
        self.check("nothing selected")
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+c")
        self.program.button("Temizle")
        self.check("an entry")
        click_with("ctrl", self.program.row("Kayıtlar", "Reddit"))
        self.shows("2 kayıt seçildi")
        self.check("two entries")
        for name in ("Sıralama: Başlık", "Diğer işlemler"):
            click(self.program.button(name))
            self.assertGreater(len(desktop.menu_items()), 2, name)
            press("Escape")
        press("ctrl+f")
        type_text("yokboyle")
        self.shows("Eşleşme yok")
        self.check("no match")
        self.assertEqual(self.faults, [])
        self.assertEqual(self.checked, 4)

    def test_every_control_of_the_sheets_has_a_name_and_a_role(self):
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+e")
        self.program.button("Alan ekle")
        act(self.program.node("check box", "Son kullanma tarihi var"))
        act(self.program.node("check box", "Özel sekans kullan"))
        self.program.push("Alan ekle")
        self.check("the entry editor")
        self.program.push("Simge seç")
        wait_for(lambda: self.program.nodes(name="Posta"), "the icons")
        self.check("the icons")
        press("Escape")
        self.program.push("Vazgeç")
        self.program.is_gone("push button", "Vazgeç")
        press("ctrl+shift+g")
        self.program.node("text", "Grup adı")
        self.check("the group editor")
        press("Escape")
        self.program.is_gone("push button", "Vazgeç")
        press("ctrl+g")
        self.program.button("Yeniden üret")
        self.check("the generator")
        self.assertEqual(self.faults, [])
        self.assertEqual(self.checked, 4)

    def test_every_control_of_the_settings_has_a_name_and_a_role(self):
        press("ctrl+comma")
        self.shows("Otomatik temizleme")
        self.check("the settings")
        self.assertEqual(self.faults, [])

    def test_a_row_tells_its_title_and_what_stands_beside_it(self):
        self.open_vault()
        self.select_group("Sosyal")
        row = self.program.row("Kayıtlar", "LinkedIn")
        self.assertIn("linkedin.com", row.get_description())
        self.assertIn("Süresi dolmuş", row.get_description())
        self.assertEqual(self.program.row("Gruplar", "Sosyal").get_description(), "7 kayıt")

    def test_a_strength_is_told_in_words(self):
        press("ctrl+n")
        self.answer_file_panel(self.program.home / "Yeni.kdbx")
        self.program.node("password text", "Parolayı doğrula")
        type_text("abc")
        wait_for(lambda: self.program.nodes(name="Çok zayıf, 6 bit entropi, 3 karakter"), "the strength in words")

    def test_a_revealed_password_is_no_ones_name_while_it_is_hidden(self):
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")
        password = re.compile(re.escape(self.saved_entry("GitHub")["password"]))
        self.assertFalse(self.program.nodes(name=password))
        told = [node.get_description() for node in self.program.nodes()]
        self.assertFalse([text for text in told if password.search(text)])


if __name__ == "__main__":
    testcase.run()

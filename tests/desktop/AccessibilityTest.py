# SPDX-License-Identifier: MIT
"""What a screen reader meets: in each screen every control has a name and a role that fits what it does."""

import re

import desktop
import testcase
from desktop import (Announcements, Atspi, Events, act, act_by_name, actions_of, children_of, click,
                     click_with, has_state, is_checked, press, text_of, type_text, wait_for)
from testcase import DesktopTest, clipboard_text

# Roles of things to be worked with; something that takes the focus and has another role tells nobody what it is.
CONTROLS = {"push button", "toggle button", "check box", "radio button", "text", "password text", "list", "list item",
            "combo box", "slider", "spin button", "menu item", "check menu item", "radio menu item", "date editor",
            "link", "label", "table cell", "tree", "page tab", "menu", "entry", "calendar", "table",
            "table column header"}
IGNORED = {"separator", "popup menu", "scroll bar"}  # they need no name: nobody goes to them
NAMED = {"dialog", "panel", "image", "status bar", "popup menu", "label"}  # of these the name is all that there is
DOT = "•"
# What one label says is not a mark for the eye alone, such as a lone dot or arrow.
WORDS = re.compile(r"[^\W_]|[" + DOT + "—~]|^→")


class AccessibilityTest(DesktopTest):
    def faults_of(self, screen):
        """Whatever a reader of the screen would stumble over, a line each."""
        faults = []
        for node in self.program.nodes():
            way = f"{screen}: {node.get_role_name()} {node.get_name()!r} in {self.way_to(node)}"
            faults += [f"{way} {fault}" for fault in self.faults_of_node(node)]
        return faults

    def faults_of_node(self, node):
        role, name, states = node.get_role_name(), node.get_name(), node.get_state_set()
        if not states.contains(Atspi.StateType.SHOWING):
            return  # any more
        is_control = node.get_n_actions() > 0 or states.contains(Atspi.StateType.FOCUSABLE)
        if role in ("unknown", "invalid"):
            yield "is nothing that anybody knows"
        if is_control and role not in IGNORED and not name:
            yield "has no name"
        if is_control and role not in IGNORED and role not in CONTROLS:
            yield "can be worked with and does not tell how"
        if role in NAMED and not name and not self.is_of_the_toolkit(node):
            yield "says nothing"
        if role == "label" and name and not WORDS.search(name):
            yield "is for the eye alone"
        if role == "password text" and text_of(node).strip(DOT):
            yield "can be read"
        if states.contains(Atspi.StateType.ENABLED) != states.contains(Atspi.StateType.SENSITIVE):
            yield "is half enabled"
        if role == "list item" and states.contains(Atspi.StateType.SELECTED) and \
                not states.contains(Atspi.StateType.SELECTABLE):
            yield "is selected and can't be"

    def is_of_the_toolkit(self, node):
        """The panel that files are chosen in has boxes for its buttons."""
        return re.match("Veritabanı Aç|Yeni Veritabanı|Anahtar Dosyası|Farklı Kaydet", self.way_to(node)) is not None

    @staticmethod
    def way_to(node):
        names = []
        while node is not None and node.get_role_name() != "application":
            names.append(node.get_name() or node.get_role_name())
            node = node.get_parent()
        return " > ".join(reversed(names))

    def check(self, screen):
        self.checked.append(screen)
        self.faults += self.faults_of(screen)

    def setUp(self):
        super().setUp()
        self.faults = []
        self.checked = []

    def finds_no_fault(self, in_screens):
        self.assertEqual(self.faults, [])
        self.assertEqual(len(self.checked), in_screens, self.checked)


class ControlsTest(AccessibilityTest):
    def test_every_control_of_the_card_has_a_name_and_a_role(self):
        self.visit_each_card(self.check)
        self.finds_no_fault(in_screens=6)

    def test_every_control_of_the_main_window_has_a_name_and_a_role(self):
        self.open_vault()
        self.check("an empty group")
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+c")
        self.program.button("Temizle")
        self.check("an entry with fields of its own")
        self.select_entry("LinkedIn")
        self.shows("Süresi doldu")
        self.check("an expired entry")
        click_with("ctrl", self.program.row("Kayıtlar", "Reddit"))
        self.shows("2 kayıt seçildi")
        self.check("two entries")
        press("ctrl+f")
        type_text("yokboyle")
        self.shows("Eşleşme yok")
        self.check("no match")
        self.program.choose("Yardım", "Brenvik Hakkında")
        self.program.node("dialog", "Brenvik Hakkında")
        self.check("About")
        self.finds_no_fault(in_screens=6)

    def test_every_control_of_the_sheets_has_a_name_and_a_role(self):
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+e")
        self.program.node("dialog", "Kaydı düzenle")
        act(self.program.node("check box", "Son kullanma tarihi var"))
        act(self.program.node("check box", "Özel sekans kullan"))
        self.program.push("Alan ekle")
        self.check("the entry editor")
        self.program.push("Simge seç")
        self.program.button("Posta", within=self.program.node("dialog", "Simge seç"))
        self.check("the icons")
        press("Escape")
        self.program.push("Takvimi aç")
        self.program.button("Önceki ay")
        self.check("the calendar")
        press("Escape")
        self.program.push("Vazgeç")
        self.program.is_gone("push button", "Vazgeç")
        press("ctrl+shift+g")
        self.program.node("text", "Grup adı")
        self.check("the group editor")
        press("Escape")
        self.program.is_gone("push button", "Vazgeç")
        press("ctrl+g")
        generator = self.program.node("dialog", "Parola üreteci")
        self.check("the generator")
        self.program.push("Göster", within=generator)
        self.program.button("Gizle")
        self.check("the generator with its password in the clear")
        self.finds_no_fault(in_screens=6)

    def test_every_control_of_the_settings_has_a_name_and_a_role(self):
        press("ctrl+comma")
        settings = self.program.node("dialog", "Ayarlar")
        self.program.node("slider", "Otomatik temizleme", within=settings)
        self.check("the settings")
        self.program.push("⌥⌘A")
        self.program.button("Tuş kombinasyonuna bas…", within=settings)
        self.check("a recording")
        press("k")
        self.shows("En az bir değiştirici tuş gerekli")
        self.check("a refused key")
        self.finds_no_fault(in_screens=3)

    def test_of_several_numbers_the_one_that_holds_is_checked(self):
        press("ctrl+comma")
        settings = self.program.node("dialog", "Ayarlar")

        def checked():
            return [node.get_name() for node in self.program.nodes("radio button", within=settings) if is_checked(node)]

        self.assertEqual(checked(), ["12 sn", "Kapalı"])
        act(self.program.node("radio button", "30 sn"))
        wait_for(lambda: checked() == ["30 sn", "Kapalı"], "30 seconds checked")
        self.setting_becomes("clipboardTimeout", 30)
        act(self.program.node("radio button", "15 dk"))
        wait_for(lambda: checked() == ["30 sn", "15 dk"], "15 minutes checked")
        self.setting_becomes("lockAfterMinutes", 15)


class MenusTest(AccessibilityTest):
    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")

    def items(self):
        return [item.get_name() for item in children_of(self.program.open_menu())
                if item.get_role_name() != "separator"]

    def choose(self, name):
        menu = self.program.open_menu()
        item = next(item for item in children_of(menu) if item.get_name() == name)
        self.assertTrue(desktop.is_enabled(item), name)
        act(item)
        self.program.has_no_open_menu()

    def test_the_menu_of_an_entry_is_found_and_chosen_from(self):
        click(self.program.row("Kayıtlar", "LinkedIn"), button=3)
        self.assertEqual(self.program.open_menu().get_name(), "LinkedIn")
        self.assertEqual(self.items(), ["Kullanıcı adını kopyala", "Parolayı kopyala", "Adresi kopyala", "Otomatik yaz",
                                        "Adresi tarayıcıda aç", "Düzenle…", "Çoğalt", "Sil", "Gruba taşı…"])
        self.check("the menu of an entry")
        self.choose("Adresi kopyala")
        wait_for(lambda: clipboard_text() == "https://linkedin.com", "the address on the clipboard")
        self.finds_no_fault(in_screens=1)

    def test_the_menu_of_a_group_is_found_and_chosen_from(self):
        act_by_name(self.program.row("Gruplar", "Alışveriş"), "ShowMenu")
        self.assertEqual(self.program.open_menu().get_name(), "Alışveriş")
        self.assertEqual(self.items(), ["Yeni kayıt", "Yeni alt grup", "Grubu düzenle", "Grubu sil", "Genişlet",
                                        "Grubu taşı…"])
        self.choose("Yeni alt grup")
        self.program.node("text", "Grup adı")

    def test_what_the_list_is_sorted_by_is_found_and_chosen(self):
        act(self.program.button("Sıralama: Başlık"))
        menu = self.program.open_menu()
        self.assertEqual(menu.get_name(), "Sıralama")
        self.assertEqual([item.get_name() for item in children_of(menu) if is_checked(item)], ["Başlık", "Artan"])
        self.check("the ways to sort")
        self.choose("Azalan")
        wait_for(lambda: self.program.rows("Kayıtlar")[0] == "YouTube", "the other end first")
        self.finds_no_fault(in_screens=1)

    def test_the_menu_of_further_commands_is_found_and_chosen_from(self):
        act(self.program.button("Diğer işlemler"))
        self.assertEqual(self.program.open_menu().get_name(), "Diğer işlemler")
        self.check("further commands")
        self.choose("Parola üret…")
        self.program.node("dialog", "Parola üreteci")
        self.finds_no_fault(in_screens=1)

    def test_the_menu_of_a_field_is_found_too(self):
        click(self.program.node("text", "Kayıtlarda ara"), button=3)
        self.assertGreater(len(self.items()), 4)
        press("Escape")
        self.program.has_no_open_menu()


class RowsTest(AccessibilityTest):
    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_group("Sosyal")

    def test_a_row_says_its_title_and_what_is_beside_it(self):
        row = self.program.row("Kayıtlar", "LinkedIn")
        self.assertIn("linkedin.com", row.get_description())
        self.assertIn("Süresi dolmuş", row.get_description())
        self.assertEqual(self.program.row("Gruplar", "Sosyal").get_description(), "7 kayıt, düzey 3")

    def test_a_row_offers_what_its_buttons_do(self):
        self.assertEqual(actions_of(self.program.row("Kayıtlar", "LinkedIn")),
                         ["Press", "Kullanıcı adını kopyala", "Parolayı kopyala", "ShowMenu"])
        row = self.program.row("Kayıtlar", "GitHub")
        self.assertIn("Otomatik yaz", actions_of(row))
        act_by_name(row, "Kullanıcı adını kopyala")
        wait_for(lambda: clipboard_text() == "isilkaya", "the user name on the clipboard")
        act_by_name(row, "Parolayı kopyala")
        wait_for(lambda: clipboard_text() == self.saved_entry("GitHub")["password"], "the password on the clipboard")
        self.assertFalse(has_state(row, Atspi.StateType.SELECTED), "nothing is selected by that")
        act_by_name(row, "Press")
        wait_for(lambda: has_state(row, Atspi.StateType.SELECTED), "the row selected")

    def test_a_group_says_whether_it_is_unfolded(self):
        row = self.program.row("Gruplar", "Alışveriş")
        self.assertTrue(has_state(row, Atspi.StateType.EXPANDABLE))
        self.assertFalse(has_state(row, Atspi.StateType.EXPANDED))
        rows = self.program.rows("Gruplar")
        act_by_name(row, "Genişlet")
        wait_for(lambda: has_state(row, Atspi.StateType.EXPANDED), "the group unfolded")
        self.assertGreater(len(self.program.rows("Gruplar")), len(rows))
        act_by_name(row, "Daralt")
        wait_for(lambda: self.program.rows("Gruplar") == rows, "the group folded up")
        self.assertFalse(has_state(self.program.row("Gruplar", "Sosyal"), Atspi.StateType.EXPANDABLE))

    def test_where_the_keyboard_goes_in_a_list_its_row_is_announced(self):
        self.select_entry("GitHub")
        with Events(lambda event: event.detail1 and event.source.get_name(), "object:state-changed:focused") as events:
            press("Tab")
            wait_for(lambda: "Düzenle (Ctrl+E)" in events.heard(), "the focus on the next control")
            press("shift+Tab")
            wait_for(lambda: events.heard()[-1] == "GitHub", "the focus on the row")
        rows = [row for name in ("Gruplar", "Kayıtlar") for row in children_of(self.program.node("list", name))]
        self.assertEqual([row.get_name() for row in rows if has_state(row, Atspi.StateType.FOCUSED)], ["GitHub"])


class SpeechTest(AccessibilityTest):
    """What comes up while the reader is elsewhere is told as a notification that shows, which is spoken at once."""

    def test_a_failure_is_spoken(self):
        self.choose_vault()
        with Announcements() as events:
            self.enter_password("yanlis")
            wait_for(lambda: "Ana parola veya anahtar dosyası hatalı." in events.heard(), "the failure")

    def test_what_a_command_has_done_is_spoken(self):
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")
        with Announcements() as events:
            press("ctrl+b")
            wait_for(lambda: "Kullanıcı adı kopyalandı" in events.heard(), "the confirmation")
            press("ctrl+c")
            wait_for(lambda: "Parola kopyalandı" in events.heard(), "the next one in its place")

    def test_a_strength_is_reported_in_words_and_spoken_when_it_changes(self):
        press("ctrl+n")
        self.answer_file_panel(self.program.home / "Yeni.kdbx")
        self.program.node("password text", "Parolayı doğrula")
        with Announcements() as events:
            type_text("abc")
            wait_for(lambda: self.program.nodes(name="Çok zayıf, 6 bit entropi, 3 karakter"), "the strength in words")
            wait_for(lambda: "Çok zayıf" in events.heard(), "the strength spoken")
            type_text("Kuyruklu-yildiz-42-gece")
            wait_for(lambda: "Çok güçlü" in events.heard(), "the better one spoken")
            self.assertEqual(events.heard().count("Çok zayıf"), 1, "and not with every letter")


class HiddenSecretsTest(AccessibilityTest):
    def told(self):
        """All that goes out about texts."""
        return Events(lambda event: f"{event.source.get_name()} {event.any_data}", "object:text-changed",
                      "object:property-change", "object:text-selection-changed")

    def test_the_letters_of_a_hidden_password_go_out_as_dots(self):
        self.choose_vault()
        with self.told() as events:
            type_text("qxz")
            wait_for(lambda: [text for text in events.heard() if text == f"Ana parola {DOT}"][2:], "three dots")
            press("BackSpace", "ctrl+a", "Delete")
            wait_for(lambda: text_of(self.program.node("password text", "Ana parola")) == "", "the field empty")
            self.assertFalse([text for text in events.heard() if re.search("^Ana parola.*[qxz]", text)])

    def test_no_secret_of_an_entry_goes_out_while_it_is_hidden(self):
        self.open_vault()
        entry = self.saved_entry("GitHub")
        secrets = [entry["password"], dict(entry["customFields"])["Kurtarma kodu"]]
        with self.told() as events:
            self.select_in_group("Sosyal", "GitHub")
            press("ctrl+e")
            self.program.button("Alan ekle")
            wait_for(lambda: f"Parola {DOT * len(entry['password'])}" in events.heard(), "the field's dots told")
            told = events.heard() + [node.get_name() + node.get_description() for node in self.program.nodes()]
            told += [text_of(node) for node in self.program.nodes("password text")]
            press("Escape")
        self.assertEqual([(text, secret) for text in told for secret in secrets if secret in text], [])


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""The program without a mouse and without a screen reader's shortcuts: keys alone."""

import desktop
import testcase
from desktop import choose_in_menu, press, text_of, type_text, wait_for
from testcase import PASSWORD, DesktopTest, clipboard_text, entries_of


class KeyboardTest(DesktopTest):
    def focus_name(self):
        focused = self.program.focused()
        return focused.get_name() if focused else None

    def open_by_keys(self):
        press("ctrl+o")
        self.program.focus_is_on("Dosya adı:")
        type_text(str(self.vault))
        press("Return")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        wait_for(lambda: self.focus_name() and self.program.nodes("list", "Gruplar"), "the main window with a focus")

    def go_to_group(self, name):
        self.tab_to_list("Gruplar")
        self.go_to_first_row("Gruplar")
        for _ in range(20):
            if self.focus_name() == name:
                return
            self.program.press_and_see_focus_move("Down")
        self.fail(f"no group {name}")

    def tab_to_list(self, name):
        rows = desktop.children_of(self.program.node("list", name))
        names = [row.get_name() for row in rows] or [name]
        for _ in range(40):
            focused = self.program.focused()
            if focused and (focused.get_name() == name or
                            focused.get_role_name() == "list item" and focused.get_name() in names):
                return
            self.program.press_and_see_focus_move("Tab")
        self.fail(f"Tab does not reach {name}")

    def go_to_first_row(self, name):
        press("Home")
        wait_for(lambda: self.focus_name() == self.program.rows(name)[0], f"the focus on the first of {name}")

    def go_to_entry(self, title):
        self.tab_to_list("Kayıtlar")
        self.go_to_first_row("Kayıtlar")
        if not self.is_row_selected():
            press("Up")  # there is no row to go to
            wait_for(self.is_row_selected, "a row selected")
        for _ in range(60):
            if self.focus_name() == title:
                return
            self.program.press_and_see_focus_move("Down")
        self.fail(f"no entry {title}")

    def is_row_selected(self):
        focused = self.program.focused()
        return focused and desktop.has_state(focused, desktop.Atspi.StateType.SELECTED)

    def test_a_vault_is_opened_searched_and_its_password_copied(self):
        self.open_by_keys()
        press("ctrl+f")
        self.program.focus_is_on("Kayıtlarda ara")
        type_text("github")
        self.lists(["GitHub"])
        self.go_to_entry("GitHub")
        press("Return")
        wait_for(lambda: clipboard_text() == self.saved_entry("GitHub")["password"], "the password on the clipboard")
        press("ctrl+shift+k")
        wait_for(lambda: clipboard_text() == "", "the clipboard wiped")
        press("Escape")
        self.program.is_gone("label", "Arama sonuçları")

    def test_an_entry_is_made_changed_copied_and_deleted(self):
        self.open_by_keys()
        self.go_to_group("E-posta")
        press("ctrl+i")
        self.program.focus_is_on("Başlık")
        type_text("Tuslarla")
        self.program.tab_to("Kullanıcı adı")
        type_text("tus@example.com")
        self.program.tab_to("Parola")
        type_text("gizli1")
        self.program.tab_to("Oluştur")
        press("Return")
        self.shows("Tuslarla")
        press("ctrl+e")
        self.program.focus_is_on("Başlık")
        press("End")
        type_text(" yeni")
        press("ctrl+Return")
        wait_for(lambda: "Tuslarla yeni" in self.program.rows("Kayıtlar"), "the new title")
        press("ctrl+s")
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")
        entry = self.saved_entry("Tuslarla yeni")
        self.assertEqual((entry["username"], entry["password"]), ("tus@example.com", "gizli1"))

        self.go_to_entry("Tuslarla yeni")
        press("ctrl+Delete")
        wait_for(lambda: "Tuslarla yeni" not in self.program.rows("Kayıtlar"), "the entry gone")
        press("ctrl+z")
        wait_for(lambda: "Tuslarla yeni" in self.program.rows("Kayıtlar"), "the entry again")
        press("ctrl+shift+z")
        wait_for(lambda: "Tuslarla yeni" not in self.program.rows("Kayıtlar"), "the entry gone again")

    def test_a_group_is_made_and_deleted(self):
        self.open_by_keys()
        self.go_to_group("E-posta")
        press("ctrl+shift+g")
        self.program.focus_is_on("Grup adı")
        type_text("Listeler")
        press("Return")
        wait_for(lambda: "Listeler" in self.program.rows("Gruplar"), "the new group")
        self.go_to_group("Listeler")
        press("Menu")
        choose_in_menu("Grubu sil")
        wait_for(lambda: "Listeler" not in self.program.rows("Gruplar"), "the group gone")

    def test_the_menu_bar_is_reached_by_its_letters_and_its_arrows(self):
        self.open_by_keys()
        press("alt+d")
        choose_in_menu("Kasayı Kilitle")
        self.program.focus_is_on("Ana parola")

    def test_the_keys_of_a_text_field_stay_with_the_field(self):
        self.open_by_keys()
        self.go_to_group("Sosyal")
        self.go_to_entry("GitHub")
        self.shows("isilkaya")
        press("ctrl+f")
        type_text("iki kelime")
        self.shows("Arama sonuçları")
        press("shift+Home", "ctrl+c")
        wait_for(lambda: clipboard_text() == "iki kelime", "the selected text on the clipboard")
        press("Home", "ctrl+Delete")
        search = self.program.node("text", "Kayıtlarda ara")
        wait_for(lambda: text_of(search).strip() == "kelime", "a word deleted")
        press("ctrl+z")
        wait_for(lambda: text_of(search) == "iki kelime", "the word again")
        self.assertFalse(self.program.nodes("label", "Kaydedilmemiş değişiklik"), "no entry was deleted")
        press("ctrl+a", "Delete")
        self.go_to_entry("GitHub")  # the search had hidden it
        press("ctrl+c")
        wait_for(lambda: clipboard_text() == self.saved_entry("GitHub")["password"], "the password on the clipboard")

    def test_tab_goes_round_every_screen_and_each_stop_has_a_name(self):
        press("ctrl+o")
        self.program.focus_is_on("Dosya adı:")
        type_text(str(self.vault))
        press("Return")
        self.program.focus_is_on("Ana parola")
        self.walk_tab_chain("the card", at_least=5)
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.go_to_group("Sosyal")
        self.go_to_entry("GitHub")
        self.walk_tab_chain("the main window", at_least=12)
        for key, name in (("ctrl+i", "Başlık"), ("ctrl+e", "Başlık"), ("ctrl+shift+g", "Grup adı")):
            press(key)
            self.program.focus_is_on(name)
            self.walk_tab_chain(f"the sheet of {key}", at_least=5)
            press("Escape")
            self.program.is_gone("push button", "Vazgeç")
        press("ctrl+g")
        self.program.button("Yeniden üret")
        self.walk_tab_chain("the generator", at_least=12)
        press("Escape")
        self.program.is_gone("push button", "Yeniden üret")
        press("ctrl+comma")
        self.shows("Otomatik temizleme")
        self.program.has_keyboard("Ayarlar")
        self.walk_tab_chain("the settings", at_least=8)

    def walk_tab_chain(self, where, at_least):
        def place(node):
            area = node.get_extents(desktop.Atspi.CoordType.SCREEN)
            return node.get_name(), area.x, area.y, area.width, area.height

        # A list's focus is on its current row; the list itself is the stop.
        stops = [place(wait_for(self.program.focused, f"a focus in {where}"))]
        for _ in range(60):
            self.program.press_and_see_focus_move("Tab")
            node = self.program.focused()
            self.assertTrue(node.get_name(), f"in {where}: a {node.get_role_name()} without a name after {stops[-1]}")
            if node.get_name() == stops[0][0] and place(node)[3:] == stops[0][3:]:
                break
            stops.append(place(node))
        else:
            self.fail(f"the chain of Tab in {where} does not come round: {stops}")
        self.assertGreaterEqual(len(stops), at_least, f"stops in {where}: {[stop[0] for stop in stops]}")


if __name__ == "__main__":
    testcase.run()

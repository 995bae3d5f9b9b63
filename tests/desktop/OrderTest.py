# SPDX-License-Identifier: MIT
"""A reader who goes through a screen from one node to the next meets them as the eye does."""

import testcase
from desktop import Atspi, act, children_of, click_with, has_state, press, set_text, type_text, wait_for
from testcase import DesktopTest

ROWS = ("list", "tree")  # their children are rows and cells, which the lists' own objects count


class Placed:
    """A node that shows, and where."""

    def __init__(self, node):
        self.node = node
        self.area = node.get_extents(Atspi.CoordType.SCREEN)
        self.right = self.area.x + self.area.width
        self.bottom = self.area.y + self.area.height

    def has_area(self):
        return self.area.width > 0 and self.area.height > 0

    def is_before(self, other):
        """Whether all of it is above the other and not beside that, or left of it and not above or below."""
        is_in_one_column = self.area.x < other.right and other.area.x < self.right
        is_in_one_line = self.area.y < other.bottom and other.area.y < self.bottom
        return is_in_one_column and self.bottom <= other.area.y or is_in_one_line and self.right <= other.area.x

    def __str__(self):
        area = self.area
        return f"{self.node.get_role_name()} {self.node.get_name()!r} ({area.width}×{area.height}+{area.x}+{area.y})"


def shown_children(node):
    placed = [Placed(child) for child in children_of(node) if has_state(child, Atspi.StateType.SHOWING)]
    return [child for child in placed if child.has_area()]


class OrderTest(DesktopTest):
    def faults(self, node):
        """Siblings of which the later one is seen before the earlier one, and children that are not where they say."""
        children = shown_children(node)
        found = [f"{later} comes after {earlier} in {node.get_role_name()} {node.get_name()!r}"
                 for index, earlier in enumerate(children) for later in children[index + 1:] if later.is_before(earlier)]
        found += [f"{child} is elsewhere in its parent" for child in children
                  if node.get_role_name() not in ROWS and node.get_child_at_index(child.node.get_index_in_parent()) != child.node]
        return found + [fault for child in children if node.get_role_name() not in ROWS for fault in self.faults(child.node)]

    def check(self, screen):
        """What fades or scrolls in comes to its place first."""
        found = []

        def is_in_order():
            found[:] = self.faults(self.program.window)
            return not found

        try:
            wait_for(is_in_order, "an order", patience=10)
        except AssertionError:
            self.fail("\n".join([screen, *found]))

    def names(self, node):
        """What a reader meets in a part of the screen, from its beginning to its end."""
        return [each.get_name() for each in self.program.nodes(within=node) if each.get_name()]

    def reads(self, *names):
        """These follow each other, with nothing between."""
        every = self.names(self.program.window)
        self.assertTrue(any(every[start:start + len(names)] == list(names) for start in range(len(every))),
                        f"{names} in {every}")


class CardTest(OrderTest):
    def test_the_lock_card_is_read_as_it_is_seen(self):
        self.visit_each_card(self.check)

    def test_the_question_is_read_as_it_is_seen(self):
        press("ctrl+n")
        field = self.program.node("text", "Dosya adı:")
        self.program.focus_is_on("Dosya adı:")
        set_text(field, str(self.vault))
        press("Return")
        self.program.button("Evet")
        self.check("the question")


class MainWindowTest(OrderTest):
    def test_the_main_window_is_read_as_it_is_seen(self):
        self.open_vault()
        self.select_group("Kasam")
        self.check("a group without a selected entry")
        self.select_in_group("Sosyal", "GitHub")
        self.reads("Sosyal", "7 kayıt", "Sıralama: Başlık")
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

    def test_what_was_kept_is_read_as_it_is_seen(self):
        self.open_vault()
        self.select_in_group("Sosyal", "Reddit")
        press("Delete")
        self.shows("Kaydedilmemiş değişiklik")
        press("ctrl+q")
        self.program.wait_for_end()
        self.program.start()
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.button("Geri getir")
        self.check("the banner")


class SheetsTest(OrderTest):
    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")

    def test_the_entry_editor_is_read_as_it_is_seen(self):
        press("ctrl+e")
        self.program.node("dialog", "Kaydı düzenle")
        act(self.program.node("check box", "Son kullanma tarihi var"))
        act(self.program.node("check box", "Özel sekans kullan"))
        self.program.push("Alan ekle")
        self.check("the entry editor")
        self.reads("Kaydı düzenle", "GitHub")
        self.program.push("Simge seç")
        self.program.button("Posta", within=self.program.node("dialog", "Simge seç"))
        self.check("the icons")
        press("Escape")
        self.program.is_gone("push button", "Posta")
        self.program.push("Takvimi aç")
        self.program.button("Önceki ay")
        self.check("the calendar")

    def test_the_other_sheets_are_read_as_they_are_seen(self):
        for keys, sheet in (("ctrl+shift+g", "Yeni grup"), ("ctrl+shift+m", "Gruba taşı"),
                            ("ctrl+g", "Parola üreteci")):
            press(keys)
            self.program.node("dialog", sheet)
            self.check(sheet)
            press("Escape")
            self.program.is_gone("dialog", sheet)
        press("ctrl+comma")
        self.program.has_keyboard("Ayarlar")
        self.check("the settings")
        press("Escape")
        self.program.is_gone("dialog", "Ayarlar")
        self.program.choose("Yardım", "Brenvik Hakkında")
        self.program.node("dialog", "Brenvik Hakkında")
        self.check("About")


if __name__ == "__main__":
    testcase.run()

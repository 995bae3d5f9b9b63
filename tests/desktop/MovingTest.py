# SPDX-License-Identifier: MIT
"""Moving entries and groups: to another group by a sheet, in their order by keys, and groups by dragging them."""

import desktop
import testcase
from desktop import (Announcements, Atspi, act, act_by_name, children_of, choose_in_menu, click, click_with, drag,
                     has_state, press, type_text, wait_for)
from testcase import DesktopTest

TARGETS = "Hedef grup"
SHEET = "Gruba taşı"
GROUP_SHEET = "Grubu taşı"


class MovingTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.open_vault()

    def selected(self, list_name):
        return [row.get_name() for row in children_of(self.program.node("list", list_name))
                if has_state(row, Atspi.StateType.SELECTED)]

    def titles_of(self, group):
        return [entry["title"] for entry in self.saved_group(group)["entries"]]

    def groups_in(self, group):
        return [each["name"] for each in self.saved_group(group)["groups"]]

    def is_enabled(self, item):
        return desktop.is_enabled(self.program.menu_item("Kayıt", item))

    def go_to_target(self, name):
        """By the keys that a list has."""
        wait_for(lambda: self.program.focused() and self.program.focused().get_name() in self.program.rows(TARGETS),
                 "the focus among the targets")
        press("Home")
        wait_for(lambda: self.selected(TARGETS) == self.program.rows(TARGETS)[:1], "the first target")
        for _ in range(len(self.program.rows(TARGETS))):
            if self.selected(TARGETS) == [name]:
                return
            before = self.selected(TARGETS)
            press("Down")
            wait_for(lambda: self.selected(TARGETS) != before, f"another target than {before}")
        self.assertEqual(self.selected(TARGETS), [name])


class EntriesTest(MovingTest):
    def test_an_entry_is_moved_by_keys_alone(self):
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+shift+m")
        sheet = self.program.node("dialog", SHEET)
        self.assertEqual(self.selected(TARGETS), ["Sosyal"], "it begins where the entry is")
        self.assertFalse(desktop.is_enabled(self.program.button("Taşı", sheet)), "the entry is there already")
        press("Return")
        self.program.node("dialog", SHEET)
        self.go_to_target("Kapanan hesaplar")  # which is folded away in the column
        press("Return")
        self.program.is_gone("dialog", SHEET)
        wait_for(lambda: "GitHub" not in self.program.rows("Kayıtlar"), "the entry gone from its group")
        wait_for(lambda: self.program.focused() and self.program.focused().get_name() in self.program.rows("Kayıtlar"),
                 "the focus back in the list")
        press("Down")
        wait_for(lambda: self.selected("Kayıtlar") == ["LinkedIn"], "the keys go on where it was")
        self.program.menu_item("Düzen", "Geri Al — Kayıtları Taşı")
        self.save()
        self.assertEqual(self.titles_of("Kapanan hesaplar"), ["GitHub"])
        press("ctrl+z")
        wait_for(lambda: "GitHub" in self.program.rows("Kayıtlar"), "the entry back")

    def test_several_entries_are_moved_by_the_menu_and_the_button(self):
        self.select_in_group("Sosyal", "GitHub")
        click_with("ctrl", self.program.row("Kayıtlar", "Reddit"))
        self.shows("2 kayıt seçildi")
        self.program.choose("Kayıt", "Gruba Taşı…")
        sheet = self.program.node("dialog", SHEET)
        self.program.node("label", "2 kayıt", sheet)
        click(self.program.row(TARGETS, "E-posta"))
        self.program.push("Taşı", sheet)
        self.program.is_gone("dialog", SHEET)
        self.save()
        self.assertEqual(set(self.titles_of("E-posta")[-2:]), {"GitHub", "Reddit"})

    def test_an_entry_is_moved_from_its_rows_menu_and_by_a_double_click(self):
        self.select_in_group("Sosyal", "GitHub")
        click(self.program.row("Kayıtlar", "Reddit"), button=3)
        choose_in_menu("Gruba taşı…")
        self.program.node("label", "Reddit", self.program.node("dialog", SHEET))
        click(self.program.row(TARGETS, "E-posta"), times=2)
        self.program.is_gone("dialog", SHEET)
        self.save()
        self.assertEqual(self.titles_of("E-posta")[-1], "Reddit")
        self.assertIn("GitHub", self.titles_of("Sosyal"))

    def test_an_entry_is_moved_by_a_screen_reader(self):
        self.select_in_group("Sosyal", "GitHub")
        act(self.program.menu_item("Kayıt", "Gruba Taşı…"))
        sheet = self.program.node("dialog", SHEET)
        act_by_name(self.program.row(TARGETS, "E-posta"), "Press")
        act(self.program.button("Taşı", sheet))
        self.program.is_gone("dialog", SHEET)
        self.save()
        self.assertEqual(self.titles_of("E-posta")[-1], "GitHub")

    def test_escape_and_cancel_move_nothing_and_give_the_focus_back(self):
        self.select_in_group("Sosyal", "GitHub")
        for way_out in ("Escape", "Vazgeç"):
            press("ctrl+shift+m")
            self.program.node("dialog", SHEET)
            self.go_to_target("E-posta")
            if way_out == "Escape":
                press("Escape")
            else:
                self.program.push("Vazgeç")
            self.program.is_gone("dialog", SHEET)
            self.program.focus_is_on("GitHub")
        self.assertFalse(self.program.nodes("label", "Kaydedilmemiş değişiklik"))

    def test_the_lock_takes_the_sheet_along(self):
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+shift+m")
        self.program.node("dialog", SHEET)
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.program.is_gone("dialog", SHEET)
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.assertFalse(self.program.nodes("dialog", SHEET))

    def test_entries_go_up_and_down_by_keys(self):
        self.select_in_group("Sosyal", "Mastodon")
        rows = self.program.rows("Kayıtlar")
        with Announcements() as spoken:
            press("alt+Up")
            spoken.say("Kendi sıralamana geçildi.")
        self.lists([*rows[:3], "Mastodon", "LinkedIn", *rows[5:]])
        self.program.focus_is_on("Mastodon")
        self.assertEqual(self.selected("Kayıtlar"), ["Mastodon"])
        press("alt+Down", "alt+Down")
        self.lists([*rows[:4], "Reddit", "Mastodon", "YouTube"])
        self.program.choose("Kayıt", "Aşağı Taşı")
        self.lists([*rows[:4], "Reddit", "YouTube", "Mastodon"])
        press("alt+Down")  # there is nothing below
        self.program.choose("Kayıt", "Yukarı Taşı")
        self.lists([*rows[:4], "Reddit", "Mastodon", "YouTube"])
        self.save()
        self.assertEqual([title or "Adsız kayıt" for title in self.titles_of("Sosyal")],
                         [*rows[:4], "Reddit", "Mastodon", "YouTube"])

    def test_a_search_offers_no_order_but_a_move(self):
        self.select_in_group("Sosyal", "GitHub")
        press("ctrl+f")
        type_text("github")
        self.lists(["GitHub"])
        self.assertFalse(self.is_enabled("Yukarı Taşı"))
        self.assertTrue(self.is_enabled("Gruba Taşı…"))
        press("ctrl+shift+m")
        self.program.node("dialog", SHEET)
        self.go_to_target("E-posta")
        press("Return")
        self.program.is_gone("dialog", SHEET)
        self.save()
        self.assertEqual(self.titles_of("E-posta")[-1], "GitHub")


class GroupsTest(MovingTest):
    def test_a_group_is_moved_by_keys_alone(self):
        self.select_group("E-posta")
        press("alt+k")
        choose_in_menu("Grubu Taşı…")
        sheet = self.program.node("dialog", GROUP_SHEET)
        self.program.node("label", "E-posta", sheet)
        self.assertNotIn("E-posta", self.program.rows(TARGETS), "it cannot be put into itself")
        self.go_to_target("Kapanan hesaplar")
        press("Return")
        self.program.is_gone("dialog", GROUP_SHEET)
        self.save()
        self.assertEqual(self.groups_in("Kapanan hesaplar"), ["E-posta"])
        self.program.menu_item("Düzen", "Geri Al — Grubu Taşı")

    def test_a_group_is_moved_from_its_rows_menu(self):
        self.select_group("Sosyal")
        act_by_name(self.program.row("Gruplar", "Bankacılık"), "ShowMenu")
        choose_in_menu("Grubu taşı…")
        self.program.node("dialog", GROUP_SHEET)
        self.assertNotIn("Kapanan hesaplar", self.program.rows(TARGETS), "nor into what it holds")
        self.go_to_target("E-posta")
        press("Return")
        self.program.is_gone("dialog", GROUP_SHEET)
        wait_for(lambda: "Bankacılık" in self.program.rows("Gruplar"), "the group in its new place, to be seen")
        self.save()
        self.assertEqual(self.groups_in("E-posta"), ["Bankacılık"])

    def test_the_root_stays_where_it_is(self):
        self.select_group("Kasam")
        for item in ("Grubu Taşı…", "Yukarı Taşı", "Aşağı Taşı"):
            self.assertFalse(self.is_enabled(item), item)
        act_by_name(self.program.row("Gruplar", "Kasam"), "ShowMenu")
        item = next(item for item in children_of(self.program.open_menu()) if item.get_name() == "Grubu taşı…")
        self.assertFalse(desktop.is_enabled(item))
        press("Escape")

    def test_a_group_goes_up_and_down_by_keys(self):
        self.select_group("E-posta")
        groups = self.groups_in("Kasam")
        place = groups.index("E-posta")
        press("alt+Down")
        groups[place:place + 2] = reversed(groups[place:place + 2])
        self.shows("Kaydedilmemiş değişiklik")
        self.program.focus_is_on("E-posta")
        self.save()
        self.assertEqual(self.groups_in("Kasam"), groups)
        press("alt+Up", "alt+Up")
        groups[place - 1:place + 2] = ["E-posta", groups[place - 1], groups[place]]
        self.shows("Kaydedilmemiş değişiklik")
        wait_for(lambda: self.selected("Gruplar") == ["E-posta"], "the group still selected")
        self.save()
        self.assertEqual(self.groups_in("Kasam"), groups)

    def test_a_group_is_dragged_into_another(self):
        self.select_group("Kasam")
        drag(self.program.row("Gruplar", "E-posta"), self.program.row("Gruplar", "Bankacılık"))
        self.shows("Kaydedilmemiş değişiklik")
        self.save()
        self.assertIn("E-posta", self.groups_in("Bankacılık"))
        self.assertNotIn("E-posta", self.groups_in("Kasam"))
        press("ctrl+z")
        self.save()
        self.assertIn("E-posta", self.groups_in("Kasam"))

    def test_a_group_is_not_dragged_into_what_it_holds_nor_the_root_anywhere(self):
        self.select_group("Bankacılık")
        press("Right")
        inner = self.program.row("Gruplar", "Kapanan hesaplar")
        drag(self.program.row("Gruplar", "Bankacılık"), inner)
        drag(self.program.row("Gruplar", "Kasam"), self.program.row("Gruplar", "Sosyal"))
        drag(self.program.row("Gruplar", "Sosyal"), self.program.node("text", "Kayıtlarda ara"))
        self.select_group("Sosyal")
        self.assertFalse(self.program.nodes("label", "Kaydedilmemiş değişiklik"))
        self.assertEqual(desktop.text_of(self.program.node("text", "Kayıtlarda ara")), "")


if __name__ == "__main__":
    testcase.run()

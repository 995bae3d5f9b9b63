# SPDX-License-Identifier: MIT
"""The built program on a real display, worked as its user works it."""

import argparse
import json
import pathlib
import shutil
import subprocess
import sys
import unittest

import desktop
from desktop import click, press, type_text, wait_for

options = argparse.Namespace()
VAULT = "v09-4.0-chacha20-argon2id"
PASSWORD = "parola"


def probe(request):
    """The probe's answer, which reads vaults without the program."""
    run = subprocess.run([options.probe], input=json.dumps(request) + "\n", capture_output=True, text=True, check=True)
    answer = json.loads(run.stdout)
    assert answer["ok"], answer
    return answer["result"]


def groups_of(group):
    yield group
    for child in group["groups"]:
        yield from groups_of(child)


def entries_of(root):
    return [entry for group in groups_of(root) for entry in group["entries"]]


class FirstWindowTest(unittest.TestCase):
    maxDiff = 4000

    def setUp(self):
        self.program = desktop.Program(options.program)
        self.vault = self.program.home / "Kasam.kdbx"
        shutil.copy(options.vaults / f"{VAULT}.kdbx", self.vault)
        self.vault.chmod(0o600)
        self.program.start()

    def tearDown(self):
        result = self._outcome.result
        if any(test is self for test, _ in result.failures + result.errors):
            picture = options.pictures / f"{self._testMethodName}.png"
            desktop.Display.picture(picture)
            print(f"picture of the display: {picture}", file=sys.stderr)
        self.program.stop()

    # Steps

    def choose_vault(self):
        press("ctrl+o")
        self.program.node("label", "Dosya adı:")
        type_text(str(self.vault))
        press("Return")
        self.program.focus_is_on("Ana parola")

    def enter_password(self, password=PASSWORD):
        type_text(password)
        press("Return")

    def open_vault(self):
        self.choose_vault()
        self.enter_password()
        self.program.node("list", "Gruplar")

    def load(self, file=None):
        return probe({"op": "load", "file": str(file or self.vault), "password": PASSWORD, "keyFile": None})

    def load_as_saved_unchanged(self):
        """What a save of the unchanged vault holds: it puts some foreign elements in an order of its own."""
        saved = self.program.home / "degismeden.kdbx"
        probe({"op": "save", "file": str(self.vault), "password": PASSWORD, "keyFile": None, "to": str(saved)})
        return self.load(saved)

    def select_group_with_entries(self):
        group = next(group for group in self.load()["root"]["groups"] if group["entries"])
        click(self.program.row("Gruplar", group["name"] or "Adsız grup"))
        shown = [entry["title"] or "Adsız kayıt" for entry in group["entries"]]
        wait_for(lambda: sorted(self.program.rows("Kayıtlar")) == sorted(shown), f"the rows {shown}")
        return group

    def rename_first_entry(self, title):
        first = self.program.rows("Kayıtlar")[0]
        click(self.program.row("Kayıtlar", first))
        self.program.push("Başlığı değiştir")
        field = self.program.node("text", "Başlık")
        desktop.set_text(field, title)
        press("Return")
        wait_for(lambda: title in self.program.rows("Kayıtlar"), "the new title in the list")
        return first

    # Tests

    def test_a_vault_opens_by_keyboard_and_shows_its_groups_and_entries(self):
        self.open_vault()
        vault = self.load()
        names = [group["name"] or "Adsız grup" for group in groups_of(vault["root"])]
        wait_for(lambda: set(self.program.rows("Gruplar")) <= set(names) and self.program.rows("Gruplar")[0] == names[0],
                 "the vault's groups")
        self.select_group_with_entries()

    def test_a_changed_title_reaches_the_file_and_nothing_else_changes(self):
        untouched = self.load()
        expected = self.load_as_saved_unchanged()
        self.open_vault()
        self.select_group_with_entries()
        old_title = self.rename_first_entry("Değiştirilmiş başlık")
        self.assertEqual(self.load(), untouched, "an edit lives in memory alone")

        press("ctrl+s")
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")

        after = self.load()
        changed = next(entry for entry in entries_of(after["root"]) if entry["title"] == "Değiştirilmiş başlık")
        former = next(entry for entry in entries_of(expected["root"]) if entry["id"] == changed["id"])
        self.assertEqual(former["title"], old_title)
        self.assertEqual(changed["historyItems"][-1], {**former, "historyItems": []})
        self.assertEqual(changed["historyItems"][:-1], former["historyItems"])
        self.assertGreater(changed["modified"], former["modified"])
        for field in ("title", "modified", "historyItems"):
            changed[field] = former[field]
        self.assertEqual(after, expected)

    def test_a_wrong_password_is_told_and_the_right_one_still_opens(self):
        self.choose_vault()
        self.enter_password("yanlis")
        wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure in words")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_the_last_vault_is_there_at_the_next_start_and_no_secret_is_kept(self):
        self.open_vault()
        self.program.end()
        settings = (self.program.home / "config" / "brenvik" / "settings.json").read_text()
        self.assertNotIn(PASSWORD, settings)

        self.program.start()

        self.program.node("label", "Kasam.kdbx")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_a_termination_signal_is_a_normal_end_that_saves_nothing(self):
        content = self.vault.read_bytes()
        self.open_vault()
        self.select_group_with_entries()
        self.rename_first_entry("Kaydedilmeyecek")
        self.assertEqual(self.program.end(), 0)
        self.assertEqual(self.vault.read_bytes(), content)

    def test_locking_saves_and_asks_for_the_password_again(self):
        self.open_vault()
        self.select_group_with_entries()
        self.rename_first_entry("Kilitlenmeden once")
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.assertIn("Kilitlenmeden once", [entry["title"] for entry in entries_of(self.load()["root"])])

    def test_every_stop_of_the_tab_key_has_a_name(self):
        self.choose_vault()
        self.walk_tab_chain(at_least=5)
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.select_group_with_entries()
        click(self.program.row("Kayıtlar", self.program.rows("Kayıtlar")[0]))
        self.walk_tab_chain(at_least=4)

    def walk_tab_chain(self, at_least):
        def place(node):
            area = node.get_extents(desktop.Atspi.CoordType.SCREEN)
            return area.x, area.y, area.width, area.height

        first = wait_for(self.program.focused, "something focused")
        # A list's focus is on its current row; the list itself is the stop.
        stops = [place(first)]
        for _ in range(60):
            press("Tab")
            wait_for(lambda: self.program.focused() and place(self.program.focused()) != stops[-1], "the focus to move")
            node = self.program.focused()
            self.assertTrue(node.get_name(), f"a {node.get_role_name()} without a name after {len(stops)} stops")
            if place(node) == stops[0]:
                break
            stops.append(place(node))
        else:
            self.fail("the chain of Tab does not come round")
        self.assertGreaterEqual(len(stops), at_least)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for option in ("program", "probe", "vaults", "pictures"):
        parser.add_argument(f"--{option}", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    display = desktop.Display()
    try:
        run = unittest.main(argv=[sys.argv[0], *rest], exit=False, verbosity=2)
    finally:
        display.stop()
    sys.exit(0 if run.result.wasSuccessful() and run.result.testsRun > 0 else 1)

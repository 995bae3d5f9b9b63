# SPDX-License-Identifier: MIT
"""What every test of the window starts from, and the steps that a user takes again and again."""

import argparse
import json
import pathlib
import shutil
import subprocess
import sys
import unittest

import desktop
from desktop import click, press, set_text, type_text, wait_for

options = argparse.Namespace()
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


def entries_of(group):
    return [entry for each in groups_of(group) for entry in each["entries"]]


def clipboard_text():
    """What another program would paste."""
    return subprocess.run(["xclip", "-out", "-selection", "clipboard"], capture_output=True, text=True).stdout


class DesktopTest(unittest.TestCase):
    maxDiff = 4000
    settings_at_start = {}

    def setUp(self):
        self.program = desktop.Program(options.program)
        self.addCleanup(self.program.stop)
        self.addCleanup(self.keep_evidence_of_failure)  # before that, also where a step up to the test itself fails
        self.settings_file = self.program.home / "config" / "brenvik" / "settings.json"
        if self.settings_at_start:
            self.settings_file.parent.mkdir(parents=True, mode=0o700)
            self.settings_file.write_text(json.dumps(self.settings_at_start))
        self.vault = self.program.home / "Kasam.kdbx"
        self.place_vault()
        self.program.start()

    def place_vault(self):
        """A vault for the program to open."""
        subprocess.run([options.demo_vault, self.vault], check=True)

    def keep_evidence_of_failure(self):
        result = self._outcome.result
        if any(test is self for test, _ in result.failures + result.errors):
            self.keep_evidence()

    def keep_evidence(self):
        name = f"{type(self).__name__}.{self._testMethodName}"
        picture = options.pictures / f"{name}.png"
        tree = options.pictures / f"{name}.txt"
        desktop.Display.picture(picture)
        try:
            tree.write_text(desktop.tree_as_text(self.program.window))
        except Exception as failure:  # the program may be gone
            tree.write_text(str(failure))
        print(f"the display: {picture}\nits accessible tree: {tree}", file=sys.stderr)

    # The vault and the settings as they are on disk

    def load(self, file=None, password=PASSWORD, key_file=None):
        return probe({"op": "load", "file": str(file or self.vault), "password": password,
                      "keyFile": str(key_file) if key_file else None})

    def saved_entry(self, title):
        return next((entry for entry in entries_of(self.load()["root"]) if entry["title"] == title), None)

    def saved_group(self, name):
        return next((group for group in groups_of(self.load()["root"]) if group["name"] == name), None)

    def settings(self):
        """What is stored, which is nothing before the first change."""
        return json.loads(self.settings_file.read_text()) if self.settings_file.exists() else {}

    def setting_becomes(self, key, value):
        wait_for(lambda: self.settings().get(key) == value, f"{key} to be stored as {value}")

    # Opening

    def answer_file_panel(self, file):
        field = self.program.node("text", "Dosya adı:")
        self.program.focus_is_on("Dosya adı:")  # a panel is shown some time before it has the keyboard
        set_text(field, str(file))
        press("Return")
        self.program.is_gone("text", "Dosya adı:")

    def choose_vault(self):
        press("ctrl+o")
        self.answer_file_panel(self.vault)
        self.program.focus_is_on("Ana parola")

    def visit_each_card(self, check):
        """Calls `check` with the name of each state of the lock card, from the first screen to a failed opening."""
        check("the chooser")
        press("ctrl+n")
        self.program.node("text", "Dosya adı:")
        check("the file panel")
        self.answer_file_panel(self.program.home / "Yeni.kdbx")
        self.program.node("password text", "Parolayı doğrula")
        type_text("abc")
        check("the card to seal")
        self.program.push("Dosya seç…")
        self.answer_file_panel(self.vault)
        self.program.button("Kaldır")
        check("the card with a key file")
        self.choose_vault()
        check("the card to open")
        self.enter_password("yanlis")
        wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure")
        check("the card with a failure")

    def enter_password(self, password=PASSWORD):
        type_text(password)
        press("Return")

    def open_vault(self):
        self.choose_vault()
        self.enter_password()
        self.program.node("list", "Gruplar")

    # In the main window

    def select_group(self, name):
        click(self.program.row("Gruplar", name))
        wait_for(lambda: any(desktop.has_state(row, desktop.Atspi.StateType.SELECTED) and row.get_name() == name
                             for row in desktop.children_of(self.program.node("list", "Gruplar"))), f"{name} selected")

    def select_entry(self, title):
        click(self.program.row("Kayıtlar", title), from_left=0.4)
        self.shows(title)

    def select_in_group(self, group, title):
        self.select_group(group)
        self.select_entry(title)

    def shows(self, text):
        """Waits for a label."""
        return self.program.node("label", text)

    def lists(self, titles):
        wait_for(lambda: self.program.rows("Kayıtlar") == titles, f"the rows {titles}")

    def save(self):
        press("ctrl+s")
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")


def run(on_display=desktop.Display):
    """Runs the tests of the calling file on a display of their own; with none, each class sees to its own."""
    parser = argparse.ArgumentParser()
    for option in ("program", "probe", "demo-vault", "vaults", "pictures"):
        parser.add_argument(f"--{option}", type=lambda path: pathlib.Path(path).resolve(), required=True)
    _, rest = parser.parse_known_args(namespace=options)
    display = on_display() if on_display else None
    try:
        outcome = unittest.main(argv=[sys.argv[0], *rest], exit=False, verbosity=2)
    finally:
        if display:
            display.stop()
    sys.exit(0 if outcome.result.wasSuccessful() and outcome.result.testsRun > 0 else 1)


def copy_vault(name, to):
    shutil.copy(options.vaults / f"{name}.kdbx", to)
    to.chmod(0o600)

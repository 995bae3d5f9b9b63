# SPDX-License-Identifier: MIT
"""Where a secret goes that is shown and that a user takes along: onto the clipboard as a secret, and nowhere else."""

import subprocess

import testcase
from desktop import act, choose_in_menu, click, press, text_of, wait_for
from testcase import DesktopTest

HINT = "x-kde-passwordManagerHint"
BEFORE = "önceki"


def put(selection, text):
    """As another program does."""
    subprocess.run(["xclip", "-in", "-selection", selection], input=text, text=True, check=True,
                   stdout=subprocess.DEVNULL)
    wait_for(lambda: read(selection) == text, f"{text} on {selection}")


def read(selection, target="UTF8_STRING"):
    return subprocess.run(["xclip", "-out", "-selection", selection, "-target", target], capture_output=True,
                          text=True).stdout


class SecretsTest(DesktopTest):
    settings_at_start = {"clipboardTimeout": 5}

    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_in_group("Sosyal", "GitHub")
        self.entry = self.saved_entry("GitHub")
        self.forget_selections()

    def forget_selections(self):
        put("clipboard", BEFORE)
        put("primary", BEFORE)

    def edit(self):
        press("ctrl+e")
        self.program.button("Alan ekle")
        return self.program.node("password text", "Parola")

    def shown_password(self):
        """The editor's field with its secret in the clear, and the keyboard in it."""
        field = self.edit()
        act(self.program.button("Göster", within=field))
        field = self.program.node("text", "Parola")
        click(field, from_left=0.3)
        self.program.focus_is_on("Parola")
        return field

    def is_copied_as_a_secret(self, secret):
        wait_for(lambda: read("clipboard") == secret, "the secret on the clipboard")
        self.assertIn(HINT, read("clipboard", "TARGETS"))
        self.assertEqual(read("primary"), BEFORE)

    def is_nowhere(self):
        self.assertEqual(read("clipboard"), BEFORE)
        self.assertEqual(read("primary"), BEFORE)

    def test_whichever_way_a_shown_password_is_copied_it_is_a_secret(self):
        field = self.shown_password()

        def by_context_menu():
            press("Menu")
            choose_in_menu("Kopyala")

        for copy in (lambda: press("ctrl+c"), lambda: press("ctrl+Insert"), by_context_menu,
                     lambda: self.program.choose("Düzen", "Kopyala")):
            press("ctrl+a")
            copy()
            self.is_copied_as_a_secret(self.entry["password"])
            self.forget_selections()
        self.assertEqual(text_of(field), self.entry["password"])

    def test_whichever_way_a_shown_password_is_cut_it_is_a_secret(self):
        field = self.shown_password()

        def by_context_menu():
            press("Menu")
            choose_in_menu("Kes")

        for cut in (lambda: press("ctrl+x"), lambda: press("shift+Delete"), by_context_menu,
                    lambda: self.program.choose("Düzen", "Kes")):
            press("ctrl+a")
            cut()
            self.is_copied_as_a_secret(self.entry["password"])
            wait_for(lambda: text_of(field) == "", "the field empty")
            press("ctrl+v")
            wait_for(lambda: text_of(field) == self.entry["password"], "the password again")
            self.forget_selections()

    def test_selecting_and_deleting_put_a_shown_password_nowhere(self):
        field = self.shown_password()
        press("Home", "shift+End", "ctrl+shift+Left", "ctrl+a")
        self.is_nowhere()
        click(field, times=2, from_left=0.2)
        self.is_nowhere()
        press("Home", "ctrl+k")
        wait_for(lambda: text_of(field) == "", "the line deleted")
        self.is_nowhere()
        press("ctrl+z")
        wait_for(lambda: text_of(field) == self.entry["password"], "the password again")
        press("ctrl+u")
        wait_for(lambda: text_of(field) == "", "the line deleted")
        self.is_nowhere()

    def test_a_hidden_password_is_not_copied_at_all(self):
        click(self.edit(), from_left=0.3)
        press("ctrl+a", "ctrl+c", "ctrl+Insert", "ctrl+x")
        self.is_nowhere()

    def test_a_shown_custom_field_is_copied_as_a_secret(self):
        self.edit()
        field = self.program.node("password text", "Değer")
        act(self.program.button("Göster", within=field))
        wait_for(lambda: text_of(field) == dict(self.entry["customFields"])["Kurtarma kodu"], "the value")
        field.grab_focus()  # which brings it into sight
        self.program.focus_is_on("Değer")
        press("ctrl+a")
        self.program.choose("Düzen", "Kopyala")
        self.is_copied_as_a_secret(text_of(field))

    def test_the_detail_copies_a_shown_secret_as_a_secret_and_wipes_it(self):
        for name, secret in (("Parola", self.entry["password"]),
                             ("Kurtarma kodu", dict(self.entry["customFields"])["Kurtarma kodu"])):
            self.of_field("Göster", name)
            shown = self.program.node("label", secret)
            click(shown, times=2)
            self.is_nowhere()
            self.of_field("Kopyala", name)
            self.is_copied_as_a_secret(secret)
            wait_for(lambda: read("clipboard") == "", "the clipboard wiped", patience=15)
            targets = read("clipboard", "TARGETS").split()
            self.assertIn(HINT, targets)
            self.assertIn("UTF8_STRING", targets)
            self.assertFalse([target for target in targets if "nspasteboard" in target])
            self.assertEqual(read("primary"), BEFORE)
            self.forget_selections()

    def of_field(self, button, field):
        act(next(node for node in self.program.nodes("push button", button) if node.get_description() == field))


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""Two copies of the program at once, which know nothing of each other: neither a setting nor a vault is harmed."""

import pathlib
import shutil
import subprocess
import sys

import desktop
import testcase
from AutoTypeTest import bring_to_front
from desktop import Atspi, act, press, set_text, wait_for
from gi.repository import Gio
from testcase import DesktopTest, entries_of



def accessibility_bus():
    return Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, Gio.DBusCallFlags.NONE,
        -1).unpack()[0]


class CopiesTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.first = self.program
        self.second = desktop.Program(testcase.options.program)
        shutil.rmtree(self.second.home)
        self.second.home = self.first.home
        self.addCleanup(self.second.stop)
        self.second.start(DBUS_SESSION_BUS_ADDRESS=self.another_bus())

    def another_bus(self):
        bus = subprocess.Popen([sys.executable, pathlib.Path(__file__).with_name("fake_accessibility.py"),
                                accessibility_bus()], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.addCleanup(bus.communicate)
        return bus.stdout.readline().strip()

    def use(self, copy):
        self.program = copy
        found = wait_for(lambda: subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--pid", str(copy.process_id())], capture_output=True,
            text=True).stdout.split(), "its window")
        bring_to_front(int(found[-1]))

    def each(self):
        for copy in (self.first, self.second):
            self.use(copy)
            yield copy


class SettingsOfTwoTest(CopiesTest):
    def open_settings(self):
        for _ in self.each():
            press("ctrl+comma")
            self.program.has_keyboard("Ayarlar")

    def set_timeout(self, copy, seconds):
        Atspi.Value.set_current_value(copy.node("slider", "Otomatik temizleme"), seconds)

    def set_sequence(self, copy, sequence):
        set_text(copy.node("text", "Varsayılan tuş sekansı"), sequence)

    def test_what_each_has_changed_is_stored(self):
        self.open_settings()
        for seconds in range(5, 30, 5):
            self.set_timeout(self.first, seconds)
            self.set_sequence(self.second, "{TAB}" * seconds)
            self.setting_becomes("clipboardTimeout", seconds)
            self.setting_becomes("defaultAutoTypeSequence", "{TAB}" * seconds)

    def test_of_one_setting_the_last_change_counts_and_the_others_stay(self):
        self.open_settings()
        self.set_sequence(self.second, "{PASSWORD}")
        self.setting_becomes("defaultAutoTypeSequence", "{PASSWORD}")
        for seconds in (20, 40):
            for copy in (self.first, self.second):
                self.set_timeout(copy, seconds + (copy is self.second))
                self.setting_becomes("clipboardTimeout", seconds + (copy is self.second))
        self.assertEqual(self.settings()["defaultAutoTypeSequence"], "{PASSWORD}")
        self.assertEqual(self.settings_file.stat().st_mode & 0o777, 0o600)


class VaultOfTwoTest(CopiesTest):
    def open_everywhere(self):
        for _ in self.each():
            self.open_vault()

    def delete(self, title):
        found = self.program.node("text", "Kayıtlarda ara")
        set_text(found, title)
        self.lists([title])
        self.select_entry(title)
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")
        set_text(found, "")

    def save_button(self, copy):
        return copy.button("Kaydet (⌘S)")

    def is_saved(self, copy):
        copy.is_gone("label", "Kaydedilmemiş değişiklik")

    def versions(self):
        """The titles in each version of the vault that is on the disk."""
        return [{entry["title"] for entry in entries_of(self.load(file)["root"])}
                for file in self.program.home.glob("*.kdbx")]

    def test_what_one_has_saved_is_kept_beside_the_others(self):
        self.open_everywhere()
        self.use(self.first)
        self.delete("GitHub")
        self.save()
        self.use(self.second)
        self.shows("“Kasam.kdbx” diskte değişti. Yeni hâli için kasayı kilitleyip yeniden aç.")
        self.delete("Reddit")
        self.save()
        self.assertIsNone(self.saved_entry("Reddit"))
        self.assertIsNotNone(self.saved_entry("GitHub"))
        self.assertEqual(len(self.versions()), 2)
        self.assertTrue(any("GitHub" not in titles and "Reddit" in titles for titles in self.versions()))

    def test_saves_at_one_moment_leave_each_version_on_the_disk(self):
        self.open_everywhere()
        deleted = {self.first: set(), self.second: set()}
        for titles in (("GitHub", "Reddit"), ("LinkedIn", "Mastodon"), ("YouTube", "Terzi")):
            for copy, title in zip(self.each(), titles):
                self.delete(title)
                deleted[copy].add(title)
            for copy in deleted:
                act(self.save_button(copy))
            for copy in deleted:
                self.is_saved(copy)
            for copy, gone in deleted.items():
                others = set().union(*deleted.values()) - gone
                self.assertTrue(any(not gone & version and others <= version for version in self.versions()),
                                f"the version without {gone} among {self.versions()}")


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""What the program writes of its own: in the folders of the XDG Base Directory Specification, for its user alone, and
nowhere else."""

import os
import stat

import desktop
import testcase
from desktop import act, press, set_text
from testcase import DesktopTest

PASSWORD = "uzun bir parola 12"


class PrivateFilesTest(DesktopTest):
    variables = {}

    def setUp(self):
        self.program = desktop.Program(testcase.options.program)
        self.addCleanup(self.program.stop)
        self.addCleanup(self.keep_evidence_of_failure)
        self.settings_file = self.program.home / self.config / "brenvik" / "settings.json"
        self.vault = self.program.home / "Kasalar" / "Kasam.kdbx"
        self.vault.parent.mkdir()
        self.place_vault()
        self.vault.chmod(0o600)
        self.start()

    def start(self):
        """The most that a user's umask lets others have."""
        usual = os.umask(0)
        try:
            self.program.start(**self.paths())
        finally:
            os.umask(usual)

    def paths(self):
        return {name: folder and str(self.program.home / folder) for name, folder in self.variables.items()}

    def whole_session(self):
        """Every thing that writes a file: settings, panels, a new vault, unsaved work, kept versions, a save, a copy."""
        press("ctrl+comma")
        self.program.has_keyboard("Ayarlar")
        act(self.program.node("radio button", "30 sn"))
        self.setting_becomes("clipboardTimeout", 30)
        press("Escape")
        press("ctrl+n")
        self.answer_file_panel(self.vault.with_name("Yeni.kdbx"))
        for field in ("Ana parola", "Parolayı doğrula"):
            set_text(self.program.node("password text", field), PASSWORD)
        self.program.push("Kasayı oluştur")
        self.program.node("list", "Gruplar")
        self.open_vault()
        self.select_in_group("Sosyal", "Reddit")
        press("ctrl+c")
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")
        other = self.vault.read_bytes() + b"x"
        self.vault.write_bytes(other)
        self.save()
        press("ctrl+z")
        self.shows("Kaydedilmemiş değişiklik")
        press("ctrl+shift+s")
        self.answer_file_panel(self.vault.with_name("Kopya.kdbx"))
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")
        press("ctrl+shift+z")
        self.shows("Kaydedilmemiş değişiklik")
        self.assertEqual(self.program.end(), 0)

    def files(self):
        return sorted(path for path in self.program.home.rglob("*") if path != self.vault.parent)

    def check(self):
        self.whole_session()
        home = self.program.home
        own = [home / self.config / "brenvik", home / self.state / "brenvik"]
        for path in self.files():
            allowed = 0o700 if path.is_dir() else 0o600
            self.assertEqual(stat.S_IMODE(path.lstat().st_mode) & ~allowed, 0, f"{path} is for its owner alone")
            is_ours = any(folder == path or folder in path.parents or path in folder.parents for folder in own)
            self.assertTrue(is_ours or path.parent == self.vault.parent, f"{path} has no business there")
        self.assertTrue(self.settings_file.exists())
        self.assertTrue(list(own[1].iterdir()), "unsaved work is kept")
        self.assertEqual(len(list(self.vault.parent.iterdir())), 4, "the vaults, and the version that was kept")


class UsualFoldersTest(PrivateFilesTest):
    variables = {"XDG_CONFIG_HOME": None, "XDG_STATE_HOME": None, "XDG_CACHE_HOME": None, "XDG_DATA_HOME": None}
    config = ".config"
    state = ".local/state"

    def test_a_whole_session_leaves_what_is_its_users_alone(self):
        self.check()


class NamedFoldersTest(PrivateFilesTest):
    variables = {"XDG_CONFIG_HOME": "adlı/ayar", "XDG_STATE_HOME": "adlı/durum", "XDG_CACHE_HOME": "adlı/önbellek",
                 "XDG_DATA_HOME": "adlı/veri"}
    config = "adlı/ayar"
    state = "adlı/durum"

    def test_a_whole_session_leaves_what_is_its_users_alone(self):
        self.check()


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""A start without a window: it cannot have one, or is asked for none."""

import os
import subprocess
import tempfile
import unittest

import testcase

LINE = ("Brenvik açılamadı: ekrana bağlanılamıyor. Grafik oturumunda başlat; DISPLAY, WAYLAND_DISPLAY ve QT_QPA_PLATFORM "
        "değişkenlerine bak.\n")

HELP = """Kullanım: brenvik [SEÇENEK] [DOSYA]

Parola kasanı açar. Brenvik zaten çalışıyorsa penceresi öne gelir ve DOSYA orada açılır.

  DOSYA       açılacak .kdbx kasası
  --dbus      bir istek gelene kadar penceresiz bekler; masaüstü böyle başlatır
  --help      bu yardımı gösterir
  --version   sürümü gösterir
"""


class Start(unittest.TestCase):
    def start(self, *arguments, **variables):
        """What a start without a display says, and its exit status."""
        with tempfile.TemporaryDirectory() as home:
            environment = {name: value for name, value in os.environ.items()
                           if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
            environment.update(HOME=home, XDG_CONFIG_HOME=home, XDG_RUNTIME_DIR=home, LANG="C.UTF-8", **variables)
            run = subprocess.run([testcase.options.program, *arguments], env=environment, capture_output=True, text=True,
                                 timeout=120)
            self.assertEqual(os.listdir(home), [], "nothing is written by a start that failed")
        return run.stdout + run.stderr, run.returncode


class StartTest(Start):
    def test_without_a_display_it_says_so_in_one_line(self):
        self.assertEqual(self.start(), (LINE, 1))

    def test_also_where_the_display_is_not_to_be_reached(self):
        for variables in ({"DISPLAY": ":4711"}, {"DISPLAY": "nonsense"}, {"DISPLAY": ":4711", "QT_QPA_PLATFORM": "xcb"},
                          {"WAYLAND_DISPLAY": "wayland-4711"},
                          {"WAYLAND_DISPLAY": "wayland-4711", "QT_QPA_PLATFORM": "wayland"}):
            with self.subTest(variables):
                self.assertEqual(self.start(**variables), (LINE, 1))

    def test_also_on_an_unknown_platform(self):
        for platform in ("nonsense", "xcb;wayland", ":"):
            with self.subTest(platform):
                self.assertEqual(self.start(QT_QPA_PLATFORM=platform), (LINE, 1))
        self.assertEqual(self.start("-platform", "nonsense"), (LINE, 1))


class CommandLineTest(Start):
    def test_the_version_is_said(self):
        said, status = self.start("--version")
        self.assertRegex(said, r"^Brenvik \d+\.\d+\.\d+\n$")
        self.assertEqual(status, 0)

    def test_help_is_given(self):
        self.assertEqual(self.start("--help"), (HELP, 0))
        self.assertEqual(self.start("Kasam.kdbx", "--help"), (HELP, 0))

    def test_what_does_not_exist_is_refused(self):
        for option in ("--yok", "-h", "--help=1", "--Version"):
            with self.subTest(option):
                self.assertEqual(self.start(option), (
                    f"Brenvik: “{option}” diye bir seçenek yok. Seçenekler için: brenvik --help\n", 2))
        self.assertEqual(self.start(""), ("Brenvik: dosya adı boş olamaz. Seçenekler için: brenvik --help\n", 2))

    def test_a_file_may_be_named_like_an_option(self):
        self.assertEqual(self.start("--", "--version"), (LINE, 1))

    def test_what_qt_leaves_is_refused_too(self):
        self.assertEqual(self.start("-yok", QT_QPA_PLATFORM="offscreen"), (
            "Brenvik: “-yok” diye bir seçenek yok. Seçenekler için: brenvik --help\n", 2))


if __name__ == "__main__":
    testcase.run(on_display=None)

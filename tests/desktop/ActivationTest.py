# SPDX-License-Identifier: MIT
"""One program in a session: what the desktop and further starts ask of the one that runs."""

import os
import pathlib
import shutil
import socket
import subprocess
import tempfile

import desktop
import testcase
from AutoTypeTest import ACCOUNT, NAME, NO_MATCH, SECRET, Terminal, bring_to_front, is_in_front
from DerivationTest import SLOW_ROUNDS
from desktop import act, press, set_text, type_text, wait_for, xdotool
from gi.repository import Gio, GLib
from testcase import DesktopTest

BUS_NAME = "org.brenvik.Brenvik"
OBJECT = "/org/brenvik/Brenvik"
INTERFACE = "org.freedesktop.Application"
KEPT = "Kaydedilmeyenler şifreli olarak saklanır; bu kasayı yeniden açınca geri getirebilirsin."
UNSAVED = f"Açık kasada kaydedilmemiş değişiklikler var. {KEPT}"
FORM = f"Açık kasada yarım kalmış bir form var. {KEPT}"
BOTH = f"Açık kasada kaydedilmemiş değişiklikler ve yarım kalmış bir form var. {KEPT}"
QUESTION = "“Öteki kasa.kdbx” açılsın mı?"


def call(method, signature, *values, bus=None):
    bus = bus or Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync(BUS_NAME, OBJECT, INTERFACE, method, GLib.Variant(signature, values), None,
                         Gio.DBusCallFlags.NO_AUTO_START, 20_000)


def activate(**platform_data):
    call("Activate", "(a{sv})", {key.replace("_", "-"): GLib.Variant("s", value)
                                 for key, value in platform_data.items()})


def open_uris(*uris):
    call("Open", "(asa{sv})", list(uris), {})


def perform(action):
    call("ActivateAction", "(sava{sv})", action, [], {})


def windows_named(name):
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{name}$"], capture_output=True,
                          text=True).stdout.split()


class ActivationTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.own_window = int(wait_for(lambda: windows_named("Brenvik"), "the program's window")[-1])
        self.other_vault = self.program.home / "Öteki kasa.kdbx"
        shutil.copy(self.vault, self.other_vault)

    def start_again(self, *arguments, **variables):
        """A further start, which has nothing of its own to do."""
        run = subprocess.run([testcase.options.program, *arguments], env=self.program.environment(**variables),
                             capture_output=True, text=True, timeout=60, cwd=self.program.home)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))

    def another_window_in_front(self, title="Haberler"):
        terminal = Terminal(title)
        self.addCleanup(terminal.stop)
        return terminal

    def is_in_front(self):
        wait_for(lambda: is_in_front(self.own_window), "the program's window in front")

    def stays_behind(self, terminal):
        activate()  # answered after what was asked before
        self.is_in_front()
        bring_to_front(terminal.window)

    def shows_card_of(self, name):
        self.shows(name)
        self.program.focus_is_on("Ana parola")

    def delete_an_entry(self):
        self.select_in_group("Sosyal", "Reddit")
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")


class SecondStartTest(ActivationTest):
    def test_the_window_comes_to_the_front(self):
        self.another_window_in_front()
        self.start_again()
        self.is_in_front()
        self.assertEqual(len(windows_named("Brenvik")), 1)

    def test_it_comes_back_from_where_it_was_minimised(self):
        xdotool("windowminimize", self.own_window)
        wait_for(lambda: not is_in_front(self.own_window), "the window to be gone")
        self.start_again()
        self.is_in_front()

    def test_a_path_is_opened_there_whatever_it_is_written_like(self):
        folder = self.program.home / "Kasalar ğüş%20"
        folder.mkdir()
        names = {"Boşluklu ad.kdbx": "relative", "100% #?.kdbx": "absolute", "--gizli.kdbx": "behind the options"}
        for name, how in names.items():
            with self.subTest(how):
                self.another_window_in_front()
                shutil.copy(self.vault, folder / name)
                given = {"relative": [f"Kasalar ğüş%20/{name}"], "absolute": [folder / name],
                         "behind the options": ["--", f"Kasalar ğüş%20/../Kasalar ğüş%20/{name}"]}
                self.start_again(*given[how])
                self.shows_card_of(name)
                self.is_in_front()
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_a_path_that_is_no_text_is_opened_too(self):
        path = bytes(self.program.home) + b"/\xff\xfe.kdbx"
        shutil.copy(self.vault, path)
        self.start_again(path)
        self.program.is_gone("label", "Henüz bir kasa yok")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")

    def test_of_several_vaults_the_first_is_opened_and_the_others_are_said(self):
        self.start_again(self.other_vault, self.vault)
        self.shows_card_of("Öteki kasa.kdbx")
        wait_for(lambda: self.program.nodes(name="Aynı anda tek kasa açılır; öteki dosyalar açılmadı."), "the notice")

    def test_the_vault_that_is_open_already_stays_as_it_is(self):
        self.open_vault()
        self.select_in_group("Sosyal", "Reddit")
        self.another_window_in_front()
        link = self.program.home / "bağ.kdbx"
        link.symlink_to(self.vault)
        for path in (self.vault, link):
            self.start_again(path)
            self.is_in_front()
            self.shows("Reddit")

    def test_a_launcher_hears_that_what_it_started_is_there(self):
        with subprocess.Popen(["xev", "-root", "-event", "property"], stdout=subprocess.PIPE, text=True) as watcher:
            self.another_window_in_front()
            watcher.stdout.readline()  # a change of windows, which it sees once it watches
            self.start_again(DESKTOP_STARTUP_ID="dosyalar/brenvik/1-2-makine_TIME4711")
            self.assertTrue(any("_NET_STARTUP_INFO_BEGIN" in line for line in watcher.stdout))
            watcher.kill()

    def test_what_ends_at_that_moment_leaves_the_name_to_the_next(self):
        self.program.end()
        self.program.start()
        self.start_again()


class BusTest(ActivationTest):
    def test_open_takes_files_of_this_machine(self):
        self.another_window_in_front()
        open_uris(self.other_vault.as_uri())
        self.shows_card_of("Öteki kasa.kdbx")
        self.is_in_front()
        open_uris("sftp://uzak.example/Kasa.kdbx")
        wait_for(lambda: self.program.nodes(name="Yalnızca bu bilgisayardaki dosyalar açılabilir."), "the notice")
        self.shows("Öteki kasa.kdbx")

    def test_the_desktops_own_launcher_reaches_it(self):
        subprocess.run(["gapplication", "launch", BUS_NAME, self.other_vault], check=True)
        self.shows_card_of("Öteki kasa.kdbx")
        subprocess.run(["gapplication", "action", BUS_NAME, "generate"], check=True)
        self.program.button("Yeniden üret")

    def test_the_generator_comes_to_the_front_and_leaves_a_form_alone(self):
        self.open_vault()
        self.another_window_in_front()
        perform("generate")
        self.program.button("Yeniden üret")
        self.is_in_front()
        press("Escape")
        self.program.is_gone("push button", "Yeniden üret")
        press("ctrl+i")
        set_text(self.program.node("text", "Başlık"), "Yarım")
        perform("generate")
        activate()
        self.assertEqual(desktop.text_of(self.program.node("text", "Başlık")), "Yarım")
        self.assertEqual(self.program.nodes("push button", "Yeniden üret"), [])

    def test_a_lock_saves_and_leaves_the_window_where_it_is(self):
        self.open_vault()
        self.delete_an_entry()
        terminal = self.another_window_in_front()
        perform("lock")
        self.program.node("password text", "Ana parola")
        self.assertTrue(is_in_front(terminal.window))
        self.assertIsNone(self.saved_entry("Reddit"))
        perform("lock")  # what is locked stays so
        self.stays_behind(terminal)

    def test_a_save_leaves_the_window_where_it_is(self):
        self.open_vault()
        self.delete_an_entry()
        terminal = self.another_window_in_front()
        perform("save")
        self.program.is_gone("label", "Kaydedilmemiş değişiklik")
        self.assertTrue(is_in_front(terminal.window))
        self.assertIsNone(self.saved_entry("Reddit"))

    def test_auto_type_does_what_the_hot_key_does(self):
        terminal = self.another_window_in_front(f"{ACCOUNT} - Gezgin")
        perform("auto-type")  # locked, it is silent
        activate()
        self.is_in_front()
        self.open_vault()
        bring_to_front(terminal.window)
        perform("auto-type")
        terminal.receives(f"{NAME}\t{SECRET}\r")
        self.assertTrue(is_in_front(terminal.window))
        another = self.another_window_in_front()
        perform("auto-type")
        self.shows(NO_MATCH)
        self.assertTrue(is_in_front(another.window))

    def test_an_action_that_does_not_exist_is_refused(self):
        with self.assertRaises(GLib.Error) as refusal:
            perform("delete-all")
        self.assertIn("InvalidArgs", refusal.exception.message)


class QuestionTest(ActivationTest):
    """Another vault is asked for while there is unsaved work."""

    def setUp(self):
        super().setUp()
        self.open_vault()
        self.content = self.vault.read_bytes()

    def ask(self, text=UNSAVED):
        open_uris(self.other_vault.as_uri())
        self.program.node("dialog", QUESTION)
        self.shows(text)

    def is_answered(self):
        self.program.is_gone("dialog", QUESTION)

    def is_as_it_was(self):
        self.is_answered()
        self.shows("Kaydedilmemiş değişiklik")
        self.program.node("list", "Gruplar")
        self.assertEqual(self.vault.read_bytes(), self.content)

    def is_kept(self):
        return list((self.program.home / "state" / "brenvik").glob("*"))

    def test_it_stays_open_by_escape_and_by_its_button(self):
        self.delete_an_entry()
        for way in (lambda: press("Escape"), lambda: self.program.push("Vazgeç")):
            self.ask()
            self.program.focus_is_on("Kaydet ve aç")
            way()
            self.is_as_it_was()
        press("ctrl+z")
        self.program.row("Kayıtlar", "Reddit")

    def test_return_saves_it_and_opens_the_other(self):
        self.delete_an_entry()
        self.ask()
        press("Return")
        self.shows_card_of("Öteki kasa.kdbx")
        self.assertIsNone(self.saved_entry("Reddit"))
        self.assertEqual(self.is_kept(), [])

    def test_so_does_the_button_and_the_other_vault_opens(self):
        self.delete_an_entry()
        self.ask()
        self.program.push("Kaydet ve aç")
        self.shows_card_of("Öteki kasa.kdbx")
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.select_in_group("Sosyal", "Reddit")

    def test_without_saving_the_file_stays_and_the_work_is_kept(self):
        self.delete_an_entry()
        self.ask()
        self.program.tab_to("Kaydetmeden aç", key="shift+Tab")
        press("Return")
        self.shows_card_of("Öteki kasa.kdbx")
        self.assertEqual(self.vault.read_bytes(), self.content)
        open_uris(self.vault.as_uri())
        self.shows_card_of("Kasam.kdbx")
        self.enter_password()
        self.program.push("Geri getir")
        self.shows("Kaydedilmemiş değişiklik")

    def test_what_cannot_be_saved_stays_open(self):
        self.delete_an_entry()
        self.vault.chmod(0o400)
        shutil.rmtree(self.other_vault.parent / "yok", ignore_errors=True)
        self.ask()
        self.vault.unlink()
        self.vault.mkdir()
        press("Return")
        self.is_answered()
        self.shows("Kaydedilmemiş değişiklik")
        self.program.node("list", "Gruplar")

    def test_a_form_is_asked_about_and_kept(self):
        press("ctrl+i")
        set_text(self.program.node("text", "Başlık"), "Yarım")
        self.ask(FORM)
        self.assertEqual(self.program.nodes("push button", "Kaydet ve aç"), [])
        press("Escape")
        self.is_answered()
        self.program.focus_is_on("Başlık")
        self.assertEqual(desktop.text_of(self.program.node("text", "Başlık")), "Yarım")
        self.ask(FORM)
        press("Return")
        self.shows_card_of("Öteki kasa.kdbx")
        self.assertNotEqual(self.is_kept(), [])

    def test_a_form_over_unsaved_work_is_named_too(self):
        self.delete_an_entry()
        press("ctrl+i")
        set_text(self.program.node("text", "Başlık"), "Yarım")
        self.ask(BOTH)
        act(self.program.button("Kaydet ve aç"))
        self.shows_card_of("Öteki kasa.kdbx")
        self.assertIsNone(self.saved_entry("Reddit"))
        self.assertNotEqual(self.is_kept(), [])

    def test_an_empty_form_and_a_saved_vault_are_left_without_a_question(self):
        press("ctrl+i")
        self.program.node("text", "Başlık")
        open_uris(self.other_vault.as_uri())
        self.shows_card_of("Öteki kasa.kdbx")

    def test_a_lock_takes_the_question_away(self):
        self.delete_an_entry()
        self.ask()
        perform("lock")
        self.shows_card_of("Kasam.kdbx")
        self.is_answered()
        self.assertIsNone(self.saved_entry("Reddit"))

    def test_a_file_panel_is_waited_for(self):
        press("ctrl+shift+s")
        self.program.node("text", "Dosya adı:")
        open_uris(self.other_vault.as_uri())
        activate()
        self.program.focus_is_on("Dosya adı:")
        press("Escape")
        self.shows_card_of("Öteki kasa.kdbx")

    def test_what_lies_behind_is_out_of_reach(self):
        self.delete_an_entry()
        self.ask()
        press("ctrl+i")
        for _ in range(5):
            press("Tab")
        self.assertIn(self.program.focused().get_name(), ("Vazgeç", "Kaydetmeden aç", "Kaydet ve aç"))
        self.assertEqual(self.program.nodes("text", "Başlık"), [])


class DerivingTest(ActivationTest):
    """A vault is asked for while a key is derived."""

    def place_vault(self):
        subprocess.run([testcase.options.demo_vault, self.vault, "0", str(SLOW_ROUNDS)], check=True)

    def test_it_is_opened_once_the_other_one_is(self):
        self.choose_vault()
        self.enter_password()
        self.program.node("progress bar", "Anahtar türetiliyor")
        open_uris(self.other_vault.as_uri())
        self.shows_card_of("Öteki kasa.kdbx")
        self.assertEqual(self.program.nodes("list", "Gruplar"), [])


class NotStartedTest(DesktopTest):
    """A vault in a home, and no program yet."""

    def setUp(self):
        self.program = desktop.Program(testcase.options.program)
        self.addCleanup(self.program.stop)
        self.addCleanup(self.keep_evidence_of_failure)
        self.vault = self.program.home / "Kasam.kdbx"
        self.place_vault()


class ServiceTest(NotStartedTest):
    """Started by the bus."""

    def has_name(self):
        return Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
            "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "NameHasOwner", GLib.Variant("(s)", (BUS_NAME,)), None,
            Gio.DBusCallFlags.NONE, -1).unpack()[0]

    def launch(self):
        self.program.launch("--dbus")
        wait_for(self.has_name, "the program on the bus")

    def test_the_window_comes_with_the_first_wish_for_it(self):
        self.launch()
        self.assertEqual(windows_named("Brenvik"), [])
        open_uris(self.vault.as_uri())
        self.program.appears()
        self.shows("Kasam.kdbx")

    def test_without_a_window_it_ends_after_what_it_was_started_for(self):
        self.launch()
        perform("lock")
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_it_ends_when_nothing_is_asked_of_it(self):
        self.launch()
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_beside_a_program_that_runs_it_ends_at_once(self):
        self.program.start()
        run = subprocess.run([testcase.options.program, "--dbus"], env=self.program.environment(), timeout=60)
        self.assertEqual(run.returncode, 0)

    def test_a_bus_starts_it_by_its_service_file(self):
        with tempfile.TemporaryDirectory() as folder:
            services = pathlib.Path(folder) / "dbus-1" / "services"
            services.mkdir(parents=True)
            (services / f"{BUS_NAME}.service").write_text(
                f"[D-BUS Service]\nName={BUS_NAME}\nExec={testcase.options.program} --dbus\n")
            environment = self.program.environment(XDG_DATA_HOME=folder)
            with subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], env=environment,
                                  stdout=subprocess.PIPE, text=True) as daemon:
                try:
                    address = daemon.stdout.readline().strip()
                    subprocess.run(["gdbus", "call", "--address", address, "--dest", BUS_NAME, "--object-path", OBJECT,
                                    "--method", f"{INTERFACE}.Open", f"['{self.vault.as_uri()}']", "{}"],
                                   check=True, capture_output=True)
                    wait_for(lambda: windows_named("Brenvik"), "the window")
                finally:
                    daemon.terminate()
            for window in windows_named("Brenvik"):
                xdotool("windowclose", window)


class WithoutBusTest(DesktopTest):
    """By the display alone, since a screen reader needs a bus too."""

    def setUp(self):
        self.programs = []

    def start(self, address):
        program = desktop.Program(testcase.options.program)
        self.addCleanup(program.stop)
        program.launch(DBUS_SESSION_BUS_ADDRESS=address)
        self.programs.append(program)
        wait_for(lambda: len(windows_named("Brenvik")) == len(self.programs), "a window of its own")

    def test_each_start_has_a_window_of_its_own(self):
        for _ in range(2):
            self.start("unix:path=/nowhere")

    def test_a_bus_that_does_not_answer_holds_nothing_up(self):
        with tempfile.TemporaryDirectory() as folder, socket.socket(socket.AF_UNIX) as bus:
            bus.bind(f"{folder}/bus")
            bus.listen()
            self.start(f"unix:path={folder}/bus")


class PathTest(NotStartedTest):
    """A start with a path while no other program runs."""

    def test_the_card_is_the_vaults(self):
        self.program.start(self.vault)
        self.shows("Kasam.kdbx")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")


if __name__ == "__main__":
    testcase.run(on_display=lambda: desktop.Display(manager=os.environ.get("BRENVIK_WINDOW_MANAGER", "openbox")))

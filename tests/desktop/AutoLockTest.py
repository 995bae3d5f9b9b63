# SPDX-License-Identifier: MIT
"""What locks the vault besides its user, and what the session's end waits for."""

import os
import re
import time

import testcase
from desktop import act, click, press, set_text, type_text, wait_for, xdotool
from sessionbuses import Bus, Logind, Portal, ScreenSaver, SessionManager
from testcase import DesktopTest

UNSAVED = "Kaydedilmemiş değişiklikler var"
STAYS_OPEN = re.compile("^Kasa otomatik kilitlenmedi, çünkü değişiklikler kaydedilemedi. .+")
SCREEN_SAVERS = [f"org.{desktop}.ScreenSaver" for desktop in ("freedesktop", "gnome", "cinnamon", "mate", "xfce")]
LOG_OUT = 1


class SessionTest(DesktopTest):
    portal_can_inhibit = True

    def setUp(self):
        session = os.environ["DBUS_SESSION_BUS_ADDRESS"]
        self.system_bus = Bus()
        self.addCleanup(self.system_bus.stop)
        self.logind = self.started(Logind(self.system_bus.address))
        self.portal = self.started(Portal(session, can_inhibit=self.portal_can_inhibit))
        self.manager = self.started(SessionManager(session))
        self.screen_saver = self.started(ScreenSaver(session, "org.brenvik.test.ScreenSaver"))
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.system_bus.address
        self.addCleanup(os.environ.pop, "DBUS_SYSTEM_BUS_ADDRESS")
        super().setUp()
        wait_for(lambda: self.logind.held("sleep") and self.portal.monitor, "the program to have asked both buses")

    def started(self, service):
        self.addCleanup(service.stop)
        return service

    def is_locked(self):
        self.program.focus_is_on("Ana parola")

    def is_open(self):
        self.program.node("list", "Gruplar")

    def unlock(self):
        self.enter_password()
        self.is_open()

    def change_unsaved(self):
        self.select_in_group("Sosyal", "Reddit")
        self.program.choose("Kayıt", "Sil")
        self.shows("Kaydedilmemiş değişiklik")

    def copies(self):
        return len(list((self.program.home / "state" / "brenvik").glob("*.kdbx")))

    def titles(self):
        return [entry["title"] for entry in testcase.entries_of(self.load()["root"])]


class SourcesTest(SessionTest):
    def each_locks(self, sources):
        self.choose_vault()
        for name, happen in sources.items():
            with self.subTest(name):
                self.unlock()
                happen()
                self.is_locked()

    def test_what_logind_says_of_the_session_locks(self):
        self.each_locks({"Lock": self.logind.lock_session,
                         "another user": lambda: self.logind.change(Active=False),
                         "LockedHint": lambda: self.logind.change(LockedHint=True),
                         "sleep": self.logind.sleep,
                         "shutdown": self.logind.shut_down,
                         "the session's end": self.logind.remove_session})

    def test_each_screen_saver_locks(self):
        self.each_locks({name: lambda name=name: self.screen_saver.set_active(name) for name in SCREEN_SAVERS})

    def test_what_the_portal_says_of_the_session_locks(self):
        def change_screen_saver():
            self.portal.change(screen_saver=True)

        def end():
            self.portal.change(session=1)
            self.portal.change(session=2)
            wait_for(lambda: self.portal.called("QueryEndResponse"), "the answer to the query")
            self.portal.change(session=3)

        self.each_locks({"the screen saver": change_screen_saver, "the session's end": end})
        self.assertEqual(self.portal.called("QueryEndResponse"), [(self.portal.monitor,)])

    def test_all_at_once_lock_once_and_the_vault_stays_open_after_the_return(self):
        self.open_vault()
        self.screen_saver.set_active(SCREEN_SAVERS[0])
        self.portal.change(screen_saver=True)
        self.logind.lock_session()
        self.logind.change(LockedHint=True)
        self.logind.sleep()
        wait_for(lambda: not self.logind.held("sleep"), "the last one to be answered")
        self.is_locked()
        self.screen_saver.set_active(SCREEN_SAVERS[0], False)
        self.portal.change()
        self.logind.change(LockedHint=False, Active=True)
        self.unlock()
        self.logind.sleep(False)
        wait_for(lambda: self.logind.held("sleep"), "the return to be answered")
        self.is_open()

    def test_what_others_do_locks_nothing(self):
        self.open_vault()
        other = "/org/freedesktop/login1/session/_32"
        self.logind.lock_session(other)
        self.logind.change(other, Active=False)
        self.logind.change(Active=True, IdleHint=True)
        self.logind.sleep(False)
        self.screen_saver.set_active(SCREEN_SAVERS[0], False)
        self.portal.change(session=2)
        wait_for(lambda: self.portal.called("QueryEndResponse"), "the last one to be answered")
        self.is_open()

    def test_who_has_switched_it_off_stays_open(self):
        press("ctrl+comma")
        act(self.program.node("check box", "Oturum kilitlenince kasayı da kilitle"))
        self.setting_becomes("lockWithSession", False)
        press("Escape")
        self.program.is_gone("dialog", "Ayarlar")
        self.open_vault()
        self.screen_saver.set_active(SCREEN_SAVERS[0])
        self.logind.lock_session()
        self.logind.sleep()
        wait_for(lambda: not self.logind.held("sleep"), "sleep to go on")
        self.is_open()


class SleepTest(SessionTest):
    def test_it_waits_until_what_is_unsaved_is_saved_and_locked(self):
        self.open_vault()
        self.change_unsaved()
        self.logind.sleep()
        wait_for(lambda: not self.logind.held("sleep"), "sleep to go on")
        self.assertNotIn("Reddit", self.titles())
        self.is_locked()
        self.logind.sleep(False)
        wait_for(lambda: self.logind.held("sleep"), "the next sleep to wait as well")
        self.unlock()
        self.logind.sleep()
        self.is_locked()

    def test_what_cannot_be_saved_keeps_the_vault_open_and_says_why(self):
        self.open_vault()
        self.change_unsaved()
        self.vault.chmod(0o400)
        self.logind.sleep()
        self.program.node("label", STAYS_OPEN)
        wait_for(lambda: not self.logind.held("sleep"), "sleep to go on all the same")
        self.is_open()
        self.shows("Kaydedilmemiş değişiklik")
        self.assertIn("Reddit", self.titles())
        self.assertEqual(self.copies(), 1, "a copy exists as well")
        self.vault.chmod(0o600)
        self.save()
        self.logind.lock_session()
        self.is_locked()

    def test_an_open_form_is_kept(self):
        self.open_vault()
        self.select_in_group("Sosyal", "Reddit")
        press("ctrl+e")
        self.program.node("text", "Başlık")
        self.program.focus_is_on("Başlık")
        press("End")
        type_text(" yarim")
        self.logind.sleep()
        self.is_locked()
        self.unlock()
        self.program.push("Geri getir")
        self.program.is_gone("push button", "Geri getir")
        self.save()
        self.assertIsNotNone(self.saved_entry("Reddit yarim"))


class WhatIsOpenTest(SessionTest):
    """The vault is locked over whatever shows, and comes back in working order."""

    def locks_over(self, show):
        self.open_vault()
        show()
        self.logind.lock_session()
        wait_for(lambda: not self.program.nodes("list", "Gruplar"), "the lock")
        press("Escape")  # whatever stays, such as the settings, is left by it
        self.program.node("password text", "Ana parola")
        set_text(self.program.node("password text", "Ana parola"), testcase.PASSWORD)
        self.program.push("Kilidi aç")
        self.is_open()

    def test_a_menu(self):
        self.locks_over(lambda: press("alt+d"))

    def test_a_rows_menu(self):
        def show():
            self.select_in_group("Sosyal", "Reddit")
            press("Menu")
            self.program.node("menu item", re.compile("Kullanıcı"))
        self.locks_over(show)

    def test_the_menu_of_a_field_in_a_sheet(self):
        for name, role in (("Başlık", "text"), ("Parola", "password text")):
            with self.subTest(name):
                def show():
                    self.select_in_group("Sosyal", "Reddit")
                    press("ctrl+e")
                    click(self.program.node(role, name), button=3)
                    self.program.node("menu item", re.compile("^Tümünü"))
                self.locks_over(show)
                press("ctrl+shift+w")
                self.shows("Henüz bir kasa yok")

    def test_the_settings(self):
        def show():
            press("ctrl+comma")
            self.program.has_keyboard("Ayarlar")
        self.locks_over(show)

    def test_the_generator(self):
        def show():
            press("ctrl+g")
            self.program.node("dialog", "Parola üreteci")
        self.locks_over(show)

    def test_a_file_panel(self):
        def show():
            press("ctrl+shift+s")
            self.program.node("text", "Dosya adı:")
        self.locks_over(show)


class LogOutTest(SessionTest):
    def test_the_desktop_is_told_of_unsaved_changes_as_long_as_there_are_any(self):
        self.open_vault()
        self.assertEqual(self.portal.called("Inhibit"), [])
        self.change_unsaved()
        wait_for(lambda: self.portal.called("Inhibit") and self.logind.held("shutdown"), "both to be told")
        (_, flags, options), = self.portal.called("Inhibit")
        self.assertEqual((flags, options["reason"]), (LOG_OUT, UNSAVED))
        self.assertEqual([lock.reason for lock in self.logind.held("shutdown")], [UNSAVED])
        self.assertEqual(self.portal.called("Close"), [])

        self.save()
        wait_for(lambda: self.portal.called("Close") and not self.logind.held("shutdown"), "both given back")
        self.assertEqual(self.manager.calls, [])

    def test_a_lock_gives_it_back(self):
        self.open_vault()
        self.change_unsaved()
        wait_for(lambda: self.portal.called("Inhibit") and self.logind.held("shutdown"), "both to be told")
        press("ctrl+l")
        wait_for(lambda: self.portal.called("Close") and not self.logind.held("shutdown"), "both given back")

    def test_the_end_waits_until_what_is_unsaved_is_saved(self):
        self.open_vault()
        self.change_unsaved()
        wait_for(lambda: self.logind.held("shutdown"), "the end to wait")
        self.logind.shut_down()
        wait_for(lambda: not self.logind.held("shutdown"), "the end to go on")
        self.assertNotIn("Reddit", self.titles())

    def test_the_end_does_not_wait_for_what_cannot_be_saved(self):
        self.open_vault()
        self.change_unsaved()
        wait_for(lambda: self.logind.held("shutdown"), "the end to wait")
        self.vault.chmod(0o400)
        self.logind.shut_down()
        wait_for(lambda: not self.logind.held("shutdown"), "the end to go on")
        self.assertEqual(self.copies(), 1)


class OldLogOutTest(SessionTest):
    portal_can_inhibit = False

    def test_where_the_portal_cannot_the_session_manager_is_told(self):
        self.open_vault()
        self.change_unsaved()
        wait_for(lambda: self.manager.calls, "the session manager to be told")
        self.assertEqual(self.manager.calls, [("Inhibit", "org.brenvik.Brenvik", 0, UNSAVED, LOG_OUT)])
        self.save()
        wait_for(lambda: len(self.manager.calls) > 1, "it to be given back")
        self.assertEqual(self.manager.calls[1:], [("Uninhibit", 4711)])


class SystemBusTest(DesktopTest):
    """The start and the window go on without that bus."""

    def setUp(self):
        self.bus = Bus()
        self.addCleanup(self.bus.stop)
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.bus.address
        self.addCleanup(os.environ.pop, "DBUS_SYSTEM_BUS_ADDRESS")
        self.prepare_bus()
        super().setUp()

    def prepare_bus(self):
        self.bus.hang()

    def test_the_window_works(self):
        self.open_vault()
        self.select_in_group("Sosyal", "Reddit")
        self.program.choose("Kayıt", "Sil")
        self.save()
        press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)


class NoSystemBusTest(SystemBusTest):
    def prepare_bus(self):
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nowhere/bus"


class EmptySystemBusTest(SystemBusTest):
    """A bus without a logind."""

    def prepare_bus(self):
        pass


class LateHangTest(SessionTest):
    def test_a_bus_that_hangs_later_holds_nothing_up(self):
        self.open_vault()
        self.system_bus.hang()
        self.change_unsaved()
        self.save()
        press("ctrl+l")
        self.is_locked()
        press("ctrl+q")
        self.assertEqual(self.program.wait_for_end(), 0)


class IdleTest(DesktopTest):
    settings_at_start = {"lockAfterMinutes": 1}

    def test_a_minute_without_input_in_any_program_locks(self):
        self.open_vault()
        time.sleep(15)
        xdotool("mousemove", 5, 5)  # where no window of the program is
        last_input = time.monotonic()
        wait_for(lambda: not self.program.nodes("list", "Gruplar"), "the lock", patience=120)
        self.assertGreater(time.monotonic() - last_input, 59)
        self.program.focus_is_on("Ana parola")


if __name__ == "__main__":
    testcase.run()

# SPDX-License-Identifier: MIT
"""What a user sees of the window as a whole: its title, its size on small screens, its columns, tooltips, questions."""

import os
import re
import subprocess

import desktop
import testcase
from desktop import Announcements, Atspi, point_at, press, set_text, text_of, wait_for, xdotool
from testcase import DesktopTest

LONG_TITLE = "<b>Kalın</b> &amp; çok uzun bir başlık, satırına sığmayan <i>eğik</i> bir başlık"


def told(*command):
    return subprocess.run(list(map(str, command)), capture_output=True, text=True, check=True).stdout


class Rectangle:
    def __init__(self, node):
        area = node.get_extents(Atspi.CoordType.SCREEN)
        self.left, self.top, self.right, self.bottom = area.x, area.y, area.x + area.width, area.y + area.height

    def __repr__(self):
        return f"{self.left},{self.top}–{self.right},{self.bottom}"

    def width(self):
        return self.right - self.left

    def contains(self, other):
        return (self.left <= other.left and self.top <= other.top and
                self.right >= other.right and self.bottom >= other.bottom)

    def meets(self, other):
        return (self.left < other.right and other.left < self.right and
                self.top < other.bottom and other.top < self.bottom)


class AppearanceTest(DesktopTest):
    def window_id(self):
        return wait_for(lambda: told("xdotool", "search", "--onlyvisible", "--class", "brenvik").split(),
                        "the window")[-1]

    def title_becomes(self, title):
        wait_for(lambda: told("xdotool", "getwindowname", self.window_id()).strip() == title,
                 f"the title {title}, not {told('xdotool', 'getwindowname', self.window_id())}")

    def size(self):
        geometry = told("xdotool", "getwindowgeometry", "--shell", self.window_id())
        return tuple(int(re.search(rf"{name}=(\d+)", geometry)[1]) for name in ("WIDTH", "HEIGHT"))

    def size_becomes(self, width, height):
        wait_for(lambda: self.size() == (width, height), f"the size {width}×{height}, not {self.size()}")

    def restart(self):
        self.program.end()
        self.program.start()
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")


class TitleTest(AppearanceTest):
    def test_it_names_the_vault_and_marks_what_is_not_saved(self):
        self.title_becomes("Brenvik")
        self.open_vault()
        self.title_becomes("Kasam — Brenvik")
        self.select_in_group("Sosyal", "Reddit")
        press("ctrl+Delete")
        self.title_becomes("Kasam* — Brenvik")
        self.save()
        self.title_becomes("Kasam — Brenvik")
        press("ctrl+l")
        self.title_becomes("Brenvik")


class ColumnTest(AppearanceTest):
    def setUp(self):
        super().setUp()
        self.open_vault()
        self.select_group("Sosyal")

    def widths(self):
        return tuple(Rectangle(self.program.node("list", name)).width() for name in ("Gruplar", "Kayıtlar"))

    def drag_divider(self, after, by):
        """Drags the line at the end of a column."""
        area = Rectangle(self.program.node("list", after))
        x, y = area.right, (area.top + area.bottom) // 2
        xdotool("mousemove", x, y, "mousedown", 1)
        for step in range(1, 6):
            xdotool("mousemove", "--sync", x + by * step // 5, y)
        xdotool("mouseup", 1)

    def test_the_window_keeps_the_size_that_its_user_gave_it(self):
        xdotool("windowsize", self.window_id(), 900, 600)
        self.size_becomes(900, 600)
        self.setting_becomes("windowSize", {"width": 900, "height": 600, "isMaximised": False})
        self.restart()
        self.size_becomes(900, 600)

    def test_nothing_is_stored_of_a_size_that_was_not_chosen(self):
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.node("list", "Gruplar")
        self.program.end()
        self.assertNotIn("windowSize", self.settings())
        self.assertNotIn("columnWidths", self.settings())

    def test_dragged_columns_keep_their_widths(self):
        groups, entries = self.widths()
        self.drag_divider("Gruplar", 60)
        wait_for(lambda: abs(self.widths()[0] - groups - 60) < 5, f"wider groups, not {self.widths()}")
        self.drag_divider("Kayıtlar", -40)
        wait_for(lambda: self.widths()[1] < entries, f"narrower entries, not {self.widths()}")
        dragged = self.widths()
        self.setting_becomes("columnWidths", {"groups": dragged[0], "entries": dragged[1]})
        self.restart()
        self.select_group("Sosyal")
        wait_for(lambda: self.widths() == dragged, f"the widths {dragged}, not {self.widths()}")

    def divider(self, name):
        return self.program.node("separator", name)

    def test_the_keyboard_changes_the_widths_and_they_are_kept(self):
        groups, entries = self.widths()
        press("F8")
        self.program.focus_is_on("Grup sütununun genişliği")
        press("Right", "Right")
        wait_for(lambda: self.widths()[0] == groups + 20, f"wider groups, not {self.widths()}")
        press("F8")
        self.program.focus_is_on("Kayıt sütununun genişliği")
        press("Left", "Return")
        wait_for(lambda: self.widths()[1] == entries - 30, f"narrower entries, not {self.widths()}")
        chosen = self.widths()
        self.setting_becomes("columnWidths", {"groups": chosen[0], "entries": chosen[1]})
        self.program.choose("Görünüm", "Sütun Genişliğini Ayarla")
        self.program.focus_is_on("Grup sütununun genişliği")
        press("End", "Escape")
        wait_for(lambda: self.widths() == chosen, f"the widths {chosen}, not {self.widths()}")
        self.restart()
        self.select_group("Sosyal")
        wait_for(lambda: self.widths() == chosen, f"the widths {chosen}, not {self.widths()}")

    def test_an_assistive_program_reads_and_sets_the_width_of_a_column(self):
        divider = self.divider("Grup sütununun genişliği")
        self.assertEqual(Atspi.Value.get_current_value(divider), self.widths()[0])
        Atspi.Value.set_current_value(divider, 250)
        wait_for(lambda: self.widths()[0] == 250, f"groups of 250, not {self.widths()}")

    def test_the_column_of_the_groups_is_hidden_and_shown_by_key_and_by_menu(self):
        press("F9")
        self.program.is_gone("list", "Gruplar")
        press("F9")
        self.program.node("list", "Gruplar")
        self.program.choose("Görünüm", "Yan Sütunu Gizle")
        self.program.is_gone("list", "Gruplar")
        self.program.choose("Görünüm", "Yan Sütunu Göster")
        self.program.node("list", "Gruplar")

    def test_the_keyboard_is_not_left_in_a_hidden_column(self):
        press("F9")  # the group that was clicked has the focus
        self.program.is_gone("list", "Gruplar")
        with Announcements() as spoken:
            press("Down", "Return")
            spoken.say("Parola kopyalandı")


class ToolTipTest(AppearanceTest):
    def tip(self):
        return next(iter(self.program.nodes("tool tip")), None)

    def test_a_cut_title_shows_whole_and_as_it_is_beside_its_row(self):
        self.open_vault()
        self.select_group("Sosyal")
        press("ctrl+i")
        set_text(self.program.node("text", "Başlık"), LONG_TITLE)
        press("Return")
        self.program.is_gone("text", "Başlık")
        row = self.program.row("Kayıtlar", LONG_TITLE)
        point_at(row, 0.4)
        tip = wait_for(self.tip, "a tooltip")
        self.assertEqual(tip.get_name(), LONG_TITLE)
        self.assertFalse(Rectangle(tip).meets(Rectangle(row)), f"{Rectangle(tip)} over {Rectangle(row)}")
        press("Escape")
        wait_for(lambda: self.tip() is None, "no tooltip any more")

    def test_a_title_that_fits_has_none(self):
        self.open_vault()
        self.select_group("Sosyal")
        point_at(self.program.row("Kayıtlar", "Reddit"), 0.4)
        point_at(self.program.button(re.compile("^Kasayı kilitle")))
        tip = wait_for(self.tip, "the button's tooltip")  # by when the row's would have come
        self.assertEqual(tip.get_name(), "Kasayı kilitle (Ctrl+L)")


class QuestionTest(AppearanceTest):
    def test_replacing_a_file_is_asked_about_in_plain_words(self):
        old = self.program.home / "a<b>&amp;.kdbx"
        old.write_bytes(b"eski")
        press("ctrl+n")
        self.program.focus_is_on("Dosya adı:")
        set_text(self.program.node("text", "Dosya adı:"), str(old))
        press("Return")
        self.shows("“a<b>&amp;.kdbx” zaten var. Yerine yenisini koymak istiyor musun?")
        self.program.push("Hayır")
        self.program.is_gone("push button", "Hayır")
        self.assertEqual(text_of(self.program.node("text", "Dosya adı:")), str(old))
        press("Escape")
        self.program.is_gone("text", "Dosya adı:")
        self.assertEqual(old.read_bytes(), b"eski")

    def test_a_panel_writes_nothing_down(self):
        self.choose_vault()
        press("ctrl+n")
        self.program.node("text", "Dosya adı:")
        press("Escape")
        self.program.is_gone("text", "Dosya adı:")
        self.program.end()
        kept = [file.name for file in self.program.home.rglob("*") if file.suffix == ".conf"]
        self.assertEqual(kept, [])


class GeneratorOnTheCardTest(AppearanceTest):
    def test_it_says_that_it_copied(self):
        self.choose_vault()
        press("ctrl+g")
        self.program.push("Panoya kopyala")
        self.shows(re.compile(r"^Kopyalandı\. Pano \d+ sn sonra temizlenecek$"))
        self.program.push("Temizle")
        self.program.is_gone("label", re.compile("^Kopyalandı"))


class SmallScreenTest(AppearanceTest):
    """A laptop's screen, at what the desktop says of its density."""

    screen = (1366, 768)

    @classmethod
    def setUpClass(cls):
        cls.outer_display = os.environ["DISPLAY"]
        cls.display = desktop.Display(size="{}x{}".format(*cls.screen))

    @classmethod
    def tearDownClass(cls):
        cls.display.stop()
        os.environ["DISPLAY"] = cls.outer_display

    def setUp(self):
        self.set_density()
        super().setUp()

    def set_density(self):
        resources = f"Xft.dpi:\t{self.density}\n"
        subprocess.run(["xprop", "-root", "-f", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER", resources],
                       check=True)

    def frame(self):
        info = told("xwininfo", "-id", self.window_id())
        x, y, width, height = (int(re.search(rf"{name}: +(-?\d+)", info)[1]) for name in
                               ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        extents = told("xprop", "-id", self.window_id(), "_NET_FRAME_EXTENTS").partition("=")[2]
        left, right, top, bottom = map(int, re.findall(r"\d+", extents))
        return x - left, y - top, x + width + right, y + height + bottom

    def is_on_the_screen(self):
        left, top, right, bottom = self.frame()
        return left >= 0 and top >= 0 and right <= self.screen[0] and bottom <= self.screen[1]

    def assertInWindow(self, node):
        window = Rectangle(desktop.children_of(self.program.window)[0])
        self.assertTrue(window.contains(Rectangle(node)), f"{node.get_name()} {Rectangle(node)} in {window}")

    def check(self):
        wait_for(self.is_on_the_screen, f"the first card on the screen, not at {self.frame()}")
        self.choose_vault()
        wait_for(self.is_on_the_screen, f"the card on the screen, not at {self.frame()}")
        wait_for(lambda: Rectangle(desktop.children_of(self.program.window)[0]).contains(
            Rectangle(self.program.node("password text", "Ana parola"))), "the field scrolled into view")
        for _ in range(12):  # Tab reaches what lies below
            if self.program.focused().get_name() == "Yeni veritabanı oluştur":
                break
            press("Tab")
        self.assertInWindow(self.program.button("Yeni veritabanı oluştur"))
        self.program.node("password text", "Ana parola").grab_focus()
        self.program.focus_is_on("Ana parola")
        self.enter_password()
        self.program.button(re.compile("^Kasayı kilitle"))  # a window that is narrow has no room for the groups
        wait_for(self.is_on_the_screen, f"the window on the screen, not at {self.frame()}")
        self.assertInWindow(self.program.button(re.compile("^Kasayı kilitle")))
        self.assertInWindow(self.program.node("status bar", "Durum çubuğu"))
        press("ctrl+comma")
        self.program.node("label", "Otomatik temizleme")
        for window in desktop.children_of(self.program.window):
            area = Rectangle(window)
            self.assertLessEqual(area.width() * self.density / 96, self.screen[0])
            self.assertLessEqual((area.bottom - area.top) * self.density / 96, self.screen[1])


class SmallScreenAt120Test(SmallScreenTest):
    density = 120

    def test_nothing_is_larger_than_the_screen(self):
        self.check()


class SmallScreenAt144Test(SmallScreenTest):
    density = 144

    def test_nothing_is_larger_than_the_screen(self):
        self.check()


class SmallScreenAt192Test(SmallScreenTest):
    density = 192

    def test_nothing_is_larger_than_the_screen(self):
        self.check()


if __name__ == "__main__":
    testcase.run()

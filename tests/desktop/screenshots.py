# SPDX-License-Identifier: MIT
"""Walks through every screen of the program and takes a picture of each state."""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys

import desktop
from DerivationTest import changed_header, parameter
from desktop import act, click, click_with, drag, point_at, press, set_text, type_text, wait_for

SCALE = float(os.environ.get("QT_SCALE_FACTOR", "1"))
PASSWORD = "parola"
SETTLED = 0.35  # seconds; what appears moves for 0.14 and a picture of it waits until it has


class Walk:
    """The program with the demo vault in its home, and the camera in front of it."""

    def __init__(self, options):
        self.options = options
        self.missing = []
        self.taken = 0
        self.program = None

    # The program and its window

    def start(self, home_of=None):
        self.program = desktop.Program(self.options.program)
        if home_of:
            shutil.copytree(home_of, self.program.home, dirs_exist_ok=True)
        self.vault = self.program.home / "Kasam.kdbx"
        subprocess.run([self.options.demo_vault, self.vault], check=True)
        self.program.start()
        self.find_window()

    def restart(self):
        self.program.end()
        self.program.start()
        self.find_window()

    def find_window(self):
        """Before any other window of the program shows."""
        self.window = self.shown_window("--class", "brenvik")
        wait_for(self.geometry, "the window's place")

    def shown_window(self, *what):
        """The last one that xdotool finds."""
        search = ["xdotool", "search", "--onlyvisible", *what]
        return wait_for(lambda: subprocess.run(search, capture_output=True, text=True).stdout.split(),
                        "the window " + " ".join(what))[-1]

    def geometry(self, window=None):
        """The own area on the display of a window, or of the program's first one."""
        seen = subprocess.run(["xwininfo", "-id", window or self.window], capture_output=True, text=True).stdout
        numbers = re.search(r"Absolute upper-left X:\s+(-?\d+)\s+Absolute upper-left Y:\s+(-?\d+).*"
                            r"Width: (\d+)\s+Height: (\d+).*Map State: IsViewable", seen, re.S)
        return [int(number) for number in numbers.groups()] if numbers else None

    def resize(self, width, height):
        desktop.xdotool("windowsize", self.window, round(width * SCALE), round(height * SCALE))
        wait_for(lambda: abs(self.geometry()[2] - width * SCALE) < 2, f"a window {width} wide", 5)

    # Taking pictures

    def scene(self, step, *arguments):
        """Walks one step. One that fails leaves a note and a picture of what there was instead."""
        try:
            step(*arguments)
        except Exception as failure:  # whatever stops one state must not stop the others
            name = " ".join([step.__name__, *map(str, arguments)])
            self.missing.append(f"{name}: {failure}")
            print(f"  NOT {name}: {failure}", file=sys.stderr)
            desktop.Display.picture(self.options.folder / f"missing-{step.__name__}-{SCALE:g}x.png")
            self.back_to_rest()

    def back_to_rest(self):
        """Closes whatever is open over the window."""
        if self.program.has_ended():
            self.program.start()
            self.find_window()
        for _ in range(3):
            press("Escape")

    def shot(self, name, whole=False, window=None):
        """A picture of the first window or of another, or of the whole display where more than the window shows."""
        if not re.search(self.options.only, name):
            return
        desktop.time.sleep(SETTLED)
        area = None
        if not whole:
            x, y, width, height = self.geometry(window)
            area = f"{width}x{height}+{x}+{y}"
        file = self.options.folder / f"{name}-{SCALE:g}x.png"
        desktop.Display.picture(file, area)
        self.taken += 1

    # Steps

    def choose_vault(self):
        press("ctrl+o")
        self.program.node("label", "Dosya adı:")
        type_text(str(self.vault))
        press("Return")
        self.program.focus_is_on("Ana parola")

    def unlock(self):
        type_text(PASSWORD)
        press("Return")
        self.program.node("list", "Gruplar")

    def group(self, name):
        click(self.program.row("Gruplar", name))
        wait_for(lambda: name in [label.get_name() for label in self.program.nodes("label")], f"the group {name}")

    def entry(self, name):
        click(self.program.row("Kayıtlar", name))

    def sosyal(self):
        self.group("Sosyal")
        wait_for(lambda: "GitHub" in self.program.rows("Kayıtlar"), "the entries")

    def leave_sheet(self):
        for name in ("Vazgeç", "Kapat"):
            if self.program.nodes("push button", name):
                self.program.push(name)
                self.program.is_gone("push button", name)
                return
        press("Escape")

    # The card

    def chooser(self):
        self.shot("chooser")

    def file_panel(self):
        press("ctrl+o")
        self.program.node("label", "Dosya adı:")
        self.shot("file-panel", whole=True)
        press("Escape")
        self.program.is_gone("label", "Dosya adı:")

    def question(self):
        press("ctrl+n")
        self.program.node("label", "Dosya adı:")
        press("ctrl+a")
        type_text(str(self.vault))
        press("Return")
        self.program.node("push button", "Evet")
        self.shot("question", whole=True)
        self.program.push("Hayır")
        self.program.is_gone("push button", "Hayır")
        press("Escape")
        self.program.is_gone("label", "Dosya adı:")

    def unlock_card(self):
        self.choose_vault()
        self.shot("unlock")
        type_text("yanlis")
        self.shot("unlock-typed")
        self.program.push("Göster")
        self.shot("unlock-revealed")
        self.program.push("Gizle")
        self.program.push("Kilidi aç")
        wait_for(lambda: self.program.nodes(name="Ana parola veya anahtar dosyası hatalı."), "the failure")
        desktop.time.sleep(0.5)  # the shake
        self.shot("unlock-error")
        (self.program.home / "kasam.keyx").write_bytes(bytes(32))
        self.program.push("Dosya seç…")
        self.program.node("label", "Dosya adı:")
        type_text(str(self.program.home / "kasam.keyx"))
        press("Return")
        self.program.button("Kaldır")
        self.shot("unlock-keyfile")

    def create_card(self):
        press("ctrl+n")
        self.program.node("label", "Dosya adı:")
        press("ctrl+a")
        type_text(str(self.program.home / "Yeni"))
        press("Return")
        self.program.node("label", "Parolayı doğrula")
        self.shot("create")
        set_text(self.program.node("password text", "Ana parola"), "abc")
        self.shot("create-weak")
        set_text(self.program.node("password text", "Ana parola"), "Mavi-Deniz-42-Yosun")
        set_text(self.program.node("password text", "Parolayı doğrula"), "Mavi-Deniz-42")
        self.program.node("label", "Parolalar eşleşmiyor.")
        self.shot("create-mismatch")
        set_text(self.program.node("password text", "Parolayı doğrula"), "Mavi-Deniz-42-Yosun")
        self.shot("create-ready")
        self.program.push("Kasayı oluştur")
        self.shot("create-busy")
        self.program.node("list", "Gruplar")
        self.shot("main-new-vault")
        self.group("İnternet")
        self.shot("main-empty-group")

    # The main window

    def main(self):
        self.sosyal()
        self.shot("main-nothing-selected")
        self.entry("GitHub")
        self.program.node("push button", "Göster")
        self.shot("main-selected")
        point_at(self.program.row("Kayıtlar", "Mastodon"), 0.3)
        self.shot("main-hover")
        press("ctrl+c")
        self.shot("main-copied")
        point_at(self.program.row("Gruplar", "Bankacılık"), 0.3)
        self.shot("main-hover-group")

    def detail(self):
        self.sosyal()
        self.entry("GitHub")
        self.program.push("Göster")
        self.shot("detail-revealed")
        self.scroll_detail()
        self.shot("detail-end")

    def scroll_detail(self):
        area = self.program.nodes("label", "Parola")[-1]
        point_at(area)
        desktop.xdotool("click", "--repeat", 40, 5)

    def entry_state(self, group, row, name):
        self.group(group)
        self.entry(row)
        self.shot(name)
        self.scroll_detail()
        self.shot(f"{name}-end")

    def multi(self):
        self.sosyal()
        self.entry("GitHub")
        click_with("ctrl", self.program.row("Kayıtlar", "Mastodon"))
        click_with("ctrl", self.program.row("Kayıtlar", "Reddit"))
        self.program.node("label", "3 kayıt seçildi")
        self.shot("multi")

    def search(self):
        press("ctrl+f")
        type_text("example")
        self.program.node("label", "Arama sonuçları")
        self.shot("search")
        press("ctrl+a")
        type_text("denizalti")
        self.program.node("label", "Eşleşme yok")
        self.shot("nomatch")
        self.program.push("Aramayı temizle")

    def empty_group(self):
        row = self.program.row("Gruplar", "Bankacılık")
        click(row)
        press("Right")
        self.group("Kapanan hesaplar")
        self.program.node("label", "Bu grup boş")
        self.shot("empty-group")

    def keyboard_focus(self):
        self.sosyal()
        self.entry("GitHub")
        for name in ("focus-1", "focus-2", "focus-3", "focus-4", "focus-5", "focus-6"):
            press("Tab")
            self.shot(name)

    def drop_line(self):
        self.sosyal()
        self.picture_of_drag(self.program.row("Kayıtlar", "LinkedIn"), "drag-entry")

    def drop_on_group(self):
        self.sosyal()
        self.picture_of_drag(self.program.row("Gruplar", "E-posta"), "drag-to-group")

    def picture_of_drag(self, target, name):
        drag(self.program.row("Kayıtlar", "Reddit"), target, drop=False)
        self.shot(name)
        desktop.cancel_drag()

    def dirty(self):
        self.sosyal()
        self.entry("Reddit")
        self.program.choose("Kayıt", "Sil")
        self.program.node("label", "Kaydedilmemiş değişiklik")
        self.shot("main-dirty")
        self.program.choose("Düzen", re.compile("^Geri Al"))

    def failed_save(self):
        self.sosyal()
        self.entry("Reddit")
        self.program.choose("Kayıt", "Sil")
        self.vault.unlink()
        self.vault.mkdir()
        press("ctrl+s")
        self.program.button("Hatayı kapat")
        self.shot("main-error")

    # Menus

    def menu(self, name):
        self.sosyal()
        self.entry("GitHub")
        click(self.program.menu_item(name))
        self.shot(f"menu-{plain(name)}", whole=False)
        press("Escape", "Escape")

    def row_menu(self):
        self.sosyal()
        click(self.program.row("Kayıtlar", "Mastodon"), button=3)
        self.shot("context-entry")
        press("Escape")

    def group_menu(self):
        click(self.program.row("Gruplar", "İnternet"), button=3)
        self.shot("context-group")
        press("Escape")

    def sort_menu(self):
        self.sosyal()
        click(self.program.button(re.compile("^Sıralama")))
        self.shot("sort-menu")
        press("Escape")

    def more_menu(self):
        self.sosyal()
        self.entry("GitHub")
        click(self.program.button("Diğer işlemler"))
        self.shot("more-menu")
        press("Escape")

    def text_menu(self):
        click(self.program.node("text", "Kayıtlarda ara"))
        type_text("kart")
        click(self.program.node("text", "Kayıtlarda ara"), button=3, from_left=0.2)
        self.shot("context-text")
        press("Escape")
        self.program.push("Aramayı temizle")

    def tooltip(self):
        point_at(self.program.button(re.compile("^Kasayı kilitle")))
        desktop.time.sleep(1.2)
        self.shot("tooltip")

    def cut_text(self):
        """What a row has no room for shows below it."""
        self.group("İş sunucuları")
        point_at(self.program.row("Kayıtlar", re.compile("Çok uzun başlık")))
        desktop.time.sleep(1.2)
        self.shot("tooltip-of-a-row")

    def deriving(self):
        """A derivation of some seconds, and the card after it was given up."""
        changed_header(self.vault, lambda parameters: parameter(parameters, "I", "<Q", 1 << 20))
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        type_text(PASSWORD)
        press("Return")
        self.program.node("progress bar", "Anahtar türetiliyor")
        self.shot("deriving")
        press("Escape")
        self.program.is_gone("progress bar", "Anahtar türetiliyor")
        self.shot("derivation-given-up")

    def copied_and_locked(self):
        self.sosyal()
        self.entry("GitHub")
        press("ctrl+c")
        press("ctrl+l")
        self.program.focus_is_on("Ana parola")
        self.shot("locked-with-a-secret-copied")
        self.unlock()

    def rescued(self):
        self.leave_unsaved()
        self.shot("rescue")
        self.resize(1900, 1010)
        self.shot("rescue-large")
        self.resize(720, 460)
        self.shot("rescue-smallest")
        self.resize(1020, 680)
        self.program.push("Sil")

    # Sheets

    def new_entry(self):
        self.sosyal()
        press("ctrl+i")
        self.program.node("text", "Başlık")
        self.shot("sheet-new-entry")
        self.leave_sheet()

    def edit_entry(self):
        self.sosyal()
        self.entry("GitHub")
        press("ctrl+e")
        field = self.program.node("text", "Başlık")
        self.shot("sheet-edit-entry")
        click(self.program.button(re.compile("^Simge")))
        self.shot("sheet-icon-popover")
        press("Escape")
        expires = self.program.node("check box", "Son kullanma tarihi var")
        act(expires)
        self.shot("sheet-expiry")
        point_at(field)
        desktop.xdotool("click", "--repeat", 8, 5)
        self.shot("sheet-edit-entry-middle")
        desktop.xdotool("click", "--repeat", 40, 5)
        self.shot("sheet-edit-entry-end")
        self.leave_sheet()

    def calendar(self):
        self.sosyal()
        self.entry("LinkedIn")
        press("ctrl+e")
        self.program.node("text", "Başlık")
        date = self.program.nodes(name=re.compile("[Tt]akvim|Son kullanma tarihi$|^Son kullanma$|[Tt]arih seç"))[-1]
        click(date, from_left=0.93)
        self.shot("sheet-calendar")
        press("Escape")
        self.leave_sheet()

    def new_group(self):
        self.sosyal()
        press("ctrl+shift+g")
        self.program.node("text", "Grup adı")
        self.shot("sheet-new-group")
        self.leave_sheet()

    def edit_group(self):
        click(self.program.row("Gruplar", "Bankacılık"), button=3)
        press("Down", "Down", "Down", "Return")
        self.program.node("text", "Grup adı")
        self.shot("sheet-edit-group")
        self.leave_sheet()

    def generator(self):
        press("ctrl+g")
        self.program.button("Yeniden üret")
        self.shot("generator")
        self.show_generated()
        self.shot("generator-shown")
        switches = ("Büyük harf  A–Z", "Küçük harf  a–z", "Rakam  0–9", "Sembol  !@#$…")
        for name in switches:
            act(self.program.node("check box", name))
        self.program.node("label", "En az bir karakter kümesi seçmelisin.")
        self.shot("generator-warning")
        for name in switches:
            act(self.program.node("check box", name))
        self.leave_sheet()

    def show_generated(self):
        self.program.button("Yeniden üret")
        act(next(eye for eye in self.program.nodes("push button", "Göster") if desktop.is_enabled(eye)))

    # Windows beside

    def settings(self):
        press("ctrl+comma")
        self.program.node("label", "Otomatik temizleme")
        self.shot("settings", whole=True)
        desktop.Atspi.Component.grab_focus(self.program.nodes("slider")[0])
        press("Right")
        self.shot("settings-slider", whole=True)
        recorder = self.program.button("⌥⌘A")
        act(recorder)
        desktop.time.sleep(SETTLED)  # until the window manager has given it the focus
        self.shot("settings-recording", whole=True)
        press("q")
        self.program.node("label", "En az bir değiştirici tuş gerekli")
        self.shot("settings-rejected", whole=True)
        press("Escape")
        press("Escape")
        self.program.is_gone("label", "Otomatik temizleme")

    def about(self):
        self.program.choose("Yardım", re.compile("[Hh]akkında"))
        self.shot("about", whole=True)
        press("Escape")

    def sizes(self):
        self.sosyal()
        self.entry("GitHub")
        self.resize(720, 460)
        self.shot("smallest")
        press("ctrl+e")
        self.program.node("text", "Başlık")
        self.shot("smallest-sheet")
        self.leave_sheet()
        press("ctrl+g")
        self.program.button("Yeniden üret")
        self.shot("smallest-generator")
        self.leave_sheet()
        self.resize(1900, 1010)
        self.shot("large")
        self.resize(1020, 680)

    def readme(self):
        """The pictures of the README and of the guides, small enough to be kept."""
        self.start()
        self.choose_vault()
        type_text(PASSWORD)
        self.keep("unlock")
        press("ctrl+a")
        type_text("yanlış parola")
        press("Return")
        self.program.node("label", "Ana parola veya anahtar dosyası hatalı.")
        self.keep("wrong-password")
        self.program.focus_is_on("Ana parola")
        self.unlock()
        self.sosyal()
        self.entry("GitHub")
        press("ctrl+c")
        point_at(self.program.row("Kayıtlar", "Mastodon"), 0.3)
        self.keep("main")
        press("ctrl+e")
        self.program.node("text", "Başlık")
        self.keep("editor")
        self.leave_sheet()
        self.program.is_gone("text", "Başlık")
        press("ctrl+g")
        self.show_generated()
        self.keep("generator")
        self.leave_sheet()
        self.program.is_gone("push button", "Yeniden üret")
        press("ctrl+comma")
        self.program.node("label", "Otomatik temizleme")
        self.keep("settings", self.shown_window("--name", "^Ayarlar"))
        press("Escape")
        self.program.is_gone("label", "Otomatik temizleme")
        self.leave_unsaved()
        self.keep("rescue")
        self.program.stop()

    def leave_unsaved(self):
        """Quits with a change that is not saved, starts again and unlocks."""
        self.sosyal()
        self.entry("Reddit")
        press("Delete")
        press("ctrl+q")
        wait_for(self.program.has_ended, "the program's end")
        self.program.start()
        self.find_window()
        self.program.focus_is_on("Ana parola")
        self.unlock()
        self.program.button("Geri getir")

    def keep(self, name, window=None):
        self.shot(name, window=window)
        kept = pathlib.Path("docs") / f"{name}.png"
        subprocess.run(["pngquant", "--force", "--quality", "80-100", "--strip", "--output", kept,
                        self.options.folder / f"{name}-{SCALE:g}x.png"], check=True)
        subprocess.run(["optipng", "-quiet", "-o2", kept], check=True)

    # The whole walk

    def locked(self):
        self.start()
        self.scene(self.chooser)
        self.scene(self.file_panel)
        self.scene(self.question)
        self.scene(self.unlock_card)
        self.scene(self.create_card)
        self.program.stop()

    def unlocked(self):
        self.start()
        self.choose_vault()
        self.unlock()
        self.scene(self.main)
        self.scene(self.detail)
        self.scene(self.entry_state, "Sosyal", "LinkedIn", "expired")
        self.scene(self.entry_state, "Sosyal", "Adsız kayıt", "untitled")
        self.scene(self.entry_state, "E-posta", "ملاحظات السفر", "right-to-left")
        self.scene(self.entry_state, "E-posta", re.compile("Ortak takvim"), "emoji")
        self.scene(self.entry_state, "İş sunucuları", re.compile("Çok uzun başlık"), "long-texts")
        for step in (self.multi, self.search, self.empty_group, self.keyboard_focus, self.drop_line,
                     self.drop_on_group, self.dirty):
            self.scene(step)
        for name in ("Dosya", "Düzen", "Kayıt", "Araçlar", "Görünüm", "Yardım"):
            self.scene(self.menu, name)
        for step in (self.row_menu, self.group_menu, self.sort_menu, self.more_menu, self.text_menu, self.tooltip,
                     self.cut_text,
                     self.new_entry, self.edit_entry, self.calendar, self.new_group, self.edit_group, self.generator,
                     self.settings, self.about, self.sizes, self.failed_save, self.copied_and_locked, self.rescued,
                     self.deriving):
            self.scene(step)
        self.program.stop()

    def on_a_large_display(self):
        self.start()
        self.choose_vault()
        self.unlock()
        self.sosyal()
        self.entry("GitHub")
        self.resize(3820, 2100)
        self.shot("main-4k")
        press("ctrl+e")
        self.program.node("text", "Başlık")
        self.shot("sheet-4k")
        self.program.stop()

    def without_typing(self):
        """A display that lets nobody type: the settings say so. Only AT-SPI reaches the window there."""
        self.start()
        self.program.choose("Dosya", "Veritabanı Aç…")
        set_text(self.program.node("text", "Dosya adı:"), str(self.vault))
        self.program.push("Aç")
        set_text(self.program.node("password text", "Ana parola"), PASSWORD)
        self.program.push("Kilidi aç")
        self.program.node("list", "Gruplar")
        self.program.choose("Düzen", "Ayarlar…")
        self.program.node("label", "Erişilebilirlik izni gerekli")
        self.shot("settings-not-granted", whole=True)
        self.program.stop()


def plain(name):
    return name.lower().translate(str.maketrans("çğıöşüı", "cgiosui"))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--demo-vault", type=pathlib.Path, required=True)
    parser.add_argument("--only", default="")
    parser.add_argument("--readme", action="store_true")
    parser.add_argument("folder", nargs="?", type=pathlib.Path, default=pathlib.Path("build/screenshots"))
    options = parser.parse_args()
    options.program = options.program.resolve()
    options.folder.mkdir(parents=True, exist_ok=True)
    for old in options.folder.glob(f"missing-*-{SCALE:g}x.png"):
        old.unlink()
    desktop.PATIENCE = 8

    walk = Walk(options)
    usual = "1920x1080" if SCALE == 1 else "3840x2160"
    parts = [(walk.locked, usual, True), (walk.unlocked, usual, True), (walk.without_typing, usual, False)]
    if SCALE == 1:
        parts.append((walk.on_a_large_display, "3840x2160", True))
    if options.readme:
        parts = [(walk.readme, usual, True)]
    for part, size, can_type in parts:
        display = desktop.Display(size, can_type)
        try:
            part()
        except AssertionError as failure:
            walk.missing.append(f"{part.__name__}: {failure}")
            desktop.Display.picture(options.folder / f"missing-{part.__name__}-{SCALE:g}x.png")
            walk.program.stop()
        finally:
            display.stop()
    print(f"{walk.taken} pictures at scale {SCALE:g} in {options.folder}")
    if walk.missing:
        print("Not taken:", *walk.missing, sep="\n  ")
    sys.exit(1 if walk.missing else 0)


if __name__ == "__main__":
    main()

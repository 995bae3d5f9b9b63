# SPDX-License-Identifier: MIT
"""Makes the program's typefaces from the open ones that the system has: make-fonts.py SOURCE_FOLDER TARGET_FOLDER

Each face is cut down to the scripts that its Latin, Greek and Cyrillic users write and to what the interface shows,
and goes by the product's name, so that it cannot be mistaken for the original that a user may have installed.
The licence (SIL Open Font License 1.1) stays in the font and beside it.
"""
import pathlib
import shutil
import sys

from fontTools import subset
from fontTools.ttLib import TTFont

FAMILIES = {"Inter": "Brenvik Text", "InterDisplay": "Brenvik Display"}
WEIGHTS = {"Regular": 400, "Medium": 500, "SemiBold": 600, "Bold": 700, "ExtraBold": 800}
UNICODES = [
    (0x0020, 0x024F), (0x0259, 0x0259), (0x02B0, 0x036F), (0x0370, 0x03FF), (0x0400, 0x052F), (0x1E00, 0x1EFF),
    (0x2000, 0x206F), (0x2070, 0x209F), (0x20A0, 0x20C0), (0x2100, 0x214F), (0x2190, 0x21FF), (0x2200, 0x22FF),
    (0x2300, 0x23FF), (0x25A0, 0x25FF), (0x2700, 0x27BF), (0xFB00, 0xFB06), (0xFFFD, 0xFFFD),
]
FEATURES = ["kern", "mark", "mkmk", "ccmp", "locl", "calt", "tnum", "case", "liga"]


def cut(source: pathlib.Path) -> TTFont:
    options = subset.Options(layout_features=FEATURES, name_IDs=["*"], notdef_outline=True, hinting=True)
    font = subset.load_font(str(source), options)
    cutter = subset.Subsetter(options)
    cutter.populate(unicodes=[code for first, last in UNICODES for code in range(first, last + 1)])
    cutter.subset(font)
    return font


def rename(font: TTFont, family: str, style: str) -> None:
    full = f"{family} {style}"
    postscript = f"{family.replace(' ', '')}-{style}"
    # The old pair of names knows regular and bold alone; other weights are families of their own there.
    names = {1: family if style in ("Regular", "Bold") else full, 2: style if style == "Bold" else "Regular",
             3: postscript, 4: full, 6: postscript, 16: family, 17: style}
    table = font["name"]
    for name_id in (18, 20, 21, 22, 25):
        table.removeNames(nameID=name_id)
    for name_id, text in names.items():
        table.removeNames(nameID=name_id)
        table.setName(text, name_id, 3, 1, 0x409)
    font["OS/2"].usWeightClass = WEIGHTS[style]
    cff = font["CFF "].cff
    cff.fontNames = [postscript]
    top = cff.topDictIndex[0]
    top.FullName, top.FamilyName, top.Weight = full, family, style


def main(source: pathlib.Path, target: pathlib.Path) -> None:
    target.mkdir(parents=True, exist_ok=True)
    for original, family in FAMILIES.items():
        for style in WEIGHTS:
            font = cut(source / f"{original}-{style}.otf")
            rename(font, family, style)
            font.save(target / f"{family.replace(' ', '')}-{style}.otf")
    shutil.copyfile("/usr/share/doc/fonts-inter/copyright", target / "LICENSE")


main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))

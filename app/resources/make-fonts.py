# SPDX-License-Identifier: MIT
"""Makes the program's typefaces from the open ones that the system has: make-fonts.py SOURCE_FOLDER LICENSE TARGET_FOLDER

Each face is cut down to the scripts that its Latin, Greek and Cyrillic users write and to what the interface shows,
and goes by the product's name, so that it cannot be mistaken for the original that a user may have installed.
Their outlines become TrueType's: Qt has the stems of PostScript ones drawn bolder at small sizes, so that a label would
stand as heavy as a title. The licence (SIL Open Font License 1.1) stays in the font and beside it.
"""
import pathlib
import shutil
import sys

from fontTools import subset
from fontTools.pens.cu2quPen import Cu2QuPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTFont, newTable

FAMILIES = {"Inter": "Brenvik Text", "InterDisplay": "Brenvik Display"}
WEIGHTS = {"Regular": 400, "Medium": 500, "SemiBold": 600, "Bold": 700, "ExtraBold": 800}
UNICODES = [
    (0x0020, 0x024F), (0x0259, 0x0259), (0x02B0, 0x036F), (0x0370, 0x03FF), (0x0400, 0x052F), (0x1E00, 0x1EFF),
    (0x2000, 0x206F), (0x2070, 0x209F), (0x20A0, 0x20C0), (0x2100, 0x214F), (0x2190, 0x21FF), (0x2200, 0x22FF),
    (0x2300, 0x23FF), (0x25A0, 0x25FF), (0x2700, 0x27BF), (0xFB00, 0xFB06), (0xFFFD, 0xFFFD),
]
FEATURES = ["kern", "mark", "mkmk", "ccmp", "locl", "calt", "tnum", "case", "liga"]


def cut(source: pathlib.Path) -> TTFont:
    options = subset.Options(layout_features=FEATURES, name_IDs=["*"], notdef_outline=True, hinting=False)
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


def to_truetype(font: TTFont) -> None:
    """Replaces the cubic outlines by quadratic ones that are off by a thousandth of the type size at most."""
    outlines = font.getGlyphSet()
    glyphs = {}
    for name in font.getGlyphOrder():
        pen = TTGlyphPen(outlines)
        outlines[name].draw(Cu2QuPen(pen, max_err=font["head"].unitsPerEm / 1000, reverse_direction=True))
        glyphs[name] = pen.glyph()
    font["loca"] = newTable("loca")
    font["glyf"] = newTable("glyf")
    font["glyf"].glyphOrder = font.getGlyphOrder()
    font["glyf"].glyphs = glyphs
    widths = font["hmtx"].metrics
    for name, glyph in glyphs.items():
        glyph.recalcBounds(font["glyf"])
        widths[name] = (widths[name][0], getattr(glyph, "xMin", 0))
    del font["CFF "]
    font.tables.pop("VORG", None)
    profile = font["maxp"] = newTable("maxp")
    profile.tableVersion = 0x00010000
    for field in ("maxZones", "maxTwilightPoints", "maxStorage", "maxFunctionDefs", "maxInstructionDefs",
                  "maxStackElements", "maxSizeOfInstructions", "maxComponentElements", "maxPoints", "maxContours",
                  "maxCompositePoints", "maxCompositeContours", "maxComponentDepth"):
        setattr(profile, field, 1 if field == "maxZones" else 0)
    profile.numGlyphs = len(glyphs)
    font["post"].formatType = 3.0
    font.sfntVersion = "\x00\x01\x00\x00"


def main(source: pathlib.Path, license_file: pathlib.Path, target: pathlib.Path) -> None:
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir(parents=True)
    for original, family in FAMILIES.items():
        for style in WEIGHTS:
            font = cut(source / f"{original}-{style}.otf")
            rename(font, family, style)
            to_truetype(font)
            font.save(target / f"{family.replace(' ', '')}-{style}.ttf")
    shutil.copyfile(license_file, target / "LICENSE")


main(*map(pathlib.Path, sys.argv[1:]))

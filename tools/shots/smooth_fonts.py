#!/usr/bin/python3
"""smooth_fonts.py FOLDER FONT.ttf...: copies of fonts that are smoothed at every size, under the
family name "Picture" + the old one, for pictures of the windows.

FreeSerif stands in for the serif faces of Windows here, but asks to be drawn without smoothing from
9 to 21 pixels. Nothing of these copies is shipped."""

import sys
from pathlib import Path

from fontTools.ttLib import TTFont, newTable

FAMILY_NAMES = {1, 3, 4, 6, 16}  # family, unique, full, PostScript, typographic family


def smoothed(source, folder):
    font = TTFont(source)
    gasp = newTable("gasp")
    gasp.version = 1
    gasp.gaspRange = {0xFFFF: 15}
    font["gasp"] = gasp
    for record in font["name"].names:
        if record.nameID in FAMILY_NAMES:
            text = record.toUnicode()
            record.string = "Picture" + ("" if record.nameID == 6 else " ") + text
    target = folder / f"Picture{source.name}"
    font.save(target)
    print(target)


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name in sys.argv[2:]:
        smoothed(Path(name), folder)


main()

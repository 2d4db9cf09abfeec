#!/usr/bin/env python3
"""Makes the .bmp and .ico files beside this script from the drawings in svg/.

For a developer who changed a drawing; needs rsvg-convert and ImageMagick's convert. The names are
those that the tool bar asks for. Bitmaps are 24 pixels wide with an alpha channel, icons hold the
sizes in ICON_SIZES.
"""

import pathlib
import subprocess
import sys
import tempfile

FOLDER = pathlib.Path(__file__).resolve().parent
BITMAP_SIZE = 24
ICON_SIZES = (16, 24, 32, 48)
APPLICATION_SIZES = (16, 32, 48, 128, 256)
ICONS = {
    "Attrib", "Operation", "Parameter", "Help", "brisel",
    "COM-VORTABuiltinType", "COM-VORTAEnum", "COM-VORTADataType", "COM-VORTAModule",
    "COM-VORTAInterface", "COM-VORTACoClass",
}


def draw(drawing, size, folder):
    picture = folder / f"{drawing.stem}-{size}.png"
    subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), str(drawing),
                    "-o", str(picture)], check=True)
    return str(picture)


def make(drawing, folder):
    if drawing.stem in ICONS:
        sizes = APPLICATION_SIZES if drawing.stem == "brisel" else ICON_SIZES
        target = FOLDER / f"{drawing.stem}.ico"
        pictures = [draw(drawing, size, folder) for size in sizes]
    else:
        target = FOLDER / f"{drawing.stem}.bmp"
        pictures = [draw(drawing, BITMAP_SIZE, folder), "-define", "bmp:format=bmp4"]
    subprocess.run(["convert", *pictures, "-type", "TrueColorAlpha", str(target)], check=True)
    return target.name


def main():
    drawings = sorted((FOLDER / "svg").glob("*.svg"))
    with tempfile.TemporaryDirectory() as folder:
        for drawing in drawings:
            print(make(drawing, pathlib.Path(folder)))
    return 0 if drawings else 1


if __name__ == "__main__":
    sys.exit(main())

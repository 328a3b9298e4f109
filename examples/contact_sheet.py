#!/usr/bin/env python3
"""Shows every command of the table: applies each to a picture and puts the results, with their names, on one sheet.

Usage: contact_sheet.py OUT.png IN
"""
# SPDX-License-Identifier: MIT
import sys

import pixvane

COLUMNS = 6
THUMBNAIL = 192  # pixels, the longer side
GAP = 8
CAPTION = 16
PNG = 4
PAPER = bytes((250, 250, 250, 255))
INK = bytes((40, 40, 40, 255))
CANVAS = 0xC8B496  # a colour of its own, for what clears or enlarges the canvas
# Where the values that a dialog shows first would leave nothing to see on a thumbnail.
VALUES = {
    "FocalBW": (25, 40, 96, 60),
    "ScaleImage": (0.6, 0.8),
    "SetNewSize": (170, 140),
    "AddSimpleBorder": (12, 0x3060C0),
    "UserEffect": ([-2, -1, 0, -1, 1, 1, 0, 1, 2],),
}

# Letters of 5 x 7 dots, a row of dots in each number: the highest of five bits is on the left.
FONT = {
    " ": (0, 0, 0, 0, 0, 0, 0),
    "-": (0, 0, 0, 14, 0, 0, 0),
    "0": (14, 17, 17, 17, 17, 17, 14),
    "1": (4, 12, 4, 4, 4, 4, 14),
    "2": (14, 17, 1, 6, 8, 16, 31),
    "3": (30, 1, 1, 14, 1, 1, 30),
    "4": (2, 6, 10, 18, 31, 2, 2),
    "5": (31, 16, 30, 1, 1, 17, 14),
    "6": (6, 8, 16, 30, 17, 17, 14),
    "7": (31, 1, 2, 2, 4, 4, 4),
    "8": (14, 17, 17, 14, 17, 17, 14),
    "9": (14, 17, 17, 15, 1, 2, 12),
    "A": (4, 10, 17, 17, 31, 17, 17),
    "B": (30, 17, 17, 30, 17, 17, 30),
    "C": (14, 17, 16, 16, 16, 17, 14),
    "D": (28, 18, 17, 17, 17, 18, 28),
    "E": (31, 16, 16, 30, 16, 16, 31),
    "F": (31, 16, 16, 30, 16, 16, 16),
    "G": (14, 17, 16, 19, 17, 17, 15),
    "H": (17, 17, 17, 31, 17, 17, 17),
    "I": (14, 4, 4, 4, 4, 4, 14),
    "J": (7, 2, 2, 2, 2, 18, 12),
    "K": (17, 18, 20, 24, 20, 18, 17),
    "L": (16, 16, 16, 16, 16, 16, 31),
    "M": (17, 27, 21, 21, 17, 17, 17),
    "N": (17, 25, 25, 21, 19, 19, 17),
    "O": (14, 17, 17, 17, 17, 17, 14),
    "P": (30, 17, 17, 30, 16, 16, 16),
    "Q": (14, 17, 17, 17, 21, 18, 13),
    "R": (30, 17, 17, 30, 20, 18, 17),
    "S": (15, 16, 16, 14, 1, 1, 30),
    "T": (31, 4, 4, 4, 4, 4, 4),
    "U": (17, 17, 17, 17, 17, 17, 14),
    "V": (17, 17, 17, 17, 10, 10, 4),
    "W": (17, 17, 17, 21, 21, 27, 17),
    "X": (17, 17, 10, 4, 10, 17, 17),
    "Y": (17, 17, 10, 4, 4, 4, 4),
    "Z": (31, 1, 2, 4, 8, 16, 31),
    "a": (0, 0, 14, 1, 15, 17, 15),
    "b": (16, 16, 30, 17, 17, 17, 30),
    "c": (0, 0, 15, 16, 16, 16, 15),
    "d": (1, 1, 15, 17, 17, 17, 15),
    "e": (0, 0, 14, 17, 31, 16, 14),
    "f": (6, 8, 28, 8, 8, 8, 8),
    "g": (0, 0, 15, 17, 15, 1, 14),
    "h": (16, 16, 30, 17, 17, 17, 17),
    "i": (4, 0, 12, 4, 4, 4, 14),
    "j": (2, 0, 6, 2, 2, 18, 12),
    "k": (16, 16, 18, 20, 24, 20, 18),
    "l": (12, 4, 4, 4, 4, 4, 14),
    "m": (0, 0, 26, 21, 21, 21, 21),
    "n": (0, 0, 30, 17, 17, 17, 17),
    "o": (0, 0, 14, 17, 17, 17, 14),
    "p": (0, 0, 30, 17, 30, 16, 16),
    "q": (0, 0, 15, 17, 15, 1, 1),
    "r": (0, 0, 11, 12, 8, 8, 8),
    "s": (0, 0, 15, 16, 14, 1, 30),
    "t": (8, 8, 28, 8, 8, 9, 6),
    "u": (0, 0, 17, 17, 17, 17, 15),
    "v": (0, 0, 17, 17, 10, 10, 4),
    "w": (0, 0, 17, 21, 21, 21, 10),
    "x": (0, 0, 17, 10, 4, 10, 17),
    "y": (0, 0, 17, 17, 15, 1, 14),
    "z": (0, 0, 31, 2, 4, 8, 31),
}
LETTER = 6  # dots from one letter to the next


class Sheet:
    """Pixels in rows, from the top; bytes blue, green, red, alpha."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.pixels = bytearray(PAPER * (width * height))

    def paste(self, pixels, width, height, left, top):
        for y in range(height):
            start = 4 * ((top + y) * self.width + left)
            self.pixels[start : start + 4 * width] = pixels[4 * y * width : 4 * (y + 1) * width]

    def write(self, text, left, top):
        for column, letter in enumerate(text):
            for y, dots in enumerate(FONT[letter]):
                for x in range(5):
                    if dots & 16 >> x:
                        self.paste(INK, 1, 1, left + LETTER * column + x, top + y)


def commands():
    return [member for member in pixvane.members() if member.edits]


def values(member):
    """What a dialog shows first, or what shows more."""
    if member.name in VALUES:
        return VALUES[member.name]
    missing = [a.name for a in member.arguments if a.default is None]
    if missing:
        raise SystemExit("contact_sheet.py: no value for %s of %s" % (", ".join(missing), member.name))
    return tuple(a.default if a.kind == "double" else int(a.default) for a in member.arguments)


def fit(control, width, height):
    """Scales the control's picture down until it fits."""
    factor = min(width / control.ImageWidth, height / control.ImageHeight)
    if factor < 1:
        # A hair more than the factor, lest a side end one pixel short.
        control.ScaleImage(factor + 1e-9, factor + 1e-9)


def flat(control):
    """The pixels over paper: a picture placed on a canvas that shows through where it is transparent."""
    control.BitmapBackColor = PAPER[2] | PAPER[1] << 8 | PAPER[0] << 16
    control.SetNewSize(control.ImageWidth, control.ImageHeight)
    return control.GetImageArray(), control.ImageWidth, control.ImageHeight


def results(control):
    """Name, pixels, width and height: the picture as it is, then what each command makes of it."""
    source, width, height = flat(control)
    yield ("Original", source, width, height)
    for member in commands():
        control.LoadFromImageArray(source, width, height)
        control.BitmapBackColor = CANVAS
        getattr(control, member.name)(*values(member))
        fit(control, width, height)
        yield (member.name, *flat(control))


def compose(control):
    fit(control, THUMBNAIL, THUMBNAIL)
    cells = list(results(control))
    cell_width = max(cell[2] for cell in cells)
    cell_height = max(cell[3] for cell in cells)
    rows = -(-len(cells) // COLUMNS)
    sheet = Sheet(COLUMNS * (cell_width + GAP) + GAP, rows * (cell_height + CAPTION + GAP) + GAP)
    for i, (name, pixels, width, height) in enumerate(cells):
        left = GAP + i % COLUMNS * (cell_width + GAP)
        top = GAP + i // COLUMNS * (cell_height + CAPTION + GAP)
        sheet.paste(pixels, width, height, left + (cell_width - width) // 2, top + (cell_height - height) // 2)
        sheet.write(name, left + (cell_width - LETTER * len(name)) // 2, top + cell_height + 5)
    return sheet


def main(texts):
    if len(texts) != 2:
        sys.stderr.write("Usage: contact_sheet.py OUT.png IN\n")
        return 2
    with pixvane.Pixvane() as control:
        if not control.LoadImage(texts[1]):
            sys.stderr.write("contact_sheet.py: can't read %s\n" % texts[1])
            return 1
        sheet = compose(control)
        control.LoadFromImageArray(sheet.pixels, sheet.width, sheet.height)
        if not control.SaveImage(texts[0], PNG):
            sys.stderr.write("contact_sheet.py: can't write %s\n" % texts[0])
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

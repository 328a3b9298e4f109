#!/usr/bin/env python3
"""A host in Python: takes a picture, corrects it, goes back and forth in its history, saves it.

Usage: correct.py OUT.png [IN]
"""
# SPDX-License-Identifier: MIT
import sys

import pixvane

WIDTH, HEIGHT = 320, 240
PNG = 4


def dull_pixels():
    """Reds grow to the right, greens downwards."""
    pixels = bytearray()
    for y in range(HEIGHT):
        for x in range(WIDTH):
            pixels += bytes((80, 60 + y * 100 // (HEIGHT - 1), 40 + x * 120 // (WIDTH - 1), 255))
    return pixels


def print_peak(control, when):
    """Says where the histogram of luminance peaks."""
    bins = control.GetLHistogram()
    peak = bins.index(max(bins))
    print("%-18s most pixels at luminance %d: %d" % (when, peak, bins[peak]))


def correct(control):
    print_peak(control, "as it came")
    control.Autolevels()
    print_peak(control, "Autolevels")
    control.Saturate(130)
    print_peak(control, "Saturate 130")
    control.Undo()
    print_peak(control, "undone")
    control.Redo()
    print_peak(control, "redone")
    control.AddSimpleBorder(8, 0xFFFFFF)


def main(texts):
    if len(texts) not in (1, 2):
        sys.stderr.write("Usage: correct.py OUT.png [IN]\n")
        return 2
    with pixvane.Pixvane() as control:
        # A control fits a picture into its window when the picture comes.
        control.window.resize(800, 600)
        if len(texts) == 2:
            loaded = control.LoadImage(texts[1])
        else:
            loaded = control.LoadFromImageArray(dull_pixels(), WIDTH, HEIGHT)
        if not loaded:
            sys.stderr.write("correct.py: no picture to work on\n")
            return 1
        correct(control)
        if not control.SaveImage(texts[0], PNG):
            sys.stderr.write("correct.py: can't write %s\n" % texts[0])
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

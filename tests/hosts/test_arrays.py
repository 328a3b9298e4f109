"""Pixels, pictures, texts and file names on their way in and out of Python."""
# SPDX-License-Identifier: MIT
import array
import ctypes
import mmap
import os
import pathlib
import unittest

from support import JPEG, PNG, ControlTest, opaque, pixels

WIDTH, HEIGHT = 7, 5
DATA = pixels(WIDTH, HEIGHT)


class Arrays(ControlTest):
    def test_anything_bytes_like_goes_in_and_bytes_come_out(self):
        mapped = mmap.mmap(-1, len(DATA))
        self.addCleanup(mapped.close)
        mapped[:] = DATA
        for memory in (
            DATA,
            bytearray(DATA),
            memoryview(DATA),
            memoryview(DATA).cast("B", (HEIGHT, WIDTH * 4)),
            memoryview(b"??" + DATA)[2:],
            array.array("I", DATA),
            (ctypes.c_ubyte * len(DATA)).from_buffer_copy(DATA),
            mapped,
        ):
            self.assertIs(self.p.LoadFromImageArray(memory, WIDTH, HEIGHT), True)
            out = self.p.GetImageArray()
            self.assertIs(type(out), bytes)
            self.assertEqual(out, DATA)

    def test_memory_is_given_back(self):
        memory = bytearray(DATA)
        self.p.LoadFromImageArray(memory, WIDTH, HEIGHT)
        memory.append(0)  # a BufferError as long as anything holds it
        self.assertRaises(TypeError, self.p.LoadFromImageArray, memory, "7", HEIGHT)
        memory.append(0)
        memory[:] = b"\0" * len(memory)
        self.assertEqual(self.p.GetImageArray(), DATA)

    def test_what_can_not_go_in(self):
        self.p.NewImage(4, 4)
        for wrong in ("text", 5, [1, 2, 3], 1.0):
            self.assertRaises(TypeError, self.p.LoadFromImageArray, wrong, 2, 2)
        self.assertRaises((BufferError, TypeError), self.p.LoadFromImageArray, memoryview(DATA)[::2], 2, 2)
        self.assertEqual(self.p.ImageWidth, 4)

    def test_none_and_short_arrays_change_nothing(self):
        self.p.NewImage(4, 4)
        for memory in (None, b"", DATA[:-1]):
            self.assertIs(self.p.LoadFromImageArray(memory, WIDTH, HEIGHT), False)
        self.assertEqual(self.p.ImageWidth, 4)
        self.assertIs(self.p.LoadFromImageArray(b"", 0, 0), False)
        self.assertTrue(self.p.IsEmpty)
        self.assertIsNone(self.p.GetImageArray())

    def test_results_are_independent_of_what_follows(self):
        self.p.LoadFromImageArray(DATA, WIDTH, HEIGHT)
        out = self.p.GetImageArray()
        counts = self.p.GetRHistogram()
        self.p.Invert()
        self.assertEqual(out, DATA)
        self.assertNotEqual(counts, self.p.GetRHistogram())
        self.assertEqual(sum(counts), WIDTH * HEIGHT)


class Pictures(ControlTest):
    def test_picture_is_a_bmp_file(self):
        self.assertIsNone(self.p.Picture)
        self.p.LoadFromImageArray(opaque(DATA), WIDTH, HEIGHT)
        picture = self.p.Picture
        self.assertIs(type(picture), bytes)
        self.assertEqual(picture[:2], b"BM")
        self.assertEqual(int.from_bytes(picture[2:6], "little"), len(picture))
        self.p.Empty()
        self.p.Picture = bytearray(picture)
        self.assertEqual(self.p.GetImageArray(), opaque(DATA))

    def test_what_is_no_picture_changes_nothing(self):
        self.p.LoadFromImageArray(DATA, WIDTH, HEIGHT)
        for nothing in (None, b"", b"BM and no more"):
            self.p.Picture = nothing
            self.assertEqual(self.p.ImageWidth, WIDTH)


class Names(ControlTest):
    def save_and_load(self, name):
        self.assertIs(self.p.SaveImage(name, PNG), True)
        self.assertIs(self.p.IsImageFile(name), True)
        self.assertIs(self.p.LoadImage(name), True)

    def test_names_of_files(self):
        self.p.LoadFromImageArray(DATA, WIDTH, HEIGHT)
        self.save_and_load(self.path("plain.png"))
        self.save_and_load(pathlib.Path(self.path("path.png")))
        self.save_and_load(self.path("Grüße, 写真 🖼.png"))
        # A name that is no UTF-8 comes from os.listdir in this form.
        self.save_and_load(os.path.join(self.folder, os.fsdecode(b"caf\xe9.png")))
        self.assertIn(b"caf\xe9.png", os.listdir(os.fsencode(self.folder)))
        self.assertEqual(self.p.GetImageArray(), DATA)

    def test_names_that_are_none(self):
        self.p.LoadFromImageArray(DATA, WIDTH, HEIGHT)
        for wrong in (None, 5, b"bytes.png", ["a.png"]):
            self.assertRaises(TypeError, self.p.SaveImage, wrong, PNG)
        self.assertRaises(UnicodeEncodeError, self.p.SaveImage, "\ud800.png", PNG)
        for name in ("", self.path("nul\0.png"), self.path("no/folder.png")):
            self.assertIs(self.p.SaveImage(name, PNG), False)
        self.assertEqual(os.listdir(self.folder), [])
        self.assertTrue(self.p.Modified is False and self.p.ImageWidth == WIDTH)

    def test_quality_counts(self):
        self.p.LoadFromImageArray(pixels(64, 64), 64, 64)
        sizes = []
        for quality in (10, 95):
            self.p.JpegQuality = quality
            self.assertTrue(self.p.SaveImage(self.path("q.jpg"), JPEG))
            sizes.append(os.path.getsize(self.path("q.jpg")))
        self.assertLess(sizes[0] * 2, sizes[1])


if __name__ == "__main__":
    unittest.main()

"""Pixels, pictures, texts and file names on their way in and out of Python."""
# SPDX-License-Identifier: MIT
import array
import ctypes
import mmap
import os
import pathlib

from support import PNG, ControlTest, opaque, pixels

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
            memoryview(DATA).cast("B", (HEIGHT, WIDTH * 4)),
            memoryview(b"??" + DATA)[2:],
            array.array("I", DATA),
            (ctypes.c_ubyte * len(DATA)).from_buffer_copy(DATA),
            mapped,
        ):
            self.assertIs(self.p.LoadFromImageArray(memory, WIDTH, HEIGHT), True)
            out = self.p.GetImageArray()
            self.assertEqual((type(out), out), (bytes, DATA))
        self.p.Invert()
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
        for memory in (None, b"", DATA[:-1]):
            self.assertIs(self.p.LoadFromImageArray(memory, WIDTH, HEIGHT), False)
        self.assertEqual(self.p.ImageWidth, 4)
        # An empty array is one: sides below 1 empty the control.
        self.assertIs(self.p.LoadFromImageArray(b"", 0, 0), False)
        self.assertIsNone(self.p.GetImageArray())

    def test_picture_is_a_bmp_file(self):
        self.assertIsNone(self.p.Picture)
        self.p.LoadFromImageArray(opaque(DATA), WIDTH, HEIGHT)
        picture = self.p.Picture
        self.assertEqual((type(picture), picture[:2]), (bytes, b"BM"))
        self.p.Empty()
        self.p.Picture = bytearray(picture)
        for nothing in (None, b"", b"BM and no more"):
            self.p.Picture = nothing
        self.assertEqual(self.p.GetImageArray(), opaque(DATA))


class Names(ControlTest):
    def test_names_of_files(self):
        self.p.LoadFromImageArray(DATA, WIDTH, HEIGHT)
        # A name that is no UTF-8 comes from os.listdir in this form.
        latin = os.path.join(self.folder, os.fsdecode(b"caf\xe9.png"))
        for name in (self.path("plain.png"), pathlib.Path(self.path("path.png")), self.path("Grüße, 写真 🖼.png"), latin):
            self.assertIs(self.p.SaveImage(name, PNG), True)
            self.assertIs(self.p.IsImageFile(name), True)
            self.assertIs(self.p.LoadImage(name), True)
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

"""What the tests of the hosts share: pictures, files, a control that is empty again after each test."""
# SPDX-License-Identifier: MIT
import os
import random
import shutil
import tempfile
import unittest

import pixvane

BMP, JPEG, GIF, TIFF, PNG = range(5)


def pixels(width, height, seed=1):
    """Bytes B, G, R, A without any order, alpha included."""
    return random.Random(seed).randbytes(width * height * 4)


def opaque(data):
    """The same with alpha 255."""
    data = bytearray(data)
    data[3::4] = b"\xff" * (len(data) // 4)
    return bytes(data)


def read_picture(path):
    """Width, height and pixels of a picture file."""
    with pixvane.Pixvane() as control:
        if not control.LoadImage(path):
            raise AssertionError("%r is no picture" % path)
        return control.ImageWidth, control.ImageHeight, control.GetImageArray()


def write_picture(path, width, height, data):
    with pixvane.Pixvane() as control:
        if not (control.LoadFromImageArray(data, width, height) and control.SaveImage(path, PNG)):
            raise AssertionError("%r can't be written" % path)


class FolderTest(unittest.TestCase):
    """A test with a folder of its own."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="pixvane-test-")
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)


class ControlTest(FolderTest):
    """A test with a control of its own."""

    def setUp(self):
        super().setUp()
        self.p = pixvane.Pixvane()
        self.addCleanup(self.p.close)

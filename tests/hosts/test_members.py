"""The Python face of the members: methods, properties, what they take and what they give."""
# SPDX-License-Identifier: MIT
import inspect
import math
import pydoc
import unittest

import pixvane
from support import ControlTest


class Index:
    """An integer of a foreign kind, as array libraries have them."""

    def __init__(self, value):
        self.value = value

    def __index__(self):
        return self.value


class Table(ControlTest):
    def test_every_member_is_there_with_its_help_and_arguments(self):
        for member in pixvane.members():
            if member.type == "event":
                self.p.on(member.name, lambda *values: None)
                continue
            attribute = getattr(pixvane.Pixvane, member.name)
            self.assertIn(member.name, dir(self.p))
            self.assertTrue(attribute.__doc__.startswith(member.help))
            if member.type == "property":
                self.assertEqual(attribute.fset is not None, member.writable, member.name)
                getattr(self.p, member.name)
            else:
                names = list(inspect.signature(attribute).parameters)
                self.assertEqual(names[1:], [a.name for a in member.arguments])
                for argument in member.arguments:
                    self.assertIn(argument.name, attribute.__doc__)

    def test_help_shows_accepted_ranges(self):
        text = pydoc.render_doc(pixvane.Pixvane.Temperature, renderer=pydoc.plaintext)
        self.assertIn("Temperature(self, nVal, /)", text)
        self.assertIn("-100 to 100", text)
        self.assertIn("at least 0.02", pixvane.Pixvane.Gamma.__doc__)


class Properties(ControlTest):
    def test_kinds_of_what_is_read(self):
        self.p.NewImage(6, 5)
        self.assertIs(self.p.IsEmpty, False)
        self.assertIs(self.p.Modified, False)
        self.assertIs(type(self.p.Zoom), float)
        self.assertEqual((self.p.ImageWidth, self.p.ImageHeight), (6, 5))
        self.assertEqual(self.p.BackColor1, 0x8B0000)

    def test_put(self):
        self.p.JpegQuality = 150
        self.assertEqual(self.p.JpegQuality, 100)
        self.p.JpegQuality = Index(-5)
        self.assertEqual(self.p.JpegQuality, 0)
        for truth in (True, False, 5, 0):
            self.p.AutoResize = truth
            self.assertIs(self.p.AutoResize, bool(truth))

    def test_colors_have_thirty_two_bits(self):
        for put, got in ((0x123456, 0x123456), (0xFF123456, 0x123456), (0xFFFFFFFF, 0xFFFFFF), (0, 0)):
            self.p.BitmapBackColor = put
            self.assertEqual(self.p.BitmapBackColor, got)
        for wrong in (1 << 32, -(1 << 31) - 1):
            with self.assertRaises(OverflowError):
                self.p.BitmapBackColor = wrong
        self.assertEqual(self.p.BitmapBackColor, 0)

    def test_what_can_not_be_put(self):
        for name in ("Zoom", "IsEmpty", "ImageWidth", "window", "NoSuchMember", "jpegquality"):
            with self.assertRaises(AttributeError, msg=name):
                setattr(self.p, name, 1)
        with self.assertRaises(AttributeError):
            self.p.NoSuchMember
        with self.assertRaises(AttributeError):
            self.p.NoSuchMember()
        with self.assertRaises(AttributeError):
            del self.p.JpegQuality

    def test_wrong_types(self):
        for name, wrong in (
            ("JpegQuality", (1.0, True, "1", None, b"1", [1])),
            ("BackColor1", (1.0, True, "red", None)),
            ("AutoResize", (1.0, "yes", None, [])),
            ("Picture", ("BM", 1, [1, 2])),
        ):
            for value in wrong:
                with self.assertRaises(TypeError, msg="%s = %r" % (name, value)):
                    setattr(self.p, name, value)
        self.assertEqual(self.p.JpegQuality, 90)


class Methods(ControlTest):
    def setUp(self):
        super().setUp()
        self.p.BitmapBackColor = 0x302010
        self.p.NewImage(8, 4)

    def test_numbers_of_arguments(self):
        for call in (
            lambda: self.p.Saturate(),
            lambda: self.p.Saturate(1, 2),
            lambda: self.p.Saturate(nValue=1),
            lambda: self.p.Invert(1),
            lambda: self.p.NewImage(8),
        ):
            self.assertRaises(TypeError, call)
        self.assertRaisesRegex(TypeError, r"Saturate.*1 argument\b.*not 2", self.p.Saturate, 1, 2)
        self.assertFalse(self.p.Modified)

    def test_integers(self):
        for wrong in (1.0, 1.5, True, False, "1", None, b"1", [1], 1j):
            self.assertRaises(TypeError, self.p.Saturate, wrong)
        for wrong in (1 << 31, -(1 << 31) - 1, 1 << 63, 10**100):
            self.assertRaises(OverflowError, self.p.Saturate, wrong)
        self.assertFalse(self.p.Modified)
        self.p.Brightness((1 << 31) - 1, -(1 << 31), Index(-0x30))
        self.assertEqual(self.p.GetPixel(0, 0), 0x0000FF)

    def test_doubles(self):
        for wrong in (True, "1.0", None, b"1", 1j, [1.0]):
            self.assertRaises(TypeError, self.p.Gamma, wrong)
        self.assertRaises(OverflowError, self.p.Gamma, 10**400)
        # These reach the control, which refuses them without a word.
        for silent in (math.nan, math.inf, -math.inf, 0.019, -1):
            self.p.Gamma(silent)
            self.assertFalse(self.p.Modified, silent)
        self.p.Gamma(2)
        self.assertEqual(self.p.GetPixel(0, 0), 0x090401)

    def test_an_error_names_member_and_argument(self):
        self.assertRaisesRegex(TypeError, "Brightness: nGreen must be an integer, not str", self.p.Brightness, 1, "2", 3)

    def test_results(self):
        self.assertIsNone(self.p.Invert())
        self.assertEqual(self.p.GetPixel(7, 3), 0xCFDFEF)
        self.assertEqual(self.p.GetPixel(8, 0), 0)
        self.assertIs(self.p.LoadImage(self.path("missing")), False)
        self.assertIs(self.p.IsEmpty, True)

    def test_histograms(self):
        for name, bin in (("R", 0x10), ("G", 0x20), ("B", 0x30)):
            counts = getattr(self.p, "Get%sHistogram" % name)()
            self.assertIs(type(counts), list)
            self.assertEqual(counts, [32 if i == bin else 0 for i in range(256)])
        self.p.Empty()
        self.assertIsNone(self.p.GetLHistogram())

    def test_a_preview_takes_the_arguments_of_its_command(self):
        for name, values in (
            ("Saturate", (50,)),
            ("Gamma", (0.5,)),
            ("Invert", ()),
            ("AddSimpleBorder", (2, 0xFF0000)),
            ("UserEffect", ([0, 0, 0, 0, 2, 0, 0, 0, 0],)),
        ):
            self.p.NewImage(8, 4)
            getattr(self.p, name)(*values)
            expected = self.p.ImageWidth, self.p.GetImageArray()
            self.p.NewImage(8, 4)
            self.p.BeginPreview()
            self.p.Preview(name, *values)
            self.assertEqual((self.p.ImageWidth, self.p.Modified), (8, False))
            self.p.EndPreview(True)
            self.assertEqual((self.p.ImageWidth, self.p.GetImageArray()), expected)
        self.assertRaises(TypeError, self.p.Preview)
        self.assertRaisesRegex(TypeError, "Saturate.*1 argument", self.p.Preview, "Saturate")
        self.assertRaisesRegex(TypeError, "nValue must be an integer", self.p.Preview, "Saturate", "x")
        for wrong in ("Undo", "saturate", 5, None):
            self.assertRaises(AttributeError, self.p.Preview, wrong)

    def test_back_and_forth(self):
        self.p.Invert()
        self.p.AddSimpleBorder(2, 0x0000FF)
        self.assertEqual((self.p.ImageWidth, self.p.ImageHeight, self.p.GetPixel(0, 0)), (12, 8, 0xFF))
        self.assertTrue(self.p.UndoEnable)
        self.p.Undo()
        self.p.Undo()
        self.assertEqual((self.p.ImageWidth, self.p.GetPixel(0, 0)), (8, 0x302010))
        self.assertEqual((self.p.UndoEnable, self.p.RedoEnable), (False, True))
        self.p.Redo()
        self.assertEqual(self.p.GetPixel(0, 0), 0xCFDFEF)


if __name__ == "__main__":
    unittest.main()

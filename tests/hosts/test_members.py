"""The Python face of the members: methods, properties, what they take and what they give."""
# SPDX-License-Identifier: MIT
import inspect
import math
import struct

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
        self.assertIn("-100 to 100", pixvane.Pixvane.Temperature.__doc__)
        self.assertIn("at least 0.02", pixvane.Pixvane.Gamma.__doc__)


class Values(ControlTest):
    def setUp(self):
        super().setUp()
        self.p.BitmapBackColor = 0x302010
        self.p.NewImage(8, 4)

    def test_what_is_put_and_read(self):
        self.assertIs(self.p.IsEmpty, False)
        self.assertIs(type(self.p.Zoom), float)
        for name, put, got in (
            ("JpegQuality", 150, 100),
            ("JpegQuality", Index(-5), 0),
            ("AutoResize", True, True),
            ("AutoResize", 0, False),
            ("AutoResize", 5, True),
            ("BitmapBackColor", 0xFF123456, 0x123456),
            ("BitmapBackColor", 0xFFFFFFFF, 0xFFFFFF),
        ):
            setattr(self.p, name, put)
            self.assertEqual((getattr(self.p, name), type(getattr(self.p, name))), (got, type(got)))

    def test_what_there_is_not(self):
        for name in ("Zoom", "IsEmpty", "window", "NoSuchMember", "jpegquality"):
            self.assertRaises(AttributeError, setattr, self.p, name, 1)
        self.assertRaises(AttributeError, getattr, self.p, "NoSuchMember")
        self.assertRaises(AttributeError, delattr, self.p, "JpegQuality")

    def test_what_is_of_a_wrong_kind_or_too_large(self):
        for error, name, values in (
            (TypeError, "JpegQuality", (1.0, True, "1", None, b"1", [1])),
            (TypeError, "BackColor1", (1.0, True, "red", None)),
            (TypeError, "AutoResize", (1.0, "yes", None, [])),
            (TypeError, "Picture", ("BM", 1, [1, 2])),
            (OverflowError, "BackColor1", (1 << 32, -(1 << 31) - 1)),
            (TypeError, "Saturate", (1.0, True, "1", None, b"1", [1], 1j)),
            (OverflowError, "Saturate", (1 << 31, -(1 << 31) - 1, 1 << 63, 10**100)),
            (TypeError, "Gamma", (True, "1.0", None, b"1", 1j, [1.0])),
            (OverflowError, "Gamma", (10**400,)),
            (TypeError, "UserEffect", (5, 1.0, [1.0] * 9, "123456789")),
        ):
            is_method = not hasattr(getattr(pixvane.Pixvane, name), "fset")
            for value in values:
                with self.assertRaises(error, msg="%s of %r" % (name, value)):
                    getattr(self.p, name)(value) if is_method else setattr(self.p, name, value)
        # These reach the control, which refuses them without a word.
        for silent in (math.nan, math.inf, -math.inf, 0.019, -1):
            self.p.Gamma(silent)
        self.assertEqual((self.p.JpegQuality, self.p.Modified), (90, False))

    def test_numbers_of_arguments(self):
        for name, arguments in (("Saturate", ()), ("Saturate", (1, 2)), ("Invert", (1,)), ("NewImage", (8,))):
            self.assertRaises(TypeError, getattr(self.p, name), *arguments)
        self.assertRaises(TypeError, self.p.Saturate, nValue=1)
        self.assertRaisesRegex(TypeError, r"Saturate.*1 argument\b.*not 2", self.p.Saturate, 1, 2)
        self.assertRaisesRegex(TypeError, "Brightness: nGreen must be an integer, not str", self.p.Brightness, 1, "2", 3)
        self.assertFalse(self.p.Modified)

    def test_results(self):
        self.assertIsNone(self.p.Invert())
        self.assertEqual((self.p.GetPixel(7, 3), self.p.GetPixel(8, 0)), (0xCFDFEF, 0))
        self.p.Undo()
        self.p.Gamma(2)
        self.assertEqual(self.p.GetPixel(0, 0), 0x090401)
        self.p.Brightness((1 << 31) - 1, -(1 << 31), Index(-9))
        self.assertEqual(self.p.GetPixel(0, 0), 0x0000FF)
        self.assertEqual(self.p.GetRHistogram(), [32 if i == 255 else 0 for i in range(256)])
        self.assertIs(self.p.LoadImage(self.path("missing")), False)
        self.assertIs(self.p.IsEmpty, True)
        self.assertIsNone(self.p.GetLHistogram())

    def test_a_preview_takes_the_arguments_of_its_command(self):
        for name, values in (
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

class Macros(ControlTest):
    def test_steps_show_values_of_every_kind(self):
        path = self.path("made.macro")
        made = (
            (29, struct.pack("<d", 0.5), {"Level": 0.5}),
            (38, struct.pack("<I3i", 3, 1, -2, 3), {"ppArray": [1, -2, 3]}),
            (155, struct.pack("<I4i", 2, 1, 2, -3, 4), {"Points": [1, 2, -3, 4]}),
            (162, struct.pack("<2iI", 5, -6, 4) + "aé😀".encode("utf-16-le"), {"X": 5, "Y": -6, "Text": "aé😀"}),
            (163, struct.pack("<2i2I", 1, 2, 1, 2) + b"BGRAbgra", {"X": 1, "Y": 2, "Width": 1, "Height": 2, "Pixels": b"BGRAbgra"}),
            (177, b"\x01", {"Value": True}),
            (174, b"\x80", {"Value": 128}),
            (209, struct.pack("<I", 0xFF112233), {"Value": 0xFF112233}),
            (2, b"", {}),
            (7, struct.pack("<i", 1), {"nRed": 1}),
        )
        stream = b"".join(part for _, part, _ in made)
        with open(path, "wb") as file:
            file.write(bytes([len(made)]) + b"".join(struct.pack("<i", code) for code, _, _ in made))
            file.write(struct.pack("<i", len(stream)) + stream)
        self.assertIs(self.p.LoadMacros(path), True)
        steps = self.p.macro_steps()
        self.assertEqual([(step.code, step.size, step.arguments) for step in steps], [(c, len(b), v) for c, b, v in made])
        self.assertEqual([step.complete for step in steps], [True] * 9 + [False])
        self.assertEqual([step.member for step in steps[-2:]], [None, "Brightness"])
        with pixvane.Pixvane() as other:
            self.assertIs(other.LoadMacros(self.path("none")), False)
            self.assertEqual(other.macro_steps(), [])

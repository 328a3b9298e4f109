"""Macros from Python: recorded, saved, loaded, shown, played."""
# SPDX-License-Identifier: MIT
import struct
import unittest

import pixvane
from support import ControlTest, opaque, pixels

WIDTH, HEIGHT = 24, 17
DATA = opaque(pixels(WIDTH, HEIGHT))


class Macros(ControlTest):
    def test_a_recording_replays_on_another_picture(self):
        path = self.path("edit.macro")
        self.p.LoadFromImageArray(DATA, WIDTH, HEIGHT)
        self.p.BeginMacros()
        self.assertIs(self.p.Recording, True)
        self.p.Saturate(140)
        self.p.UserEffect([0, -1, 0, -1, 5, -1, 0, -1, 0])
        self.p.PenColor = 0x123456
        self.p.EndMacros()
        self.assertIs(self.p.Recording, False)
        self.assertIs(self.p.SaveMacros(path), True)
        with pixvane.Pixvane() as other:
            other.LoadFromImageArray(DATA, WIDTH, HEIGHT)
            self.assertIs(other.LoadMacros(path), True)
            self.assertEqual(other.macro_steps(), self.p.macro_steps())
            other.PlayMacros()
            self.assertEqual(other.GetImageArray(), self.p.GetImageArray())
            self.assertEqual(other.PenColor, 0)
            self.assertIs(other.LoadMacros(self.path("none")), False)
            self.assertEqual(other.macro_steps(), [])

    def test_steps_show_values_of_every_kind(self):
        path = self.path("made.macro")
        arguments = [
            (29, struct.pack("<d", 0.5)),
            (38, struct.pack("<I3i", 3, 1, -2, 3)),
            (155, struct.pack("<I4i", 2, 1, 2, -3, 4)),
            (162, struct.pack("<2iI", 5, -6, 4) + "aé😀".encode("utf-16-le")),
            (163, struct.pack("<2i2I", 1, 2, 1, 2) + b"BGRAbgra"),
            (177, b"\x01"),
            (174, b"\x80"),
            (209, struct.pack("<I", 0xFF112233)),
            (2, b""),
            (7, struct.pack("<i", 1)),
        ]
        with open(path, "wb") as file:
            file.write(bytes([len(arguments)]) + b"".join(struct.pack("<i", code) for code, _ in arguments))
            stream = b"".join(part for _, part in arguments)
            file.write(struct.pack("<i", len(stream)) + stream)
        self.assertIs(self.p.LoadMacros(path), True)
        steps = self.p.macro_steps()
        self.assertEqual([step.code for step in steps], [code for code, _ in arguments])
        self.assertEqual([step.size for step in steps], [len(part) for _, part in arguments])
        self.assertEqual([step.complete for step in steps], [True] * 9 + [False])
        self.assertEqual([step.member for step in steps[-2:]], [None, "Brightness"])
        self.assertEqual(
            [step.arguments for step in steps],
            [
                {"Level": 0.5},
                {"ppArray": [1, -2, 3]},
                {"Points": [1, 2, -3, 4]},
                {"X": 5, "Y": -6, "Text": "aé😀"},
                {"X": 1, "Y": 2, "Width": 1, "Height": 2, "Pixels": b"BGRAbgra"},
                {"Value": True},
                {"Value": 128},
                {"Value": 0xFF112233},
                {},
                {"nRed": 1},
            ],
        )


if __name__ == "__main__":
    unittest.main()

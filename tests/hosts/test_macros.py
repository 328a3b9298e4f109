"""Macros from Python: every kind of value that a step can hold."""
# SPDX-License-Identifier: MIT
import struct
import unittest

import pixvane
from support import ControlTest


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


if __name__ == "__main__":
    unittest.main()

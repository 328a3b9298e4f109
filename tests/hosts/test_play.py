"""The command line's macros: many pictures in one run, and macros shown and written."""
# SPDX-License-Identifier: MIT
import filecmp
import json
import os
import pty
import signal
import subprocess
import time

import pixvane
from support import BMP, GIF, JPEG, PNG, TIFF, opaque, pixels, read_picture
from test_cli import PROGRAM, CommandLineTest

ENDINGS = {BMP: "bmp", JPEG: "jpg", GIF: "gif", TIFF: "tif", PNG: "png"}
MAX_STEPS = 255


class MacroTest(CommandLineTest):
    def macro(self, *steps, name="m.pvm"):
        path = self.path(name)
        self.succeed("macro", "record", path, *steps)
        return path

    def play(self, macro, *sources, out="out", options=()):
        return self.run_program("play", macro, *sources, "--out", self.path(out), *options)

    def files(self, folder):
        """Every file of a folder by its name."""
        contents = {}
        for name in sorted(os.listdir(self.path(folder))):
            with open(os.path.join(self.path(folder), name), "rb") as file:
                contents[name] = file.read()
        return contents

    def written(self, name, kind=None, width=6, height=5, seed=1):
        """A picture file, its type by its ending unless given."""
        if kind is None:
            kind = next(k for k, ending in ENDINGS.items() if name.endswith(ending))
        with pixvane.Pixvane() as p:
            p.LoadFromImageArray(opaque(pixels(width, height, seed)), width, height)
            self.assertTrue(p.SaveImage(self.path(name), kind))
        return self.path(name)

    def bytes_in(self, name, data):
        with open(self.path(name), "wb") as file:
            file.write(data)
        return self.path(name)


class Play(MacroTest):
    def test_many_pictures_of_all_kinds_come_out_the_same_however_many_are_worked_on(self):
        macro = self.macro("Noise=1,40", "Diffuse=3", "ScaleImage=0.7,1.3", "AddSimpleBorder=1,#FF0000")
        sources, broken = [], set()
        for i in range(80):
            name = "p%03d.%s" % (i, ENDINGS[i % 5])
            sources.append(self.written(name, width=2 + i % 23, height=2 + i % 11, seed=i))
            if i % 17 == 3:
                os.truncate(sources[-1], 11)
                broken.add(name)
        results = []
        for jobs in ("1", "2", "5"):
            given = reversed(sources) if jobs == "5" else sources
            status, out, err = self.play(macro, *given, out=jobs, options=["--jobs", jobs])
            self.assertEqual((status, out), (1, ""))
            lines = err.splitlines()
            self.assertEqual(len(lines), len(broken) + 1)
            for name in broken:
                self.assertEqual(sum(name in line for line in lines), 1, name)
            results.append(self.files(jobs))
        self.assertEqual(sorted(results[0]), sorted(set(map(os.path.basename, sources)) - broken))
        self.assertEqual(results[0], results[1])
        self.assertEqual(results[0], results[2])
        with pixvane.Pixvane() as p:
            pixvane.seed_random(1)
            p.LoadImage(sources[64])
            p.Noise(1, 40)
            p.Diffuse(3)
            p.ScaleImage(0.7, 1.3)
            p.AddSimpleBorder(1, 0x0000FF)
            result = read_picture(os.path.join(self.path("1"), "p064.png"))
            self.assertEqual(result, (p.ImageWidth, p.ImageHeight, p.GetImageArray()))

    def test_formats_follow_what_is_inside_unless_told(self):
        macro = self.macro("Invert")
        heads = {"a.png": b"\x89PNG", "b.JPEG": b"\xff\xd8\xff", "c.tiff": b"II*\0", "d.gif": b"GIF8", "e.bmp": b"BM"}
        for kind, name in ((PNG, "a.png"), (JPEG, "b.JPEG"), (TIFF, "c.tiff"), (GIF, "d.gif"), (BMP, "e.bmp"), (PNG, "wrong.jpg"), (BMP, "none")):
            self.written(name, kind)
        sources = [self.path(n) for n in (*heads, "wrong.jpg", "none")]
        self.assertEqual(self.play(macro, *sources), (0, "", ""))
        made = self.files("out")
        self.assertEqual(sorted(made), sorted([*heads, "wrong.png", "none.bmp"]))
        for name, head in heads.items():
            self.assertTrue(made[name].startswith(head), name)
        self.assertEqual(self.play(macro, sources[0], out="forced", options=["--format", "jpg"]), (0, "", ""))
        self.assertTrue(self.files("forced")["a.jpg"].startswith(b"\xff\xd8\xff"))

    def test_nothing_is_replaced_that_should_not_be(self):
        macro = self.macro("Invert")
        picture, other = self.written("a.png"), self.written("b.png", seed=2)
        original = self.files(".")
        os.symlink(self.folder, self.path("link"))
        for folder in (self.folder, self.path("link")):
            self.refuse(2, "replace the source|a.png", "play", macro, picture, other, "--out", folder, "--overwrite")
        os.mkdir(self.path("sub"))
        twin = self.written("sub/a.png")
        self.refuse(2, "both|a.png", "play", macro, picture, twin, "--out", self.path("out"))
        self.assertFalse(os.path.exists(self.path("out")))

        self.assertEqual(self.play(macro, picture)[0], 0)
        first = self.files("out")
        status, _, err = self.play(self.macro("ClearImage", name="clear.pvm"), picture, other)
        self.assertEqual(status, 1)
        self.assertIn("--overwrite", err)
        self.assertEqual(self.files("out")["a.png"], first["a.png"])
        self.assertIn("b.png", self.files("out"))
        self.assertEqual(self.play(self.path("clear.pvm"), picture, options=["--overwrite"]), (0, "", ""))
        self.assertNotEqual(self.files("out")["a.png"], first["a.png"])
        for name, content in original.items():
            with open(self.path(name), "rb") as file:
                self.assertEqual(file.read(), content)

    def test_wrong_command_lines(self):
        macro, picture = self.macro("Invert"), self.written("a.png")
        out = ["--out", self.path("out")]
        for words, arguments in (
            ("--out", [macro, picture]),
            ("pictures", [macro, *out]),
            ("--jobs|'0'", [macro, picture, *out, "--jobs=0"]),
            ("--jobs|'2x'", [macro, picture, *out, "--jobs", "2x"]),
            ("--format|'webp'", [macro, picture, *out, "--format", "webp"]),
            ("--overwrite|no value", [macro, picture, *out, "--overwrite=1"]),
            ("--out|needs a value", [macro, picture, "--out"]),
            ("'--ovrwrite'", [macro, picture, *out, "--ovrwrite"]),
        ):
            self.refuse(2, words, "play", *arguments)
        self.refuse(1, "No such file", "play", self.path("no.pvm"), picture, *out)
        self.refuse(1, "not a macro", "play", self.bytes_in("short.pvm", b"\x01"), picture, *out)
        self.refuse(1, "folder", "play", macro, picture, "--out", os.path.join(picture, "out"))
        self.assertFalse(os.path.exists(self.path("out")))

    def test_an_interruption_leaves_whole_files_only(self):
        macro = self.macro(*["Median=5"] * 20)
        sources = [self.written("p%02d.png" % i, width=500, height=400, seed=i) for i in range(60)]
        program = subprocess.Popen(
            [PROGRAM, "play", macro, *sources, "--out", self.path("out"), "--jobs", "2"],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE,
        )
        deadline = time.monotonic() + 60
        while not (os.path.isdir(self.path("out")) and os.listdir(self.path("out"))) and time.monotonic() < deadline:
            time.sleep(0.01)
        program.send_signal(signal.SIGINT)
        _, err = program.communicate(timeout=120)
        self.assertEqual(program.returncode, 130, err)
        made = os.listdir(self.path("out"))
        self.assertLess(len(made), len(sources))
        for name in made:
            self.assertEqual(read_picture(os.path.join(self.path("out"), name))[:2], (500, 400))

    def test_a_terminal_sees_how_far_it_is(self):
        macro = self.macro("Invert")
        sources = [self.written("a.png"), self.bytes_in("broken.png", b"\x89PNG"), self.written("c.png")]
        try:
            main, terminal = pty.openpty()
        except OSError as error:  # a container may have none
            self.skipTest("no terminal to be had: %s" % error)
        status = subprocess.call([PROGRAM, "play", macro, *sources, "--out", self.path("out")], stderr=terminal, timeout=60)
        os.close(terminal)
        seen = b""
        try:
            while chunk := os.read(main, 4096):
                seen += chunk
        except OSError:  # the terminal's other side is closed
            pass
        os.close(main)
        self.assertEqual(status, 1)
        self.assertIn(b"3 of 3, 1 failed", seen)
        self.assertEqual(seen.count(b"broken.png"), 1)


class Macro(MacroTest):
    def test_shows_what_it_recorded(self):
        kernel = [0, 1, 0, 1, 4, 1, 0, 1, 0]
        macro = self.macro("PenColor=#FF8000", "Saturate=-30", "Gamma=1.5", "UserEffect=" + ",".join(map(str, kernel)), "Invert")
        told = json.loads(self.succeed("macro", "show", macro, "--json"))
        self.assertEqual([step["step"] for step in told], list(range(1, 33)))
        expected = [("PenColor", 0x0080FF), ("Saturate", -30), ("Gamma", 1.5), ("UserEffect", kernel), ("Invert", None)]
        for step, (name, value) in zip(told[27:], expected):
            self.assertEqual(step["member"], name)
            self.assertEqual(list(step["arguments"].values()), [] if value is None else [value])
            self.assertTrue(step["complete"])
        offsets = [step["offset"] for step in told]
        self.assertEqual(offsets, [sum(s["size"] for s in told[:i]) for i in range(len(told))])
        text = self.succeed("macro", "show", macro).splitlines()
        self.assertEqual(len(text), 33)
        self.assertRegex(text[29], r"^ +29 +1 +\d+  Saturate  nValue=-30$")

        cut = self.bytes_in("cut.pvm", b"\1" + b"\1\0\0\0" + b"\2\0\0\0" + b"\5\0")
        self.assertIn("cut off", self.succeed("macro", "show", cut))
        with pixvane.Pixvane() as p:
            p.BeginMacros()
            p.PenColor = 0x0080FF
            p.NewImage(4, 4)
            p.Saturate(-30)
            p.Gamma(1.5)
            p.UserEffect(kernel)
            p.Invert()
            p.EndMacros()
            self.assertTrue(p.SaveMacros(self.path("same.pvm")))
        self.assertTrue(filecmp.cmp(macro, self.path("same.pvm"), shallow=False))

    def test_what_can_not_be_recorded_is_refused(self):
        out = self.path("m.pvm")
        for words, *arguments in (
            ("Undo|not recorded", "record", out, "Undo"),
            ("did you mean", "record", out, "Saturat=1"),
            ("255", "record", out, *["Invert"] * (MAX_STEPS - 26)),
            ("refused", "record", out, "UserEffect=1,2,3"),
            ("'show' or 'record'", "play", out),
        ):
            self.refuse(2, words, "macro", *arguments)
        self.refuse(1, "folder", "macro", "record", self.path("no/m.pvm"), "Invert")
        self.assertFalse(os.path.exists(out))
        self.macro(*["Invert"] * (MAX_STEPS - 27))
        status, _, err = self.run_program("macro", "record", out, "SetNewSize=9,9")
        self.assertEqual(status, 0)
        self.assertIn("ScaleImage", err)

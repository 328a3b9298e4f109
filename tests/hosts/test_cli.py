"""The command line program: what it does, what it says, and what it leaves alone when something is wrong."""
# SPDX-License-Identifier: MIT
import json
import os
import subprocess

import pixvane
from support import FolderTest, opaque, pixels, read_picture, write_picture

PROGRAM = os.environ["PIXVANE_CLI"]
WIDTH, HEIGHT = 20, 12
DATA = opaque(pixels(WIDTH, HEIGHT))


class CommandLineTest(FolderTest):
    def setUp(self):
        super().setUp()
        self.picture = self.path("in.png")
        self.out = self.path("out.png")
        write_picture(self.picture, WIDTH, HEIGHT, DATA)

    def run_program(self, *arguments, **options):
        # Bytes: names of files need not be UTF-8.
        command = [PROGRAM] + [os.fsencode(a) for a in arguments]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120, **options)
        return done.returncode, done.stdout.decode(errors="replace"), done.stderr.decode(errors="replace")

    def succeed(self, *arguments):
        status, out, err = self.run_program(*arguments)
        self.assertEqual((status, err), (0, ""), arguments)
        return out

    def edit(self, *steps):
        """The picture after these steps, and what the program printed."""
        printed = self.succeed("edit", self.picture, self.out, *steps)
        return read_picture(self.out), printed

    def refuse(self, status, words, *arguments):
        """The program must end with this status and one line that holds the words, divided by bars."""
        got, out, err = self.run_program(*arguments)
        self.assertEqual((got, out), (status, ""), (arguments, err))
        self.assertRegex(err, r"\Apixvane( \w+)?: [^\n]+\n\Z")
        for word in words.split("|"):
            self.assertIn(word, err)


class Help(CommandLineTest):
    def test_help_and_version(self):
        for arguments in (["--help"], ["-h"], ["edit", "--help"], ["info", "-h"], ["members", "--help"]):
            out = self.succeed(*arguments)
            self.assertIn("Usage\n", out)
            self.assertLessEqual(max(map(len, out.splitlines())), 100)
        self.assertEqual(self.succeed("--version"), "pixvane %s\n" % pixvane.__version__)

    def test_wrong_commands_and_options(self):
        status, out, err = self.run_program()
        self.assertEqual((status, out), (2, ""))
        self.assertIn("Usage", err)
        for words, *arguments in (
            ("'edti'", "edti", "a", "b"),
            ("'--jsn'", "info", "--jsn", self.picture),
            ("'--json'", "edit", "--json", self.picture, self.out),
            ("picture", "edit", self.picture),
            ("one picture", "info", self.picture, self.picture),
            ("not both", "members", "--json", "--markdown"),
        ):
            self.refuse(2, words, *arguments)

    def test_an_output_that_can_not_be_written_is_told(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PROGRAM, "members"], stdout=full, stderr=subprocess.PIPE)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"output", done.stderr)


class Edit(CommandLineTest):
    def expected(self, *calls):
        """What the members themselves make of the picture."""
        with pixvane.Pixvane() as p:
            p.LoadFromImageArray(DATA, WIDTH, HEIGHT)
            for name, *values in calls:
                getattr(p, name)(*values)
            return p.ImageWidth, p.ImageHeight, p.GetImageArray()

    def test_steps_in_their_order(self):
        kernel = [0, 0, 0, 1, 0, 0, 0, 0, -0]
        for steps, calls in (
            ((), ()),
            (
                ("Saturate=-30", "Brightness=0x10,-5,+3", "AddSimpleBorder=2,#FF8000", "RotateFlip=1"),
                (("Saturate", -30), ("Brightness", 16, -5, 3), ("AddSimpleBorder", 2, 0x80FF), ("RotateFlip", 1)),
            ),
            (("Invert", "Saturate=0", "Undo"), (("Invert",),)),
            (("Gamma=1.5e0", "Gamma=.5"), (("Gamma", 1.5), ("Gamma", 0.5))),
            (("UserEffect=" + ",".join(map(str, kernel)),), (("UserEffect", kernel),)),
        ):
            self.assertEqual(self.edit(*steps), (self.expected(*calls), ""))

    def test_colors(self):
        for color in ("#FF8000", "0x0080FF", "0xFF0080FF", "33023"):
            got, _ = self.edit("BitmapBackColor=" + color, "AutoResize=true", "ClearImage")
            self.assertEqual(got[2], b"\x00\x80\xff\xff" * (WIDTH * HEIGHT), color)

    def test_the_ending_says_how_it_is_saved(self):
        for ending, head in (
            ("bmp", b"BM"),
            ("jpg", b"\xff\xd8\xff"),
            ("JPEG", b"\xff\xd8\xff"),
            ("gif", b"GIF8"),
            ("tif", b"II*\0"),
            ("Tiff", b"II*\0"),
            ("png", b"\x89PNG"),
        ):
            out = self.path("out." + ending)
            self.succeed("edit", self.picture, out)
            with open(out, "rb") as file:
                self.assertEqual(file.read(len(head)), head, ending)
            self.assertEqual(read_picture(out)[:2], (WIDTH, HEIGHT))

    def test_properties_are_put_and_results_are_printed(self):
        sizes = []
        for quality in ("5", "100"):
            out = self.path("out.jpg")
            self.succeed("edit", self.picture, out, "JpegQuality=" + quality)
            sizes.append(os.path.getsize(out))
        self.assertLess(sizes[0], sizes[1])
        _, printed = self.edit("BitmapBackColor=#0A0B0C", "ClearImage", "GetPixel=3,4", "GetRHistogram")
        lines = printed.splitlines()
        self.assertEqual(lines[0], "GetPixel=3,4: 0x0C0B0A")
        self.assertEqual(lines[1].split()[1:], [str(WIDTH * HEIGHT if i == 10 else 0) for i in range(256)])

    def test_a_picture_may_be_edited_in_place(self):
        self.succeed("edit", self.picture, self.picture, "Invert")
        self.assertEqual(read_picture(self.picture), self.expected(("Invert",)))

    def test_texts_with_commas_and_names_with_dashes(self):
        other = self.path("a,b\\c.png")
        write_picture(other, 3, 4, pixels(3, 4))
        self.assertEqual(self.edit("LoadImage=" + other)[0][:2], (3, 4))
        escaped = self.path("copy.png").replace("\\", "\\\\").replace(",", "\\,")
        self.edit("SaveImage=" + escaped + ",4", "SaveImage=" + self.path("c\\,d.png") + ",4")
        self.assertTrue(os.path.exists(self.path("c,d.png")))
        os.rename(self.picture, self.path("-in.png"))
        status, _, err = self.run_program("edit", "--", "-in.png", "--out.png", "Invert", cwd=self.folder)
        self.assertEqual((status, err), (0, ""))
        self.assertEqual(read_picture(self.path("--out.png")), self.expected(("Invert",)))


class Refusals(CommandLineTest):
    # What must be said, and the steps that are wrong in this way.
    STEPS = (
        ("Saturat|did you mean Saturate", "Saturat=5"),
        ("saturate|did you mean Saturate", "saturate=5"),
        ("did you mean Brightness", "Brigthness=1,1,1"),
        ("'pixvane members'", "Xylophone"),
        ("name of a member", "=5"),
        ("1 argument|Saturate=nValue|not 0", "Saturate"),
        ("3 arguments|Brightness=nRed,nGreen,nBlue|not 2", "Brightness=1,2"),
        ("no arguments", "Invert=1", "Invert="),
        ("nValue|'1.5'|whole number", "Saturate=1.5"),
        ("''|whole number", "Saturate="),
        ("' 5'|whole number", "Saturate= 5"),
        ("whole number", "Saturate=0x", "Saturate=--5"),
        ("beyond 32 bits", "Saturate=2147483648", "Saturate=-2147483649", "Saturate=99999999999999999999999999"),
        ("beyond 32 bits", "AddSimpleBorder=3,0x100000000", "UserEffect=1,4294967296"),
        ("nVal|-100 to 100", "Temperature=101"),
        ("at least 0.02", "Gamma=0.01"),
        ("not a number", "Gamma=nan", "Gamma=inf", "Gamma=1.0x", "Gamma=0x1"),
        ("too large", "Gamma=1e999"),
        ("#RRGGBB", "AddSimpleBorder=3,red", "AddSimpleBorder=3,#12345G"),
        ("true or false", "AutoResize=yes"),
        ("JpegQuality|needs a value", "JpegQuality"),
        ("Zoom|only be read", "Zoom=2"),
        ("event", "OnDropFile=a"),
        ("list of integers", "UserEffect"),
        ("ppArray|'x'|whole number", "UserEffect=1,x"),
        ("bytes", "LoadFromImageArray=a,2,2", "GetImageArray", "Picture=abc"),
        ("before it is taken", "Preview=Invert", "EndPreview=true"),
    )

    def setUp(self):
        super().setUp()
        self.broken, self.subfolder = self.path("broken.png"), self.path("folder.png")
        os.mkdir(self.subfolder)
        for path, data in ((self.out, b"precious"), (self.broken, b"\x89PNG\r\n\x1a\n and no more")):
            with open(path, "wb") as file:
                file.write(data)
        self.names = sorted(os.listdir(self.folder))

    def tearDown(self):
        with open(self.out, "rb") as file:
            self.assertEqual(file.read(), b"precious")
        self.assertEqual(sorted(os.listdir(self.folder)), self.names)

    def test_wrong_steps_are_found_before_anything_is_read(self):
        for words, *steps in self.STEPS:
            for step in steps:
                # The picture isn't there: had the program looked, the status would be 1.
                self.refuse(2, words, "edit", self.path("missing.png"), self.out, "Invert", step)

    def test_wrong_endings(self):
        for name in ("out", "out.webp", "png", ".png", "out.png/"):
            self.refuse(2, ".png", "edit", self.picture, self.path(name))

    def test_files_that_can_not_be_read(self):
        for words, name in (
            ("missing.png|No such file", self.path("missing.png")),
            ("Is a directory", self.subfolder),
            ("broken.png|decoded", self.broken),
            ("plain file", "/dev/null"),
            ("No such file", ""),
            ("line\\x0Abreak", self.path("line\nbreak.png")),
        ):
            self.refuse(1, words, "edit", name, self.out, "Invert")
            self.refuse(1, words, "info", name)

    def test_files_that_can_not_be_written(self):
        for words, out in (
            ("folder does not exist", self.path("no/out.png")),
            ("Not a directory", os.path.join(self.picture, "out.png")),
            ("Is a directory", self.subfolder),
            ("can't write", "/proc/out.png"),
        ):
            self.refuse(1, words, "edit", self.picture, out)

    def test_a_step_that_fails_leaves_the_old_file(self):
        self.refuse(1, "LoadImage", "edit", self.picture, self.out, "LoadImage=" + self.path("missing.png"))
        self.refuse(1, "no picture", "edit", self.picture, self.out, "Empty")


class Info(CommandLineTest):
    def test_text(self):
        out = self.succeed("info", self.picture)
        self.assertTrue(out.startswith(self.picture + "\n"))
        for words in ("PNG", "20 x 12 pixels", "{:,} bytes".format(os.path.getsize(self.picture))):
            self.assertIn(words, out)

    def test_json(self):
        name = os.path.join(self.folder, 'a "quoted"\\\n\x01 Grüße 🖼.bmp')
        self.succeed("edit", self.picture, name, "BitmapBackColor=#000000", "ClearImage", "BitmapBackColor=#FFFFFF", "SetNewSize=20,24")
        self.assertEqual(
            json.loads(self.succeed("info", "--json", name)),
            {
                "file": name,
                "format": "BMP",
                "width": 20,
                "height": 24,
                "frames": 1,
                "bytes": os.path.getsize(name),
                "luminance": {"darkest": 0, "brightest": 255, "mean": 127.5},
            },
        )

    def test_a_name_that_is_no_utf8_still_gives_json(self):
        name = os.path.join(self.folder, os.fsdecode(b"caf\xe9.png"))
        os.rename(self.picture, name)
        _, out, _ = self.run_program("info", "--json", name)
        self.assertTrue(json.loads(out)["file"].endswith("caf\ufffd.png"))


class Members(CommandLineTest):
    def test_json_tells_what_the_library_tells(self):
        told = json.loads(self.succeed("members", "--json"))
        expected = [dict(m._asdict(), arguments=[json_argument(a) for a in m.arguments]) for m in pixvane.members()]
        self.assertEqual(told, expected)

    def test_lists_name_every_member(self):
        text, markdown = self.succeed("members"), self.succeed("members", "--markdown")
        for member in pixvane.members():
            self.assertRegex(text, r"(?m)^  %s\b" % member.name)
            self.assertRegex(markdown, r"(?m)^\| `%s\b.*\|$" % member.name)


def json_argument(argument):
    def numbers(pair):
        return None if pair is None else [None if abs(n) == float("inf") else n for n in pair]

    return dict(argument._asdict(), range=numbers(argument.range), slider=numbers(argument.slider))

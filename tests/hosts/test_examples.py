"""The example hosts and the sample picture: they run, and the same steps give the same pixels in all of them."""
# SPDX-License-Identifier: MIT
import os
import subprocess
import sys

import pixvane
from support import FolderTest, opaque, pixels, read_picture, write_picture

HOSTS = {
    "c": [os.environ["PIXVANE_EXAMPLE_C"]],
    "cpp": [os.environ["PIXVANE_EXAMPLE_CPP"]],
    "python": [sys.executable, os.environ["PIXVANE_EXAMPLE_PYTHON"]],
}


def run(command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=300)


class Examples(FolderTest):
    def results(self, *arguments):
        """What each host printed and saved."""
        results = {}
        for name, command in HOSTS.items():
            out = self.path(name + ".png")
            done = run(command + [out] + list(arguments))
            self.assertEqual((done.returncode, done.stderr), (0, b""), name)
            results[name] = (done.stdout, read_picture(out))
        return results

    def test_hosts_agree(self):
        picture = self.path("in.png")
        write_picture(picture, 30, 40, opaque(pixels(30, 40)))
        for arguments, size in (((), (336, 256)), ((picture,), (46, 56))):
            results = self.results(*arguments)
            self.assertEqual(results["c"], results["cpp"])
            self.assertEqual(results["c"], results["python"])
            printed, (width, height, data) = results["c"]
            self.assertEqual((width, height), size)
            self.assertEqual(data[:4], b"\xff\xff\xff\xff")
            peaks = [line.split("luminance")[1] for line in printed.decode().splitlines()]
            self.assertEqual(len(peaks), 5)
            self.assertNotEqual(peaks[0], peaks[1])  # Autolevels did something,
            self.assertEqual(peaks[1], peaks[3])  # Undo went back to it,
            self.assertEqual(peaks[2], peaks[4])  # Redo forward again.

    def test_hosts_say_what_is_wrong(self):
        for name, command in HOSTS.items():
            for arguments, status in (([], 2), (["a", "b", "c"], 2), ([self.path("out.png"), self.path("no")], 1)):
                done = run(command + arguments)
                self.assertEqual((done.returncode, done.stdout), (status, b""), name)
                self.assertNotEqual(done.stderr, b"")
            done = run(command + [self.path("no/out.png")])
            self.assertEqual(done.returncode, 1)
            self.assertIn(b"no/out.png", done.stderr)


class Sample(FolderTest):
    def render(self, *arguments):
        return run([os.environ["PIXVANE_SAMPLE"]] + list(arguments))

    def test_it_is_the_same_each_time_and_has_what_a_photograph_has(self):
        first, second = self.path("1.png"), self.path("2.png")
        for path in (first, second):
            self.assertEqual(self.render(path, "240", "160").returncode, 0)
        width, height, data = read_picture(first)
        self.assertEqual((width, height), (240, 160))
        self.assertEqual(read_picture(second)[2], data)
        with pixvane.Pixvane() as p:
            p.LoadImage(first)
            counts = p.GetLHistogram()
        self.assertGreater(sum(count > 0 for count in counts), 180)
        self.assertLess(max(counts), 240 * 160 // 10)

    def test_wrong_calls(self):
        out = self.path("o.png")
        for arguments in ((), (out, "100"), (out, "100", "x"), (out, "15", "100"), (out, "100", "65536"), (out, "1e3", "9")):
            self.assertEqual(self.render(*arguments).returncode, 2, arguments)
        self.assertEqual(self.render(self.path("no/o.png"), "16", "16").returncode, 1)
        self.assertEqual(os.listdir(self.folder), [])

"""The widget in a real window on a screen of its own: the pointer, the wheel, the keys, a drag from another program."""
# SPDX-License-Identifier: MIT
import os
import subprocess
import tempfile
import unittest

from screen import Screen, wait_for

PROBE, SAMPLE, DRAG_SOURCE = (os.environ["PIXVANE_" + name] for name in ("PROBE", "SAMPLE", "DRAG_SOURCE"))


class Probe:
    """A program that fills its window with a widget, and obeys."""

    def __init__(self, test, ratio):
        self.screen = test.screen
        self.process = subprocess.Popen(
            [PROBE, "400", "300", test.picture],
            env=self.screen.environment(QT_SCALE_FACTOR=str(ratio)),
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            universal_newlines=True,
        )
        test.addCleanup(self.close)
        self.id = self.screen.window("^probe$")

    def close(self):
        if not self.process.stdin.closed:
            self.process.stdin.close()
            self.process.stdout.close()
            self.process.wait()

    def ask(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        return self.process.stdout.readline().strip()

    def zoom(self):
        return float(self.ask("Zoom")[2:])

    def wait_for_event(self, start):
        """The arguments of the next event that begins so."""

        def heard():
            return [line[len(start):] for line in self.ask("events").split(";") if line.startswith(start)]

        return wait_for(start, heard)[0].split()

    def move(self, x, y, *more):
        self.screen.do("mousemove", "--window", self.id, x, y, *more)


class RealWindow(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.picture, self.frame, self.shot = (os.path.join(folder.name, n + ".png") for n in ("ein Bild", "frame", "shot"))
        subprocess.run([SAMPLE, self.picture, "900", "600"], check=True)
        self.screen = Screen()
        self.addCleanup(self.screen.close)

    def assert_shown(self, probe):
        def same():
            self.assertEqual(probe.ask("frame " + self.frame), "saved")
            subprocess.run(["import", "-window", probe.id, "+repage", self.shot], env=self.screen.environment())
            told = subprocess.run(["compare", "-metric", "AE", self.frame, self.shot, "null:"], stderr=subprocess.PIPE)
            return told.stderr.split()[:1] == [b"0"]

        wait_for("the screen shows the frame", same)

    def test_at_each_ratio(self):
        for ratio in (1, 1.25):
            with self.subTest(ratio=ratio):
                probe = Probe(self, ratio)
                self.use(probe, ratio)
                probe.close()

    def use(self, probe, ratio):
        width, height = 400 * ratio, 300 * ratio
        wait_for("the picture fitted", lambda: abs(probe.zoom() - min((width - 8) / 900, (height - 8) / 600)) < 1e-9)
        self.assert_shown(probe)

        # At 100 %: what is between two presses on the screen is as far apart in the picture; a drag moves it.
        probe.ask("ActialSize")
        points = []
        for x, y in ((150, 120), (171, 133)):
            probe.move(x, y, "click", 3)
            points.append([int(number) for number in probe.wait_for_event("OnMouseDown 2")])
        self.assertEqual([b - a for a, b in zip(*points)], [21, 13])
        probe.move(150, 120, "mousedown", 1)
        probe.move(160, 117)
        probe.move(163, 115, "mouseup", 1)
        probe.wait_for_event("OnMouseUp 0")
        self.assert_shown(probe)
        if 600 > height:
            probe.move(171, 133, "click", 3)
            moved = [int(number) for number in probe.wait_for_event("OnMouseDown 2")]
            self.assertEqual(moved, [points[1][0] - 13, points[1][1] + 5])

        # The wheel away from the user; the keys, once the window has the focus; another size of the window.
        self.screen.do("click", "--repeat", 2, 4)
        wait_for("two notches", lambda: abs(probe.zoom() - 1.21) < 1e-9)
        self.assert_shown(probe)
        self.screen.keys(probe.id, "ctrl+9")
        wait_for("Ctrl+9 to fit the picture", lambda: probe.zoom() < 1)
        self.screen.do("keydown", "space")
        wait_for("an open hand while the space bar is held", lambda: probe.ask("cursor") == "17")
        self.screen.do("keyup", "space")
        wait_for("the arrow again", lambda: probe.ask("cursor") == "0")
        probe.ask("resize 300 200")
        self.assert_shown(probe)

    def test_a_file_is_dragged_from_another_program(self):
        source = subprocess.Popen([DRAG_SOURCE, self.picture], env=self.screen.environment())
        self.addCleanup(source.wait)
        self.addCleanup(source.kill)
        probe = Probe(self, 1)
        self.screen.drag(self.screen.window("^drag source"), probe.id, 200, 150)
        self.assertEqual(" ".join(probe.wait_for_event("OnDropFile")), self.picture)

"""The widget in a real window on a screen of its own: the pointer, the wheel, the keys, a drag from another program."""
# SPDX-License-Identifier: MIT
import contextlib
import os
import shutil
import subprocess
import tempfile
import time
import unittest

from screen import Screen, wait_for

PROBE = os.environ["PIXVANE_PROBE"]
SAMPLE = os.environ["PIXVANE_SAMPLE"]


class Probe:
    def __init__(self, screen, ratio, width, height, picture):
        self.screen = screen
        self.process = subprocess.Popen(
            [PROBE, str(width), str(height), picture],
            env=dict(screen.environment, QT_SCALE_FACTOR=str(ratio)),
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            universal_newlines=True,
        )
        self.id = screen.window("probe")

    def close(self):
        self.process.stdin.close()
        self.process.stdout.close()
        self.process.wait()

    def ask(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        return self.process.stdout.readline().strip()

    def value(self, line):
        return self.ask(line)[2:]

    def events(self):
        return [line for line in self.ask("events").split(";") if line]

    def xdotool(self, *words):
        self.screen.run("xdotool", *[str(word) for word in words])

    def move(self, x, y):
        self.xdotool("mousemove", "--window", self.id, x, y)

    def click(self, button):
        self.xdotool("click", button)


class RealWindow(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp()
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.picture = os.path.join(cls.folder, "sample.png")
        subprocess.run([SAMPLE, cls.picture, "900", "600"], check=True, stdout=subprocess.DEVNULL)
        cls.screen = Screen()
        cls.addClassCleanup(cls.screen.close)

    def probe(self, ratio, width=400, height=300):
        return contextlib.closing(Probe(self.screen, ratio, width, height, self.picture))

    def assert_shown(self, probe):
        frame, shot = (os.path.join(self.folder, name) for name in ("frame.png", "shot.png"))

        def same():
            self.assertEqual(probe.ask("frame " + frame), "saved")
            self.screen.run("import", "-window", probe.id, "+repage", shot)
            difference = subprocess.run(
                ["compare", "-metric", "AE", frame, shot, "null:"], stdout=subprocess.PIPE, stderr=subprocess.PIPE
            )
            return difference.stderr.split()[:1] == [b"0"]

        wait_for(same, "the screen shows the frame")

    def test_at_each_ratio(self):
        for ratio in (1, 1.25, 1.5, 2):
            with self.subTest(ratio=ratio), self.probe(ratio) as probe:
                self.use(probe, ratio)

    def use(self, probe, ratio):
        wait_for(lambda: float(probe.value("Zoom")) > 0, "the picture is fitted when it is shown")
        width, height = 400 * ratio, 300 * ratio
        self.assertAlmostEqual(float(probe.value("Zoom")), min((width - 8) / 900, (height - 8) / 600), places=9)
        self.assert_shown(probe)

        # The pointer, at 100 %: what is between two presses on the screen is as far apart in the picture.
        probe.ask("ActialSize")
        probe.events()
        points = []
        for x, y in ((150, 120), (171, 133)):
            probe.move(x, y)
            probe.click(3)
            told = wait_for(
                lambda: [e for e in probe.events() if e.startswith("OnMouseDown 2")], "a press at %d, %d" % (x, y)
            )
            points.append([int(number) for number in told[0].split()[2:]])
        self.assertEqual([b - a for a, b in zip(*points)], [21, 13])

        # A drag moves the picture with the pointer.
        probe.move(150, 120)
        probe.xdotool("mousedown", 1)
        probe.move(160, 117)
        probe.move(163, 115)
        probe.xdotool("mouseup", 1)
        wait_for(lambda: [e for e in probe.events() if e.startswith("OnMouseUp 0")], "a release")
        self.assert_shown(probe)
        probe.move(171, 133)
        probe.click(3)
        told = wait_for(lambda: [e for e in probe.events() if e.startswith("OnMouseDown 2")], "a press")
        if 600 > height:
            self.assertEqual([int(number) for number in told[0].split()[2:]], [points[1][0] - 13, points[1][1] + 5])

        # The wheel, away from the user and back.
        probe.click(4)
        probe.click(4)
        wait_for(lambda: abs(float(probe.value("Zoom")) - 1.21) < 1e-9, "two notches")
        self.assert_shown(probe)
        probe.click(5)
        wait_for(lambda: abs(float(probe.value("Zoom")) - 1.1) < 1e-9, "a notch back")

        # The keys, once the window has the focus.
        probe.xdotool("windowfocus", "--sync", probe.id)
        probe.xdotool("key", "--window", probe.id, "ctrl+9")
        probe.xdotool("key", "ctrl+9")
        wait_for(lambda: float(probe.value("Zoom")) < 1, "Ctrl+9 fits the picture")
        probe.xdotool("key", "ctrl+0")
        wait_for(lambda: float(probe.value("Zoom")) == 1, "Ctrl+0 shows it at 100 %")
        probe.ask("Invert")
        probe.xdotool("key", "ctrl+z")
        wait_for(lambda: probe.value("RedoEnable") == "true", "Ctrl+Z undoes")
        probe.xdotool("keydown", "space")
        wait_for(lambda: probe.ask("cursor") == "17", "an open hand while the space bar is held")
        probe.xdotool("keyup", "space")
        wait_for(lambda: probe.ask("cursor") == "0", "the arrow again")

        # Another size of the window.
        probe.ask("resize 300 200")
        self.assert_shown(probe)

    def test_a_file_is_dragged_from_another_program(self):
        file = os.path.join(self.folder, "ein Bild.png")
        shutil.copy(self.picture, file)
        source = subprocess.Popen([PROBE, "--source", file], env=self.screen.environment)
        try:
            with self.probe(1) as probe:
                probe.xdotool("mousemove", "--window", self.screen.window("source"), 50, 50)
                probe.xdotool("mousedown", 1)
                for x in range(20, 220, 20):
                    probe.move(x, 150)
                    time.sleep(0.05)
                probe.xdotool("mouseup", 1)
                told = wait_for(lambda: [e for e in probe.events() if e.startswith("OnDropFile")], "the drop")
                self.assertEqual(told, ["OnDropFile " + file])
        finally:
            source.terminate()
            source.wait()


if __name__ == "__main__":
    unittest.main()

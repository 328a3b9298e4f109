"""The examples with a window, as they were built against the installed tree: they show a picture and can be used."""
# SPDX-License-Identifier: MIT
import os
import subprocess
import tempfile
import unittest

from screen import Screen, wait_for

# Each with its window's name, and what edits the picture in it.
EXAMPLES = (
    (os.environ["PIXVANE_EXAMPLE_FORM"], "Pixvane form", ("mousemove", "100", "15", "click", "1")),
    (os.environ["PIXVANE_EXAMPLE_WINDOW"], "Pixvane window", ("key", "i")),
)


class Examples(unittest.TestCase):
    def test_they_show_a_picture_and_can_be_used(self):
        screen = Screen()
        self.addCleanup(screen.close)
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        picture = os.path.join(folder.name, "sample.png")
        subprocess.run([os.environ["PIXVANE_SAMPLE"], picture, "600", "400"], check=True)
        for program, name, edit in EXAMPLES:
            with self.subTest(name), subprocess.Popen([program, picture], env=screen.environment()) as process:
                self.addCleanup(process.kill)
                window = screen.window("^%s$" % name)
                wait_for("a picture with its many colours", lambda: len(set(screen.pixels(window))) > 200)
                shown = screen.pixels(window)
                screen.do("windowfocus", "--sync", window, *edit)
                wait_for("an edit", lambda: screen.pixels(window) != shown)
                edited = screen.pixels(window)
                screen.do("mousemove", "--window", window, 400, 300, "click", 4)
                wait_for("a zoom", lambda: screen.pixels(window) not in (shown, edited))
                screen.do("mousedown", 1)
                screen.do("mousemove", "--window", window, 410, 305, "mouseup", 1)
                self.assertIsNone(process.poll())
                process.terminate()

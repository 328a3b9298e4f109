"""The examples with a window, as they were built against the installed tree: they show a picture and can be used."""
# SPDX-License-Identifier: MIT
import os
import shutil
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
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.picture = os.path.join(self.folder, "sample.png")
        subprocess.run([os.environ["PIXVANE_SAMPLE"], self.picture, "600", "400"], check=True)
        self.screen = Screen()
        self.addCleanup(self.screen.close)

    def pixels(self, window):
        return self.screen.output("import", "-window", window, "rgb:-")

    def wait_for_change(self, window, before, what):
        wait_for(lambda: self.pixels(window) != before, what)
        return self.pixels(window)

    def test_they_show_a_picture_and_can_be_used(self):
        for program, name, edit in EXAMPLES:
            with self.subTest(name):
                process = subprocess.Popen([program, self.picture], env=self.screen.environment)
                try:
                    window = self.screen.window(name)
                    wait_for(lambda: len(set(self.pixels(window))) > 200, "a picture with its many colours")
                    shown = self.pixels(window)
                    self.screen.run("xdotool", "windowfocus", "--sync", window, *edit)
                    edited = self.wait_for_change(window, shown, "an edit")
                    self.screen.run("xdotool", "mousemove", "--window", window, "400", "300", "click", "4")
                    zoomed = self.wait_for_change(window, edited, "a zoom")
                    self.screen.run("xdotool", "mousemove", "--window", window, "400", "300", "mousedown", "1")
                    self.screen.run("xdotool", "mousemove", "--window", window, "410", "305", "mouseup", "1")
                    self.assertIsNone(process.poll())
                    self.assertNotEqual(zoomed, shown)
                finally:
                    process.terminate()
                    process.wait()


if __name__ == "__main__":
    unittest.main()

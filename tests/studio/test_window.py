# The studio in a real window: opened with a photograph, clicked, dragged, wheeled, typed at, dropped on, saved.
# SPDX-License-Identifier: MIT
import os
import shutil
import subprocess
import tempfile
import unittest

from screen import Screen, wait_for

STUDIO, CLI, SAMPLE, DRAG_SOURCE = (
    os.environ["PIXVANE_" + name] for name in ("STUDIO", "CLI", "SAMPLE", "DRAG_SOURCE"))

# In the window's middle left: over the view, whatever panels there are.
AT = (300, 400)


class StudioWindow(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.screen = Screen()
        cls.addClassCleanup(cls.screen.close)

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.photo = self.file("photo.png")
        subprocess.run([SAMPLE, self.photo, "1500", "1000"], check=True)

    def file(self, name):
        return os.path.join(self.folder, name)

    def start(self, *arguments, program=STUDIO):
        program = subprocess.Popen(
            [program, *arguments],
            env=self.screen.environment(XDG_CONFIG_HOME=self.folder, XDG_RUNTIME_DIR=self.folder))
        self.addCleanup(self.stop, program)
        return program

    def stop(self, program):
        program.kill()
        program.wait()

    def view(self):
        return self.screen.pixels(self.window, AT[0] - 100, AT[1] - 100, 200, 200)

    def wait_for_view(self, what, is_so):
        """Until the middle of the view is so, and stays so."""
        def steady():
            first = self.view()
            return first if is_so(first) and self.view() == first else None
        return wait_for(what, steady)

    def edited(self, name, *steps):
        """The pixels that the command line makes of the photograph."""
        subprocess.run([CLI, "edit", self.photo, self.file(name), *steps], check=True)
        return self.pixels_of(self.file(name))

    def pixels_of(self, path):
        return subprocess.run(["convert", path, "-depth", "8", "rgb:-"], check=True,
                              stdout=subprocess.PIPE).stdout

    def open_photo(self):
        self.start(self.photo)
        self.window = self.screen.window(r"^photo\.png")
        self.screen.do("mousemove", "--window", self.window, *AT)
        return self.wait_for_view("the picture", lambda pixels: len(set(pixels)) > 100)

    def test_a_command_by_the_menu_is_saved_as_the_command_line_makes_it(self):
        plain = self.open_photo()
        screen = self.screen
        # The first command of the first category runs at once.
        screen.keys(self.window, "alt+p", "Right", "Return")
        grey = self.wait_for_view("the command", lambda pixels: pixels != plain)
        self.assertEqual(grey[0::3], grey[1::3], "the picture is grey")
        screen.keys(self.window, "ctrl+z")
        self.wait_for_view("undo", lambda pixels: pixels == plain)
        screen.keys(self.window, "ctrl+shift+z")
        self.wait_for_view("redo", lambda pixels: pixels == grey)

        screen.keys(self.window, "ctrl+shift+s")
        dialog = screen.window("^Save as")
        screen.do("windowfocus", "--sync", dialog)
        screen.do("key", "ctrl+a")
        screen.do("type", "grey.png")
        screen.do("key", "Return")
        screen.window(r"^grey\.png")
        self.assertEqual(self.pixels_of(self.file("grey.png")), self.edited("expected.png", "Desaturate"))

    def test_a_click_on_an_icon_undoes_and_a_dialog_previews(self):
        plain = self.open_photo()
        screen = self.screen
        # The second command has a dialog; Escape takes its preview back, Return applies it.
        screen.keys(self.window, "alt+p", "Right", "Down", "Return")
        dialog = screen.window("^Saturate")
        shown = self.wait_for_view("the preview", lambda pixels: pixels != plain)
        screen.keys(dialog, "Escape")
        self.wait_for_view("the cancel", lambda pixels: pixels == plain)
        screen.keys(self.window, "alt+p", "Right", "Down", "Return")
        dialog = screen.window("^Saturate")
        self.wait_for_view("the preview", lambda pixels: pixels == shown)
        screen.keys(dialog, "Return")
        wait_for("the end of the dialog", lambda: not screen.do("search", "--onlyvisible", "--name", "^Saturate"))
        self.wait_for_view("the command", lambda pixels: pixels == shown)
        # Open, save, a line, undo: the fourth place of the toolbar, below the menus.
        screen.do("mousemove", "--window", self.window, 87, 37, "click", "1")
        self.wait_for_view("the undo", lambda pixels: pixels == plain)

    def test_a_dropped_file_is_opened(self):
        plain = self.open_photo()
        screen = self.screen
        other = self.file("other.png")
        self.edited("other.png", "Invert")
        self.start(other, program=DRAG_SOURCE)
        source = screen.window("^drag source")
        # Where the studio's window leaves room.
        screen.do("windowmove", "--sync", source, 1270, 0)
        screen.drag(source, self.window, *AT)
        screen.window(r"^other\.png")
        self.wait_for_view("the dropped picture", lambda pixels: pixels != plain and len(set(pixels)) > 100)

    def test_without_a_picture_it_waits_for_one(self):
        self.start()
        self.window = self.screen.window("^Pixvane Studio")
        wait_for("the page", lambda: len(set(self.screen.pixels(self.window))) > 20)
        self.screen.keys(self.window, "ctrl+q")
        wait_for("the end", lambda: not self.screen.do("search", "--onlyvisible", "--name", "^Pixvane Studio"))

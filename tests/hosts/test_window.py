"""The window of a control as a Python host moves it, and the settings of the process."""
# SPDX-License-Identifier: MIT
import unittest
import unittest.mock

import pixvane
from support import ControlTest, pixels


class Window(ControlTest):
    def test_the_size_decides_how_a_picture_is_fitted(self):
        self.p.window.resize(508, 300)
        self.p.NewImage(1000, 500)
        self.p.ZoomToFit()
        self.assertEqual(self.p.Zoom, 0.5)
        self.p.AutoResize = True
        self.p.window.resize(1009, 508)
        self.assertEqual(self.p.Zoom, 1.0)

    def test_zoom_steps(self):
        self.p.window.resize(400, 300)
        self.p.NewImage(100, 80)
        self.p.window.zoom_at(2, 10, 20)
        self.assertAlmostEqual(self.p.Zoom, 1.21)
        self.p.window.wheel(-2, 10, 20)
        self.assertAlmostEqual(self.p.Zoom, 1.0)
        self.p.window.pan(5, -5)

    def test_sizes_and_buttons_that_do_not_fit(self):
        window = self.p.window
        for call in (
            lambda: window.resize(-1, 5),
            lambda: window.resize(5, 65536),
            lambda: window.mouse_down(3, 0, 0),
            lambda: window.mouse_up(-1, 0, 0),
            lambda: window.double_click(7, 0, 0),
            lambda: window.mouse_move(0, 0, (0, 3)),
            lambda: window.drop(["nul\0"]),
        ):
            self.assertRaises(ValueError, call)
        for call in (
            lambda: window.resize(1.0, 5),
            lambda: window.mouse_down(True, 0, 0),
            lambda: window.mouse_move(0, "0"),
            lambda: window.mouse_move(0, 0, (0.0,)),
            lambda: window.drop("/a/single/path"),
            lambda: window.drop([5]),
            lambda: window.pan(None, 0),
        ):
            self.assertRaises(TypeError, call)
        self.assertRaises(OverflowError, window.pan, 1 << 31, 0)

    def test_messages_of_the_mouse_and_what_the_control_keeps(self):
        window = self.p.window
        window.resize(100, 100)
        self.p.NewImage(500, 500)
        window.mouse_move(5, 5)
        window.mouse_down(0, 5, 5)
        window.mouse_move(6, 7, (0, 2))
        window.mouse_up(0, 6, 7)
        window.double_click(1, 6, 7)
        window.timer(1)
        self.assertIs(type(window.captured), bool)
        self.assertIs(type(window.cursor), int)
        self.assertIs(type(window.timers()), dict)

    def test_modes_set_timer_and_cursor(self):
        window = self.p.window
        self.p.NewImage(50, 50)
        for mode, timers, cursor in ((7, {1: 50}, 0), (3, {}, 206), (18, {1: 50}, 0), (12, {}, 202), (0, {}, 0)):
            self.p.PaintStatus = mode
            self.assertEqual((window.timers(), window.cursor), (timers, cursor))
            if cursor:
                data, width, height, x, y = window.cursor_image(cursor)
                self.assertEqual(len(data), width * height * 4)
                self.assertEqual(data[(y * width + x) * 4 :][:4], b"\0\0\0\xff")
        self.assertRaises(ValueError, window.cursor_image, 0)
        self.assertRaises(TypeError, window.cursor_image, "202")

    def test_what_the_library_is_told_of_the_mouse(self):
        told = []

        def listen(control, *numbers):
            told.append(numbers)
            return 0

        window = self.p.window
        with unittest.mock.patch("pixvane._library.window_mouse", listen):
            window.mouse_down(2, -5, 6)
            window.mouse_up(1, 7, 8)
            window.mouse_move(9, -10)
            window.mouse_move(1, 2, [0, 2, 2])
            window.mouse_move(1, 2, {1})
            window.double_click(0, 3, 4)
        # What, button, x, y, held: as the C interface numbers them.
        self.assertEqual(
            told,
            [(0, 2, -5, 6, 0), (1, 1, 7, 8, 0), (2, 0, 9, -10, 0), (2, 0, 1, 2, 5), (2, 0, 1, 2, 2), (3, 0, 3, 4, 0)],
        )

    def test_a_frame_is_as_large_as_it_says(self):
        self.p.window.resize(64, 48)
        self.p.NewImage(10, 10)
        data, width, height = self.p.window.frame()
        self.assertIs(type(data), bytes)
        self.assertEqual((len(data), width, height), (64 * 48 * 4, 64, 48))
        middle = (24 * 64 + 32) * 4
        self.assertEqual(data[:4] + data[middle : middle + 4], b"\x8b\x00\x00\xff" + b"\xff" * 4)


class Process(ControlTest):
    def test_workers_change_no_result(self):
        before = pixvane.worker_threads()
        self.addCleanup(pixvane.set_worker_threads, before)
        data, results = pixels(200, 150), []
        for count in (1, 2, 64):
            pixvane.set_worker_threads(count)
            self.assertEqual(pixvane.worker_threads(), count)
            self.p.LoadFromImageArray(data, 200, 150)
            self.p.Autolevels()
            results.append(self.p.GetImageArray())
        self.assertEqual(results[0], results[1])
        self.assertEqual(results[0], results[2])
        for wrong in (0, 65, -1):
            self.assertRaises(ValueError, pixvane.set_worker_threads, wrong)
        self.assertRaises(TypeError, pixvane.set_worker_threads, 2.0)

    def test_a_limit_on_bitmaps_makes_an_edit_fail_quietly(self):
        before = pixvane.bitmap_limit()
        self.addCleanup(pixvane.set_bitmap_limit, before)
        self.p.NewImage(256, 256)
        pixvane.set_bitmap_limit(pixvane.bitmap_bytes() + 1000)
        self.p.Invert()
        self.assertEqual((self.p.ImageWidth, self.p.GetPixel(0, 0), self.p.UndoEnable), (256, 0xFFFFFF, False))
        pixvane.set_bitmap_limit(before)
        self.p.Invert()
        self.assertEqual(self.p.GetPixel(0, 0), 0)
        self.assertRaises(OverflowError, pixvane.set_bitmap_limit, 1 << 64)
        self.assertRaises(TypeError, pixvane.set_bitmap_limit, 1e9)

    def test_version(self):
        self.assertRegex(pixvane.__version__, r"^\d+\.\d+\.\d+$")


if __name__ == "__main__":
    unittest.main()

"""The window of a control as a Python host moves it, and the settings of the process."""
# SPDX-License-Identifier: MIT
import unittest.mock

import pixvane
from support import ControlTest


class Window(ControlTest):
    def test_sizes_zooms_and_frames(self):
        window = self.p.window
        window.resize(64, 48)
        self.p.NewImage(10, 10)
        data, width, height = window.frame()
        self.assertEqual((type(data), len(data), width, height), (bytes, 64 * 48 * 4, 64, 48))
        middle = (24 * 64 + 32) * 4
        self.assertEqual(data[:4] + data[middle : middle + 4], b"\x8b\x00\x00\xff" + b"\xff" * 4)
        window.zoom_at(2, 10, 20)
        self.assertAlmostEqual(self.p.Zoom, 1.21)
        window.wheel(-2, 10, 20)
        self.assertAlmostEqual(self.p.Zoom, 1.0)
        self.p.AutoResize = True
        window.resize(13, 13)
        self.assertEqual(self.p.Zoom, 0.5)

    def test_numbers_that_do_not_fit(self):
        window = self.p.window
        for error, call, *arguments in (
            (ValueError, window.resize, -1, 5),
            (ValueError, window.resize, 5, 65536),
            (ValueError, window.mouse_down, 3, 0, 0),
            (ValueError, window.mouse_up, -1, 0, 0),
            (ValueError, window.double_click, 7, 0, 0),
            (ValueError, window.mouse_move, 0, 0, (0, 3)),
            (ValueError, window.drop, ["nul\0"]),
            (ValueError, window.cursor_image, 0),
            (TypeError, window.resize, 1.0, 5),
            (TypeError, window.mouse_down, True, 0, 0),
            (TypeError, window.mouse_move, 0, "0"),
            (TypeError, window.mouse_move, 0, 0, (0.0,)),
            (TypeError, window.drop, "/a/single/path"),
            (TypeError, window.drop, [5]),
            (TypeError, window.pan, None, 0),
            (TypeError, window.cursor_image, "202"),
            (OverflowError, window.pan, 1 << 31, 0),
        ):
            with self.assertRaises(error, msg=repr((call, arguments))):
                call(*arguments)

    def test_modes_set_timer_and_cursor(self):
        window = self.p.window
        window.resize(30, 30)
        self.p.NewImage(50, 50)
        self.assertEqual((window.captured, window.timers()), (False, {}))
        self.p.ActialSize()
        window.mouse_down(0, 5, 5)
        self.assertIs(window.captured, True)
        for mode, timers, cursor in ((7, {1: 50}, 0), (3, {}, 206), (18, {1: 50}, 0), (12, {}, 202), (0, {}, 0)):
            self.p.PaintStatus = mode
            self.assertEqual((window.timers(), window.cursor), (timers, cursor))
            if cursor:
                data, width, height, x, y = window.cursor_image(cursor)
                self.assertEqual(len(data), width * height * 4)
                self.assertEqual(data[(y * width + x) * 4 :][:4], b"\0\0\0\xff")

    def test_what_the_library_is_told(self):
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
        for name, arguments in (("pan", (5, -6)), ("timer", (7,))):
            told.clear()
            with unittest.mock.patch("pixvane._library.window_" + name, listen):
                getattr(window, name)(*arguments)
            self.assertEqual(told, [arguments])


class Process(ControlTest):
    def test_settings_of_the_process(self):
        for name, value in (("worker_threads", 3), ("bitmap_limit", pixvane.bitmap_bytes() + 1000)):
            put = getattr(pixvane, "set_" + name)
            self.addCleanup(put, getattr(pixvane, name)())
            put(value)
            self.assertEqual(getattr(pixvane, name)(), value)
        self.p.NewImage(256, 256)
        self.assertTrue(self.p.IsEmpty, "there is no room for it")
        for error, call, wrong in (
            (ValueError, pixvane.set_worker_threads, 0),
            (ValueError, pixvane.set_worker_threads, 65),
            (TypeError, pixvane.set_worker_threads, 2.0),
            (OverflowError, pixvane.set_bitmap_limit, 1 << 64),
            (TypeError, pixvane.set_bitmap_limit, 1e9),
            (OverflowError, pixvane.seed_random, 1 << 32),
            (TypeError, pixvane.seed_random, "1"),
        ):
            self.assertRaises(error, call, wrong)

"""How controls end, and which threads may use them."""
# SPDX-License-Identifier: MIT
import concurrent.futures
import copy
import gc
import pickle
import subprocess
import sys
import weakref

import pixvane
from support import ControlTest


class End(ControlTest):
    def setUp(self):
        super().setUp()
        gc.collect()
        gc.disable()
        self.addCleanup(gc.enable)
        self.before = pixvane.bitmap_bytes()

    def made(self, handler):
        control = pixvane.Pixvane()
        control.on("OnDropFile", handler)
        control.NewImage(300, 200)
        self.assertGreaterEqual(pixvane.bitmap_bytes() - self.before, 300 * 200 * 4)
        return control, weakref.ref(control)

    def assert_gone(self, reference):
        self.assertIsNone(reference())
        self.assertEqual(pixvane.bitmap_bytes(), self.before)

    def test_a_dropped_control_frees_its_bitmaps_at_once(self):
        control, reference = self.made(print)
        del control
        self.assert_gone(reference)

    def test_a_handler_that_knows_its_control_keeps_it_only_until_collected(self):
        control, reference = self.made(print)
        control.on("OnDropFile", lambda name, control=control: control.Invert())
        del control
        gc.collect()
        self.assert_gone(reference)

    def test_a_raised_handler_leaves_no_cycle(self):
        def fail(name):
            raise ValueError

        control, reference = self.made(fail)
        try:
            control.window.drop(["a"])
        except ValueError:
            pass
        del control
        self.assert_gone(reference)

    def test_the_window_keeps_its_control(self):
        window = pixvane.Pixvane().window
        window.resize(10, 10)
        self.assertEqual(window.timers(), {})

    def test_a_closed_control(self):
        with pixvane.Pixvane() as control:
            control.NewImage(8, 8)
        for call in (
            lambda: control.ImageWidth,
            lambda: control.Invert(),
            lambda: control.window.resize(1, 1),
            lambda: control.on("OnDropFile", print),
            lambda: setattr(control, "JpegQuality", 5),
        ):
            self.assertRaisesRegex(pixvane.PixvaneError, "closed", call)
        control.close()
        self.assertIn("closed", repr(control))

    def test_what_a_control_is_not(self):
        for attempt in (copy.copy, copy.deepcopy, pickle.dumps):
            self.assertRaises(TypeError, attempt, self.p)
        self.assertFalse(hasattr(self.p, "__dict__"))
        self.assertRaises(TypeError, pixvane.Pixvane, 5)

    def test_a_program_may_end_with_controls_alive(self):
        program = (
            "import pixvane, threading\n"
            "p = pixvane.Pixvane(); p.NewImage(50, 50); q = pixvane.Pixvane()\n"
            "p.on('OnDropFile', lambda name: q.Zoom)\n"
            "threading.Thread(target=lambda: pixvane.Pixvane().NewImage(50, 50)).start()\n"
        )
        done = subprocess.run([sys.executable, "-c", program], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertEqual((done.returncode, done.stderr), (0, b""))


def in_thread(work):
    """What this returns or raises in a thread of its own."""
    with concurrent.futures.ThreadPoolExecutor(1) as threads:
        future = threads.submit(work)
        return future.exception() or future.result()


class Threads(ControlTest):
    def test_a_second_thread_is_refused_while_one_is_inside(self):
        refused = []
        self.p.on("OnDropFile", lambda name: refused.append(in_thread(lambda: self.p.Zoom)))
        self.p.window.drop(["a"])
        self.assertIsInstance(refused[0], pixvane.PixvaneError)
        self.assertEqual(in_thread(lambda: self.p.ImageWidth), 0)

    def test_what_a_handler_raises_stays_on_its_thread(self):
        def fail(name):
            self.assertIs(in_thread(lambda: pixvane.Pixvane().IsEmpty), True)
            raise KeyError

        self.p.on("OnDropFile", fail)
        self.assertRaises(KeyError, self.p.window.drop, ["a"])

    def test_a_control_may_end_on_another_thread(self):
        before = pixvane.bitmap_bytes()
        held = [pixvane.Pixvane()]
        held[0].NewImage(100, 100)
        in_thread(held.clear)
        self.assertEqual(pixvane.bitmap_bytes(), before)

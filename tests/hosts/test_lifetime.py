"""How controls end, and which threads may use them."""
# SPDX-License-Identifier: MIT
import copy
import gc
import pickle
import subprocess
import sys
import threading
import unittest
import weakref

import pixvane
from support import ControlTest, pixels


class End(ControlTest):
    def setUp(self):
        super().setUp()
        gc.collect()
        gc.disable()
        self.addCleanup(gc.enable)

    def test_a_dropped_control_frees_its_bitmaps_at_once(self):
        before = pixvane.bitmap_bytes()
        control = pixvane.Pixvane()
        control.on("OnDropFile", print)
        control.NewImage(300, 200)
        self.assertGreaterEqual(pixvane.bitmap_bytes() - before, 300 * 200 * 4)
        gone = weakref.ref(control)
        del control
        self.assertIsNone(gone())
        self.assertEqual(pixvane.bitmap_bytes(), before)

    def test_a_handler_that_knows_its_control_keeps_it_only_until_collected(self):
        control = pixvane.Pixvane()
        control.on("OnDropFile", lambda name, control=control: control.Invert())
        gone = weakref.ref(control)
        del control
        gc.collect()
        self.assertIsNone(gone())

    def test_a_raised_handler_leaves_no_cycle(self):
        control = pixvane.Pixvane()

        def fail(name):
            raise ValueError

        control.on("OnDropFile", fail)
        try:
            control.window.drop(["a"])
        except ValueError:
            pass
        gone = weakref.ref(control)
        del control
        self.assertIsNone(gone())

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

    def test_no_copies(self):
        for attempt in (copy.copy, copy.deepcopy, pickle.dumps):
            self.assertRaises(TypeError, attempt, self.p)

    def test_nothing_is_left_on_an_instance(self):
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


class Threads(ControlTest):
    def run_in_thread(self, work):
        """What `work` returns or raises in a thread of its own."""
        outcome = []

        def run():
            try:
                outcome.append(work())
            except Exception as failure:
                outcome.append(failure)

        thread = threading.Thread(target=run)
        thread.start()
        thread.join()
        return outcome[0]

    def test_a_second_thread_is_refused_while_one_is_inside(self):
        refused = []
        self.p.on("OnDropFile", lambda name: refused.append(self.run_in_thread(lambda: self.p.Zoom)))
        self.p.window.drop(["a"])
        self.assertIsInstance(refused[0], pixvane.PixvaneError)
        self.assertEqual(self.run_in_thread(lambda: self.p.ImageWidth), 0)

    def test_what_a_handler_raises_stays_on_its_thread(self):
        def fail(name):
            self.assertIs(self.run_in_thread(lambda: pixvane.Pixvane().IsEmpty), True)
            raise KeyError

        self.p.on("OnDropFile", fail)
        self.assertRaises(KeyError, self.p.window.drop, ["a"])

    def test_a_control_may_end_on_another_thread(self):
        before = pixvane.bitmap_bytes()
        held = [pixvane.Pixvane()]
        held[0].NewImage(100, 100)
        self.run_in_thread(held.clear)
        self.assertEqual(pixvane.bitmap_bytes(), before)

    def test_controls_work_side_by_side(self):
        def work(seed):
            control = pixvane.Pixvane()
            results = []
            for round in range(20):
                control.LoadFromImageArray(pixels(40, 30, seed), 40, 30)
                control.Autolevels()
                control.Saturate(150)
                control.RotateFlip(1)
                control.Undo()
                results.append(control.GetImageArray())
            return results

        expected = [work(seed) for seed in (1, 2, 3)]
        outcomes = [None] * 3

        def run(index):
            outcomes[index] = work(index + 1)

        threads = [threading.Thread(target=run, args=(i,)) for i in range(3)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(outcomes, expected)


if __name__ == "__main__":
    unittest.main()

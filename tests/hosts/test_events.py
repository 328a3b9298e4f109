"""Handlers of events: their order, what they are handed, what becomes of what they raise."""
# SPDX-License-Identifier: MIT
import contextlib
import io
import os
import unittest

import pixvane
from support import ControlTest, pixels, write_picture


class Handlers(ControlTest):
    def setUp(self):
        super().setUp()
        self.heard = []

    def hear(self, name):
        self.heard.append(name)

    def drop(self, *paths):
        self.heard.clear()
        self.p.window.drop(paths)
        return self.heard

    def test_a_drop_hands_over_the_first_path(self):
        self.p.on("OnDropFile", self.hear)
        name = os.fsdecode(b"/x/caf\xe9 ") + "写真.png"
        self.assertEqual(self.drop(name, "/second", "/third"), [name])
        self.assertTrue(self.p.IsEmpty)
        self.assertEqual(self.drop(), [])

    def test_order_and_end(self):
        first, second = (lambda name: self.hear(1)), (lambda name: self.hear(2))
        for handler in (first, second, self.hear, first):
            self.p.on("OnDropFile", handler)
        self.assertEqual(self.drop("a"), [1, 2, "a", 1])
        self.p.off("OnDropFile", first)
        self.assertEqual(self.drop("a"), [2, "a"])
        self.p.off("OnDropFile", self.hear)  # a bound method is a new object each time
        self.p.off("OnDropFile", self.hear)
        self.assertEqual(self.drop("a"), [2])
        self.p.off("OnDropFile")
        self.assertEqual(self.drop("a"), [])

    def test_controls_do_not_hear_each_other(self):
        other = pixvane.Pixvane()
        other.on("OnDropFile", self.hear)
        self.assertEqual(self.drop("a"), [])

    def test_wrong_names_and_handlers(self):
        for name in ("OnNothing", "ondropfile", "", "Invert", "OnDropFile\0"):
            self.assertRaises(ValueError, self.p.on, name, self.hear)
            self.assertRaises(ValueError, self.p.off, name)
        self.assertRaises(TypeError, self.p.on, 5, self.hear)
        self.assertRaises(TypeError, self.p.on, "OnDropFile", None)

    def test_a_handler_may_call_the_control(self):
        write_picture(self.path("dropped.png"), 6, 5, pixels(6, 5))

        def load(name):
            self.hear(self.p.LoadImage(name))
            self.p.Invert()
            self.hear((self.p.ImageWidth, sum(self.p.GetRHistogram())))

        self.p.on("OnDropFile", load)
        self.assertEqual(self.drop(self.path("dropped.png")), [True, (6, 30)])
        self.assertTrue(self.p.UndoEnable)

    def test_a_handler_may_end_itself_and_others(self):
        def once(name):
            self.hear("once")
            self.p.off("OnDropFile", once)

        def add(name):
            self.p.off("OnDropFile", add)
            self.p.on("OnDropFile", self.hear)

        self.p.on("OnDropFile", once)
        self.p.on("OnDropFile", add)
        self.drop("a")
        self.assertEqual(self.drop("b"), ["b"])


class Raising(ControlTest):
    def test_the_call_raises_what_the_handler_raised(self):
        raised = KeyError("from the handler")

        def fail(name):
            raise raised

        self.p.on("OnDropFile", fail)
        with self.assertRaises(KeyError) as caught:
            self.p.window.drop(["a"])
        self.assertIs(caught.exception, raised)
        self.p.NewImage(4, 4)  # nothing is left behind
        self.p.off("OnDropFile")
        self.p.window.drop(["a"])

    def test_also_what_ends_programs(self):
        for kind in (KeyboardInterrupt, SystemExit):

            def fail(name):
                raise kind()

            self.p.on("OnDropFile", fail)
            self.assertRaises(kind, self.p.window.drop, ["a"])
            self.p.off("OnDropFile")

    def test_the_first_wins_and_the_others_still_run(self):
        heard = []

        def fail(number):
            def handler(name):
                heard.append(number)
                raise ValueError(number)

            return handler

        for number in (1, 2, 3):
            self.p.on("OnDropFile", fail(number))
        with contextlib.redirect_stderr(io.StringIO()) as reported:
            with self.assertRaisesRegex(ValueError, "^1$"):
                self.p.window.drop(["a"])
        self.assertEqual(heard, [1, 2, 3])
        self.assertIn("ValueError: 2", reported.getvalue())

    def test_calls_nest(self):
        other = pixvane.Pixvane()

        def inner(name):
            raise LookupError("inner")

        def outer(name):
            # Raised within the handler, by the call that fired the inner event; caught, it is gone.
            self.assertRaises(LookupError, other.window.drop, ["b"])
            self.p.NewImage(5, 5)

        def fail(name):
            raise ValueError("outer")

        other.on("OnDropFile", inner)
        self.p.on("OnDropFile", fail)
        self.p.on("OnDropFile", outer)  # its calls don't raise what the handler before it did
        self.assertRaisesRegex(ValueError, "outer", self.p.window.drop, ["a"])
        self.assertEqual(self.p.ImageWidth, 5)

    def test_a_control_can_not_end_within_its_own_call(self):
        self.p.on("OnDropFile", lambda name: self.p.close())
        self.assertRaises(pixvane.PixvaneError, self.p.window.drop, ["a"])
        self.p.NewImage(4, 4)
        self.assertEqual(self.p.ImageWidth, 4)


if __name__ == "__main__":
    unittest.main()

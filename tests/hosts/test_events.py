"""Handlers of events: their order, what they are handed, what becomes of what they raise."""
# SPDX-License-Identifier: MIT
import contextlib
import io
import os

import pixvane
from support import ControlTest


class HandlerTest(ControlTest):
    def setUp(self):
        super().setUp()
        self.heard = []

    def hear(self, name):
        self.heard.append(name)

    def drop(self, *paths):
        self.heard.clear()
        self.p.window.drop(paths)
        return self.heard

    def fail_with(self, failure, control=None):
        def fail(name):
            self.hear(failure)
            raise failure

        (control or self.p).on("OnDropFile", fail)


class Handlers(HandlerTest):
    def test_a_drop_hands_over_the_first_path(self):
        self.p.on("OnDropFile", self.hear)
        name = os.fsdecode(b"/x/caf\xe9 ") + "写真.png"
        self.assertEqual(self.drop(name, "/second", "/third"), [name])
        self.assertEqual(self.drop(), [])
        other = pixvane.Pixvane()
        other.window.drop(["/other"])
        self.assertEqual(self.heard, [], "controls don't hear each other")

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

    def test_wrong_names_and_handlers(self):
        for name in ("OnNothing", "ondropfile", "", "Invert", "OnDropFile\0"):
            self.assertRaises(ValueError, self.p.on, name, self.hear)
            self.assertRaises(ValueError, self.p.off, name)
        self.assertRaises(TypeError, self.p.on, 5, self.hear)
        self.assertRaises(TypeError, self.p.on, "OnDropFile", None)


class Raising(HandlerTest):
    def test_the_call_raises_what_the_handler_raised(self):
        for raised in (KeyError("from the handler"), KeyboardInterrupt(), SystemExit()):
            self.fail_with(raised)
            with self.assertRaises(type(raised)) as caught:
                self.drop("a")
            self.assertIs(caught.exception, raised)
            self.p.NewImage(4, 4)  # nothing is left behind
            self.p.off("OnDropFile")

    def test_the_first_wins_and_the_others_still_run(self):
        failures = [ValueError(number) for number in (1, 2, 3)]
        for failure in failures:
            self.fail_with(failure)
        with contextlib.redirect_stderr(io.StringIO()) as reported:
            self.assertRaisesRegex(ValueError, "^1$", self.drop, "a")
        self.assertEqual(self.heard, failures)
        self.assertIn("ValueError: 2", reported.getvalue())

    def test_calls_nest(self):
        other = pixvane.Pixvane()

        def outer(name):
            # Raised within the handler, by the call that fired the inner event; caught, it is gone.
            self.assertRaises(LookupError, other.window.drop, ["b"])
            self.p.NewImage(5, 5)

        self.fail_with(LookupError("inner"), other)
        self.fail_with(ValueError("outer"))
        self.p.on("OnDropFile", outer)  # its calls don't raise what the handler before it did
        self.assertRaisesRegex(ValueError, "outer", self.drop, "a")
        self.assertEqual(self.p.ImageWidth, 5)

    def test_a_control_can_not_end_within_its_own_call(self):
        self.p.on("OnDropFile", lambda name: self.p.close())
        self.assertRaises(pixvane.PixvaneError, self.drop, "a")
        self.p.NewImage(4, 4)
        self.assertEqual(self.p.ImageWidth, 4)

"""The window of a control, as its host moves it."""
# SPDX-License-Identifier: MIT
import ctypes
from ctypes import byref, c_int32, c_size_t
from typing import Dict, Iterable, Tuple

from . import _library as lib
from ._calls import call
from ._errors import check
from ._values import frame_bytes, int32, text

_DOWN, _UP, _MOVE, _DOUBLE_CLICK = range(4)


class Window:
    """What happens to the window that a control is shown in, and what the control shows there.

    Points are in window pixels from its top left corner. Buttons: 0 left, 1 middle, 2 right.
    """

    __slots__ = ("_owner",)

    def __init__(self, owner):
        self._owner = owner

    def _call(self, doing, function, *arguments):
        call(doing, function, self._owner._control, *arguments)

    def _integers(self, doing, function, **numbers):
        self._call(doing, function, *[int32(value, name) for name, value in numbers.items()])

    def resize(self, width: int, height: int) -> None:
        """Sets the client size, 0 to 65535 a side. Resize before you load: a picture is fitted when it comes."""
        self._integers("resize", lib.window_resize, width=width, height=height)

    def mouse_down(self, button: int, x: int, y: int) -> None:
        """A button was pressed."""
        self._mouse("mouse_down", _DOWN, button, x, y)

    def mouse_up(self, button: int, x: int, y: int) -> None:
        """A button was released."""
        self._mouse("mouse_up", _UP, button, x, y)

    def mouse_move(self, x: int, y: int, buttons: Iterable[int] = ()) -> None:
        """The pointer moved, while `buttons` were held."""
        held = 0
        for button in buttons:
            if int32(button, "buttons") not in (0, 1, 2):
                raise ValueError("mouse_move: buttons are 0 left, 1 middle, 2 right")
            held |= 1 << button
        self._mouse("mouse_move", _MOVE, 0, x, y, held)

    def double_click(self, button: int, x: int, y: int) -> None:
        """A button was pressed for the second time in a double click."""
        self._mouse("double_click", _DOUBLE_CLICK, button, x, y)

    def _mouse(self, doing, what, button, x, y, held=0):
        self._integers(doing, lib.window_mouse, what=what, button=button, x=x, y=y, held=held)

    def wheel(self, notches: int, x: int, y: int) -> None:
        """The wheel turned by whole notches, positive away from the user."""
        self._integers("wheel", lib.window_wheel, notches=notches, x=x, y=y)

    def timer(self, id: int) -> None:
        """A timer that the control started has ticked."""
        self._integers("timer", lib.window_timer, id=id)

    def timers(self) -> Dict[int, int]:
        """The timers that the control wants to run: milliseconds by their ids."""
        capacity, count = 4, c_size_t()
        while True:
            ids, intervals = (c_int32 * capacity)(), (c_int32 * capacity)()
            self._call("timers", lib.window_timers, ids, intervals, capacity, byref(count))
            if count.value <= capacity:
                return dict(zip(ids[: count.value], intervals[: count.value]))
            capacity = count.value

    @property
    def captured(self) -> bool:
        """Whether the control wants all mouse messages, wherever the pointer is."""
        captured = c_int32()
        self._call("captured", lib.window_captured, byref(captured))
        return captured.value != 0

    @property
    def cursor(self) -> int:
        """The number of the control's cursor: 0 the arrow."""
        cursor = c_int32()
        self._call("cursor", lib.window_cursor, byref(cursor))
        return cursor.value

    @staticmethod
    def cursor_image(cursor: int) -> Tuple[bytes, int, int, int, int]:
        """One of the control's own cursors: pixels (bytes B, G, R, A; rows top first), width, height, and the
        x and y of its hot spot."""
        number = int32(cursor, "cursor")
        told = [c_int32() for _ in range(4)]

        def ask(address, size):
            check(lib.cursor_image(number, address, size, *[byref(n) for n in told]), "cursor_image")

        ask(None, 0)
        pixels = frame_bytes(told[0].value * told[1].value * 4, ask)
        return (pixels, *[n.value for n in told])

    def drop(self, paths) -> None:
        """Files were dropped on the window: fires OnDropFile with the first path, and loads nothing."""
        if isinstance(paths, (str, bytes)):
            raise TypeError("drop: paths must be a list of paths")
        encoded = [text(path, "paths") for path in paths]
        if any(b"\0" in path for path in encoded):
            raise ValueError("drop: a path must not hold a null character")
        array = (ctypes.c_char_p * len(encoded))(*encoded)
        self._call("drop", lib.window_drop, array, len(encoded))

    def zoom_at(self, steps: int, x: int, y: int) -> None:
        """Zooms by whole steps, positive in, negative out, keeping the image point under (x, y) in place."""
        self._integers("zoom_at", lib.window_zoom_at, steps=steps, x=x, y=y)

    def pan(self, dx: int, dy: int) -> None:
        """Moves the picture in the window, as far as it reaches beyond it."""
        self._integers("pan", lib.window_pan, dx=dx, dy=dy)

    def frame(self) -> Tuple[bytes, int, int]:
        """The last composed frame: pixels (bytes B, G, R, X; rows top first), width, height."""
        width, height = c_int32(), c_int32()
        self._call("frame", lib.window_frame, None, 0, byref(width), byref(height))

        def fill(address, size):
            self._call("frame", lib.window_frame, address, size, byref(width), byref(height))

        pixels = frame_bytes(width.value * height.value * 4, fill)
        return pixels, width.value, height.value

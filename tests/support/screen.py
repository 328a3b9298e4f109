# A screen of its own for windows, and hands on it: Xvfb, xdotool and import.
# SPDX-License-Identifier: MIT
import os
import subprocess
import time


def wait_for(what, is_so, seconds=60):
    """Waits until is_so() gives something, and returns that."""
    end = time.monotonic() + seconds
    while True:
        result = is_so()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.05)


class Screen:
    """An X server without a window manager."""

    def __init__(self, width=1400, height=900):
        readable, writable = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writable), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp",
             # A server whose last window has gone would start anew, and refuse the next one meanwhile.
             "-noreset"],
            pass_fds=[writable], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writable)
        with os.fdopen(readable) as pipe:
            self.display = ":" + pipe.readline().strip()

    def environment(self, **more):
        cleared = {k: v for k, v in os.environ.items() if not k.startswith("QT_") and k != "WAYLAND_DISPLAY"}
        return {**cleared, "DISPLAY": self.display, "QT_QPA_PLATFORM": "xcb", **more}

    def do(self, *arguments):
        """xdotool; returns what it prints, or None if it fails."""
        done = subprocess.run(["xdotool", *map(str, arguments)], env=self.environment(), text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        return done.stdout.strip() if done.returncode == 0 else None

    def window(self, title):
        """The visible window whose title matches, waited for."""
        found = wait_for(f"a window titled {title}",
                         lambda: self.do("search", "--onlyvisible", "--name", title))
        return found.split()[0]

    def drag(self, source, target, x, y):
        """Drags out of a window that has a file to give, and drops on another one at (x, y)."""
        self.do("mousemove", "--window", source, 40, 40, "mousedown", 1)
        for step in (45, 60, 80):
            self.do("mousemove", "--window", source, step, 50)
        self.do("mousemove", "--window", target, x, y)

        def taken():
            # A release before the target has answered would be no drop: move and look.
            self.do("mousemove_relative", "--", 1, 0)
            return self.do("getwindowname", source).endswith(": taken")

        wait_for("the drag to be taken", taken)
        self.do("mouseup", 1)

    def keys(self, window, *keys):
        self.do("windowfocus", "--sync", window)
        for key in keys:
            self.do("key", "--clearmodifiers", key)

    def pixels(self, window, x=0, y=0, width=None, height=None):
        """What the screen shows of a window, as bytes R, G, B."""
        crop = [] if width is None else ["-crop", f"{width}x{height}+{x}+{y}"]
        done = subprocess.run(["import", "-silent", "-window", window, *crop, "-depth", "8", "rgb:-"],
                              env=self.environment(), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        return done.stdout

    def close(self):
        self.server.terminate()
        self.server.wait()

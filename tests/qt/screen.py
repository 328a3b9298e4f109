"""A screen for tests of windows."""
# SPDX-License-Identifier: MIT
import os
import subprocess
import time


class Screen:
    """An X server that nobody else uses."""

    def __init__(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
            pass_fds=[write],
            stderr=subprocess.DEVNULL,
        )
        os.close(write)
        with os.fdopen(read) as numbers:
            self.display = ":" + numbers.readline().strip()
        self.environment = dict(os.environ, DISPLAY=self.display, QT_QPA_PLATFORM="xcb")

    def close(self):
        self.server.terminate()
        self.server.wait()

    def output(self, *command):
        return subprocess.run(
            command, env=self.environment, stdout=subprocess.PIPE, check=True, timeout=60
        ).stdout

    def run(self, *command):
        return self.output(*command).decode().strip()

    def window(self, name):
        """The number of a window, as soon as it is to be seen."""
        return self.run("xdotool", "search", "--sync", "--onlyvisible", "--name", "^%s$" % name).split()[0]


def wait_for(condition, what, seconds=20):
    """Waits until something holds: how long a screen takes is nobody's business here."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.02)
    raise AssertionError("in vain: " + what)

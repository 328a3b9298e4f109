"""The Python package as `pip install` of its folder makes it, without a network."""
# SPDX-License-Identifier: MIT
import base64
import csv
import hashlib
import importlib.util
import os
import subprocess
import sys
import zipfile

from support import FolderTest

SOURCE = os.environ["PIXVANE_PYTHON_SOURCE"]
LIBRARY = os.environ["PIXVANE_LIBRARY_FILE"]
PROGRAM = "import pixvane; p = pixvane.Pixvane(); p.NewImage(8, 6); print(pixvane.__file__, p.ImageWidth)"


def backend():
    spec = importlib.util.spec_from_file_location("build_backend", os.path.join(SOURCE, "build_backend.py"))
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


class Package(FolderTest):
    def run_program(self, packages, **environment):
        environment = dict(os.environ, PYTHONPATH=packages, **environment)
        return subprocess.run(
            [sys.executable, "-c", PROGRAM], env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE
        )

    def check_installed(self, packages):
        # By its soname, as where the library is installed for the whole system.
        done = self.run_program(packages, LD_LIBRARY_PATH=os.path.dirname(LIBRARY))
        self.assertEqual(done.stdout.decode(), packages + "/pixvane/__init__.py 8\n", done.stderr)

    def test_a_wheel_and_a_missing_library(self):
        name = backend().build_wheel(self.folder)
        with zipfile.ZipFile(self.path(name)) as wheel:
            (record,) = [path for path in wheel.namelist() if path.endswith("/RECORD")]
            rows = list(csv.reader(wheel.read(record).decode().splitlines()))
            self.assertEqual([row[0] for row in rows], wheel.namelist())
            for path, digest, size in rows[:-1]:
                data = wheel.read(path)
                self.assertEqual(int(size), len(data))
                made = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
                self.assertEqual(digest, "sha256=" + made)
            self.assertIn("pixvane/__init__.pyi", wheel.namelist())
            self.assertNotIn("pixvane/_location.py", wheel.namelist())
            wheel.extractall(self.path("packages"))
        self.check_installed(self.path("packages"))
        done = self.run_program(self.path("packages"), PIXVANE_LIBRARY=self.path("none.so"))
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr, b"ImportError: the Pixvane library can't be loaded.*none.so")

    def test_pip(self):
        pip = [sys.executable, "-m", "pip"]
        if subprocess.run(pip + ["--version"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode:
            self.skipTest("this Python has no pip")
        command = pip + ["install", "--quiet", "--no-index", "--target", self.path("packages"), SOURCE]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.assertEqual(done.returncode, 0, done.stdout.decode())
        self.check_installed(self.path("packages"))

"""Packs the package into a wheel, for `pip install` of this folder. Needs nothing but Python."""
# SPDX-License-Identifier: MIT
import base64
import hashlib
import os
import re
import tarfile
import zipfile

FOLDER = os.path.dirname(os.path.abspath(__file__))
# Written for a tree of its own; what pip installs finds the library by its soname.
LEFT_OUT = {"_location.py"}


def _project(key):
    with open(os.path.join(FOLDER, "pyproject.toml"), encoding="utf-8") as file:
        return re.search(r'(?m)^%s = "(.*)"$' % key, file.read()).group(1)


def _files():
    """The package's files: path in the wheel, bytes."""
    for name in sorted(os.listdir(os.path.join(FOLDER, "pixvane"))):
        if name.endswith((".py", ".pyi", "py.typed")) and name not in LEFT_OUT:
            with open(os.path.join(FOLDER, "pixvane", name), "rb") as file:
                yield "pixvane/" + name, file.read()


def _metadata():
    with open(os.path.join(FOLDER, "README.md"), encoding="utf-8") as file:
        readme = file.read()
    return (
        "Metadata-Version: 2.1\nName: pixvane\nVersion: %s\nSummary: %s\nLicense: MIT\nRequires-Python: %s\n"
        "Description-Content-Type: text/markdown\n\n%s"
        % (_project("version"), _project("description"), _project("requires-python"), readme)
    )


def _record(path, data):
    digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
    return "%s,sha256=%s,%d\n" % (path, digest, len(data))


def get_requires_for_build_wheel(config_settings=None):
    return []


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    version = _project("version")
    info = "pixvane-%s.dist-info/" % version
    name = "pixvane-%s-py3-none-any.whl" % version
    files = list(_files())
    files.append((info + "METADATA", _metadata().encode()))
    tag = "Wheel-Version: 1.0\nGenerator: pixvane\nRoot-Is-Purelib: true\nTag: py3-none-any\n"
    files.append((info + "WHEEL", tag.encode()))
    record = "".join(_record(path, data) for path, data in files) + info + "RECORD,,\n"
    files.append((info + "RECORD", record.encode()))
    with zipfile.ZipFile(os.path.join(wheel_directory, name), "w", zipfile.ZIP_DEFLATED) as wheel:
        for path, data in files:
            # The same sources give the same wheel.
            entry = zipfile.ZipInfo(path, (1980, 1, 1, 0, 0, 0))
            entry.external_attr = 0o644 << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            wheel.writestr(entry, data)
    return name


def build_sdist(sdist_directory, config_settings=None):
    stem = "pixvane-%s" % _project("version")
    with tarfile.open(os.path.join(sdist_directory, stem + ".tar.gz"), "w:gz") as archive:
        for name in ["pyproject.toml", "README.md", "build_backend.py"] + [path for path, _ in _files()]:
            archive.add(os.path.join(FOLDER, name), "%s/%s" % (stem, name))
    return stem + ".tar.gz"

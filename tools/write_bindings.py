#!/usr/bin/env python3
"""Writes what is derived from the library's table of members: the typed C++ face, the Qt widget's members, the
Python stub and the reference page. Needs a build tree with the library, the Python package and the command line program.
"""
# SPDX-License-Identifier: MIT
import argparse
import glob
import os
import subprocess
import sys

sys.dont_write_bytecode = True

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def built_tree():
    trees = glob.glob(os.path.join(ROOT, "build", "*", "hosts", "cli", "pixvane"))
    # A sanitized library wants a sanitized program around it, which Python is not.
    trees = [t for t in trees if not any(s in t for s in ("asan", "tsan", "fuzz"))]
    if not trees:
        sys.exit("write_bindings: no build tree has the command line program; build the target pixvane-cli")
    return max(trees, key=os.path.getmtime)[: -len("/hosts/cli/pixvane")]


def reference_page(build):
    program = os.path.join(build, "hosts", "cli", "pixvane")
    return subprocess.run([program, "members", "--markdown"], check=True, stdout=subprocess.PIPE).stdout.decode()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", metavar="DIR", help="the build tree to ask; else the one built last in build/")
    parser.add_argument(
        "--check", action="store_true", help="write nothing; exit status 1, naming the files, if a copy is stale"
    )
    options = parser.parse_args()
    build = os.path.abspath(options.build) if options.build else built_tree()
    if not os.path.exists(os.path.join(build, "hosts", "cli", "pixvane")):
        sys.exit("write_bindings: %s has no command line program; build the target pixvane-cli" % build)

    sys.path.insert(0, os.path.join(build, "python"))
    import cpp_bindings
    import macro_steps
    import pixvane
    import python_stub
    import qt_bindings

    members = pixvane.members()
    texts = {
        "include/pixvane/pixvane.hpp": cpp_bindings.header(members),
        "hosts/qt/pixvane_members.h": qt_bindings.header(members),
        "hosts/qt/pixvane_members.cpp": qt_bindings.source(members),
        "hosts/python/pixvane/__init__.pyi": python_stub.stub(members),
        "docs/members.md": reference_page(build),
        "docs/macro-steps.md": macro_steps.page(),
    }
    stale = []
    for path, text in texts.items():
        full = os.path.join(ROOT, path)
        try:
            with open(full, encoding="utf-8") as file:
                committed = file.read()
        except FileNotFoundError:
            committed = None
        if committed == text:
            continue
        stale.append(path)
        if not options.check:
            os.makedirs(os.path.dirname(full), exist_ok=True)
            with open(full, "w", encoding="utf-8", newline="\n") as file:
                file.write(text)
    for path in stale:
        print("%s %s" % ("stale:" if options.check else "written:", path))
    if options.check and stale:
        sys.exit("write_bindings: run tools/write_bindings.py and commit what it writes")


if __name__ == "__main__":
    main()

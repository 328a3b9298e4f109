#!/usr/bin/env python3
# Checks that no include goes up the floors of the house, and that the engine includes no toolkit.
# SPDX-License-Identifier: MIT
"""Usage: check_floors.py [ROOT]

Walks the includes of src/ and hosts/ and prints every one that is not allowed. Exit status 1 if there are any.
"""

import os
import re
import sys

# What each folder may include, itself aside. "system" stands for any header that is not the project's.
FLOORS = {
    "core": [],
    "filters": ["core"],
    "draw": ["core"],
    "view": ["core", "draw"],
    "macros": ["core", "draw"],
    "media": ["core"],
    "control": ["core", "filters", "draw", "view", "macros", "media"],
    # Back ends: the folders that declare ports, and the ground.
    "platform": ["core", "draw", "view", "media", "system"],
    "api": ["core", "filters", "draw", "view", "macros", "media", "control", "platform", "pixvane", "system"],
}

STANDARD_HEADERS = set(
    """
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
    climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg
    cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem
    format forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator
    latch limits list locale map memory memory_resource mutex new numbers numeric optional ostream queue random
    ranges ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept
    stop_token streambuf string string_view strstream syncstream system_error thread tuple type_traits typeindex
    typeinfo unordered_map unordered_set utility valarray variant vector version
    """.split()
)
# In the standard library, but doors to the system, which the floors reach through ports only.
SYSTEM_DOORS = {"filesystem", "fstream", "csignal", "csetjmp"}

SOURCE_ENDINGS = (".h", ".hpp", ".c", ".cc", ".cpp", ".inc", ".inl")
INCLUDE = re.compile(r"^[ \t]*#[ \t]*include(?:_next)?[ \t]*(\S.*)$", re.MULTILINE)
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)


def includes(text):
    """The includes of a source text: (line number, name, whether in quotes, or None for a macro's)."""
    # Comments give way to blanks, so that line numbers stay.
    text = COMMENT.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)
    for match in INCLUDE.finditer(text):
        line = text.count("\n", 0, match.start()) + 1
        what = match.group(1).strip()
        named = re.match(r'<([^>]+)>|"([^"]+)"', what)
        if named:
            yield line, named.group(1) or named.group(2), what.startswith('"')
        else:
            yield line, what, None


def source_files(folder):
    for path, folders, files in os.walk(folder):
        folders.sort()
        for name in sorted(files):
            if name.endswith(SOURCE_ENDINGS):
                yield os.path.join(path, name)


def relative_target(root, file, name):
    """Where a quoted include leads if it names a file beside the including one, relative to the root."""
    target = os.path.normpath(os.path.join(os.path.dirname(file), name))
    return os.path.relpath(target, root) if os.path.isfile(target) else None


def fault_in_engine(root, file, name, quoted):
    """Why a file of src/ may not include this, or None."""
    parts = os.path.relpath(file, os.path.join(root, "src")).split(os.sep)
    floor = parts[0]
    if floor not in FLOORS or len(parts) < 2:
        return "stands on no floor"
    allowed = FLOORS[floor]
    if quoted is None:
        # Highway compiles a file again for each instruction set by this macro.
        return None if name == "HWY_TARGET_INCLUDE" else "hides what it includes behind a macro"
    if quoted and not os.path.isfile(os.path.join(root, "src", name)):
        beside = relative_target(root, file, name)
        if beside:
            beside = beside.replace(os.sep, "/")
            name = beside[4:] if beside.startswith("src/") else beside
    first = name.split("/")[0]
    if "/" in name and (first in FLOORS or first == "pixvane"):
        if first == floor:
            neighbours = (parts[1:-1][:1], name.split("/")[1:-1][:1])
            if floor == "platform" and neighbours[0] != neighbours[1]:
                return "reaches from one back end into another"
            return None
        return None if first in allowed else f"goes from {floor} to {first}"
    if first == "hosts" or first == "tests":
        return f"goes from {floor} to {first}"
    if "system" in allowed or first == "hwy":
        return None
    if name in SYSTEM_DOORS:
        return "reaches the system past the ports"
    return None if name in STANDARD_HEADERS else "is neither the standard library's nor Highway's"


def fault_in_host(root, file, name, quoted):
    """Why a file of hosts/ may not include this, or None. A host may use any toolkit, but of Pixvane only what
    is published."""
    if quoted is None:
        return "hides what it includes behind a macro"
    beside = relative_target(root, file, name) if quoted else None
    if beside:
        host = os.path.relpath(file, root).split(os.sep)[:2]
        return None if beside.split(os.sep)[:2] == host else "reaches out of its host's folder"
    if ".." in name.split("/"):
        return "reaches out of its host's folder"
    first = name.split("/")[0]
    if first in FLOORS or first == "src" or os.path.isfile(os.path.join(root, "src", name)):
        return "is not one of the public headers"
    return None


def faults(root):
    for folder, check in (("src", fault_in_engine), ("hosts", fault_in_host)):
        for file in source_files(os.path.join(root, folder)):
            with open(file, encoding="utf-8") as source:
                text = source.read()
            for line, name, quoted in includes(text):
                why = check(root, file, name, quoted)
                if why:
                    yield f"{os.path.relpath(file, root)}:{line}: the include of {name} {why}"


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    found = list(faults(os.path.normpath(root)))
    for fault in found:
        print(fault)
    if not any(source_files(os.path.join(root, "src"))):
        sys.exit(f"there is nothing to check in {root}")
    if found:
        sys.exit(f"{len(found)} includes break the order of the floors")


if __name__ == "__main__":
    main()

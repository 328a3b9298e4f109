# The check of the floors on small made-up houses: what must be found is found, and nothing else.
# SPDX-License-Identifier: MIT
import os
import sys
import tempfile
import unittest

root = sys.argv.pop(1)
sys.path.insert(0, os.path.join(root, "scripts"))
sys.dont_write_bytecode = True
import check_floors  # noqa: E402


def faults_of(files):
    with tempfile.TemporaryDirectory() as house:
        for path, text in files.items():
            path = os.path.join(house, path)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
        return [fault.split(": ")[0] for fault in check_floors.faults(house)]


class Floors(unittest.TestCase):
    def check(self, path, text, faulty, **others):
        files = {path: text, "src/core/bitmap.h": "", "src/control/table.h": "", "src/platform/linux/pages.h": ""}
        files.update(others)
        self.assertEqual(faults_of(files), [f"{path}:{line}" for line in faulty], text)

    def test_downward_includes_pass(self):
        self.check("src/filters/blur.cpp", '#include <vector>\n#include <hwy/highway.h>\n#include "core/bitmap.h"\n', [])
        self.check("src/filters/blur.cpp", '#define HWY_TARGET_INCLUDE "filters/blur.cpp"\n#include HWY_TARGET_INCLUDE\n', [])
        self.check("src/control/pipeline.cpp", '#include "table.h"\n#include "view/painter.h"\n', [])
        self.check("src/platform/codecs/png.cpp", '#include <png.h>\n#include "core/bitmap.h"\n', [])
        self.check("src/api/api.cpp", '#include "control/table.h"\n#include "pixvane/pixvane.h"\n', [])
        self.check("hosts/cli/main.cpp", '#include <pixvane/pixvane.h>\n#include <unistd.h>\n', [])

    def test_upward_and_sideways_includes_are_found(self):
        self.check("src/core/store.cpp", '#include "core/bitmap.h"\n\n#include "control/table.h"\n', [3])
        self.check("src/core/store.cpp", '  #  include <control/table.h>\n', [1])
        self.check("src/core/store.cpp", '#include "../control/table.h"\n', [1])
        self.check("src/filters/blur.cpp", '#include "draw/canvas.h"\n', [1])
        self.check("src/control/control.h", '#include "platform/linux/pages.h"\n#include "pixvane/pixvane.h"\n', [1, 2])
        self.check("src/platform/codecs/png.cpp", '#include "control/table.h"\n#include "platform/linux/pages.h"\n', [1, 2])
        self.check("src/core/store.cpp", '#define UP "control/table.h"\n#include UP\n', [2])
        self.check("src/attic/old.cpp", '#include <vector>\n', [1])

    def test_toolkits_and_system_calls_are_found(self):
        self.check("src/core/memory.cpp", '#include <sys/mman.h>\n#include <memory>\n#include <fstream>\n', [1, 3])
        self.check("src/filters/blur.cpp", '#include <png.h>\n', [1])
        self.check("src/control/control.cpp", '#include <QWidget>\n', [1])

    def test_hosts_see_only_what_is_published(self):
        self.check("hosts/cli/main.cpp", '#include "core/bitmap.h"\n#include "../../src/core/bitmap.h"\n', [1, 2])
        self.check("hosts/cli/main.cpp", '#include "options.h"\n', [], **{"hosts/cli/options.h": ""})
        self.check("hosts/cli/main.cpp", '#include "../python/glue.h"\n', [1], **{"hosts/python/glue.h": ""})

    def test_comments_are_not_includes(self):
        self.check("src/core/store.cpp", '// #include "control/table.h"\n/*\n#include <png.h>\n*/\n#include <png.h>\n', [5])


if __name__ == "__main__":
    unittest.main()

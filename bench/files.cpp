// A folder for the files that the benchmark writes and reads.
// SPDX-License-Identifier: MIT
#include "files.h"

#include <cstdlib>
#include <system_error>

#include "control.h"

namespace bench {

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const std::filesystem::path memory = "/dev/shm";
    const auto base =
        std::filesystem::is_directory(memory, error) ? memory : std::filesystem::temp_directory_path();
    std::string name = (base / "pixvane-bench-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw Error("can't make a folder in " + base.string());
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

}  // namespace bench

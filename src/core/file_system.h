// The port through which the engine reads and writes files. Paths are UTF-8.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/byte_buffer.h"

namespace pixvane {

class FileSystem {
public:
    virtual ~FileSystem() = default;
    /// Reads a whole regular file. False if there is none or it can't be read.
    virtual bool read(const std::string& path, ByteBuffer& bytes) = 0;
    /// Writes a file whole or not at all: into a temporary file beside it, synced, then renamed over it.
    /// False if anything fails; then the old file is as it was and no temporary file stays.
    virtual bool write_whole(const std::string& path, ByteSpan bytes) = 0;
};

}  // namespace pixvane

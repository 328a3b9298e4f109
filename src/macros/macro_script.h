// A recorded macro: the codes of its steps, and the arguments of all of them in one stream.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/byte_buffer.h"

namespace pixvane {

/// Nothing in the stream says where a step's arguments end: that follows from its code (member_table.h).
class MacroScript {
public:
    /// The longest stream: a file tells its length in 32 bits with a sign.
    static constexpr std::size_t kMostBytes = INT32_MAX;

    std::span<const std::int32_t> codes() const { return codes_; }
    ByteSpan arguments() const { return arguments_; }
    /// Another number after each change.
    std::uint64_t revision() const { return revision_; }

    void clear() { replace({}, {}); }
    /// The next append will write its arguments over the start of these.
    void replace(std::vector<std::int32_t> codes, std::vector<std::uint8_t> arguments);
    /// Adds a step. Its arguments go to the write position: the end of what was appended before. A step that
    /// would make the stream too long is left out. Throws std::bad_alloc, and then nothing is changed.
    void append(std::int32_t code, ByteSpan arguments);

private:
    std::vector<std::int32_t> codes_;
    std::vector<std::uint8_t> arguments_;
    std::size_t writePosition_ = 0;
    std::uint64_t revision_ = 0;
};

}  // namespace pixvane

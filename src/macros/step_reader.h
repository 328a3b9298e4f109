// Reads the arguments of a macro's steps out of a stream that may hold anything.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/byte_buffer.h"
#include "draw/rasterizer.h"

namespace pixvane {

/// Each read says whether the stream holds it whole; if not, neither the place in the stream nor the value
/// changes. Counts are checked against what is left before anything is allocated.
class StepReader {
public:
    explicit StepReader(ByteSpan stream, std::size_t offset = 0) : stream_(stream), offset_(offset) {}

    std::size_t offset() const { return offset_; }
    std::size_t left() const { return stream_.size() - offset_; }

    bool byte(std::uint8_t& value);
    bool int32(std::int32_t& value);
    bool float64(double& value);
    /// Refers to the stream itself.
    bool raw(std::uint64_t count, ByteSpan& bytes);
    // Counted: how many there are as 32 bits, then all of them.
    bool numbers(std::vector<std::int32_t>& numbers);
    bool points(std::vector<PixelPoint>& points);
    /// Units of UTF-16 into UTF-8; half a pair becomes U+FFFD.
    bool text(std::string& text);

private:
    /// Takes a count and that many elements of `size` bytes.
    bool counted(std::size_t size, ByteSpan& elements);

    ByteSpan stream_;
    std::size_t offset_;
};

}  // namespace pixvane

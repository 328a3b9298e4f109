// Writes the arguments of a macro's steps: packed, little-endian, one after the other.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/byte_buffer.h"
#include "draw/rasterizer.h"

namespace pixvane {

class StepWriter {
public:
    void byte(std::uint8_t value) { bytes_.push_back(value); }
    void int32(std::int32_t value);
    void float64(double value);
    void raw(ByteSpan bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }
    // Counted: how many there are as 32 bits, then all of them.
    void numbers(std::span<const std::int32_t> numbers);
    void points(std::span<const PixelPoint> points);
    /// UTF-8, written as the units of UTF-16; what is no UTF-8 becomes U+FFFD.
    void text(std::string_view text);

    ByteSpan bytes() const { return bytes_; }

private:
    void unit(std::uint32_t unit);
    std::vector<std::uint8_t> bytes_;
};

}  // namespace pixvane

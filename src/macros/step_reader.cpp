// Reads the arguments of a macro's steps out of a stream that may hold anything.
// SPDX-License-Identifier: MIT
#include "macros/step_reader.h"

#include <bit>

namespace pixvane {
namespace {

std::uint32_t unsigned_at(ByteSpan bytes, std::size_t offset, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value |= std::uint32_t{bytes[offset + i]} << (8 * i);
    return value;
}

std::int32_t int32_at(ByteSpan bytes, std::size_t offset) {
    return static_cast<std::int32_t>(unsigned_at(bytes, offset, 4));
}

void append_utf8(std::string& text, char32_t point) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
        text += static_cast<char>(point);
        return;
    }
    if (point < 0x800) {
        text += static_cast<char>(0xC0 | (point >> 6));
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0 | (point >> 12));
        tail(6);
    } else {
        text += static_cast<char>(0xF0 | (point >> 18));
        tail(12);
        tail(6);
    }
    tail(0);
}

}  // namespace

bool StepReader::raw(std::uint64_t count, ByteSpan& bytes) {
    if (count > left()) return false;
    bytes = stream_.subspan(offset_, static_cast<std::size_t>(count));
    offset_ += bytes.size();
    return true;
}

bool StepReader::byte(std::uint8_t& value) {
    ByteSpan bytes;
    if (!raw(1, bytes)) return false;
    value = bytes[0];
    return true;
}

bool StepReader::int32(std::int32_t& value) {
    ByteSpan bytes;
    if (!raw(4, bytes)) return false;
    value = int32_at(bytes, 0);
    return true;
}

bool StepReader::float64(double& value) {
    ByteSpan bytes;
    if (!raw(8, bytes)) return false;
    value = std::bit_cast<double>(unsigned_at(bytes, 0, 4) | std::uint64_t{unsigned_at(bytes, 4, 4)} << 32);
    return true;
}

bool StepReader::counted(std::size_t size, ByteSpan& elements) {
    const std::size_t start = offset_;
    std::int32_t count = 0;
    if (int32(count) && raw(std::uint64_t{static_cast<std::uint32_t>(count)} * size, elements)) return true;
    offset_ = start;
    return false;
}

bool StepReader::numbers(std::vector<std::int32_t>& numbers) {
    ByteSpan bytes;
    if (!counted(4, bytes)) return false;
    numbers.resize(bytes.size() / 4);
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = int32_at(bytes, 4 * i);
    return true;
}

bool StepReader::points(std::vector<PixelPoint>& points) {
    ByteSpan bytes;
    if (!counted(8, bytes)) return false;
    points.resize(bytes.size() / 8);
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {int32_at(bytes, 8 * i), int32_at(bytes, 8 * i + 4)};
    return true;
}

bool StepReader::text(std::string& text) {
    ByteSpan bytes;
    if (!counted(2, bytes)) return false;
    text.clear();
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        char32_t point = unsigned_at(bytes, i, 2);
        const char32_t next = i + 2 < bytes.size() ? unsigned_at(bytes, i + 2, 2) : 0;
        if ((point >> 10) == 0x36 && (next >> 10) == 0x37) {
            point = 0x10000 + ((point & 0x3FF) << 10 | (next & 0x3FF));
            i += 2;
        } else if ((point >> 11) == 0x1B) {
            point = 0xFFFD;
        }
        append_utf8(text, point);
    }
    return true;
}

}  // namespace pixvane

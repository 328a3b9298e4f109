// Writes the arguments of a macro's steps: packed, little-endian, one after the other.
// SPDX-License-Identifier: MIT
#include "macros/step_writer.h"

#include <bit>

namespace pixvane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Takes one code point off the front of UTF-8: of what is none, one byte.
char32_t take_code_point(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t size = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t point = size == 1 ? first : size == 0 ? kReplacement : first & (0x7Fu >> size);
    bool isWhole = size != 0 && size <= text.size() && first < 0xF5;
    for (std::size_t i = 1; isWhole && i < size; ++i) {
        isWhole = (byte(i) & 0xC0) == 0x80;
        point = point << 6 | (byte(i) & 0x3Fu);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isPoint = isWhole && point >= kLeast[size] && point <= 0x10FFFF && (point >> 11) != 0x1B;
    text.remove_prefix(isPoint ? size : 1);
    return isPoint ? point : kReplacement;
}

}  // namespace

void StepWriter::int32(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8) byte(static_cast<std::uint8_t>(bits >> shift));
}

void StepWriter::float64(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    for (int shift = 0; shift < 64; shift += 8) byte(static_cast<std::uint8_t>(bits >> shift));
}

void StepWriter::numbers(std::span<const std::int32_t> numbers) {
    int32(static_cast<std::int32_t>(numbers.size()));
    for (const std::int32_t number : numbers) int32(number);
}

void StepWriter::points(std::span<const PixelPoint> points) {
    int32(static_cast<std::int32_t>(points.size()));
    for (const PixelPoint& point : points) {
        int32(point.x);
        int32(point.y);
    }
}

void StepWriter::unit(std::uint32_t unit) {
    byte(static_cast<std::uint8_t>(unit));
    byte(static_cast<std::uint8_t>(unit >> 8));
}

void StepWriter::text(std::string_view text) {
    const std::size_t start = bytes_.size();
    int32(0);
    while (!text.empty()) {
        const char32_t point = take_code_point(text);
        if (point < 0x10000) {
            unit(point);
        } else {
            unit(0xD800 + ((point - 0x10000) >> 10));
            unit(0xDC00 + (point & 0x3FF));
        }
    }
    const std::size_t units = (bytes_.size() - start - 4) / 2;
    for (std::size_t i = 0; i < 4; ++i) bytes_[start + i] = static_cast<std::uint8_t>(units >> (8 * i));
}

}  // namespace pixvane

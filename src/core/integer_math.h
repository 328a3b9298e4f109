// Conversions between doubles and integers that are defined for every value.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

namespace pixvane {

/// Truncates toward zero; a value that doesn't fit takes the nearest end of the range, not-a-number gives 0.
constexpr std::int32_t trunc_to_int32(double value) {
    constexpr double low = std::numeric_limits<std::int32_t>::min();
    constexpr double high = std::numeric_limits<std::int32_t>::max();
    if (!(value == value)) return 0;
    if (value <= low) return std::numeric_limits<std::int32_t>::min();
    if (value >= high) return std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(value);
}

constexpr std::int32_t saturate_to_int32(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min()) return std::numeric_limits<std::int32_t>::min();
    if (value > std::numeric_limits<std::int32_t>::max()) return std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(value);
}

/// A channel value: limited to 0..255.
constexpr std::uint8_t clamp_to_byte(std::int64_t value) {
    return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

/// value * numerator / denominator, rounded to nearest, halves up; for values and factors that are not
/// negative and a denominator above 0.
constexpr std::int64_t mul_div(std::int64_t value, std::int64_t numerator, std::int64_t denominator) {
    return (value * numerator + denominator / 2) / denominator;
}

}  // namespace pixvane

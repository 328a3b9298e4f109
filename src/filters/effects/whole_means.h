// What stands out from a mean, in whole numbers that equal the doubles of the formula.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace pixvane::filters {

/// The formula's doubles.
struct Limits {
    double perPixel;   // of a mean
    double threshold;  // of the deviation

    explicit Limits(std::int32_t radius) {
        const double side = 2.0 * radius + 1;
        perPixel = 1.0 / (side * side);
        threshold = 1.5 * perPixel;
    }
};

inline std::int32_t deviation(std::uint32_t value, double mean) {
    return std::abs(static_cast<std::int32_t>(value - mean));
}

/// The formula in whole numbers, equal to the doubles to the bit. A mean that isn't a whole number is at
/// least 1 / (n n) away from the next one, far more than doubles are off; so a value v deviates by lower - v
/// below the mean and v - upper above it, where these are the whole numbers around it. A mean that is a whole
/// number may come out of the doubles a little too small or too large: its limits are tried on the doubles.
struct WholeMeans {
    std::array<std::uint8_t, 256> lower, upper, mean;
    std::uint32_t pixels;
    bool allExact = true;         // so that lower, upper and mean are the whole number itself
    std::array<bool, 256> known;  // whether a mean has such limits: with some, far values are rounded up
    bool allKnown = true;
    bool equalIsAbove;  // whether 1.5 / (n n), as a quotient, is above the threshold

    explicit WholeMeans(std::int32_t radius) {
        const Limits limits(radius);
        const auto side = static_cast<std::uint32_t>(2 * radius + 1);
        pixels = side * side;
        equalIsAbove = 1.5 / pixels > limits.threshold;
        for (std::uint32_t whole = 0; whole < 256; ++whole) {
            const double exact = static_cast<double>(std::uint64_t{whole} * pixels) * limits.perPixel;
            mean[whole] = static_cast<std::uint8_t>(exact);
            bool found = false;
            for (std::uint32_t choice = 0; choice < 4 && !found; ++choice) {
                const std::uint32_t low = whole - std::min(whole, choice % 2);
                const std::uint32_t high = std::min(255u, whole + choice / 2);
                found = true;
                for (std::uint32_t v = 0; v < 256 && found; ++v)
                    found = static_cast<std::uint32_t>(deviation(v, exact)) ==
                            (low > v ? low - v : 0) + (v > high ? v - high : 0);
                lower[whole] = static_cast<std::uint8_t>(low);
                upper[whole] = static_cast<std::uint8_t>(high);
            }
            known[whole] = found;
            allKnown = allKnown && found;
            allExact = allExact && lower[whole] == whole && upper[whole] == whole && mean[whole] == whole;
        }
    }
};

}  // namespace pixvane::filters

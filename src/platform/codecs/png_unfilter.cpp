// The row filters of PNG, for reading.
// SPDX-License-Identifier: MIT
#include <cstdlib>

#include "platform/codecs/png_filter.h"

namespace pixvane::codecs {
namespace {

std::uint8_t paeth(int left, int above, int corner) {
    const int toLeft = std::abs(above - corner);
    const int toAbove = std::abs(left - corner);
    const int toCorner = std::abs(left + above - 2 * corner);
    if (toLeft <= toAbove && toLeft <= toCorner) return static_cast<std::uint8_t>(left);
    return static_cast<std::uint8_t>(toAbove <= toCorner ? above : corner);
}

}  // namespace

bool unfilter_png_row(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                      std::size_t bytesPerPixel) {
    const auto left = [&](std::size_t i) -> int { return i < bytesPerPixel ? 0 : row[i - bytesPerPixel]; };
    const auto corner = [&](std::size_t i) -> int {
        return i < bytesPerPixel ? 0 : above[i - bytesPerPixel];
    };
    const auto undo = [&](auto prediction) {
        for (std::size_t i = 0; i < size; ++i) row[i] = static_cast<std::uint8_t>(row[i] + prediction(i));
    };
    switch (filter) {
        case kPngNone:
            return true;
        case kPngSub:
            undo(left);
            return true;
        case kPngUp:
            undo([&](std::size_t i) { return above[i]; });
            return true;
        case kPngAverage:
            undo([&](std::size_t i) { return (left(i) + above[i]) / 2; });
            return true;
        case kPngPaeth:
            undo([&](std::size_t i) { return paeth(left(i), above[i], corner(i)); });
            return true;
        default:
            return false;
    }
}

}  // namespace pixvane::codecs

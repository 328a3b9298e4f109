// The row filters of PNG, for reading.
// SPDX-License-Identifier: MIT
#include <array>
#include <cstdlib>

#include "platform/codecs/png_filter.h"

namespace pixvane::codecs {
namespace {

int paeth(int left, int above, int corner) {
    const int toLeft = std::abs(above - corner);
    const int toAbove = std::abs(left - corner);
    const int toCorner = std::abs(left + above - 2 * corner);
    const int other = toAbove <= toCorner ? above : corner;
    return (toLeft <= toAbove) & (toLeft <= toCorner) ? left : other;
}

/// The pixel before is what each pixel waits for: with its bytes in registers the channels, at least, go
/// side by side.
template <std::size_t bytesPerPixel, class Prediction>
void undo(std::uint8_t* row, const std::uint8_t* above, std::size_t size, Prediction prediction) {
    std::array<int, bytesPerPixel> left{};
    std::array<int, bytesPerPixel> corner{};
    for (std::size_t i = 0; i < size; i += bytesPerPixel) {
        for (std::size_t c = 0; c < bytesPerPixel; ++c) {
            const int up = above[i + c];
            left[c] = (row[i + c] + prediction(left[c], up, corner[c])) & 255;
            corner[c] = up;
            row[i + c] = static_cast<std::uint8_t>(left[c]);
        }
    }
}

template <std::size_t bytesPerPixel>
bool unfilter(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    switch (filter) {
        case kPngNone:
            return true;
        case kPngSub:
            undo<bytesPerPixel>(row, above, size, [](int left, int, int) { return left; });
            return true;
        case kPngUp:
            for (std::size_t i = 0; i < size; ++i) row[i] = static_cast<std::uint8_t>(row[i] + above[i]);
            return true;
        case kPngAverage:
            undo<bytesPerPixel>(row, above, size, [](int left, int up, int) { return (left + up) >> 1; });
            return true;
        case kPngPaeth:
            undo<bytesPerPixel>(row, above, size, paeth);
            return true;
        default:
            return false;
    }
}

}  // namespace

bool unfilter_png_row(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                      std::size_t bytesPerPixel) {
    switch (bytesPerPixel) {
        case 1:
            return unfilter<1>(filter, row, above, size);
        case 2:
            return unfilter<2>(filter, row, above, size);
        case 3:
            return unfilter<3>(filter, row, above, size);
        default:
            return unfilter<4>(filter, row, above, size);
    }
}

}  // namespace pixvane::codecs

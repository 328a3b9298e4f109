// The row filters of PNG, for reading.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cstdlib>

#include "platform/codecs/png_filter.h"

namespace pixvane::codecs {
namespace {

/// Without a branch, which no processor could foresee in a photograph.
int chosen(bool first, int a, int b) { return b ^ ((a ^ b) & -static_cast<int>(first)); }

// Predictions of a byte from those on its left, above it, and above that on its left.
int sub(int left, int, int) { return left; }
int up(int, int above, int) { return above; }
int average(int left, int above, int) { return (left + above) / 2; }
int paeth(int left, int above, int corner) {
    const int toLeft = std::abs(above - corner);
    const int toAbove = std::abs(left - corner);
    const int toCorner = std::abs(left + above - 2 * corner);
    const int nearer = chosen(toAbove < toLeft, above, left);
    return chosen(toCorner < std::min(toAbove, toLeft), corner, nearer);
}

/// The pixel on the left stays in registers: read back from the row, each byte would wait for its store.
template <std::size_t bytesPerPixel, class Prediction>
void undo(std::uint8_t* row, const std::uint8_t* aboveRow, std::size_t size, Prediction prediction) {
    std::array<int, bytesPerPixel> left{};
    std::array<int, bytesPerPixel> corner{};
    for (std::size_t i = 0; i + bytesPerPixel <= size; i += bytesPerPixel) {
        for (std::size_t b = 0; b < bytesPerPixel; ++b) {
            const int above = aboveRow[i + b];
            left[b] = (row[i + b] + prediction(left[b], above, corner[b])) & 0xFF;
            corner[b] = above;
            row[i + b] = static_cast<std::uint8_t>(left[b]);
        }
    }
}

template <std::size_t bytesPerPixel>
bool undo(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    const auto run = [&](auto prediction) {
        undo<bytesPerPixel>(row, above, size, prediction);
        return true;
    };
    // As lambdas, each of which is a type of its own and so is made part of the loop.
    switch (filter) {
        case kPngNone:
            return true;
        case kPngSub:
            return run([](int l, int a, int c) { return sub(l, a, c); });
        case kPngUp:
            return run([](int l, int a, int c) { return up(l, a, c); });
        case kPngAverage:
            return run([](int l, int a, int c) { return average(l, a, c); });
        case kPngPaeth:
            return run([](int l, int a, int c) { return paeth(l, a, c); });
        default:
            return false;
    }
}

}  // namespace

bool unfilter_png_row(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                      std::size_t bytesPerPixel) {
    switch (bytesPerPixel) {
        case 1:
            return undo<1>(filter, row, above, size);
        case 2:
            return undo<2>(filter, row, above, size);
        case 3:
            return undo<3>(filter, row, above, size);
        case 4:
            return undo<4>(filter, row, above, size);
        case 6:
            return undo<6>(filter, row, above, size);
        case 8:
            return undo<8>(filter, row, above, size);
        default:
            return false;
    }
}

}  // namespace pixvane::codecs

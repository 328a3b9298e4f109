// The colours of a picture, sorted into as many boxes as a palette has entries.
// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "core/pixel_buffer.h"

namespace pixvane::codecs {

/// How often each colour occurs, in cells of 8 x 8 x 8 neighbouring colours.
class ColorHistogram {
public:
    static constexpr std::uint32_t kSide = 32;

    struct Cell {
        double count = 0;
        double red = 0;  // sums
        double green = 0;
        double blue = 0;
        double squares = 0;  // of all three
    };

    /// Pixels with less alpha than this don't count.
    ColorHistogram(ConstPixelBuffer picture, std::uint32_t leastAlpha);
    const std::vector<Cell>& cells() const { return cells_; }

private:
    std::vector<Cell> cells_;
};

/// Up to `count` colours that stand for the histogram's with little error: boxes are cut where that lowers
/// the squared error most, then each colour moves to the mean of what is nearest to it.
std::vector<Pixel> choose_palette(const ColorHistogram& histogram, std::size_t count);

}  // namespace pixvane::codecs

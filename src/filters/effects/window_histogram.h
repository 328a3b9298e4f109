// How often each channel value occurs in the window around a pixel, as the pixel moves along its row.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

class WindowHistogram {
public:
    using Counts = std::array<std::uint32_t, 256>;

    /// The window of the first pixel of row y.
    WindowHistogram(ConstPixelBuffer source, std::int32_t radius, std::int32_t y)
        : source_(source),
          radius_(radius),
          top_(std::max(0, y - radius)),
          bottom_(std::min(source.height - 1, y + radius)),
          above_(std::max(0, radius - y)),
          below_(std::max(0, y + radius - (source.height - 1))) {
        const std::int32_t last = source.width - 1;
        add_column(0, 1 + static_cast<std::uint32_t>(radius));
        for (std::int32_t x = 1; x <= std::min(radius, last); ++x) add_column(x, 1);
        if (radius > last) add_column(last, static_cast<std::uint32_t>(radius - last));
    }

    /// To the next pixel.
    void move_right() {
        add_column(std::max(0, x_ - radius_), ~std::uint32_t{0});
        ++x_;
        add_column(std::min(source_.width - 1, x_ + radius_), 1);
    }

    const Counts& red() const { return red_; }
    const Counts& green() const { return green_; }
    const Counts& blue() const { return blue_; }

private:
    // Counts wrap around, so that taking one off is adding the largest number.
    void add(Pixel p, std::uint32_t count) {
        red_[red_of(p)] += count;
        green_[green_of(p)] += count;
        blue_[blue_of(p)] += count;
    }
    void add_column(std::int32_t x, std::uint32_t count) {
        for (std::int32_t y = top_; y <= bottom_; ++y) add(source_.row(y)[x], count);
        if (above_ > 0) add(source_.row(top_)[x], count * static_cast<std::uint32_t>(above_));
        if (below_ > 0) add(source_.row(bottom_)[x], count * static_cast<std::uint32_t>(below_));
    }

    ConstPixelBuffer source_;
    std::int32_t radius_;
    std::int32_t top_, bottom_;   // rows of the window that exist
    std::int32_t above_, below_;  // how many more times the first and the last of them count
    std::int32_t x_ = 0;
    Counts red_{}, green_{}, blue_{};
};

}  // namespace pixvane::filters

// The least and the largest channel values around each pixel.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "core/kernel_path.h"
#include "filters/effects_plain.h"

namespace pixvane::filters {
namespace {

template <class Choose>
Pixel choose_channels(Pixel a, Pixel b, Choose choose) {
    return make_pixel(0xFF, choose(red_of(a), red_of(b)), choose(green_of(a), green_of(b)),
                      choose(blue_of(a), blue_of(b)));
}

// Column by column for a few pixels at once. What repeats beyond the edges changes nothing here.
template <class Choose>
void choose_plainly(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                    std::int32_t last, Choose choose) {
    constexpr std::int32_t kFew = 64;
    for (std::int32_t y = first; y < last; ++y) {
        const std::int32_t top = std::max(0, y - radius);
        const std::int32_t bottom = std::min(source.height - 1, y + radius);
        for (std::int32_t left = 0; left < source.width; left += kFew) {
            const std::int32_t right = std::min(source.width, left + kFew);
            Pixel* to = target.row(y);
            for (std::int32_t x = left; x < right; ++x) to[x] = source.row(y)[x] | kOpaque;
            const std::int32_t end = std::min(source.width, right + radius);
            for (std::int32_t column = std::max(0, left - radius); column < end; ++column) {
                Pixel chosen = source.row(top)[column];
                for (std::int32_t i = top + 1; i <= bottom; ++i)
                    chosen = choose_channels(chosen, source.row(i)[column], choose);
                for (std::int32_t x = std::max(left, column - radius);
                     x < std::min(right, column + radius + 1); ++x)
                    to[x] = choose_channels(to[x], chosen, choose);
            }
        }
    }
}

}  // namespace

void plain::minimal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                    std::int32_t last) {
    choose_plainly(source, target, radius, first, last,
                   [](std::uint32_t a, std::uint32_t b) { return std::min(a, b); });
}

void plain::maximal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                    std::int32_t last) {
    choose_plainly(source, target, radius, first, last,
                   [](std::uint32_t a, std::uint32_t b) { return std::max(a, b); });
}

void minimal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last) {
    plain::minimal(source, target, radius, first, last);
}

void maximal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last) {
    plain::maximal(source, target, radius, first, last);
}

}  // namespace pixvane::filters

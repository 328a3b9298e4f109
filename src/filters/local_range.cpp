// Filters that act only where the local range is small, or large.
// SPDX-License-Identifier: MIT
#include "filters/area.h"
#include "filters/area_plain.h"
#include "filters/band_scratch.h"

namespace pixvane::filters {
namespace {

struct Range {
    std::uint32_t low = 255;
    std::uint32_t high = 0;
    void widen(Range other) {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
    void widen(std::uint32_t value) { widen({value, value}); }
    std::int32_t size() const { return static_cast<std::int32_t>(high) - static_cast<std::int32_t>(low); }
};

struct Ranges {
    Range blue, green, red;
    void widen(Pixel p) {
        blue.widen(blue_of(p));
        green.widen(green_of(p));
        red.widen(red_of(p));
    }
    void widen(const Ranges& other) {
        blue.widen(other.blue);
        green.widen(other.green);
        red.widen(other.red);
    }
    std::int32_t smallest() const { return std::min({blue.size(), green.size(), red.size()}); }
};

std::int32_t smallest_range(ConstPixelBuffer source, std::int32_t x, std::int32_t y) {
    Ranges ranges;
    for (std::int32_t dy = -1; dy <= 1; ++dy) {
        for (std::int32_t dx = -1; dx <= 1; ++dx)
            ranges.widen(source.row(inside(y + dy, source.height))[inside(x + dx, source.width)]);
    }
    return ranges.smallest();
}

}  // namespace

void plain::smart_blur(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t level,
                       std::int32_t first, std::int32_t last, std::byte* scratch) {
    plain::box_mean(source, target, {radius, 1}, first, last, scratch);
    Ranges* columns = ScratchCutter(scratch).cut<Ranges>(static_cast<std::size_t>(source.width));
    for (std::int32_t y = first; y < last; ++y) {
        std::fill_n(columns, source.width, Ranges{});
        const Window rows(y, radius, source.height);
        for (std::int32_t i = rows.first; i <= rows.last; ++i) {
            for (std::int32_t x = 0; x < source.width; ++x) columns[x].widen(source.row(i)[x]);
        }
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Window window(x, radius, source.width);
            Ranges ranges;
            for (std::int32_t i = window.first; i <= window.last; ++i) ranges.widen(columns[i]);
            if (ranges.smallest() > level) target.row(y)[x] = source.row(y)[x];
        }
    }
}

void plain::sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                         std::int32_t last) {
    plain::convolve(source, target, sharpen_kernel(), first, last);
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x)
            if (smallest_range(source, x, y) < level) target.row(y)[x] = source.row(y)[x];
    }
}

void smart_blur(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t level,
                std::int32_t first, std::int32_t last, std::byte* scratch) {
    plain::smart_blur(source, target, radius, level, first, last, scratch);
}

std::size_t smart_blur_scratch(std::int32_t width, std::int32_t, std::int32_t radius) {
    return std::max(box_mean_scratch(width, radius),
                    ScratchCutter::bytes<Ranges>(static_cast<std::size_t>(width)));
}

void sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                  std::int32_t last) {
    plain::sharpen_edge(source, target, level, first, last);
}

}  // namespace pixvane::filters

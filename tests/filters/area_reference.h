// The filters of areas once more, pixel by pixel and as slow as can be, to compare the sums that slide with.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "filters/area/area.h"
#include "filters/area/band_scratch.h"
#include "support/pictures.h"

namespace pixvane::test {

inline Pixel clamped_pixel(ConstPixelBuffer source, std::int64_t x, std::int64_t y) {
    return source.row(static_cast<std::int32_t>(
        std::clamp<std::int64_t>(y, 0, source.height - 1)))[std::clamp<std::int64_t>(x, 0, source.width - 1)];
}

inline std::int64_t channel_of(Pixel p, int channel) { return (p >> (8 * channel)) & 0xFF; }

/// The weighted sum over a square, divided; weight(dx, dy).
template <class Weight>
Pixel weighted_square(ConstPixelBuffer source, std::int32_t x, std::int32_t y, std::int32_t radius,
                      Weight weight) {
    std::int64_t total[3] = {};
    std::int64_t weights = 0;
    for (std::int64_t dx = -radius; dx <= radius; ++dx) {
        for (std::int64_t dy = -radius; dy <= radius; ++dy) {
            const std::int64_t w = weight(dx, dy);
            weights += w;
            const Pixel p = clamped_pixel(source, x + dx, y + dy);
            for (int c = 0; c < 3; ++c) total[c] += w * channel_of(p, c);
        }
    }
    Pixel result = kOpaque;
    for (int c = 0; c < 3; ++c) {
        const std::int64_t value = weights != 0 ? total[c] / weights : total[c];
        result |= static_cast<Pixel>(std::clamp<std::int64_t>(value, 0, 255)) << (8 * c);
    }
    return result;
}

inline std::int64_t local_range(ConstPixelBuffer source, std::int32_t x, std::int32_t y,
                                std::int32_t radius) {
    std::int64_t smallest = 255;
    for (int c = 0; c < 3; ++c) {
        std::int64_t low = 255;
        std::int64_t high = 0;
        for (std::int64_t dx = -radius; dx <= radius; ++dx) {
            for (std::int64_t dy = -radius; dy <= radius; ++dy) {
                const std::int64_t value = channel_of(clamped_pixel(source, x + dx, y + dy), c);
                low = std::min(low, value);
                high = std::max(high, value);
            }
        }
        smallest = std::min(smallest, high - low);
    }
    return smallest;
}

/// A filter of areas, its arguments put away.
struct AreaFilter {
    std::string name;
    std::function<std::size_t(std::int32_t width, std::int32_t height)> scratch;
    std::function<void(ConstPixelBuffer, PixelBuffer, std::int32_t first, std::int32_t last, std::byte*)> run;
};

inline AreaFilter convolving(const filters::Kernel& kernel, const std::string& name) {
    return {
        name, [](auto, auto) { return 0; },
        [=](auto s, auto t, auto first, auto last, auto*) { filters::convolve(s, t, kernel, first, last); }};
}

inline AreaFilter averaging(std::int32_t radius, std::int32_t centreWeight) {
    return {"mean " + std::to_string(radius) + " " + std::to_string(centreWeight),
            [=](auto width, auto) { return filters::box_mean_scratch(width); },
            [=](auto s, auto t, auto first, auto last, auto* scratch) {
                filters::box_mean(s, t, {radius, centreWeight}, first, last, scratch);
            }};
}

inline AreaFilter blurring_by_rings(std::int32_t radius, std::int32_t fallOff) {
    const filters::RingWeights weights = filters::ring_weights(radius, fallOff);
    return {"rings " + std::to_string(radius) + " " + std::to_string(fallOff),
            [=](auto width, auto) { return filters::ring_blur_scratch(width, weights); },
            [=](auto s, auto t, auto first, auto last, auto* scratch) {
                filters::ring_blur(s, t, weights, first, last, scratch);
            }};
}

inline AreaFilter blurring_smartly(std::int32_t radius, std::int32_t level) {
    return {"smart " + std::to_string(radius) + " " + std::to_string(level),
            [=](auto width, auto height) { return filters::smart_blur_scratch(width, height, radius); },
            [=](auto s, auto t, auto first, auto last, auto* scratch) {
                filters::smart_blur(s, t, radius, level, first, last, scratch);
            }};
}

inline AreaFilter sharpening_edges(std::int32_t level) {
    return {"edges " + std::to_string(level), [](auto, auto) { return 0; },
            [=](auto s, auto t, auto first, auto last, auto*) {
                filters::sharpen_edge(s, t, level, first, last);
            }};
}

inline AreaFilter embossing(std::int32_t dx, std::int32_t dy) {
    return {
        "emboss " + std::to_string(dx) + " " + std::to_string(dy), [](auto, auto) { return 0; },
        [=](auto s, auto t, auto first, auto last, auto*) { filters::emboss(s, t, dx, dy, first, last); }};
}

/// The result in bands of so many rows; what lies around the target is looked after.
inline Picture run(const AreaFilter& filter, ConstPixelBuffer source, std::int32_t bandRows = 1 << 30,
                   std::size_t targetOffset = 0) {
    constexpr Pixel kGuard = 0xDEADBEEF;
    const std::size_t guards = 16;
    std::vector<Pixel> memory(source.count() + 2 * guards + targetOffset, kGuard);
    const PixelBuffer target{memory.data() + guards + targetOffset, source.width, source.height};
    // Written over, so that nothing can come from what happens to be there.
    const std::size_t bytes = filter.scratch(source.width, source.height);
    filters::BandScratch scratch(bytes);
    const filters::BandScratch::Block block(scratch);
    for (std::int32_t first = 0; first < source.height; first += std::min(bandRows, source.height)) {
        std::fill_n(block.data(), bytes, std::byte{0xA5});
        filter.run(source, target, first, std::min(first + std::min(bandRows, source.height), source.height),
                   block.data());
    }
    const auto begin = memory.begin() + static_cast<std::ptrdiff_t>(guards + targetOffset);
    const auto end = begin + static_cast<std::ptrdiff_t>(source.count());
    EXPECT_TRUE(std::all_of(memory.begin(), begin, [](Pixel p) { return p == kGuard; })) << filter.name;
    EXPECT_TRUE(std::all_of(end, memory.end(), [](Pixel p) { return p == kGuard; })) << filter.name;
    return {source.width, source.height, std::vector<Pixel>(begin, end)};
}

}  // namespace pixvane::test

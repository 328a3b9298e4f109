// Outlying channels replaced by the mean around them.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/anti_noise.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cstring>

#include "core/kernel_path.h"
#include "core/pixel_runs-inl.h"
#include "filters/anti_noise_columns.h"
#include "filters/effects_plain.h"
#include "filters/whole_means.h"
#include "filters/window_histogram.h"

#ifndef PIXVANE_FILTERS_ANTI_NOISE_
#define PIXVANE_FILTERS_ANTI_NOISE_
namespace pixvane::filters {
namespace {

std::uint32_t quiet(std::uint32_t value, const WindowHistogram::Counts& counts, const Limits& limits) {
    std::uint64_t sum = 0;
    for (std::uint32_t v = 0; v < 256; ++v) sum += std::uint64_t{counts[v]} * v;
    const double mean = static_cast<double>(sum) * limits.perPixel;
    std::int64_t total = 0;
    for (std::uint32_t v = 0; v < 256; ++v) total += std::int64_t{counts[v]} * deviation(v, mean);
    if (total == 0) return value;
    const double part = deviation(value, mean) / static_cast<double>(total);
    return part > limits.threshold ? static_cast<std::uint32_t>(mean) : value;
}

}  // namespace
}  // namespace pixvane::filters
#endif

#if HWY_ONCE
namespace pixvane::filters {

void plain::anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                       std::int32_t last) {
    const Limits limits(radius);
    for (std::int32_t y = first; y < last; ++y) {
        WindowHistogram window(source, radius, y);
        for (std::int32_t x = 0; x < source.width; ++x) {
            if (x > 0) window.move_right();
            const Pixel p = source.row(y)[x];
            target.row(y)[x] = make_pixel(0xFF, quiet(red_of(p), window.red(), limits),
                                          quiet(green_of(p), window.green(), limits),
                                          quiet(blue_of(p), window.blue(), limits));
        }
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;
using WordTag = hn::Repartition<std::uint16_t, PixelTag>;
using WordVec = hn::Vec<WordTag>;

// All sums fit 16 bits.
constexpr std::int32_t kLargestSmallRadius = 7;
constexpr std::size_t kBytes = hn::MaxLanes(ByteTag());
constexpr std::int32_t kMostSide = 2 * kLargestSmallRadius + 1;

// Sums of bytes, in 16 bits each.
struct ByteSums {
    WordVec low;
    WordVec high;

    HWY_INLINE void add(ByteVec bytes) {
        const ByteTag d;
        const WordTag wide;
        const ByteVec zero = hn::Zero(d);
        low = hn::Add(low, hn::BitCast(wide, hn::InterleaveLower(d, bytes, zero)));
        high = hn::Add(high, hn::BitCast(wide, hn::InterleaveUpper(d, bytes, zero)));
    }
    // In the order of the bytes: of each block of 16 the lower part has the first 8.
    HWY_INLINE void store(std::uint16_t* sums) const {
        HWY_ALIGN std::uint16_t parts[2][kBytes / 2];
        hn::Store(low, WordTag(), parts[0]);
        hn::Store(high, WordTag(), parts[1]);
        for (std::size_t block = 0; block < hn::Lanes(ByteTag()) / 16; ++block) {
            std::memcpy(sums + block * 16, parts[0] + block * 8, 16);
            std::memcpy(sums + block * 16 + 8, parts[1] + block * 8, 16);
        }
    }
};

// Of each byte the limits of its mean, and the mean.
struct Means {
    HWY_ALIGN std::uint8_t lower[kBytes];
    HWY_ALIGN std::uint8_t upper[kBytes];
    HWY_ALIGN std::uint8_t mean[kBytes];
};

void find_means(const std::uint16_t* sums, const WholeMeans& whole, Means& means) {
    const float part = 1.0F / static_cast<float>(whole.pixels);
    for (std::size_t i = 0; i < kBytes; ++i) {
        // Half of one more keeps a whole quotient from falling below itself.
        const auto mean = static_cast<std::int32_t>((static_cast<float>(sums[i]) + 0.5F) * part);
        const bool between = mean * static_cast<std::int32_t>(whole.pixels) != sums[i];
        means.mean[i] = means.lower[i] = static_cast<std::uint8_t>(mean);
        means.upper[i] = static_cast<std::uint8_t>(mean + (between ? 1 : 0));
    }
    if (whole.allExact) return;
    for (std::size_t i = 0; i < kBytes; ++i) {
        const std::uint8_t mean = means.mean[i];
        if (means.upper[i] != mean) continue;
        means.lower[i] = whole.lower[mean];
        means.upper[i] = whole.upper[mean];
        means.mean[i] = whole.mean[mean];
    }
}

void choose_values(const std::uint16_t* totals, const Means& means, const WholeMeans& whole,
                   const std::uint8_t* values, std::uint8_t* results) {
    const auto pixels = static_cast<std::int32_t>(whole.pixels);
    const std::int32_t more = whole.equalIsAbove ? 0 : 1;
    for (std::size_t i = 0; i < kBytes; ++i) {
        const std::int32_t value = values[i];
        const std::int32_t own = std::max(means.lower[i] - value, 0) + std::max(value - means.upper[i], 0);
        // own / total > 1.5 / pixels; own is part of the total.
        const bool standsOut = (own > 0) & (2 * own * pixels >= 3 * std::int32_t{totals[i]} + more);
        results[i] = standsOut ? means.mean[i] : values[i];
    }
}

// A vector of pixels whose windows start at these rows.
HWY_INLINE PixelVec quieten(const Pixel* const* rows, std::int32_t radius, const WholeMeans& whole) {
    const PixelTag d;
    const ByteTag bytes;
    const std::int32_t side = 2 * radius + 1;
    ByteSums sum{hn::Zero(WordTag()), hn::Zero(WordTag())};
    for (std::int32_t v = 0; v < side; ++v) {
        for (std::int32_t u = 0; u < side; ++u) sum.add(hn::BitCast(bytes, hn::LoadU(d, rows[v] + u)));
    }
    std::uint16_t sums[kBytes] = {};
    sum.store(sums);
    Means means;
    find_means(sums, whole, means);
    const ByteVec lower = hn::Load(bytes, means.lower);
    const ByteVec upper = hn::Load(bytes, means.upper);
    ByteSums total{hn::Zero(WordTag()), hn::Zero(WordTag())};
    for (std::int32_t v = 0; v < side; ++v) {
        for (std::int32_t u = 0; u < side; ++u) {
            const ByteVec values = hn::BitCast(bytes, hn::LoadU(d, rows[v] + u));
            total.add(hn::Or(hn::SaturatedSub(lower, values), hn::SaturatedSub(values, upper)));
        }
    }
    std::uint16_t totals[kBytes] = {};
    total.store(totals);
    HWY_ALIGN std::uint8_t own[kBytes] = {};
    hn::Store(hn::BitCast(bytes, hn::LoadU(d, rows[radius] + radius)), bytes, own);
    HWY_ALIGN std::uint8_t results[kBytes];
    choose_values(totals, means, whole, own, results);
    return opaque(hn::BitCast(d, hn::Load(bytes, results)));
}

void anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                std::int32_t last) {
    if (radius > kLargestSmallRadius) {
        const bool done = radius <= kLargestNoiseColumns &&
                          filters::anti_noise_by_columns(source, target, radius, first, last);
        if (!done) plain::anti_noise(source, target, radius, first, last);
        return;
    }
    const WholeMeans whole(radius);
    if (!whole.allKnown) return plain::anti_noise(source, target, radius, first, last);
    const PixelTag d;
    constexpr auto kMostLanes = static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(d));
    const std::int32_t side = 2 * radius + 1;
    for (std::int32_t y = first; y < last; ++y) {
        const Pixel* rows[kMostSide];
        const auto row_of = [&](std::int32_t i) {
            return source.row(std::clamp(y - radius + i, 0, source.height - 1));
        };
        for (std::int32_t x = 0; x < source.width; x += lanes) {
            Pixel* to = target.row(y) + x;
            if (x >= radius && x + lanes + radius <= source.width) {
                for (std::int32_t i = 0; i < side; ++i) rows[i] = row_of(i) + (x - radius);
                hn::StoreU(quieten(rows, radius, whole), d, to);
                continue;
            }
            // What reaches beyond the picture works on a copy with its edges repeated.
            Pixel copies[kMostSide][kMostLanes + kMostSide];
            for (std::int32_t i = 0; i < side; ++i) {
                for (std::int32_t u = 0; u < lanes + 2 * radius; ++u)
                    copies[i][u] = row_of(i)[std::clamp(x - radius + u, 0, source.width - 1)];
                rows[i] = copies[i];
            }
            Pixel result[kMostLanes];
            hn::StoreU(quieten(rows, radius, whole), d, result);
            std::copy_n(result, std::min(lanes, source.width - x), to);
        }
    }
}
#else
using plain::anti_noise;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(anti_noise);

void anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                std::int32_t last) {
    pick_kernel(plain::anti_noise, HWY_DYNAMIC_DISPATCH(anti_noise))(source, target, radius, first, last);
}

}  // namespace pixvane::filters
#endif

// Outlying channels replaced by the mean around them.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/anti_noise.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/kernel_path.h"
#include "filters/area/neighbours-inl.h"
#include "filters/effects/anti_noise_columns.h"
#include "filters/effects/effects_plain.h"
#include "filters/effects/whole_means.h"
#include "filters/effects/window_histogram.h"

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

// All sums fit 16 bits.
constexpr std::int32_t kLargestSmallRadius = 7;
constexpr std::int32_t kMostSide = 2 * kLargestSmallRadius + 1;

// A word for each channel of some pixels.
struct ChannelWords {
    WordVec blueRed, greenAlpha;
};

// Sums of bytes.
struct ByteSums {
    ChannelWords words;

    HWY_INLINE void add(PixelVec bytes) {
        words.blueRed = hn::Add(words.blueRed, blue_red_words(bytes));
        words.greenAlpha = hn::Add(words.greenAlpha, green_alpha_words(bytes));
    }
};

HWY_INLINE ByteVec bytes_of(const ChannelWords& words) {
    const PixelTag d;
    return hn::BitCast(
        ByteTag(), hn::Or(hn::BitCast(d, words.blueRed), hn::BitCast(d, hn::ShiftLeft<8>(words.greenAlpha))));
}

// Means of windows and the whole numbers around them.
struct MeanWords {
    WordVec lower, upper, mean;
};

class SmallWindows {
public:
    SmallWindows(std::int32_t radius, const WholeMeans& whole)
        : radius_(radius), whole_(whole), quotient_(whole.pixels, 255 * std::int64_t{whole.pixels}) {}

    bool is_exact() const { return quotient_.is_exact() && whole_.allKnown; }

    // A vector of pixels whose windows start at these rows.
    HWY_INLINE PixelVec quieten(const Pixel* const* rows) const {
        const PixelTag d;
        ByteSums sums{{hn::Zero(WordTag()), hn::Zero(WordTag())}};
        for_window(rows, [&](PixelVec p) HWY_ATTR { sums.add(p); });
        const MeanWords blueRed = means_of(sums.words.blueRed);
        const MeanWords greenAlpha = means_of(sums.words.greenAlpha);
        const ByteVec lower = bytes_of({blueRed.lower, greenAlpha.lower});
        const ByteVec upper = bytes_of({blueRed.upper, greenAlpha.upper});
        const auto deviations = [&](PixelVec p) HWY_ATTR {
            const ByteVec values = hn::BitCast(ByteTag(), p);
            return hn::BitCast(d, hn::Or(hn::SaturatedSub(lower, values), hn::SaturatedSub(values, upper)));
        };
        ByteSums totals{{hn::Zero(WordTag()), hn::Zero(WordTag())}};
        for_window(rows, [&](PixelVec p) HWY_ATTR { totals.add(deviations(p)); });
        const PixelVec value = hn::LoadU(d, rows[radius_] + radius_);
        const PixelVec own = deviations(value);
        return pixels_of_words(
            chosen(blue_red_words(value), blueRed.mean, blue_red_words(own), totals.words.blueRed),
            chosen(green_alpha_words(value), greenAlpha.mean, green_alpha_words(own),
                   totals.words.greenAlpha));
    }

private:
    template <class Use>
    HWY_INLINE void for_window(const Pixel* const* rows, const Use& use) const {
        const std::int32_t side = 2 * radius_ + 1;
        for (std::int32_t v = 0; v < side; ++v) {
            for (std::int32_t u = 0; u < side; ++u) use(hn::LoadU(PixelTag(), rows[v] + u));
        }
    }

    HWY_INLINE MeanWords means_of(WordVec sums) const {
        const WordTag d;
        const WordVec mean = quotient_(sums);
        const WordVec pixels = hn::Set(d, static_cast<std::uint16_t>(whole_.pixels));
        const auto isWhole = hn::Eq(hn::Mul(mean, pixels), sums);
        const WordVec one = hn::Set(d, 1);
        const MeanWords means{mean, hn::Add(mean, hn::IfThenZeroElse(isWhole, one)), mean};
        if (HWY_LIKELY(whole_.allExact || hn::AllFalse(d, isWhole))) return means;
        return looked_up(means);
    }

    HWY_NOINLINE MeanWords looked_up(const MeanWords& means) const {
        const WordTag d;
        constexpr std::size_t kWords = hn::MaxLanes(WordTag());
        HWY_ALIGN std::uint16_t lower[kWords], upper[kWords], mean[kWords];
        hn::Store(means.lower, d, lower);
        hn::Store(means.upper, d, upper);
        hn::Store(means.mean, d, mean);
        for (std::size_t i = 0; i < hn::Lanes(d); ++i) {
            if (upper[i] != mean[i]) continue;
            lower[i] = whole_.lower[mean[i]];
            upper[i] = whole_.upper[mean[i]];
            mean[i] = whole_.mean[mean[i]];
        }
        return {hn::Load(d, lower), hn::Load(d, upper), hn::Load(d, mean)};
    }

    // own / total > 1.5 / pixels, in which own is part of the total. All but the total times 1.5 fit words,
    // and that may stay at the largest word, since own times pixels is less.
    HWY_INLINE WordVec chosen(WordVec value, WordVec mean, WordVec own, WordVec total) const {
        const WordTag d;
        const WordVec more = hn::Set(d, whole_.equalIsAbove ? 1 : 2);
        const WordVec half = hn::ShiftRight<1>(hn::Add(total, more));
        const WordVec pixels = hn::Set(d, static_cast<std::uint16_t>(whole_.pixels));
        const WordVec limit = hn::SaturatedAdd(total, half);
        const auto reaches = hn::Eq(hn::SaturatedSub(limit, hn::Mul(own, pixels)), hn::Zero(d));
        const auto standsOut = hn::And(hn::Ne(own, hn::Zero(d)), reaches);
        return hn::IfThenElse(standsOut, mean, value);
    }

    std::int32_t radius_;
    const WholeMeans& whole_;
    WordQuotient quotient_;
};

void anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                std::int32_t last) {
    if (radius > kLargestSmallRadius) {
        const bool done = radius <= kLargestNoiseColumns &&
                          filters::anti_noise_by_columns(source, target, radius, first, last);
        if (!done) plain::anti_noise(source, target, radius, first, last);
        return;
    }
    const WholeMeans whole(radius);
    const SmallWindows windows(radius, whole);
    if (!windows.is_exact()) return plain::anti_noise(source, target, radius, first, last);
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
                hn::StoreU(windows.quieten(rows), d, to);
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
            hn::StoreU(windows.quieten(rows), d, result);
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

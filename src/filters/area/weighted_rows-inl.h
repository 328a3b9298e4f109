// Means over squares whose centre has a weight of its own, a row at a time, in integers where those suffice.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_WEIGHTED_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_WEIGHTED_ROWS_INL_H_
#undef PIXVANE_FILTERS_WEIGHTED_ROWS_INL_H_
#else
#define PIXVANE_FILTERS_WEIGHTED_ROWS_INL_H_
#endif

#include "filters/area/box_rows-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

inline std::int64_t weight_sum_of(const filters::BoxMean& mean) {
    const std::int64_t side = 2 * std::int64_t{mean.radius} + 1;
    return side * side - 1 + mean.centreWeight;
}

// As long as no weight is negative and weighted sums fit 16 bits.
class SmallWeightedRows {
public:
    static bool serves(const filters::BoxMean& mean) {
        const std::int64_t sum = weight_sum_of(mean);
        return mean.radius <= SmallBoxRows::kLargestRadius && mean.centreWeight >= 0 && sum >= 1 &&
               255 * sum <= 65535 && WordQuotient(sum, 255 * sum).is_exact();
    }

    SmallWeightedRows(ConstPixelBuffer source, const filters::BoxMean& mean, filters::ScratchCutter& cutter)
        : source_(source),
          columns_(source.width, mean.radius, cutter),
          quotient_(weight_sum_of(mean), 255 * weight_sum_of(mean)),
          // Modulo 2^16, in which the sums are right in the end.
          extraWeight_(static_cast<std::uint16_t>(mean.centreWeight - 1)) {}

    void start(std::int32_t y) { columns_.start(source_, y); }

    void make(std::int32_t y, Pixel* to) {
        const ChannelTotals before = columns_.sum_before();
        const PixelTag d;
        const WordTag words;
        const auto pairs = [&](std::int64_t lower, std::int64_t upper) HWY_ATTR {
            return hn::BitCast(IntTag(),
                               hn::Set(d, static_cast<std::uint32_t>((lower & 0xFFFF) + (upper << 16))));
        };
        IntVec blueRed = pairs(before.blue, before.red);
        IntVec greenAlpha = pairs(before.green, 0);
        const WordVec weight = hn::Set(words, extraWeight_);
        const auto next = [&](IntVec& sums, SignedWordVec gain, WordVec centre) HWY_ATTR {
            const IntVec boxes = sum_of(words, sums, sums_so_far(words, hn::BitCast(IntTag(), gain)));
            sums = last_everywhere(boxes);
            return quotient_(hn::Add(hn::BitCast(words, boxes), hn::Mul(centre, weight)));
        };
        auto descent = columns_.descent(source_, y);
        for (std::int32_t x = 0; x < source_.width; x += lanes_of_pixels()) {
            const PixelVec centre = load_repeating(source_.row(y), source_.width, x);
            const WordVec blueRedMean = next(blueRed, columns_.blue_red_gain(x), blue_red_words(centre));
            const WordVec greenAlphaMean =
                next(greenAlpha, columns_.green_alpha_gain(x), green_alpha_words(centre));
            hn::StoreU(pixels_of_words(blueRedMean, greenAlphaMean), d, to + x);
            columns_.follow(descent, x + lanes_of_pixels());
        }
        columns_.finish(descent);
    }

private:
    ConstPixelBuffer source_;
    NarrowColumns columns_;
    WordQuotient quotient_;
    std::uint16_t extraWeight_;
};

// As long as totals fit integers and the sum of the weights is small either way. The quotient is the whole
// one to the bit: totals below 2^24 are exact in floats, and the reciprocal is at most 3 / 2^24 of itself too
// large, so that no quotient falls short of a whole number, while one below 256 stays within 1 / 18000 of its
// true value and so under the next whole number, which is at least 1 / 16384 away. Larger totals give more
// than 255, which is cut off.
class NarrowWeightedRows {
public:
    static bool serves(const filters::BoxMean& mean) {
        constexpr std::int64_t kLargestSum = 16384;
        constexpr std::int64_t kLargestWeight = 1 << 22;
        const std::int64_t sum = weight_sum_of(mean);
        return mean.radius <= NarrowColumns::kLargestRadius && sum >= -kLargestSum && sum <= kLargestSum &&
               mean.centreWeight >= -kLargestWeight && mean.centreWeight <= kLargestWeight;
    }

    NarrowWeightedRows(ConstPixelBuffer source, const filters::BoxMean& mean, filters::ScratchCutter& cutter)
        : source_(source), columns_(source.width, mean.radius, cutter), extraWeight_(mean.centreWeight - 1) {
        const std::int64_t sum = weight_sum_of(mean);
        if (sum == 0) return;
        // A quotient whose sign doesn't come from the total's is that of the negative total.
        const float reciprocal = 1.0F / static_cast<float>(sum);
        reciprocal_ = std::nextafter(reciprocal, 2 * reciprocal);
    }

    void start(std::int32_t y) { columns_.start(source_, y); }

    void make(std::int32_t y, Pixel* to) {
        RunningSums sums(columns_.sum_before());
        const IntTag ints;
        const IntVec weight = hn::Set(ints, extraWeight_);
        const auto mean_of = [&](IntVec box, PixelVec centre) HWY_ATTR {
            const hn::RebindToFloat<IntTag> floats;
            const IntVec total = hn::Add(box, hn::Mul(hn::BitCast(ints, centre), weight));
            const auto mean = hn::Mul(hn::ConvertTo(floats, total), hn::Set(floats, reciprocal_));
            return hn::ConvertTo(ints, hn::Min(hn::Max(mean, hn::Zero(floats)), hn::Set(floats, 255.0F)));
        };
        auto descent = columns_.descent(source_, y);
        for (std::int32_t x = 0; x < source_.width; x += lanes_of_pixels()) {
            const ChannelLanes boxes = sums.next(columns_.gain(x));
            const PixelVec centre = load_repeating(source_.row(y), source_.width, x);
            hn::StoreU(pixels_of_channels(mean_of(boxes.blue, blue_lanes(centre)),
                                          mean_of(boxes.green, green_lanes(centre)),
                                          mean_of(boxes.red, red_lanes(centre))),
                       PixelTag(), to + x);
            columns_.follow(descent, x + lanes_of_pixels());
        }
        columns_.finish(descent);
    }

private:
    ConstPixelBuffer source_;
    NarrowColumns columns_;
    std::int32_t extraWeight_;
    float reciprocal_ = 1.0F;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

// Means over squares, a row at a time.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_BOX_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_BOX_ROWS_INL_H_
#undef PIXVANE_FILTERS_BOX_ROWS_INL_H_
#else
#define PIXVANE_FILTERS_BOX_ROWS_INL_H_
#endif

#include <type_traits>

#include "filters/area/box_quotients-inl.h"
#include "filters/area/narrow_columns-inl.h"
#include "filters/area/wide_columns-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Plain means of few pixels, whose sums fit 16 bits: to radius 7.
class SmallBoxRows {
public:
    static constexpr std::int32_t kLargestRadius = 7;

    static std::size_t scratch(std::int32_t width) { return NarrowColumns::scratch(width); }

    SmallBoxRows(ConstPixelBuffer source, const filters::BoxMean& mean, filters::ScratchCutter& cutter)
        : source_(source),
          columns_(source.width, mean.radius, cutter),
          quotient_(pixels_of(mean.radius), 255 * pixels_of(mean.radius)) {}

    void start(std::int32_t y) { columns_.start(source_, y); }

    // Row y, of which whole vectors are written; the next one is to be row y + 1.
    void make(std::int32_t y, Pixel* to) {
        const ChannelTotals before = columns_.sum_before();
        IntVec blueRed = pairs(before.blue, before.red);
        IntVec greenAlpha = pairs(before.green, 0);
        NarrowColumns columns = columns_;  // in registers, whatever the stores are feared to change
        auto descent = columns.descent(source_, y);
        for (std::int32_t x = 0; x < source_.width; x += lanes_of_pixels()) {
            const WordVec blueRedMean = next(blueRed, columns.blue_red_gain(x));
            const WordVec greenAlphaMean = next(greenAlpha, columns.green_alpha_gain(x));
            hn::StoreU(pixels_of_words(blueRedMean, greenAlphaMean), PixelTag(), to + x);
            columns.follow(descent, x + lanes_of_pixels());
        }
        columns.finish(descent);
    }

private:
    static std::int64_t pixels_of(std::int64_t radius) { return (2 * radius + 1) * (2 * radius + 1); }

    static HWY_INLINE IntVec pairs(std::int64_t lower, std::int64_t upper) {
        return hn::BitCast(IntTag(), hn::Set(PixelTag(), static_cast<std::uint32_t>(lower + (upper << 16))));
    }

    HWY_INLINE WordVec next(IntVec& before, SignedWordVec gain) const {
        const WordTag words;
        const IntVec sums = sum_of(words, before, sums_so_far(words, hn::BitCast(IntTag(), gain)));
        before = last_everywhere(sums);
        return quotient_(hn::BitCast(words, sums));
    }

    ConstPixelBuffer source_;
    NarrowColumns columns_;
    WordQuotient quotient_;
};

// Plain means, to NarrowColumns::kLargestRadius or Quotient::kLargestRadius.
template <class Quotient>
class NarrowBoxRows {
public:
    static std::size_t scratch(std::int32_t width) { return NarrowColumns::scratch(width); }

    NarrowBoxRows(ConstPixelBuffer source, const filters::BoxMean& mean, filters::ScratchCutter& cutter)
        : source_(source),
          columns_(source.width, mean.radius, cutter),
          quotient_((2 * std::int64_t{mean.radius} + 1) * (2 * mean.radius + 1)) {}

    void start(std::int32_t y) { columns_.start(source_, y); }

    // Row y, of which whole vectors are written; the next one is to be row y + 1.
    void make(std::int32_t y, Pixel* to) {
        ChannelTotals before = columns_.sum_before();
        before.add(1, Quotient::kBias, Quotient::kBias, Quotient::kBias);
        RunningSums sums(before);
        // In registers, whatever the stores are feared to change.
        NarrowColumns columns = columns_;
        const Quotient quotient = quotient_;
        auto descent = columns.descent(source_, y);
        for (std::int32_t x = 0; x < source_.width; x += lanes_of_pixels()) {
            const ChannelLanes boxes = sums.next(columns.gain(x));
            hn::StoreU(pixels_of_placed(quotient.template times<1>(boxes.blue),
                                        quotient.template times<0x100>(boxes.green),
                                        quotient.template times<0x10000>(boxes.red)),
                       PixelTag(), to + x);
            columns.follow(descent, x + lanes_of_pixels());
        }
        columns.finish(descent);
    }

private:
    ConstPixelBuffer source_;
    NarrowColumns columns_;
    Quotient quotient_;
};

// Means of any radius; kWeighted: with any weight of the centre.
template <bool kWeighted>
class WideBoxRows {
public:
    static std::size_t scratch(std::int32_t width) { return WideColumns::scratch(width); }

    WideBoxRows(ConstPixelBuffer source, const filters::BoxMean& mean, filters::ScratchCutter& cutter)
        : source_(source),
          columns_(source.width, mean.radius, cutter),
          quotient_((2 * std::int64_t{mean.radius} + 1) * (2 * mean.radius + 1) - 1 + mean.centreWeight),
          extraWeight_(mean.centreWeight - 1.0) {}

    void start(std::int32_t y) { columns_.start(source_, y); }

    void make(std::int32_t y, Pixel* to) {
        const ChannelTotals before = columns_.sum_before();
        WideRunningSum blue(before.blue);
        WideRunningSum green(before.green);
        WideRunningSum red(before.red);
        const PixelTag d;
        WideColumns columns = columns_;
        const WideQuotient quotient = quotient_;
        const auto mean_of = [&](const WideLanes& box) HWY_ATTR {
            if constexpr (kWeighted) return quotient.limited(box);
            return quotient(box);
        };
        auto descent = columns.descent(source_, y);
        for (std::int32_t x = 0; x < source_.width; x += lanes_of_pixels()) {
            const ChannelLanes gain = columns.gain(x);
            WideLanes boxes[3] = {blue.next(gain.blue), green.next(gain.green), red.next(gain.red)};
            if constexpr (kWeighted) {
                const PixelVec centre = load_repeating(source_.row(y), source_.width, x);
                add_weighted(boxes[0], blue_lanes(centre));
                add_weighted(boxes[1], green_lanes(centre));
                add_weighted(boxes[2], red_lanes(centre));
            }
            hn::StoreU(pixels_of_channels(mean_of(boxes[0]), mean_of(boxes[1]), mean_of(boxes[2])), d,
                       to + x);
            columns.follow(descent, x + lanes_of_pixels());
        }
        columns.finish(descent);
    }

private:
    HWY_INLINE void add_weighted(WideLanes& box, PixelVec centre) const {
        const auto weight = hn::Set(DoubleTag(), extraWeight_);
        const WideLanes extra = wide_lanes(hn::BitCast(IntTag(), centre));
        box.low = hn::Add(box.low, hn::Mul(extra.low, weight));
        box.high = hn::Add(box.high, hn::Mul(extra.high, weight));
    }

    ConstPixelBuffer source_;
    WideColumns columns_;
    WideQuotient quotient_;
    double extraWeight_;
};

// Calls use(rows), where decltype(rows)::type makes the rows of plain means of this radius.
template <class Use>
HWY_INLINE void use_box_rows(std::int32_t radius, const Use& use) {
    if (radius <= SmallBoxRows::kLargestRadius) {
        use(std::type_identity<SmallBoxRows>());
    } else if (radius <= BiasedQuotient::kLargestRadius) {
        use(std::type_identity<NarrowBoxRows<BiasedQuotient>>());
    } else if (radius <= NarrowColumns::kLargestRadius &&
               ProductQuotient((2 * std::int64_t{radius} + 1) * (2 * radius + 1)).serves()) {
        use(std::type_identity<NarrowBoxRows<ProductQuotient>>());
    } else if (radius <= NarrowColumns::kLargestRadius) {
        use(std::type_identity<NarrowBoxRows<ByteQuotient>>());
    } else {
        use(std::type_identity<WideBoxRows<false>>());
    }
}

inline std::size_t box_rows_scratch(std::int32_t width) {
    return std::max(NarrowBoxRows<ByteQuotient>::scratch(width), WideBoxRows<true>::scratch(width));
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

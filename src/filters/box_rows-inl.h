// Means over squares, a row at a time.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_BOX_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_BOX_ROWS_INL_H_
#undef PIXVANE_FILTERS_BOX_ROWS_INL_H_
#else
#define PIXVANE_FILTERS_BOX_ROWS_INL_H_
#endif

#include <cmath>
#include <type_traits>

#include "filters/column_sums-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// The lanes of a vector of integers in doubles.
struct WideLanes {
    DoubleVec low, high;
};

HWY_INLINE WideLanes wide_lanes(IntVec v) {
    const hn::Rebind<std::int32_t, DoubleTag> half;
    const DoubleTag d;
    return {hn::PromoteTo(d, hn::LowerHalf(half, v)), hn::PromoteTo(d, hn::UpperHalf(half, v))};
}

// Division of whole numbers below 2^53 by divisors below 2^33, truncated. The reciprocal is a little too
// large, so that no quotient falls short of a whole number, and by far too little for one to reach the next.
class WideQuotient {
public:
    explicit WideQuotient(std::int64_t divisor) {
        if (divisor == 0) return;
        const double reciprocal = 1.0 / static_cast<double>(divisor);
        factor_ = std::nextafter(reciprocal, 2 * reciprocal);
    }

    // Of what gives no more than 255 and is not negative.
    HWY_INLINE IntVec operator()(const WideLanes& dividend) const {
        const auto factor = hn::Set(DoubleTag(), factor_);
        return truncated(hn::Mul(dividend.low, factor), hn::Mul(dividend.high, factor));
    }

    // Of anything; limited to 0..255.
    HWY_INLINE IntVec limited(const WideLanes& dividend) const {
        const DoubleTag d;
        const auto factor = hn::Set(d, factor_);
        const auto limit = [&](DoubleVec v)
                               HWY_ATTR { return hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, 255.0)); };
        return truncated(limit(hn::Mul(dividend.low, factor)), limit(hn::Mul(dividend.high, factor)));
    }

private:
    double factor_ = 1.0;
};

// Gains of windows summed up along a row in doubles; those of a vector still fit integers.
class WideRunningSum {
public:
    explicit WideRunningSum(std::int64_t before)
        : before_(hn::Set(DoubleTag(), static_cast<double>(before))) {}

    HWY_INLINE WideLanes next(IntVec gain) {
        const IntVec sums = sums_so_far(IntTag(), gain);
        const WideLanes wide = wide_lanes(sums);
        const DoubleVec last = wide_lanes(last_everywhere(sums)).low;
        const WideLanes result{hn::Add(before_, wide.low), hn::Add(before_, wide.high)};
        before_ = hn::Add(before_, last);
        return result;
    }

private:
    DoubleVec before_;
};

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

// Division of sums below 2^23 by divisors to 127 * 127. A sum comes with the bits of the float 2^23 on top,
// which make it a float; one multiply-add takes these off and divides. The reciprocal is a little too large,
// so that no quotient falls short of a whole number, and by far too little for one to reach the next.
class BiasedQuotient {
public:
    static constexpr std::int32_t kLargestRadius = HWY_NATIVE_FMA ? 63 : 0;
    static constexpr std::int64_t kBias = 0x4B000000;

    explicit BiasedQuotient(std::int64_t divisor) : reciprocal_(1.0F / static_cast<float>(divisor)) {
        if (static_cast<double>(reciprocal_) * static_cast<double>(divisor) < 1)
            reciprocal_ = std::nextafter(reciprocal_, 2.0F);
    }
    // The quotient in the bits that a power of two moves it to, with something of its fraction below.
    template <int kPower>
    HWY_INLINE IntVec times(IntVec biased) const {
        const hn::RebindToFloat<IntTag> d;
        const float factor = kPower * reciprocal_;
        const auto offset = hn::Set(d, -8388608.0F * factor);
        return truncated(hn::MulAdd(hn::BitCast(d, biased), hn::Set(d, factor), offset));
    }

private:
    float reciprocal_;
};

// Division of sums below 2^24 by one product with a float next to the reciprocal, where one does for this
// divisor: it is tried with the sums on either side of each quotient's first.
class ProductQuotient {
public:
    static constexpr std::int64_t kBias = 0;

    explicit ProductQuotient(std::int64_t divisor) {
        const float nearest = 1.0F / static_cast<float>(divisor);
        for (const float factor : {nearest, std::nextafter(nearest, 1.0F), std::nextafter(nearest, 0.0F)}) {
            if (!serves_) factor_ = factor;
            serves_ = serves_ || divides(factor, divisor);
        }
    }
    bool serves() const { return serves_; }

    template <int kPower>
    HWY_INLINE IntVec times(IntVec value) const {
        const hn::RebindToFloat<IntTag> d;
        return truncated(hn::Mul(hn::ConvertTo(d, value), hn::Set(d, kPower * factor_)));
    }

private:
    static bool divides(float factor, std::int64_t divisor) {
        bool does = true;
        for (std::int64_t quotient = 1; quotient <= 255; ++quotient) {
            const std::int64_t first = quotient * divisor;
            does = does && static_cast<float>(first) * factor >= static_cast<float>(quotient) &&
                   static_cast<float>(first - 1) * factor < static_cast<float>(quotient);
        }
        return does;
    }

    float factor_ = 1.0F;
    bool serves_ = false;
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

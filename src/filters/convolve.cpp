// Convolution with small kernels.
// SPDX-License-Identifier: MIT
#include "filters/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/convolve.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/integer_math.h"
#include "core/kernel_path.h"
#include "filters/area_plain.h"
#include "filters/neighbours-inl.h"

#if HWY_ONCE
namespace pixvane::filters {

Pixel weighted_pixel(const Sums<std::int64_t>& total, std::int64_t weightSum) {
    const auto channel = [=](std::int64_t sum) -> std::uint32_t {
        return clamp_to_byte(weightSum != 0 ? sum / weightSum : sum);
    };
    return make_pixel(0xFF, channel(total.red), channel(total.green), channel(total.blue));
}

void plain::convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
                     std::int32_t last) {
    const std::int32_t half = kernel.side / 2;
    std::int64_t weightSum = 0;
    for (const std::int32_t weight : kernel.weights) weightSum += weight;
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x) {
            Sums<std::int64_t> total;
            const std::int32_t* weight = kernel.weights.data();
            for (std::int32_t dx = -half; dx <= half; ++dx) {
                for (std::int32_t dy = -half; dy <= half; ++dy)
                    total.add(source.row(inside(y + dy, source.height))[inside(x + dx, source.width)],
                              *weight++);
            }
            target.row(y)[x] = weighted_pixel(total, weightSum);
        }
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// A neighbour that counts.
struct Tap {
    std::int32_t dx, dy;
    const Pixel* row;  // of the row that is being made
};

// Neighbours whose weights are equal but for the sign; they are added up before they are multiplied.
struct TapCounts {
    std::size_t added, taken;
    bool operator==(const TapCounts&) const = default;
};
struct TapGroup {
    std::int64_t weight;  // above 0
    TapCounts counts;
};

// The neighbours that count, and what their weights add up to. A divisor is never negative: all signs are
// turned then, which leaves the quotient what it was.
struct Taps {
    explicit Taps(const Kernel& kernel) : reach(kernel.side / 2) {
        for (const std::int32_t weight : kernel.weights) divisor += weight;
        const std::int64_t sign = divisor < 0 ? -1 : 1;
        divisor *= sign;
        std::int64_t weights[25];
        for (std::size_t i = 0; i < 25; ++i) {
            weights[i] = sign * kernel.weights[i];
            (weights[i] > 0 ? above : below) += std::abs(weights[i]);
        }
        for (std::int64_t previous = 0;;) {
            std::int64_t weight = 0;  // the next larger size
            for (const std::int64_t w : weights)
                if (std::abs(w) > previous && (weight == 0 || std::abs(w) < weight)) weight = std::abs(w);
            if (weight == 0) break;
            TapGroup& group = groups[groupCount++];
            group.weight = previous = weight;
            group.counts.added = add_all(kernel.side, weights, weight);
            group.counts.taken = add_all(kernel.side, weights, -weight);
        }
    }

    std::size_t add_all(std::int32_t side, const std::int64_t (&weights)[25], std::int64_t weight) {
        const std::size_t before = count;
        for (std::int32_t i = 0; i < side * side; ++i) {
            if (weights[i] == weight) list[count++] = {i / side - reach, i % side - reach, nullptr};
        }
        return count - before;
    }

    void go_to_row(ConstPixelBuffer source, std::int32_t y) {
        for (std::size_t i = 0; i < count; ++i)
            list[i].row = source.row(inside(y + list[i].dy, source.height));
    }

    std::int64_t largest() const { return groupCount == 0 ? 0 : groups[groupCount - 1].weight; }

    std::int32_t reach;
    std::size_t count = 0, groupCount = 0;
    Tap list[25];
    TapGroup groups[25];                // from the smallest weight to the largest
    std::int64_t above = 0, below = 0;  // the weights above and below 0
    std::int64_t divisor = 0;
};

// Words of N vectors of pixels next to each other.
template <std::size_t N>
struct WordSums {
    WordVec blueRed[N], greenAlpha[N];

    HWY_INLINE void set(std::uint16_t value) {
        for (std::size_t i = 0; i < N; ++i) blueRed[i] = greenAlpha[i] = hn::Set(WordTag(), value);
    }
    template <class Load>
    HWY_INLINE void add(const Tap& tap, std::int32_t x, const Load& load) {
        for (std::size_t i = 0; i < N; ++i) {
            const PixelVec p = load(tap.row, x + tap.dx + static_cast<std::int32_t>(i) * lanes_of_pixels());
            blueRed[i] = hn::Add(blueRed[i], blue_red_words(p));
            greenAlpha[i] = hn::Add(greenAlpha[i], green_alpha_words(p));
        }
    }
    template <class Load>
    HWY_INLINE void take(const Tap& tap, std::int32_t x, const Load& load) {
        for (std::size_t i = 0; i < N; ++i) {
            const PixelVec p = load(tap.row, x + tap.dx + static_cast<std::int32_t>(i) * lanes_of_pixels());
            blueRed[i] = hn::Sub(blueRed[i], blue_red_words(p));
            greenAlpha[i] = hn::Sub(greenAlpha[i], green_alpha_words(p));
        }
    }
    // Starting from 0, the neighbours of a group.
    template <class Load>
    HWY_INLINE void gather(const Tap* taps, const TapCounts& counts, std::int32_t x, const Load& load) {
        set(0);
        for (std::size_t i = 0; i < counts.added; ++i) add(taps[i], x, load);
        for (std::size_t i = 0; i < counts.taken; ++i) take(taps[counts.added + i], x, load);
    }
};

// How many neighbours there are in each group: any number, or one that the compiler knows.
struct AnyShape {
    static HWY_INLINE std::size_t groups(const Taps& taps) { return taps.groupCount; }
    static HWY_INLINE TapCounts counts(const Taps& taps, std::size_t group) {
        return taps.groups[group].counts;
    }
};

template <std::size_t kAdded0, std::size_t kTaken0, std::size_t kAdded1, std::size_t kTaken1>
struct TwoGroups {
    static bool fits(const Taps& taps) {
        return taps.groupCount == 2 && taps.groups[0].counts == counts(taps, 0) &&
               taps.groups[1].counts == counts(taps, 1);
    }
    static HWY_INLINE std::size_t groups(const Taps&) { return 2; }
    static HWY_INLINE TapCounts counts(const Taps&, std::size_t group) {
        return group == 0 ? TapCounts{kAdded0, kTaken0} : TapCounts{kAdded1, kTaken1};
    }
};
using StarShape = TwoGroups<0, 4, 1, 0>;      // four neighbours against the centre
using SquareShape = TwoGroups<0, 8, 1, 0>;    // eight
using GradientShape = TwoGroups<2, 2, 1, 1>;  // one side against the other
using ReliefShape = TwoGroups<2, 2, 2, 1>;

// Sums that fit 16 bits, as they do for most kernels. They start at what they may lose, so that they are
// never negative.
template <class Shape>
class InWords {
public:
    explicit InWords(const Taps& taps)
        : taps_(taps),
          start_(static_cast<std::uint16_t>(255 * std::min<std::int64_t>(taps.below, 257))),
          limit_(largest_sum(taps)),
          quotient_(taps.divisor, limit_) {}
    bool serves() const { return 255 * (taps_.above + taps_.below) <= 65535 && quotient_.is_exact(); }

    template <std::size_t N, class Load>
    HWY_INLINE void make(std::int32_t x, const Load& load, PixelVec (&made)[N]) const {
        WordSums<N> total;
        total.set(start_);
        const Tap* tap = taps_.list;
        for (std::size_t g = 0; g < Shape::groups(taps_); ++g) {
            const TapCounts counts = Shape::counts(taps_, g);
            WordSums<N> sum;
            sum.gather(tap, counts, x, load);
            tap += counts.added + counts.taken;
            const WordVec weight = hn::Set(WordTag(), static_cast<std::uint16_t>(taps_.groups[g].weight));
            for (std::size_t i = 0; i < N; ++i) {
                total.blueRed[i] = hn::Add(total.blueRed[i], hn::Mul(sum.blueRed[i], weight));
                total.greenAlpha[i] = hn::Add(total.greenAlpha[i], hn::Mul(sum.greenAlpha[i], weight));
            }
        }
        for (std::size_t i = 0; i < N; ++i)
            made[i] = pixels_of_words(divided(total.blueRed[i]), divided(total.greenAlpha[i]));
    }

private:
    // What gives more than 255 makes no difference.
    static std::uint16_t largest_sum(const Taps& taps) {
        if (taps.divisor == 0) return 255;
        return static_cast<std::uint16_t>(
            std::min({255 * taps.above, 256 * taps.divisor - 1, std::int64_t{65535}}));
    }

    HWY_INLINE WordVec divided(WordVec sum) const {
        const WordTag d;
        return quotient_(hn::Min(hn::SaturatedSub(sum, hn::Set(d, start_)), hn::Set(d, limit_)));
    }

    const Taps& taps_;
    std::uint16_t start_;
    std::uint16_t limit_;
    WordQuotient quotient_;
};

// Sums that fit 32 bits, of weights that fit 16.
template <class Shape>
class InIntegers {
public:
    explicit InIntegers(const Taps& taps)
        : taps_(taps),
          limit_(static_cast<std::int32_t>(
              taps.divisor == 0 ? 255 : std::min(256 * taps.divisor - 1, std::int64_t{0xFFFFFF}))),
          quotient_(std::max<std::int64_t>(taps.divisor, 1)) {}

    bool serves() const {
        return taps_.largest() <= 32767 &&
               255 * (taps_.above + taps_.below) <= std::numeric_limits<std::int32_t>::max() &&
               taps_.divisor <= ByteQuotient::kLargestDivisor;
    }

    template <std::size_t N, class Load>
    HWY_INLINE void make(std::int32_t x, const Load& load, PixelVec (&made)[N]) const {
        const IntTag d;
        const SignedWordTag words;
        IntVec blue[N], green[N], red[N];
        for (std::size_t i = 0; i < N; ++i) blue[i] = green[i] = red[i] = hn::Zero(d);
        const Tap* tap = taps_.list;
        for (std::size_t g = 0; g < Shape::groups(taps_); ++g) {
            const TapCounts counts = Shape::counts(taps_, g);
            WordSums<N> sum;
            sum.gather(tap, counts, x, load);
            tap += counts.added + counts.taken;
            // For the lower word of a pair alone, and for the upper.
            const IntVec weight = hn::Set(d, static_cast<std::int32_t>(taps_.groups[g].weight));
            const SignedWordVec lower = hn::BitCast(words, weight);
            const SignedWordVec upper = hn::BitCast(words, hn::ShiftLeft<16>(weight));
            for (std::size_t i = 0; i < N; ++i) {
                const SignedWordVec blueRed = hn::BitCast(words, sum.blueRed[i]);
                blue[i] = add_products(blue[i], blueRed, lower);
                red[i] = add_products(red[i], blueRed, upper);
                green[i] = add_products(green[i], hn::BitCast(words, sum.greenAlpha[i]), lower);
            }
        }
        for (std::size_t i = 0; i < N; ++i)
            made[i] = pixels_of_channels(divided(blue[i]), divided(green[i]), divided(red[i]));
    }

private:
    HWY_INLINE IntVec divided(IntVec sum) const {
        const IntTag d;
        return quotient_(hn::Min(hn::Max(sum, hn::Zero(d)), hn::Set(d, limit_)));
    }

    const Taps& taps_;
    std::int32_t limit_;
    ByteQuotient quotient_;
};

template <class Make>
HWY_INLINE void make_rows(ConstPixelBuffer source, PixelBuffer target, Taps& taps, const Make& make,
                          std::int32_t first, std::int32_t last) {
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; ++y) {
        taps.go_to_row(source, y);
        make_row(target.row(y), target.width, taps.reach, streaming, make);
    }
    if (streaming) hwy::FlushStream();
}

void convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
              std::int32_t last) {
    Taps taps(kernel);
    const auto make = [&](const auto& how) HWY_ATTR { make_rows(source, target, taps, how, first, last); };
    if (InWords<AnyShape>(taps).serves()) {
        if (StarShape::fits(taps)) return make(InWords<StarShape>(taps));
        if (SquareShape::fits(taps)) return make(InWords<SquareShape>(taps));
        if (GradientShape::fits(taps)) return make(InWords<GradientShape>(taps));
        make(InWords<AnyShape>(taps));
    } else if (InIntegers<AnyShape>(taps).serves()) {
        if (ReliefShape::fits(taps)) return make(InIntegers<ReliefShape>(taps));
        make(InIntegers<AnyShape>(taps));
    } else {
        plain::convolve(source, target, kernel, first, last);
    }
}
#else
using plain::convolve;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(convolve);

void convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
              std::int32_t last) {
    pick_kernel(plain::convolve, HWY_DYNAMIC_DISPATCH(convolve))(source, target, kernel, first, last);
}

}  // namespace pixvane::filters
#endif

// Convolution by sums of neighbours, in words or integers; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_CONVOLVE_WORDS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_CONVOLVE_WORDS_INL_H_
#undef PIXVANE_FILTERS_CONVOLVE_WORDS_INL_H_
#else
#define PIXVANE_FILTERS_CONVOLVE_WORDS_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "filters/area/area_plain.h"
#include "filters/area/neighbours-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
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
    template <bool kTaken, class Load>
    HWY_INLINE void add(const Tap& tap, std::int32_t x, const Load& load) {
        for (std::size_t i = 0; i < N; ++i) {
            const PixelVec p = load(tap.row, x + tap.dx + static_cast<std::int32_t>(i) * lanes_of_pixels());
            blueRed[i] = sum<kTaken>(blueRed[i], blue_red_words(p));
            greenAlpha[i] = sum<kTaken>(greenAlpha[i], green_alpha_words(p));
        }
    }
    // Starting from 0, the neighbours of a group.
    template <class Load>
    HWY_INLINE void gather(const Tap* taps, const TapCounts& counts, std::int32_t x, const Load& load) {
        set(0);
        for (std::size_t i = 0; i < counts.added; ++i) add<false>(taps[i], x, load);
        for (std::size_t i = 0; i < counts.taken; ++i) add<true>(taps[counts.added + i], x, load);
    }

private:
    template <bool kTaken>
    static HWY_INLINE WordVec sum(WordVec a, WordVec b) {
        return kTaken ? hn::Sub(a, b) : hn::Add(a, b);
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
        make_row(target.row(y), target.width, taps.reach, streaming,
                 source.row(inside(y + taps.reach + 1, source.height)), make);
    }
    if (streaming) hwy::FlushStream();
}

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

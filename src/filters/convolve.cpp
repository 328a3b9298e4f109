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
    std::int32_t weight;
    const Pixel* row;  // of the row that is being made
};

// The neighbours that count, sorted by weight, and what their weights add up to. A divisor is never negative:
// all signs are turned then, which leaves the quotient what it was.
struct Taps {
    explicit Taps(const Kernel& kernel) : reach(kernel.side / 2) {
        for (const std::int32_t weight : kernel.weights) divisor += weight;
        const std::int64_t sign = divisor < 0 ? -1 : 1;
        divisor *= sign;
        for (std::int32_t i = 0; i < kernel.side * kernel.side; ++i) {
            const std::int64_t weight = sign * kernel.weights[static_cast<std::size_t>(i)];
            if (weight == 0) continue;
            (weight > 0 ? above : below) += std::abs(weight);
            largest = std::max(largest, std::abs(weight));
            list[count++] = {i / kernel.side - reach, i % kernel.side - reach,
                             static_cast<std::int32_t>(weight), nullptr};
        }
        std::sort(list, list + count, [](const Tap& a, const Tap& b) { return a.weight < b.weight; });
    }

    void go_to_row(ConstPixelBuffer source, std::int32_t y) {
        for (std::size_t i = 0; i < count; ++i)
            list[i].row = source.row(inside(y + list[i].dy, source.height));
    }

    std::int32_t reach;
    std::size_t count = 0;
    Tap list[25];
    std::int64_t above = 0, below = 0;  // the weights above and below 0
    std::int64_t divisor = 0;
    std::int64_t largest = 0;
};

// Sums that fit 16 bits, as they do for most kernels. They start at what they may lose, so that they are
// never negative.
class InWords {
public:
    explicit InWords(const Taps& taps)
        : taps_(taps), start_(static_cast<std::uint16_t>(255 * std::min<std::int64_t>(taps.below, 257))) {
        const std::int64_t most = 255 * taps.above;
        if (taps.divisor == 0) {
            limit_ = 255;
        } else {
            limit_ =
                static_cast<std::uint16_t>(std::min({most, 256 * taps.divisor - 1, std::int64_t{65535}}));
        }
        if (taps.divisor < 2) return;
        while ((std::int64_t{2} << shift_) < taps.divisor) ++shift_;
        const std::int64_t power = std::int64_t{1} << (16 + shift_);
        const std::int64_t factor = (power + taps.divisor - 1) / taps.divisor;
        factor_ = static_cast<std::uint16_t>(factor);
        // What the factor is too large by may not reach the next whole number.
        exact_ = (factor * taps.divisor - power) * limit_ < power;
    }

    bool serves() const { return 255 * (taps_.above + taps_.below) <= 65535 && exact_; }

    template <class Load>
    HWY_INLINE PixelVec operator()(std::int32_t x, const Load& load) const {
        const WordTag d;
        WordVec blueRed = hn::Set(d, start_);
        WordVec greenAlpha = blueRed;
        for (const Tap* tap = taps_.list; tap != taps_.list + taps_.count;) {
            // Those of one weight are multiplied together.
            const std::int32_t weight = tap->weight;
            WordVec blueRedSum = hn::Zero(d);
            WordVec greenAlphaSum = hn::Zero(d);
            do {
                const PixelVec p = load(tap->row, x + tap->dx);
                blueRedSum = hn::Add(blueRedSum, blue_red_words(p));
                greenAlphaSum = hn::Add(greenAlphaSum, green_alpha_words(p));
            } while (++tap != taps_.list + taps_.count && tap->weight == weight);
            const WordVec weights = hn::Set(d, static_cast<std::uint16_t>(weight));
            blueRed = hn::Add(blueRed, hn::Mul(blueRedSum, weights));
            greenAlpha = hn::Add(greenAlpha, hn::Mul(greenAlphaSum, weights));
        }
        return pixels_of_words(divided(blueRed), divided(greenAlpha));
    }

private:
    HWY_INLINE WordVec divided(WordVec sum) const {
        const WordTag d;
        const WordVec limited = hn::Min(hn::SaturatedSub(sum, hn::Set(d, start_)), hn::Set(d, limit_));
        if (factor_ == 0) return limited;
        return hn::ShiftRightSame(hn::MulHigh(limited, hn::Set(d, factor_)), shift_);
    }

    const Taps& taps_;
    std::uint16_t start_;
    std::uint16_t limit_ = 0;
    std::uint16_t factor_ = 0;
    int shift_ = 0;
    bool exact_ = true;
};

// Sums that fit 32 bits, of weights that fit 16.
class InIntegers {
public:
    explicit InIntegers(const Taps& taps)
        : taps_(taps),
          limit_(static_cast<std::int32_t>(
              taps.divisor == 0 ? 255 : std::min(256 * taps.divisor - 1, std::int64_t{0xFFFFFF}))),
          quotient_(std::max<std::int64_t>(taps.divisor, 1)) {}

    bool serves() const {
        return taps_.largest <= 32767 &&
               255 * (taps_.above + taps_.below) <= std::numeric_limits<std::int32_t>::max() &&
               taps_.divisor <= ByteQuotient::kLargestDivisor;
    }

    template <class Load>
    HWY_INLINE PixelVec operator()(std::int32_t x, const Load& load) const {
        const IntTag d;
        const SignedWordTag words;
        IntVec blue = hn::Zero(d);
        IntVec green = hn::Zero(d);
        IntVec red = hn::Zero(d);
        for (const Tap* tap = taps_.list; tap != taps_.list + taps_.count; ++tap) {
            const PixelVec p = load(tap->row, x + tap->dx);
            const SignedWordVec blueRed = hn::BitCast(words, blue_red_words(p));
            const SignedWordVec greenAlpha = hn::BitCast(words, green_alpha_words(p));
            // Nothing of the upper word, nothing of the lower.
            const SignedWordVec lower = hn::BitCast(words, hn::Set(d, tap->weight & 0xFFFF));
            const SignedWordVec upper = hn::BitCast(words, hn::ShiftLeft<16>(hn::Set(d, tap->weight)));
            blue = add_products(blue, blueRed, lower);
            red = add_products(red, blueRed, upper);
            green = add_products(green, greenAlpha, lower);
        }
        return pixels_of_channels(divided(blue), divided(green), divided(red));
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
    const InWords inWords(taps);
    const InIntegers inIntegers(taps);
    if (inWords.serves()) {
        make_rows(source, target, taps, inWords, first, last);
    } else if (inIntegers.serves()) {
        make_rows(source, target, taps, inIntegers, first, last);
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

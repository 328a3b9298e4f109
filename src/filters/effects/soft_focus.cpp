// A blur that grows with the distance from a point.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/soft_focus.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "core/pixel_rows.h"
#include "filters/effects/effects_plain.h"
#include "filters/effects/focus.h"
#include "filters/effects/focus_rows-inl.h"

#ifndef PIXVANE_FILTERS_SOFT_FOCUS_
#define PIXVANE_FILTERS_SOFT_FOCUS_
namespace pixvane::filters {
namespace {

constexpr std::uint32_t kFullWeight = 2;

// What the weight loses from one pixel of the transition to the next.
double weight_step(const Focus& focus) { return (focus.transition - 1.0) / focus.transition; }

}  // namespace
}  // namespace pixvane::filters
#endif

#if HWY_ONCE
namespace pixvane::filters {
namespace {

// At most twice the largest transition, which fits.
std::uint32_t weight_of(const Focus& focus, std::int32_t x, std::int32_t y) {
    const double d = distance(focus, x, y);
    if (d < focus.radius) return 0;
    if (d >= full_distance(focus)) return kFullWeight;
    return static_cast<std::uint32_t>((focus.transition - weight_step(focus) * (d - focus.radius)) *
                                      kFullWeight);
}

// The pixel at (x, y) and its neighbours, each coordinate limited to the picture.
Pixel weighted_mean(ConstPixelBuffer source, std::int32_t x, std::int32_t y, std::uint32_t weight) {
    const std::uint64_t own = weight - std::uint64_t{1};  // the sum below counts the pixel once
    const Pixel p = source.row(y)[x];
    std::uint64_t red = own * red_of(p);
    std::uint64_t green = own * green_of(p);
    std::uint64_t blue = own * blue_of(p);
    for (std::int32_t v = y - 1; v <= y + 1; ++v) {
        const Pixel* row = source.row(std::clamp(v, 0, source.height - 1));
        for (std::int32_t u = x - 1; u <= x + 1; ++u) {
            const Pixel neighbour = row[std::clamp(u, 0, source.width - 1)];
            red += red_of(neighbour);
            green += green_of(neighbour);
            blue += blue_of(neighbour);
        }
    }
    const std::uint64_t weights = std::uint64_t{weight} + 8;
    return make_pixel(0xFF, static_cast<std::uint32_t>(red / weights),
                      static_cast<std::uint32_t>(green / weights),
                      static_cast<std::uint32_t>(blue / weights));
}

}  // namespace

void plain::soft_focus_weights(PixelBuffer weights, const Focus& focus, std::int32_t first,
                               std::int32_t last) {
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < weights.width; ++x) weights.row(y)[x] = weight_of(focus, x, y);
    }
}

bool plain::soft_focus(ConstPixelBuffer source, PixelBuffer target, ConstPixelBuffer weights,
                       const Focus& focus, std::int32_t first, std::int32_t last) {
    Pixel changes = 0;
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Pixel p = source.row(y)[x];
            const std::uint32_t weight = weights.data != nullptr ? weights.row(y)[x] : weight_of(focus, x, y);
            const Pixel result = weight == 0 ? source_over(p, p) : weighted_mean(source, x, y, weight);
            changes |= p ^ result;
            target.row(y)[x] = result;
        }
    }
    return changes != 0;
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// Weights that floats can divide by, see change() below.
constexpr std::int32_t kLargestWeight = 16376;
bool has_small_weights(const Focus& focus) {
    return focus.transition <= kLargestWeight / static_cast<std::int32_t>(kFullWeight);
}

// The weights of pixels of the transition, from x on.
HWY_INLINE IntVec weights_at(const Focus& focus, double step, std::int32_t x, std::int32_t y) {
    const DoubleTag d;
    const DoublePair distance = distances(focus, x, y);
    const auto weight = [&](DoubleVec v) HWY_ATTR {
        const DoubleVec lost = hn::Mul(hn::Set(d, step), hn::Sub(v, hn::Set(d, focus.radius)));
        return hn::Mul(hn::Sub(hn::Set(d, focus.transition), lost), hn::Set(d, kFullWeight));
    };
    return to_ints({weight(distance.low), weight(distance.high)});
}

class WeightRow {
public:
    WeightRow(const Focus& focus, std::int32_t y) : focus_(focus), y_(y), step_(weight_step(focus)) {}

    void start(std::int32_t, std::int32_t) const {}
    void keep(std::int32_t, std::size_t count, Pixel* to) const { std::fill_n(to, count, 0U); }
    HWY_INLINE PixelVec complete(std::int32_t) const { return hn::Set(PixelTag(), kFullWeight); }
    HWY_INLINE PixelVec change(std::int32_t x) const {
        return hn::BitCast(PixelTag(), weights_at(focus_, step_, x, y_));
    }

private:
    Focus focus_;
    std::int32_t y_;
    double step_;
};

class SoftRow {
public:
    SoftRow(ConstPixelBuffer source, const Pixel* weights, const Focus& focus, std::int32_t y)
        : rows_{source.row(std::max(y - 1, 0)), source.row(y),
                source.row(std::min(y + 1, source.height - 1))},
          weights_(weights),
          width_(source.width),
          y_(y),
          focus_(focus),
          step_(weight_step(focus)),
          tenth_(10, 10 * 255) {}

    // The sums of three rows, one vector more on either side.
    HWY_INLINE void start(std::int32_t left, std::int32_t right) {
        const WordTag d;
        const std::int32_t lanes = lanes_of_pixels();
        start_ = left - lanes;
        for (std::int32_t x = start_; x < right + lanes; x += lanes) {
            const PixelVec above = load(rows_[0], x);
            const PixelVec own = load(rows_[1], x);
            const PixelVec below = load(rows_[2], x);
            hn::Store(hn::Add(hn::Add(blue_red_words(above), blue_red_words(own)), blue_red_words(below)), d,
                      blueRed_ + 2 * (x - start_));
            hn::Store(
                hn::Add(hn::Add(green_alpha_words(above), green_alpha_words(own)), green_alpha_words(below)),
                d, greenAlpha_ + 2 * (x - start_));
        }
    }
    void keep(std::int32_t x, std::size_t count, Pixel* to) const {
        std::memcpy(to, rows_[1] + x, count * sizeof(Pixel));
        blend_row(to, rows_[1] + x, count);
    }
    HWY_INLINE PixelVec complete(std::int32_t x) const {
        const Nine nine = nine_at(x);
        return pixels_of_words(tenth_(hn::Add(nine.blueRed, blue_red_words(nine.own))),
                               tenth_(hn::Add(nine.greenAlpha, green_alpha_words(nine.own))));
    }
    // Totals are below 2^24 and exact in floats. The reciprocal is a little too large, at most 3 / 2^24 of
    // itself: no quotient falls short of a whole number, nor comes within 1 / 18000 of its true value to the
    // next one, which is at least 1 / (kLargestWeight + 8) away.
    HWY_INLINE PixelVec change(std::int32_t x) const {
        const PixelTag d;
        const IntTag ints;
        const FloatTag floats;
        const Nine nine = nine_at(x);
        const IntVec weight =
            weights_ == nullptr ? weights_at(focus_, step_, x, y_) : hn::BitCast(ints, load(weights_, x));
        const FloatVec extra = hn::ConvertTo(floats, hn::Sub(weight, hn::Set(ints, 1)));
        const FloatVec sum = hn::Add(extra, hn::Set(floats, 9.0F));
        const FloatVec reciprocal = hn::BitCast(
            floats, hn::Add(hn::BitCast(ints, hn::Div(hn::Set(floats, 1.0F), sum)), hn::Set(ints, 1)));
        const auto mean = [&](PixelVec around, PixelVec own) HWY_ATTR {
            const FloatVec total = hn::Add(hn::ConvertTo(floats, hn::BitCast(ints, around)),
                                           hn::Mul(hn::ConvertTo(floats, hn::BitCast(ints, own)), extra));
            return hn::ConvertTo(ints, hn::Mul(total, reciprocal));
        };
        const PixelVec blueRed = hn::BitCast(d, nine.blueRed);
        const PixelVec greenAlpha = hn::BitCast(d, nine.greenAlpha);
        const PixelVec low = hn::Set(d, 0xFFFF);
        return pixels_of_channels(mean(hn::And(blueRed, low), blue_lanes(nine.own)),
                                  mean(hn::And(greenAlpha, low), green_lanes(nine.own)),
                                  mean(hn::ShiftRight<16>(blueRed), red_lanes(nine.own)));
    }

private:
    // Sums of 3 x 3 pixels, and those in the middle.
    struct Nine {
        WordVec blueRed, greenAlpha;
        PixelVec own;
    };

    HWY_INLINE PixelVec load(const Pixel* row, std::int32_t x) const {
        if (HWY_LIKELY(x >= 0 && x + lanes_of_pixels() <= width_)) return hn::LoadU(PixelTag(), row + x);
        return load_repeating(row, width_, x);
    }
    HWY_INLINE Nine nine_at(std::int32_t x) const {
        const auto three = [&](const std::uint16_t* sums) HWY_ATTR {
            const WordTag d;
            const std::uint16_t* at = sums + 2 * (x - start_);
            return hn::Add(hn::Add(hn::LoadU(d, at - 2), hn::LoadU(d, at)), hn::LoadU(d, at + 2));
        };
        return {three(blueRed_), three(greenAlpha_), load(rows_[1], x)};
    }

    const Pixel* rows_[3];
    const Pixel* weights_;
    std::int32_t width_, y_;
    Focus focus_;
    double step_;
    WordQuotient tenth_;
    std::int32_t start_ = 0;
    static constexpr std::size_t kSums = 2 * (kFocusPiece + 3 * hn::MaxLanes(PixelTag()));
    HWY_ALIGN std::uint16_t blueRed_[kSums];
    HWY_ALIGN std::uint16_t greenAlpha_[kSums];
};

void soft_focus_weights(PixelBuffer weights, const Focus& focus, std::int32_t first, std::int32_t last) {
    if (!has_small_weights(focus)) return plain::soft_focus_weights(weights, focus, first, last);
    const bool streaming = weights.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; ++y)
        make_focus_row(WeightRow(focus, y), focus_spans(focus, y, weights.width), weights.width,
                       weights.row(y), streaming, [](const Pixel*, std::int32_t, std::size_t) {});
    if (streaming) hwy::FlushStream();
}

bool soft_focus(ConstPixelBuffer source, PixelBuffer target, ConstPixelBuffer weights, const Focus& focus,
                std::int32_t first, std::int32_t last) {
    if (!has_small_weights(focus)) return plain::soft_focus(source, target, weights, focus, first, last);
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    bool changed = false;
    for (std::int32_t y = first; y < last; ++y) {
        const Pixel* known = weights.data != nullptr ? weights.row(y) : nullptr;
        const Pixel* row = source.row(y);
        make_focus_row(SoftRow(source, known, focus, y), focus_spans(focus, y, source.width), source.width,
                       target.row(y), streaming, [&](const Pixel* piece, std::int32_t x, std::size_t count) {
                           changed = changed || std::memcmp(piece, row + x, count * sizeof(Pixel)) != 0;
                       });
    }
    if (streaming) hwy::FlushStream();
    return changed;
}
#else
using plain::soft_focus;
using plain::soft_focus_weights;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(soft_focus);
HWY_EXPORT(soft_focus_weights);

void soft_focus_weights(PixelBuffer weights, const Focus& focus, std::int32_t first, std::int32_t last) {
    pick_kernel(plain::soft_focus_weights, HWY_DYNAMIC_DISPATCH(soft_focus_weights))(weights, focus, first,
                                                                                     last);
}

bool soft_focus(ConstPixelBuffer source, PixelBuffer target, ConstPixelBuffer weights, const Focus& focus,
                std::int32_t first, std::int32_t last) {
    return pick_kernel(plain::soft_focus, HWY_DYNAMIC_DISPATCH(soft_focus))(source, target, weights, focus,
                                                                            first, last);
}

}  // namespace pixvane::filters
#endif

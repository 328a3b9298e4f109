// A weave of random strokes.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/textile.cpp"
#include <hwy/aligned_allocator.h>
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "core/random_lanes-inl.h"
#include "filters/area/neighbours-inl.h"
#include "filters/effects/effects_plain.h"

#ifndef PIXVANE_FILTERS_TEXTILE_
#define PIXVANE_FILTERS_TEXTILE_
namespace pixvane::filters {
namespace {

constexpr std::int32_t kLengths = 30;
constexpr std::int32_t kShortest = 2;
constexpr std::uint32_t kStrokeDraws = 3;

}  // namespace
}  // namespace pixvane::filters
#endif

#if HWY_ONCE
namespace pixvane::filters {
namespace {

struct Stroke {
    std::int32_t length;  // to where the next one starts
    Pixel color;
};

Stroke draw_stroke(RandomGenerator& random, std::int32_t opacity) {
    const std::int32_t length = random.next() % kLengths + kShortest;
    const auto alpha = static_cast<std::uint32_t>(random.next() % opacity);
    const bool white = random.next() % 2 != 0;
    return {length, (alpha << 24) + (white ? 0xFFFFFFu : 0)};
}

}  // namespace

void plain::textile(ConstPixelBuffer source, PixelBuffer target, std::int32_t opacity,
                    RandomGenerator& random) {
    copy(target, source);
    for (std::int32_t y = 0; y < target.height; ++y) {
        for (std::int32_t x = 0; x < target.width;) {
            const Stroke stroke = draw_stroke(random, opacity);
            for (std::int32_t i = x; i <= std::min(x + stroke.length, target.width - 1); ++i)
                target.row(y)[i] = source_over(target.row(y)[i], stroke.color);
            x += stroke.length;
        }
    }
    for (std::int32_t x = 0; x < target.width; ++x) {
        for (std::int32_t y = 0; y < target.height;) {
            const Stroke stroke = draw_stroke(random, opacity);
            for (std::int32_t i = y; i <= std::min(y + stroke.length, target.height - 1); ++i)
                target.row(i)[x] = source_over(target.row(i)[x], stroke.color);
            y += stroke.length;
        }
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// What a stroke does to a channel f of an opaque pixel: with alpha s and the colour o, 0 or 255, it becomes
// (s o + (255 - s) f) / 255, rounded. Kept as 255 - s in the low word and s o + 128 in the high one.
using Paint = std::uint32_t;
constexpr Paint kNoPaint = 128u << 16 | 255;

Pixel color_of(Paint paint) { return (255 - (paint & 0xFFFF)) << 24 | (paint >> 16 != 128 ? 0xFFFFFFu : 0); }

struct Strokes {
    PixelVec length, paint;
    PixelVec after;  // the generator after them
};

class Weaver {
public:
    explicit Weaver(std::int32_t opacity) : opacity_(static_cast<std::uint32_t>(opacity)) {}

    // A stroke from the generator in each lane. Both remainders are exact: 34953 is the reciprocal of 30 in
    // units of 2^-20, too large by less than draws can show; and a quotient of two numbers below 2^15 stays
    // further from the next whole number than floats round it.
    HWY_INLINE Strokes draw(PixelVec states) const {
        const PixelTag d;
        const IntTag ints;
        const hn::RebindToFloat<IntTag> floats;
        PixelVec drawn;
        states = next_draw(states, drawn);
        const PixelVec tens = hn::ShiftRight<20>(hn::Mul(drawn, hn::Set(d, 34953)));
        const PixelVec length = hn::Add(hn::Sub(drawn, hn::Mul(tens, hn::Set(d, kLengths))),
                                        hn::Set(d, static_cast<std::uint32_t>(kShortest)));
        states = next_draw(states, drawn);
        if (opacity_ <= 0x7FFF) {
            const auto value = hn::ConvertTo(floats, hn::BitCast(ints, drawn));
            const auto divisor = hn::Set(floats, static_cast<float>(opacity_));
            const PixelVec times = hn::BitCast(d, hn::ConvertTo(ints, hn::Div(value, divisor)));
            drawn = hn::Sub(drawn, hn::Mul(times, hn::Set(d, opacity_)));
        }
        const PixelVec alpha = hn::And(drawn, hn::Set(d, 0xFF));
        states = next_draw(states, drawn);
        const PixelVec white = hn::Sub(hn::Zero(d), hn::And(drawn, hn::Set(d, 1)));
        const PixelVec shine = hn::And(white, hn::Sub(hn::ShiftLeft<8>(alpha), alpha));
        const PixelVec high = hn::ShiftLeft<16>(hn::Add(shine, hn::Set(d, 128)));
        return {length, hn::Or(high, hn::Sub(hn::Set(d, 255), alpha)), states};
    }

private:
    std::uint32_t opacity_;
};

// Strokes one after the other, drawn many at a time.
class StrokeStream {
public:
    StrokeStream(const Weaver& weaver, const RandomGenerator& start)
        : weaver_(weaver), step_(kStrokeDraws * hn::Lanes(PixelTag())) {
        RandomGenerator random = start;
        for (std::size_t i = 0; i < hn::Lanes(PixelTag()); ++i) {
            lanes_[i] = random.state();
            random.jump(kStrokeDraws);
        }
    }

    HWY_INLINE void next() {
        if (++place_ >= kTogether) fill();
    }
    std::int32_t length() const { return static_cast<std::int32_t>(lengths_[place_]); }
    Paint paint() const { return paints_[place_]; }
    // The generator before this stroke.
    std::uint32_t state() const { return states_[place_]; }

private:
    static constexpr std::size_t kTogether = 256;

    HWY_NOINLINE void fill() {
        const PixelTag d;
        PixelVec states = hn::Load(d, lanes_);
        for (std::size_t i = 0; i < kTogether; i += hn::Lanes(d)) {
            const Strokes strokes = weaver_.draw(states);
            hn::Store(strokes.length, d, lengths_ + i);
            hn::Store(strokes.paint, d, paints_ + i);
            hn::Store(states, d, states_ + i);
            states = step_(states);
        }
        hn::Store(states, d, lanes_);
        place_ = 0;
    }

    const Weaver& weaver_;
    RandomJump step_;
    std::size_t place_ = kTogether;
    HWY_ALIGN std::uint32_t lanes_[hn::MaxLanes(PixelTag())];
    HWY_ALIGN std::uint32_t lengths_[kTogether];
    HWY_ALIGN Paint paints_[kTogether];
    HWY_ALIGN std::uint32_t states_[kTogether];
};

// Words of the two halves of a paint, for each word of a channel.
struct PaintWords {
    WordVec keep, add;

    HWY_INLINE explicit PaintWords(PixelVec paint) {
        alignas(16) static constexpr std::uint8_t kLow[16] = {0, 1, 0, 1, 4,  5,  4,  5,
                                                              8, 9, 8, 9, 12, 13, 12, 13};
        alignas(16) static constexpr std::uint8_t kHigh[16] = {2,  3,  2,  3,  6,  7,  6,  7,
                                                               10, 11, 10, 11, 14, 15, 14, 15};
        const ByteTag d;
        const ByteVec bytes = hn::BitCast(d, paint);
        keep = hn::BitCast(WordTag(), hn::TableLookupBytes(bytes, hn::LoadDup128(d, kLow)));
        add = hn::BitCast(WordTag(), hn::TableLookupBytes(bytes, hn::LoadDup128(d, kHigh)));
    }
    HWY_INLINE WordVec over(WordVec channels) const {
        const WordVec sum = hn::Add(hn::Mul(channels, keep), add);
        return hn::ShiftRight<8>(hn::Add(sum, hn::ShiftRight<8>(sum)));
    }
};

// The strokes of a picture as its rows see them: those of the row, and of each column the one that reaches
// it. Two meet in a pixel where one ends and the next one starts.
class Weave {
public:
    Weave(std::int32_t width, std::int32_t opacity)
        : width_(width), weaver_(opacity), memory_(hwy::AllocateAligned<std::uint32_t>(6 * stride())) {
        if (memory_ == nullptr) return;
        std::uint32_t* at = memory_.get();
        for (std::uint32_t** array : {&along_, &ended_, &states_, &left_, &down_, &row_}) {
            *array = at;
            at += stride();
        }
    }

    bool is_valid() const { return memory_ != nullptr; }

    // Goes through all strokes once to learn where the columns' begin; leaves the generator behind the last.
    void start(std::int32_t height, RandomGenerator& random) {
        StrokeStream stream(weaver_, random);
        stream.next();
        for (std::int32_t y = 0; y < height; ++y) {
            for (std::int32_t x = 0; x < width_; x += take_length(stream)) {
            }
        }
        for (std::int32_t x = 0; x < width_; ++x) {
            states_[x] = stream.state();
            for (std::int32_t y = 0; y < height; y += take_length(stream)) {
            }
        }
        random.set_state(stream.state());
        // Before the first row a stroke ends that paints nothing.
        std::fill_n(left_, stride(), 0U);
        std::fill_n(down_, stride(), kNoPaint);
        std::fill_n(states_ + width_, stride() - static_cast<std::size_t>(width_), 0U);
    }

    const Weaver& weaver() const { return weaver_; }

    // The next row, whose own strokes come from `stream`.
    void weave(const Pixel* from, Pixel* to, StrokeStream& stream, bool streaming) {
        const PixelTag d;
        spread(stream);
        for (std::int32_t x = 0; x < width_; x += lanes_of_pixels()) {
            const bool whole = x + lanes_of_pixels() <= width_;
            const PixelVec p = whole ? hn::LoadU(d, from + x) : load_repeating(from, width_, x);
            const PixelVec before = hn::Load(d, down_ + x);
            const PixelVec left = hn::Load(d, left_ + x);
            const auto starts = hn::Eq(left, hn::Zero(d));
            const PixelVec now = go_down(x, starts, before, left);
            const PixelVec endedDown = hn::IfThenElse(starts, before, hn::Set(d, kNoPaint));
            hn::Store(painted(p, hn::Load(d, ended_ + x), hn::Load(d, along_ + x), endedDown, now), d,
                      row_ + x);
        }
        copy_run(row_, to, static_cast<std::size_t>(width_), streaming);
    }

private:
    std::size_t stride() const { return static_cast<std::size_t>(width_) / 64 * 64 + 128; }

    HWY_INLINE static std::int32_t take_length(StrokeStream& stream) {
        const std::int32_t length = stream.length();
        stream.next();
        return length;
    }

    void spread(StrokeStream& stream) {
        const PixelTag d;
        constexpr std::int32_t kLongest = kLengths - 1 + kShortest;
        std::fill_n(ended_, width_, kNoPaint);
        Paint before = kNoPaint;
        for (std::int32_t x = 0; x < width_;) {
            const Paint paint = stream.paint();
            for (std::int32_t i = 0; i < kLongest; i += lanes_of_pixels())
                hn::StoreU(hn::Set(d, paint), d, along_ + x + i);
            ended_[x] = before;
            before = paint;
            x += take_length(stream);
        }
    }

    // The paints of the columns' current strokes, some of which start in this row.
    HWY_INLINE PixelVec go_down(std::int32_t x, hn::Mask<PixelTag> starts, PixelVec paint, PixelVec left) {
        const PixelTag d;
        if (!hn::AllFalse(d, starts)) {
            const PixelVec states = hn::Load(d, states_ + x);
            const Strokes strokes = weaver_.draw(states);
            paint = hn::IfThenElse(starts, strokes.paint, paint);
            left = hn::IfThenElse(starts, strokes.length, left);
            hn::Store(hn::IfThenElse(starts, strokes.after, states), d, states_ + x);
            hn::Store(paint, d, down_ + x);
        }
        hn::Store(hn::Sub(left, hn::Set(d, 1)), d, left_ + x);
        return paint;
    }

    template <class... Paints>
    static HWY_INLINE PixelVec painted(PixelVec pixels, Paints... paints) {
        const PixelTag d;
        if (HWY_LIKELY(hn::AllTrue(d, hn::Eq(opaque(pixels), pixels)))) {
            WordVec blueRed = blue_red_words(pixels);
            WordVec greenAlpha = green_alpha_words(pixels);
            const auto lay = [&](PixelVec paint) HWY_ATTR {
                const PaintWords words(paint);
                blueRed = words.over(blueRed);
                greenAlpha = words.over(greenAlpha);
            };
            (lay(paints), ...);
            return pixels_of_words(blueRed, greenAlpha);
        }
        HWY_ALIGN Pixel results[hn::MaxLanes(PixelTag())];
        HWY_ALIGN Paint each[hn::MaxLanes(PixelTag())];
        hn::Store(pixels, d, results);
        const auto lay = [&](PixelVec paint) HWY_ATTR {
            hn::Store(paint, d, each);
            for (std::size_t i = 0; i < hn::Lanes(d); ++i)
                results[i] = source_over(results[i], color_of(each[i]));
        };
        (lay(paints), ...);
        return hn::Load(d, results);
    }

    std::int32_t width_;
    Weaver weaver_;
    hwy::AlignedFreeUniquePtr<std::uint32_t[]> memory_;
    Paint* along_ = nullptr;           // of the row's stroke that starts before or at a pixel
    Paint* ended_ = nullptr;           // of the one that ends there
    std::uint32_t* states_ = nullptr;  // of each column: the generator before its next stroke
    std::uint32_t* left_ = nullptr;    // rows until that starts
    Paint* down_ = nullptr;            // of its current stroke
    Pixel* row_ = nullptr;
};

void textile(ConstPixelBuffer source, PixelBuffer target, std::int32_t opacity, RandomGenerator& random) {
    Weave weave(source.width, opacity);
    if (!weave.is_valid()) return plain::textile(source, target, opacity, random);
    StrokeStream stream(weave.weaver(), random);
    stream.next();
    weave.start(source.height, random);
    const bool streaming = target.bytes() >= kStreamingBytes;
    for (std::int32_t y = 0; y < source.height; ++y)
        weave.weave(source.row(y), target.row(y), stream, streaming);
    if (streaming) hwy::FlushStream();
}
#else
using plain::textile;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(textile);

void textile(ConstPixelBuffer source, PixelBuffer target, std::int32_t opacity, RandomGenerator& random) {
    pick_kernel(plain::textile, HWY_DYNAMIC_DISPATCH(textile))(source, target, opacity, random);
}

}  // namespace pixvane::filters
#endif

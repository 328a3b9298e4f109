// Random offsets.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/noise.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/integer_math.h"
#include "core/kernel_path.h"
#include "core/random_lanes-inl.h"
#include "filters/adjust/luma-inl.h"
#include "filters/adjust/noise_draws.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::noise(ConstPixelBuffer source, PixelBuffer target, bool sameForAll, std::int32_t amount,
                  RandomGenerator& random) {
    const double scale = amount * kDrawUnit;
    const auto offset = [&]() -> std::int64_t {
        const std::int64_t size = trunc_to_int32(random.next() * scale);
        return random.next() > kMiddleDraw ? -size : size;
    };
    for (std::size_t i = 0; i < source.count(); ++i) {
        const Pixel p = source.data[i];
        const std::int64_t red = offset();
        const std::int64_t green = sameForAll ? red : offset();
        const std::int64_t blue = sameForAll ? red : offset();
        target.data[i] = make_pixel(0xFF, clamp_to_byte(red_of(p) + red), clamp_to_byte(green_of(p) + green),
                                    clamp_to_byte(blue_of(p) + blue));
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// Two draws of each lane's generator: an offset of a channel. No channel needs one beyond 255.
HWY_INLINE IntVec draw_offsets(PixelVec& states, double scale) {
    const DoubleTag doubles;
    PixelVec drawn;
    states = next_draw(states, drawn);
    const DoublePair draws = to_doubles(drawn);
    const auto limited = [&](DoubleVec draw) HWY_ATTR {
        const DoubleVec size = hn::Mul(draw, hn::Set(doubles, scale));
        return hn::Min(hn::Max(size, hn::Set(doubles, -255.0)), hn::Set(doubles, 255.0));
    };
    const IntVec sizes = to_ints({limited(draws.low), limited(draws.high)});
    states = next_draw(states, drawn);
    const IntVec negative = hn::ShiftRight<31>(hn::BitCast(IntTag(), hn::ShiftLeft<1>(states)));
    return hn::Sub(hn::Xor(sizes, negative), negative);
}

HWY_INLINE PixelVec moved(PixelVec channel, IntVec offset) {
    const IntTag d;
    const IntVec sum = hn::Add(hn::BitCast(d, channel), offset);
    return hn::BitCast(PixelTag(), hn::Min(hn::Max(sum, hn::Zero(d)), hn::Set(d, 255)));
}

template <bool kSameForAll>
HWY_INLINE std::size_t add_noise(ConstPixelBuffer source, PixelBuffer target, double scale,
                                 RandomGenerator random) {
    const PixelTag d;
    const std::size_t lanes = hn::Lanes(d);
    const std::uint32_t draws = noise_draws(kSameForAll);
    // Every lane has the generator of its own pixel.
    HWY_ALIGN std::uint32_t first[hn::MaxLanes(PixelTag())];
    for (std::size_t i = 0; i < lanes; ++i) {
        first[i] = random.state();
        random.jump(draws);
    }
    const RandomJump toNextVector(draws * lanes);
    PixelVec starts = hn::Load(d, first);
    std::size_t i = 0;
    for (; i + lanes <= source.count(); i += lanes) {
        const PixelVec pixels = hn::LoadU(d, source.data + i);
        PixelVec states = starts;
        const IntVec red = draw_offsets(states, scale);
        const IntVec green = kSameForAll ? red : draw_offsets(states, scale);
        const IntVec blue = kSameForAll ? red : draw_offsets(states, scale);
        const PixelVec redMoved = hn::ShiftLeft<16>(moved(red_lanes(pixels), red));
        const PixelVec greenMoved = hn::ShiftLeft<8>(moved(green_lanes(pixels), green));
        const PixelVec blueMoved = moved(blue_lanes(pixels), blue);
        hn::StoreU(opaque(hn::Or(hn::Or(redMoved, greenMoved), blueMoved)), d, target.data + i);
        starts = toNextVector(starts);
    }
    return i;
}

void noise(ConstPixelBuffer source, PixelBuffer target, bool sameForAll, std::int32_t amount,
           RandomGenerator& random) {
    const double scale = amount * kDrawUnit;
    const std::size_t done = sameForAll ? add_noise<true>(source, target, scale, random)
                                        : add_noise<false>(source, target, scale, random);
    random.jump(std::uint64_t{noise_draws(sameForAll)} * done);
    const auto left = static_cast<std::int32_t>(source.count() - done);
    plain::noise({source.data + done, left, 1}, {target.data + done, left, 1}, sameForAll, amount, random);
}
#else
using plain::noise;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(noise);

void noise(ConstPixelBuffer source, PixelBuffer target, bool sameForAll, std::int32_t amount,
           RandomGenerator& random) {
    pick_kernel(plain::noise, HWY_DYNAMIC_DISPATCH(noise))(source, target, sameForAll, amount, random);
}

}  // namespace pixvane::filters
#endif

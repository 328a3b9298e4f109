// Sums of the channels over windows of columns, summed up along a row; included once for each instruction
// set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_CHANNEL_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_CHANNEL_SUMS_INL_H_
#undef PIXVANE_FILTERS_CHANNEL_SUMS_INL_H_
#else
#define PIXVANE_FILTERS_CHANNEL_SUMS_INL_H_
#endif

#include <cstdint>

#include "filters/area/neighbours-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {
// What the columns on the way in and on the way out differ by, for each pixel from one on.
struct ChannelLanes {
    IntVec blue, green, red;
};

// The sums of one window of columns, as far as a row's first box goes.
struct ChannelTotals {
    std::int64_t blue = 0, green = 0, red = 0;
    void add(std::int64_t times, std::int64_t b, std::int64_t g, std::int64_t r) {
        blue += times * b;
        green += times * g;
        red += times * r;
    }
};

// Gains of windows summed up along a row, a vector at a time.
class RunningSums {
public:
    explicit RunningSums(const ChannelTotals& before)
        : blue_(start(before.blue)), green_(start(before.green)), red_(start(before.red)) {}

    HWY_INLINE ChannelLanes next(const ChannelLanes& gain) {
        return {go_on(blue_, gain.blue), go_on(green_, gain.green), go_on(red_, gain.red)};
    }

private:
    // Modulo 2^32, which is enough for sums that fit.
    static HWY_INLINE IntVec start(std::int64_t before) {
        return hn::BitCast(IntTag(), hn::Set(PixelTag(), static_cast<std::uint32_t>(before)));
    }
    static HWY_INLINE IntVec go_on(IntVec& before, IntVec gain) {
        const IntVec sums = hn::Add(before, sums_so_far(IntTag(), gain));
        before = last_everywhere(sums);
        return sums;
    }

    IntVec blue_, green_, red_;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

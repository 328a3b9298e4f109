// The smallest and the largest value of each channel.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/channel_ranges.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/kernel_path.h"
#include "core/pixel_runs-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {
namespace {

void widen(ChannelRange& range, std::uint32_t low, std::uint32_t high) {
    range.low = static_cast<std::uint8_t>(std::min<std::uint32_t>(range.low, low));
    range.high = static_cast<std::uint8_t>(std::max<std::uint32_t>(range.high, high));
}

}  // namespace

ChannelRanges& ChannelRanges::operator+=(const ChannelRanges& other) {
    widen(red, other.red.low, other.red.high);
    widen(green, other.green.low, other.green.high);
    widen(blue, other.blue.low, other.blue.high);
    return *this;
}

ChannelRanges plain::channel_ranges(ConstPixelBuffer source) {
    ChannelRanges ranges;
    for (std::size_t i = 0; i < source.count(); ++i) {
        const Pixel p = source.data[i];
        widen(ranges.red, red_of(p), red_of(p));
        widen(ranges.green, green_of(p), green_of(p));
        widen(ranges.blue, blue_of(p), blue_of(p));
    }
    return ranges;
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

struct Extremes {
    ByteVec low;
    ByteVec high;
    HWY_INLINE void add(const Pixel* pixels) {
        const ByteVec v = hn::BitCast(ByteTag(), hn::LoadU(PixelTag(), pixels));
        low = hn::Min(low, v);
        high = hn::Max(high, v);
    }
};

ChannelRanges channel_ranges(ConstPixelBuffer source) {
    const std::size_t lanes = hn::Lanes(PixelTag());
    const std::size_t count = source.count();
    Extremes first{hn::Set(ByteTag(), 255), hn::Zero(ByteTag())};
    Extremes second = first;  // so that one vector need not wait for the one before
    std::size_t i = 0;
    for (; i + 2 * lanes <= count; i += 2 * lanes) {
        first.add(source.data + i);
        second.add(source.data + i + lanes);
    }
    HWY_ALIGN Pixel low[hn::MaxLanes(PixelTag())];
    HWY_ALIGN Pixel high[hn::MaxLanes(PixelTag())];
    hn::Store(hn::BitCast(PixelTag(), hn::Min(first.low, second.low)), PixelTag(), low);
    hn::Store(hn::BitCast(PixelTag(), hn::Max(first.high, second.high)), PixelTag(), high);

    // The lanes are pixels again, smallest and largest ones, and so is what the loop left.
    ChannelRanges ranges = plain::channel_ranges({source.data + i, static_cast<std::int32_t>(count - i), 1});
    const auto size = static_cast<std::int32_t>(lanes);
    const ChannelRanges lows = plain::channel_ranges({low, size, 1});
    const ChannelRanges highs = plain::channel_ranges({high, size, 1});
    ranges += {
        {lows.red.low, highs.red.high}, {lows.green.low, highs.green.high}, {lows.blue.low, highs.blue.high}};
    return ranges;
}
#else
using plain::channel_ranges;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(channel_ranges);

ChannelRanges channel_ranges(ConstPixelBuffer source) {
    return pick_kernel(plain::channel_ranges, HWY_DYNAMIC_DISPATCH(channel_ranges))(source);
}

}  // namespace pixvane::filters
#endif

// Adjustments that send each channel through a table of its own.
// SPDX-License-Identifier: MIT
#include "filters/adjust/channel_tables.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/channel_tables.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/adjust/byte_table-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::apply_tables(ConstPixelBuffer source, PixelBuffer target, const ChannelTables& tables) {
    for (std::size_t i = 0; i < source.count(); ++i) {
        const Pixel p = source.data[i];
        target.data[i] =
            make_pixel(0xFF, tables.red[red_of(p)], tables.green[green_of(p)], tables.blue[blue_of(p)]);
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

#if HWY_TARGET == HWY_AVX3_DL

// Two permutes serve 64 bytes, so looking every byte up in all three tables costs less than to part the
// channels.
struct LookUpChannels {
    ByteTable red, green, blue;
    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const PixelTag d;
        const ByteVec index = hn::BitCast(ByteTag(), pixels);
        const PixelVec r = hn::And(hn::BitCast(d, red(index)), hn::Set(d, 0x00FF0000));
        const PixelVec g = hn::And(hn::BitCast(d, green(index)), hn::Set(d, 0x0000FF00));
        const PixelVec b = hn::And(hn::BitCast(d, blue(index)), hn::Set(d, 0x000000FF));
        return opaque(hn::Or(hn::Or(r, g), b));
    }
};

void apply_tables(ConstPixelBuffer source, PixelBuffer target, const ChannelTables& tables) {
    const LookUpChannels lookUp{ByteTable(tables.red.data()), ByteTable(tables.green.data()),
                                ByteTable(tables.blue.data())};
    transform_vectors(source.data, target.data, source.count(), lookUp);
}

#else

// A lookup is dear here, so four vectors are parted into one vector for each channel, and put together again.
// Within a block of 16 bytes both ways are a transposition, first of bytes, then of words among the vectors.
struct LookUpChannels {
    ByteTable red, green, blue;

    HWY_INLINE PixelQuad operator()(const PixelQuad& quad) const {
        const PixelTag d;
        const ByteTag bytes;
        const PixelQuad parted = lanes_turned(
            {bytes_turned(quad.v0), bytes_turned(quad.v1), bytes_turned(quad.v2), bytes_turned(quad.v3)});
        const PixelVec b = hn::BitCast(d, blue(hn::BitCast(bytes, parted.v0)));
        const PixelVec g = hn::BitCast(d, green(hn::BitCast(bytes, parted.v1)));
        const PixelVec r = hn::BitCast(d, red(hn::BitCast(bytes, parted.v2)));
        const PixelQuad whole = lanes_turned({b, g, r, hn::Set(d, 0xFFFFFFFF)});
        return {bytes_turned(whole.v0), bytes_turned(whole.v1), bytes_turned(whole.v2),
                bytes_turned(whole.v3)};
    }
};

void apply_tables(ConstPixelBuffer source, PixelBuffer target, const ChannelTables& tables) {
    const LookUpChannels lookUp{ByteTable(tables.red.data()), ByteTable(tables.green.data()),
                                ByteTable(tables.blue.data())};
    transform_quads(source.data, target.data, source.count(), lookUp);
}

#endif
#else
using plain::apply_tables;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(apply_tables);

void apply_tables(ConstPixelBuffer source, PixelBuffer target, const ChannelTables& tables) {
    pick_kernel(plain::apply_tables, HWY_DYNAMIC_DISPATCH(apply_tables))(source, target, tables);
}

}  // namespace pixvane::filters
#endif

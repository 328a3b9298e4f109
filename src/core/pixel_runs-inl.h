// Runs of pixels through vector code; included once for each instruction set, by files that re-include
// themselves with hwy/foreach_target.h.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_PIXEL_RUNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_PIXEL_RUNS_INL_H_
#undef PIXVANE_CORE_PIXEL_RUNS_INL_H_
#else
#define PIXVANE_CORE_PIXEL_RUNS_INL_H_
#endif

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include <cstdint>
#include <cstring>

#include "core/pixel_buffer.h"
#include "core/streaming.h"

// Where there are no real vectors the plain versions of the kernels serve.
#undef PIXVANE_VECTORS
#define PIXVANE_VECTORS (HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128)

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using PixelTag = hn::ScalableTag<std::uint32_t>;
using PixelVec = hn::Vec<PixelTag>;
using ByteTag = hn::Repartition<std::uint8_t, PixelTag>;
using ByteVec = hn::Vec<ByteTag>;
using IntTag = hn::RebindToSigned<PixelTag>;
using IntVec = hn::Vec<IntTag>;

// Four vectors of pixels in a row: what a transform gets at once, so that it can regroup bytes among them.
struct PixelQuad {
    PixelVec v0, v1, v2, v3;
};

HWY_INLINE PixelQuad load_quad(const Pixel* from) {
    const PixelTag d;
    const std::size_t lanes = hn::Lanes(d);
    return {hn::LoadU(d, from), hn::LoadU(d, from + lanes), hn::LoadU(d, from + 2 * lanes),
            hn::LoadU(d, from + 3 * lanes)};
}

HWY_INLINE void store_quad(const PixelQuad& quad, Pixel* to) {
    const PixelTag d;
    const std::size_t lanes = hn::Lanes(d);
    hn::StoreU(quad.v0, d, to);
    hn::StoreU(quad.v1, d, to + lanes);
    hn::StoreU(quad.v2, d, to + 2 * lanes);
    hn::StoreU(quad.v3, d, to + 3 * lanes);
}

// `to` is aligned to a vector.
HWY_INLINE void stream_quad(const PixelQuad& quad, Pixel* to) {
    const PixelTag d;
    const std::size_t lanes = hn::Lanes(d);
    hn::Stream(quad.v0, d, to);
    hn::Stream(quad.v1, d, to + lanes);
    hn::Stream(quad.v2, d, to + 2 * lanes);
    hn::Stream(quad.v3, d, to + 3 * lanes);
}

// Pixels in a line of the cache: what is streamed should come in whole lines, or memory gets it in pieces.
constexpr std::size_t kLinePixels = 16;

// How many pixels lie before the next line.
HWY_INLINE std::size_t pixels_to_line(const Pixel* p) {
    constexpr std::size_t kBytes = kLinePixels * sizeof(Pixel);
    return (kBytes - reinterpret_cast<std::uintptr_t>(p) % kBytes) % kBytes / sizeof(Pixel);
}

// Brings a line of memory that is read soon into the second cache. The first one has too few places for lines
// that are on their way: rows that lie apart were copied in 1.4 times as long when they were fetched into it.
HWY_INLINE void fetch_line(const void* place) {
#if HWY_COMPILER_MSVC
    hwy::Prefetch(static_cast<const char*>(place));
#else
    __builtin_prefetch(place, 0, 2);
#endif
}

// Up to four vectors of pixels by way of a buffer, so that nothing is touched beyond them.
template <class Transform>
HWY_NOINLINE void transform_few(const Pixel* from, Pixel* to, std::size_t count, const Transform& transform,
                                bool streaming) {
    const PixelTag d;
    HWY_ALIGN Pixel buffer[4 * hn::MaxLanes(PixelTag())] = {};
    std::memcpy(buffer, from, count * sizeof(Pixel));
    store_quad(transform(load_quad(buffer)), buffer);
    std::size_t i = 0;
    if (streaming && pixels_to_line(to) == 0) {
        for (; i + kLinePixels <= count; i += kLinePixels) {
            for (std::size_t j = i; j < i + kLinePixels; j += hn::Lanes(d))
                hn::Stream(hn::Load(d, buffer + j), d, to + j);
        }
    }
    std::memcpy(to + i, buffer + i, (count - i) * sizeof(Pixel));
}

// transform(PixelQuad) -> PixelQuad over a run of pixels; `to` is `from`, or other memory. If `streaming`,
// past the caches: only into other memory, and with a hwy::FlushStream() after the last run. `next`, if it is
// not null, is where the next run will be read from, which is fetched meanwhile: the processor doesn't
// foresee a jump from one row to the next.
template <class Transform>
HWY_INLINE void transform_run(const Pixel* from, Pixel* to, std::size_t count, const Transform& transform,
                              bool streaming, const Pixel* next = nullptr) {
    const std::size_t step = 4 * hn::Lanes(PixelTag());
    std::size_t i = 0;
    if (streaming && count >= step) {
        i = pixels_to_line(to);
        if (i > 0) transform_few(from, to, i, transform, false);
        if (next != nullptr) {
            for (; i + step <= count; i += step) {
                for (std::size_t k = 0; k < step; k += kLinePixels) fetch_line(next + i + k);
                stream_quad(transform(load_quad(from + i)), to + i);
            }
        }
        for (; i + step <= count; i += step) stream_quad(transform(load_quad(from + i)), to + i);
    } else {
        for (; i + step <= count; i += step) store_quad(transform(load_quad(from + i)), to + i);
    }
    if (i < count) transform_few(from + i, to + i, count - i, transform, streaming);
}

// The same for the whole of a picture, or of a band of one.
template <class Transform>
HWY_INLINE void transform_quads(const Pixel* from, Pixel* to, std::size_t count, const Transform& transform) {
    const bool streaming = from != to && count * sizeof(Pixel) >= kStreamingBytes;
    transform_run(from, to, count, transform, streaming);
    if (streaming) hwy::FlushStream();
}

// transform(PixelVec) -> PixelVec as a transform of quads.
template <class Transform>
struct EachVector {
    const Transform& transform;
    HWY_INLINE PixelQuad operator()(const PixelQuad& q) const {
        return {transform(q.v0), transform(q.v1), transform(q.v2), transform(q.v3)};
    }
};

template <class Transform>
HWY_INLINE void transform_vectors(const Pixel* from, Pixel* to, std::size_t count,
                                  const Transform& transform) {
    transform_quads(from, to, count, EachVector<Transform>{transform});
}

struct Unchanged {
    HWY_INLINE PixelQuad operator()(const PixelQuad& quad) const { return quad; }
};

HWY_INLINE void copy_run(const Pixel* from, Pixel* to, std::size_t count, bool streaming,
                         const Pixel* next = nullptr) {
    transform_run(from, to, count, Unchanged(), streaming, next);
}

HWY_INLINE void fill_run(Pixel* to, std::size_t count, Pixel value, bool streaming) {
    const PixelTag d;
    const std::size_t lanes = hn::Lanes(d);
    const PixelVec values = hn::Set(d, value);
    std::size_t i = 0;
    if (streaming) {
        const std::size_t lead = pixels_to_line(to);
        for (; i < lead && i < count; ++i) to[i] = value;
        for (; i + kLinePixels <= count; i += kLinePixels) {
            for (std::size_t j = i; j < i + kLinePixels; j += lanes) hn::Stream(values, d, to + j);
        }
    }
    for (; i + lanes <= count; i += lanes) hn::StoreU(values, d, to + i);
    for (; i < count; ++i) to[i] = value;
}

HWY_INLINE PixelVec opaque(PixelVec pixels) { return hn::Or(pixels, hn::Set(PixelTag(), kOpaque)); }

// Floats that fit integers, truncated: without what conversions otherwise do for those that don't.
HWY_INLINE IntVec truncated(hn::Vec<hn::RebindToFloat<IntTag>> v) {
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
    return IntVec{_mm512_cvttps_epi32(v.raw)};
#elif HWY_TARGET == HWY_AVX2
    return IntVec{_mm256_cvttps_epi32(v.raw)};
#else
    return hn::ConvertTo(IntTag(), v);
#endif
}

// The same for two vectors of doubles.
using DoubleTag = hn::Repartition<double, PixelTag>;
using DoubleVec = hn::Vec<DoubleTag>;

HWY_INLINE IntVec truncated(DoubleVec low, DoubleVec high) {
    const IntTag d;
    const hn::Rebind<std::int32_t, DoubleTag> half;
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
    const auto each = [](DoubleVec v)
                          HWY_ATTR { return hn::Vec<decltype(half)>{_mm512_cvttpd_epi32(v.raw)}; };
#elif HWY_TARGET == HWY_AVX2
    const auto each = [](DoubleVec v)
                          HWY_ATTR { return hn::Vec<decltype(half)>{_mm256_cvttpd_epi32(v.raw)}; };
#else
    const auto each = [=](DoubleVec v) HWY_ATTR { return hn::DemoteTo(half, v); };
#endif
    return hn::Combine(d, each(high), each(low));
}

// A channel of each pixel, 0..255.
HWY_INLINE PixelVec blue_lanes(PixelVec p) { return hn::And(p, hn::Set(PixelTag(), 0xFF)); }
HWY_INLINE PixelVec green_lanes(PixelVec p) {
    return hn::And(hn::ShiftRight<8>(p), hn::Set(PixelTag(), 0xFF));
}
HWY_INLINE PixelVec red_lanes(PixelVec p) {
    return hn::And(hn::ShiftRight<16>(p), hn::Set(PixelTag(), 0xFF));
}

// The low byte of each lane in all four.
HWY_INLINE PixelVec low_byte_everywhere(PixelVec values) {
    alignas(16) static constexpr std::uint8_t kFirst[16] = {0, 0, 0, 0, 4,  4,  4,  4,
                                                            8, 8, 8, 8, 12, 12, 12, 12};
    const ByteTag d;
    return hn::BitCast(PixelTag(), hn::TableLookupBytes(hn::BitCast(d, values), hn::LoadDup128(d, kFirst)));
}

// The four bytes of each lane parted: within blocks of 16 bytes, first bytes before second bytes and so on.
// Doing it twice undoes it.
HWY_INLINE PixelVec bytes_turned(PixelVec v) {
    alignas(16) static constexpr std::uint8_t kTurn[16] = {0, 4, 8,  12, 1, 5, 9,  13,
                                                           2, 6, 10, 14, 3, 7, 11, 15};
    const ByteTag d;
    return hn::BitCast(PixelTag(), hn::TableLookupBytes(hn::BitCast(d, v), hn::LoadDup128(d, kTurn)));
}

// Within blocks of four lanes: lane i of vector j becomes lane j of vector i. Doing it twice undoes it.
HWY_INLINE PixelQuad lanes_turned(const PixelQuad& q) {
    const PixelTag d;
    const hn::Repartition<std::uint64_t, PixelTag> wide;
    const auto low01 = hn::BitCast(wide, hn::InterleaveLower(d, q.v0, q.v1));
    const auto high01 = hn::BitCast(wide, hn::InterleaveUpper(d, q.v0, q.v1));
    const auto low23 = hn::BitCast(wide, hn::InterleaveLower(d, q.v2, q.v3));
    const auto high23 = hn::BitCast(wide, hn::InterleaveUpper(d, q.v2, q.v3));
    return {hn::BitCast(d, hn::InterleaveLower(wide, low01, low23)),
            hn::BitCast(d, hn::InterleaveUpper(wide, low01, low23)),
            hn::BitCast(d, hn::InterleaveLower(wide, high01, high23)),
            hn::BitCast(d, hn::InterleaveUpper(wide, high01, high23))};
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

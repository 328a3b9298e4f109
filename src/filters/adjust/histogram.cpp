// Histograms of the channels and of luminance.
// SPDX-License-Identifier: MIT
#include "filters/adjust/histogram.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/histogram.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cstring>

#include "core/kernel_path.h"
#include "filters/adjust/luma-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

void add(Histogram& all, const Histogram& part) {
    for (std::size_t i = 0; i < all.size(); ++i) all[i] += part[i];
}

ChannelHistograms& ChannelHistograms::operator+=(const ChannelHistograms& other) {
    add(red, other.red);
    add(green, other.green);
    add(blue, other.blue);
    return *this;
}

ChannelHistograms plain::channel_histograms(ConstPixelBuffer source) {
    ChannelHistograms histograms;
    for (std::size_t i = 0; i < source.count(); ++i) {
        const Pixel p = source.data[i];
        ++histograms.red[red_of(p)];
        ++histograms.green[green_of(p)];
        ++histograms.blue[blue_of(p)];
    }
    return histograms;
}

Histogram plain::channel_histogram(ConstPixelBuffer source, Channel channel) {
    const ChannelHistograms histograms = channel_histograms(source);
    return channel == Channel::Red     ? histograms.red
           : channel == Channel::Green ? histograms.green
                                       : histograms.blue;
}

Histogram plain::luminance_histogram(ConstPixelBuffer source) {
    Histogram histogram{};
    for (std::size_t i = 0; i < source.count(); ++i) ++histogram[luma_blue_last(source.data[i])];
    return histogram;
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {

// Neighbours are often equal, and a count that was just stored can't be read at once: so they are counted
// in different histograms, which are added up at the end.
template <std::size_t kParts>
struct SplitHistogram {
    // Padded, so that equal bins of two parts are not a page apart: a processor takes those for the same at
    // first.
    std::uint32_t bins[kParts][256 + 16] = {};

    Histogram total() const {
        Histogram sum{};
        for (const auto& part : bins) {
            for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += static_cast<std::int32_t>(part[i]);
        }
        return sum;
    }
};

// Pixels are read two at a time, as one word.
HWY_INLINE std::uint64_t two_pixels(const Pixel* pixels) {
    std::uint64_t both;
    std::memcpy(&both, pixels, sizeof both);
    return both;
}

ChannelHistograms channel_histograms(ConstPixelBuffer source) {
    SplitHistogram<4> red, green, blue;
    const std::size_t count = source.count();
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const std::uint64_t low = two_pixels(source.data + i);
        const std::uint64_t high = two_pixels(source.data + i + 2);
        ++blue.bins[0][low & 0xFF];
        ++green.bins[0][(low >> 8) & 0xFF];
        ++red.bins[0][(low >> 16) & 0xFF];
        ++blue.bins[1][(low >> 32) & 0xFF];
        ++green.bins[1][(low >> 40) & 0xFF];
        ++red.bins[1][(low >> 48) & 0xFF];
        ++blue.bins[2][high & 0xFF];
        ++green.bins[2][(high >> 8) & 0xFF];
        ++red.bins[2][(high >> 16) & 0xFF];
        ++blue.bins[3][(high >> 32) & 0xFF];
        ++green.bins[3][(high >> 40) & 0xFF];
        ++red.bins[3][(high >> 48) & 0xFF];
    }
    ChannelHistograms histograms =
        plain::channel_histograms({source.data + i, static_cast<std::int32_t>(count - i), 1});
    histograms += {red.total(), green.total(), blue.total()};
    return histograms;
}

template <std::size_t kShift>
HWY_INLINE Histogram one_channel(ConstPixelBuffer source) {
    SplitHistogram<8> bins;
    const std::size_t count = source.count();
    std::size_t i = 0;
    for (; i + 8 <= count; i += 8) {
        for (std::size_t k = 0; k < 8; k += 2) {
            const std::uint64_t both = two_pixels(source.data + i + k);
            ++bins.bins[k][(both >> kShift) & 0xFF];
            ++bins.bins[k + 1][(both >> (32 + kShift)) & 0xFF];
        }
    }
    for (; i < count; ++i) ++bins.bins[0][(source.data[i] >> kShift) & 0xFF];
    return bins.total();
}

Histogram channel_histogram(ConstPixelBuffer source, Channel channel) {
    return channel == Channel::Red     ? one_channel<16>(source)
           : channel == Channel::Green ? one_channel<8>(source)
                                       : one_channel<0>(source);
}

#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

HWY_INLINE PixelVec luma_of(PixelVec pixels) { return luma_lanes<BlueIs::Last>(pixels); }

// Of four vectors as one vector of bytes; their order doesn't matter.
HWY_INLINE ByteVec lumas_of(const PixelQuad& q) {
    const PixelVec luma01 = hn::Or(luma_of(q.v0), hn::ShiftLeft<8>(luma_of(q.v1)));
    const PixelVec luma23 = hn::Or(luma_of(q.v2), hn::ShiftLeft<8>(luma_of(q.v3)));
    return hn::BitCast(ByteTag(), hn::Or(luma01, hn::ShiftLeft<16>(luma23)));
}

Histogram luminance_histogram(ConstPixelBuffer source) {
    SplitHistogram<8> bins;
    // A piece is worked out as a whole before it is counted: bytes of a vector that was just stored are slow
    // to read. While it is counted, memory brings the next one.
    constexpr std::size_t kPiece = 1024;
    constexpr std::size_t kLine = 16;
    HWY_ALIGN std::uint8_t lumas[kPiece];
    const std::size_t step = 4 * hn::Lanes(PixelTag());
    const std::size_t count = source.count();
    std::size_t i = 0;
    for (; i + kPiece <= count; i += kPiece) {
        for (std::size_t j = 0; j < kPiece; j += step)
            hn::Store(lumas_of(load_quad(source.data + i + j)), ByteTag(), lumas + j);
        for (std::size_t j = 0; j < kPiece; j += kLine) {
            fetch_line(source.data + std::min(i + kPiece + j, count - 1));
            for (std::size_t k = 0; k < kLine; ++k) ++bins.bins[k % 8][lumas[j + k]];
        }
    }
    Histogram histogram =
        plain::luminance_histogram({source.data + i, static_cast<std::int32_t>(count - i), 1});
    add(histogram, bins.total());
    return histogram;
}
#else
using plain::luminance_histogram;
#endif

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(channel_histogram);
HWY_EXPORT(channel_histograms);
HWY_EXPORT(luminance_histogram);

ChannelHistograms channel_histograms(ConstPixelBuffer source) {
    return pick_kernel(plain::channel_histograms, HWY_DYNAMIC_DISPATCH(channel_histograms))(source);
}

Histogram channel_histogram(ConstPixelBuffer source, Channel channel) {
    return pick_kernel(plain::channel_histogram, HWY_DYNAMIC_DISPATCH(channel_histogram))(source, channel);
}

Histogram luminance_histogram(ConstPixelBuffer source) {
    return pick_kernel(plain::luminance_histogram, HWY_DYNAMIC_DISPATCH(luminance_histogram))(source);
}

}  // namespace pixvane::filters
#endif

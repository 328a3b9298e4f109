// Histograms of the channels and of luminance.
// SPDX-License-Identifier: MIT
#include "filters/histogram.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/histogram.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cstring>

#include "core/kernel_path.h"
#include "filters/luma-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

ChannelHistograms& ChannelHistograms::operator+=(const ChannelHistograms& other) {
    for (std::size_t i = 0; i < red.size(); ++i) {
        red[i] += other.red[i];
        green[i] += other.green[i];
        blue[i] += other.blue[i];
    }
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
    std::uint32_t bins[kParts][256] = {};

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

#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

Histogram luminance_histogram(ConstPixelBuffer source) {
    SplitHistogram<8> bins;
    // Lumas of a piece are worked out as bytes, then counted.
    constexpr std::size_t kPiece = 1024;
    HWY_ALIGN std::uint8_t lumas[kPiece];
    const std::size_t lanes = hn::Lanes(PixelTag());
    const hn::Rebind<std::uint8_t, PixelTag> narrow;
    const std::size_t count = source.count();
    std::size_t i = 0;
    for (; i + kPiece <= count; i += kPiece) {
        for (std::size_t j = 0; j < kPiece; j += lanes) {
            const PixelVec luma = luma_lanes(hn::LoadU(PixelTag(), source.data + i + j));
            hn::StoreU(hn::TruncateTo(narrow, luma), narrow, lumas + j);
        }
        for (std::size_t j = 0; j < kPiece; j += 8) {
            std::uint64_t eight;
            std::memcpy(&eight, lumas + j, sizeof eight);
            for (std::size_t k = 0; k < 8; ++k) ++bins.bins[k][(eight >> (8 * k)) & 0xFF];
        }
    }
    Histogram histogram =
        plain::luminance_histogram({source.data + i, static_cast<std::int32_t>(count - i), 1});
    const Histogram counted = bins.total();
    for (std::size_t k = 0; k < histogram.size(); ++k) histogram[k] += counted[k];
    return histogram;
}
#else
using plain::luminance_histogram;
#endif

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(channel_histograms);
HWY_EXPORT(luminance_histogram);

ChannelHistograms channel_histograms(ConstPixelBuffer source) {
    return pick_kernel(plain::channel_histograms, HWY_DYNAMIC_DISPATCH(channel_histograms))(source);
}

Histogram channel_histogram(ConstPixelBuffer source, Channel channel) {
    const ChannelHistograms histograms = channel_histograms(source);
    return channel == Channel::Red     ? histograms.red
           : channel == Channel::Green ? histograms.green
                                       : histograms.blue;
}

Histogram luminance_histogram(ConstPixelBuffer source) {
    return pick_kernel(plain::luminance_histogram, HWY_DYNAMIC_DISPATCH(luminance_histogram))(source);
}

}  // namespace pixvane::filters
#endif

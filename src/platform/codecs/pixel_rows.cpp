// Pixels and the byte layouts that files have them in.
// SPDX-License-Identifier: MIT
#include "platform/codecs/pixel_rows.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/codecs/pixel_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace pixvane::codecs::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The vectors stop short of the end; the last few pixels are done one by one.

void expand(const std::uint8_t* bytes, std::size_t channels, Pixel* pixels, std::size_t count) {
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    auto* out = reinterpret_cast<std::uint8_t*>(pixels);
    std::size_t i = 0;
    auto a = hn::Set(d, 255);
    auto r = a, g = a, b = a;
    for (; i + lanes <= count; i += lanes) {
        const std::uint8_t* const in = bytes + i * channels;
        switch (channels) {
            case 1:
                r = g = b = hn::LoadU(d, in);
                break;
            case 2:
                hn::LoadInterleaved2(d, in, r, a), g = b = r;
                break;
            case 3:
                hn::LoadInterleaved3(d, in, r, g, b);
                break;
            default:
                hn::LoadInterleaved4(d, in, r, g, b, a);
                break;
        }
        hn::StoreInterleaved4(b, g, r, a, d, out + 4 * i);
    }
    for (; i < count; ++i) {
        const std::uint8_t* const in = bytes + i * channels;
        const std::uint8_t alpha = channels == 2 ? in[1] : channels == 4 ? in[3] : std::uint8_t{255};
        pixels[i] =
            channels < 3 ? make_pixel(alpha, in[0], in[0], in[0]) : make_pixel(alpha, in[0], in[1], in[2]);
    }
}

void pack(const Pixel* pixels, std::uint8_t* bytes, std::size_t channels, bool blueFirst, std::size_t count) {
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto* in = reinterpret_cast<const std::uint8_t*>(pixels);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        auto b = hn::Zero(d), g = b, r = b, a = b;
        hn::LoadInterleaved4(d, in + 4 * i, b, g, r, a);
        if (blueFirst) std::swap(b, r);
        if (channels == 3)
            hn::StoreInterleaved3(r, g, b, d, bytes + 3 * i);
        else
            hn::StoreInterleaved4(r, g, b, a, d, bytes + 4 * i);
    }
    for (; i < count; ++i) {
        std::uint8_t* const out = bytes + i * channels;
        out[0] = static_cast<std::uint8_t>(blueFirst ? blue_of(pixels[i]) : red_of(pixels[i]));
        out[1] = static_cast<std::uint8_t>(green_of(pixels[i]));
        out[2] = static_cast<std::uint8_t>(blueFirst ? red_of(pixels[i]) : blue_of(pixels[i]));
        if (channels == 4) out[3] = static_cast<std::uint8_t>(alpha_of(pixels[i]));
    }
}

}  // namespace pixvane::codecs::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::codecs {

HWY_EXPORT(expand);
HWY_EXPORT(pack);

void expand_pixels(const std::uint8_t* bytes, std::size_t channels, Pixel* pixels, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(expand)(bytes, channels, pixels, count);
}

void pack_pixels(const Pixel* pixels, std::uint8_t* bytes, std::size_t channels, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(pack)(pixels, bytes, channels, false, count);
}

void pack_bgr(const Pixel* pixels, std::uint8_t* bytes, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(pack)(pixels, bytes, 3, true, count);
}

void unpremultiply(Pixel* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t a = alpha_of(pixels[i]);
        if (a == 255) continue;
        const auto straight = [a](std::uint32_t c) {
            return a == 0 ? 0 : std::min<std::uint32_t>(255, (c * 255 + a / 2) / a);
        };
        pixels[i] = make_pixel(a, straight(red_of(pixels[i])), straight(green_of(pixels[i])),
                               straight(blue_of(pixels[i])));
    }
}

}  // namespace pixvane::codecs
#endif

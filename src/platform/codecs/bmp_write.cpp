// Writes BMP files.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/opacity.h"
#include "platform/codecs/pixel_rows.h"

namespace pixvane::codecs {
namespace {

constexpr std::size_t kFileHeader = 14;
// The plainest header is the one that every program reads; alpha needs masks, a profile needs a V5 header.
constexpr std::size_t kInfoHeader = 40;
constexpr std::size_t kV4Header = 108;
constexpr std::size_t kV5Header = 124;
constexpr std::uint32_t kBitfields = 3;
constexpr std::uint32_t kStandardColors = 0x73524742;   // "sRGB"
constexpr std::uint32_t kEmbeddedProfile = 0x4D424544;  // "MBED"
constexpr std::uint32_t kPicturesIntent = 4;

struct Layout {
    std::size_t header;
    std::size_t stride;
    std::size_t pixels;   // bytes
    std::size_t profile;  // bytes
    bool opaque;

    std::size_t pixels_at() const { return kFileHeader + header; }
    std::size_t file() const { return pixels_at() + pixels + profile; }
};

Layout lay_out(ConstPixelBuffer picture, std::size_t profile) {
    Layout layout{};
    layout.opaque = is_opaque(picture);
    layout.profile = profile;
    layout.header = profile != 0 ? kV5Header : layout.opaque ? kInfoHeader : kV4Header;
    const auto width = static_cast<std::size_t>(picture.width);
    layout.stride = layout.opaque ? (width * 3 + 3) / 4 * 4 : width * 4;
    layout.pixels = layout.stride * static_cast<std::size_t>(picture.height);
    return layout;
}

void write_headers(std::uint8_t* p, const Layout& layout, ConstPixelBuffer picture, Resolution resolution) {
    std::fill_n(p, layout.pixels_at(), std::uint8_t{0});
    p[0] = 'B';
    p[1] = 'M';
    put_little32(p + 2, static_cast<std::uint32_t>(layout.file()));
    put_little32(p + 10, static_cast<std::uint32_t>(layout.pixels_at()));
    p += kFileHeader;
    put_little32(p, static_cast<std::uint32_t>(layout.header));
    put_little32(p + 4, static_cast<std::uint32_t>(picture.width));
    put_little32(p + 8, static_cast<std::uint32_t>(picture.height));
    put_little16(p + 12, 1);  // planes
    put_little16(p + 14, layout.opaque ? 24 : 32);
    put_little32(p + 16, layout.opaque ? 0 : kBitfields);
    put_little32(p + 20, static_cast<std::uint32_t>(layout.pixels));
    if (resolution.known()) {
        put_little32(p + 24, dots_per_metre(resolution.x));
        put_little32(p + 28, dots_per_metre(resolution.y));
    }
    if (layout.header == kInfoHeader) return;
    if (!layout.opaque) {
        put_little32(p + 40, 0x00FF0000);
        put_little32(p + 44, 0x0000FF00);
        put_little32(p + 48, 0x000000FF);
        put_little32(p + 52, 0xFF000000);
    }
    put_little32(p + 56, layout.profile != 0 ? kEmbeddedProfile : kStandardColors);
    if (layout.header != kV5Header) return;
    put_little32(p + 108, kPicturesIntent);
    put_little32(p + 112, static_cast<std::uint32_t>(layout.header + layout.pixels));
    put_little32(p + 116, static_cast<std::uint32_t>(layout.profile));
}

void write_row(std::uint8_t* row, const Layout& layout, const Pixel* pixels, std::size_t width) {
    if (!layout.opaque) {
        std::memcpy(row, pixels, width * 4);
        return;
    }
    pack_bgr(pixels, row, width);
    std::fill(row + 3 * width, row + layout.stride, std::uint8_t{0});
}

}  // namespace

bool encode_bmp(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file) {
    const ByteSpan profile = profile_of(options);
    const Layout layout = lay_out(picture, profile.size());
    ByteBuffer bytes(layout.file());
    write_headers(bytes.data(), layout, picture, resolution_of(options));
    std::uint8_t* row = bytes.data() + layout.pixels_at();
    for (std::int32_t y = picture.height - 1; y >= 0; --y, row += layout.stride)
        write_row(row, layout, picture.row(y), static_cast<std::size_t>(picture.width));
    std::copy(profile.begin(), profile.end(), row);
    file = std::move(bytes);
    return true;
}

}  // namespace pixvane::codecs

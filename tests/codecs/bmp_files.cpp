// BMP files of every kind, and icons.
// SPDX-License-Identifier: MIT
#include <array>

#include "codecs/odd_files.h"

namespace pixvane::test {
namespace {

constexpr std::int32_t kWidth = 13;
constexpr std::int32_t kHeight = 7;

struct InfoHeader {
    std::int32_t width = kWidth;
    std::int32_t height = kHeight;
    std::uint32_t bits = 24;
    std::uint32_t compression = 0;
    std::uint32_t size = 40;
    std::uint32_t colors = 0;
};

Bytes info_header(const InfoHeader& header) {
    Bytes bytes;
    put32(bytes, header.size);
    put32(bytes, static_cast<std::uint32_t>(header.width));
    put32(bytes, static_cast<std::uint32_t>(header.height));
    put16(bytes, 1);
    put16(bytes, header.bits);
    put32(bytes, header.compression);
    for (int i = 0; i < 3; ++i) put32(bytes, 0);
    put32(bytes, header.colors);
    put32(bytes, 0);
    return bytes;
}

OddFile bmp(const std::string& name, const Bytes& headers, const Bytes& pixels, const Picture& picture) {
    Bytes file = text("BM");
    put32(file, static_cast<std::uint32_t>(14 + headers.size() + pixels.size()));
    put32(file, 0);
    put32(file, static_cast<std::uint32_t>(14 + headers.size()));
    append(file, headers);
    append(file, pixels);
    return {"BMP, " + name, file, {picture}};
}

/// Rows as bitmaps have them: padded to 4 bytes, the lowest first unless told.
Bytes rows_of(const Picture& values, std::uint32_t bits, bool topDown = false) {
    const auto row = [&](std::int32_t y) { return topDown ? y : values.height - 1 - y; };
    return packed_rows(
        picture_of(values.width, values.height, [&](auto x, auto y) { return values.at(x, row(y)); }), bits,
        4);
}

OddFile palette_bmp(std::uint32_t bits, bool os2, std::uint32_t used = 0) {
    const Indexed indexed(kWidth, kHeight, used != 0 ? used : 1u << bits);
    Bytes headers;
    if (os2) {
        put32(headers, 12);
        for (const std::uint32_t field : {std::uint32_t{kWidth}, std::uint32_t{kHeight}, 1u, bits})
            put16(headers, field);
    } else {
        headers = info_header({.bits = bits, .colors = used});
    }
    append(headers, channels(indexed.palette, os2 ? "BGR" : "BGR0"));
    return bmp(std::to_string(bits) + " bits" + (os2 ? ", OS/2" : "") + (used != 0 ? ", short palette" : ""),
               headers, rows_of(indexed.indices, bits), indexed.picture());
}

/// The numbers of the colours, row by row from the top, and how they are stored in runs.
OddFile runs_bmp(std::uint32_t bits, Indexed indexed, const std::vector<Pixel>& numbers, const Bytes& runs) {
    indexed.indices.pixels = numbers;
    Bytes headers = info_header({.width = indexed.indices.width,
                                 .height = indexed.indices.height,
                                 .bits = bits,
                                 .compression = bits == 8 ? 1u : 2u});
    append(headers, channels(indexed.palette, "BGR0"));
    return bmp("RLE" + std::to_string(bits), headers, runs, indexed.picture());
}

/// Runs, bytes as they are, a jump over pixels, and ends of rows.
OddFile rle8_bmp() {
    return runs_bmp(8, Indexed(8, 4, 256), {4, 4, 4, 4, 4,  4,  4, 4,  //
                                            0, 0, 0, 0, 77, 77, 0, 0,  //
                                            1, 2, 3, 0, 0,  0,  0, 0,  //
                                            9, 9, 9, 9, 9,  8,  8, 8},
                    {5,  9,  3, 8,              // a whole row
                     0,  0,  0, 3, 1, 2, 3, 0,  // three as they are, padded
                     0,  2,  1, 1,              // one right, one up
                     2,  77, 0, 0,              //
                     20, 4,  0, 1});            // a run that leaves the picture
}

OddFile rle4_bmp() {
    return runs_bmp(4, Indexed(6, 2, 16), {7, 8, 7, 8, 7, 3, 1, 2, 3, 4, 5, 0},
                    {0, 5, 0x12, 0x34, 0x50, 0, 1, 0, 0, 0, 5, 0x78, 1, 0x30, 0, 1});
}

struct Masks {
    const char* name;
    std::uint32_t bits;
    std::array<std::uint32_t, 4> masks;
    bool stated = true;  ///< in the file; else its kind says so
    bool topDown = false;
};

OddFile masked_bmp(const Masks& kind) {
    TestRandom random(kind.bits + kind.masks[0]);
    const Picture values =
        picture_of(kWidth, kHeight, [&](auto, auto) { return random.next() >> (32 - kind.bits); });
    Picture picture = values;
    for (Pixel& p : picture.pixels) {
        std::array<std::uint32_t, 4> channel{0, 0, 0, 255};
        for (std::size_t c = 0; c < 4; ++c) {
            const std::uint32_t mask = kind.masks[c];
            if (mask == 0) continue;
            const int shift = __builtin_ctz(mask);
            channel[c] = (((p & mask) >> shift) * 255 + (mask >> shift) / 2) / (mask >> shift);
        }
        p = make_pixel(channel[3], channel[0], channel[1], channel[2]);
    }
    const bool large = kind.stated && kind.masks[3] != 0;
    Bytes headers = info_header({.height = kind.topDown ? -kHeight : kHeight,
                                 .bits = kind.bits,
                                 .compression = kind.stated ? 3u : 0u,
                                 .size = large ? 108u : 40u});
    if (kind.stated)
        for (std::size_t c = 0; c < (large ? 4u : 3u); ++c) put32(headers, kind.masks[c]);
    if (large) headers.resize(108);
    return bmp(kind.name, headers, rows_of(values, kind.bits, kind.topDown), picture);
}

OddFile true_color_bmp(bool topDown) {
    const Picture picture = random_opaque_picture(kWidth, kHeight, 3);
    return bmp(topDown ? "24 bits, top down" : "24 bits",
               info_header({.height = topDown ? -kHeight : kHeight}), rows_of(picture, 24, topDown), picture);
}

struct IconEntry {
    Bytes bytes;
    Picture picture;
};

bool is_hidden(std::int32_t x, std::int32_t y) { return (x + y) % 3 == 0; }

Picture without_hidden(const Picture& picture) {
    return picture_of(picture.width, picture.height,
                      [&](auto x, auto y) { return is_hidden(x, y) ? 0 : picture.at(x, y); });
}

/// A bitmap whose height counts its mask too.
Bytes icon_bytes(const Picture& values, std::uint32_t bits, const Bytes& palette = {}) {
    Bytes entry = info_header({.width = values.width, .height = values.height * 2, .bits = bits});
    append(entry, palette);
    append(entry, rows_of(values, bits));
    append(entry, rows_of(picture_of(values.width, values.height, is_hidden), 1));
    return entry;
}

IconEntry palette_entry(std::uint32_t bits) {
    const Indexed indexed(kWidth, kHeight, 1u << bits);
    return {icon_bytes(indexed.indices, bits, channels(indexed.palette, "BGR0")),
            without_hidden(indexed.picture())};
}

IconEntry true_color_entry(std::int32_t side) {
    const Picture picture = random_opaque_picture(side, side, 8);
    return {icon_bytes(picture, 24), without_hidden(picture)};
}

/// 32 bits: with alpha, the mask means nothing; without any, it is all there is.
IconEntry alpha_entry(std::int32_t side, bool empty) {
    const Picture picture = random_picture(side, side, 4), opaque = random_opaque_picture(side, side, 4);
    Picture stored = picture;
    if (!empty) return {icon_bytes(stored, 32), picture};
    for (Pixel& p : stored.pixels) p &= 0xFFFFFF;
    return {icon_bytes(stored, 32), without_hidden(opaque)};
}

Bytes icon_file(std::uint32_t kind, const std::vector<IconEntry>& entries) {
    Bytes file, content;
    for (const std::size_t field : {std::size_t{0}, std::size_t{kind}, entries.size()})
        put16(file, static_cast<std::uint32_t>(field));
    for (const IconEntry& entry : entries) {
        // 48 is said as 0, as for 256: what the entry itself says counts.
        const auto side = static_cast<std::uint8_t>(entry.picture.width % 48);
        append(file, {side, side});
        // Colours, planes and depth, which are often wrong; hot spots in cursors.
        put16(file, 0);
        put32(file, 0x00030005);
        put32(file, static_cast<std::uint32_t>(entry.bytes.size()));
        put32(file, static_cast<std::uint32_t>(6 + 16 * entries.size() + content.size()));
        append(content, entry.bytes);
    }
    append(file, content);
    return file;
}

}  // namespace

std::vector<OddFile> bmp_files() {
    std::vector<OddFile> files{palette_bmp(8, false, 20), rle8_bmp(), rle4_bmp()};
    for (const std::uint32_t bits : {1u, 4u, 8u})
        for (const bool os2 : {false, true}) files.push_back(palette_bmp(bits, os2));
    for (const Masks& masks : {Masks{"555", 16, {0x7C00, 0x3E0, 0x1F, 0}, false},
                               {"565", 16, {0xF800, 0x7E0, 0x1F, 0}},
                               {"4444", 16, {0xF00, 0xF0, 0xF, 0xF000}},
                               {"32 bits without masks", 32, {0xFF0000, 0xFF00, 0xFF, 0}, false},
                               {"32 bits, RGBA masks", 32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}},
                               {"32 bits, own masks", 32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}},
                               {"10 bits a channel", 32, {0x3FF00000, 0xFFC00, 0x3FF, 0}},
                               {"565, top down", 16, {0xF800, 0x7E0, 0x1F, 0}, true, true}})
        files.push_back(masked_bmp(masks));
    for (const bool topDown : {false, true}) files.push_back(true_color_bmp(topDown));
    return files;
}

std::vector<OddFile> icon_files() {
    const IconEntry one = palette_entry(1), four = palette_entry(4), eight = palette_entry(8);
    const IconEntry rgb = true_color_entry(20), alpha = alpha_entry(24, false),
                    masked = alpha_entry(20, true);
    const Picture picture = random_picture(48, 48, 6);
    // The largest first, then the deeper of two that are as large.
    return {{"ICO with seven entries",
             icon_file(1, {one, rgb, {png_of(picture), picture}, masked, four, alpha, eight}),
             {picture, alpha.picture, masked.picture, rgb.picture, eight.picture, four.picture, one.picture}},
            {"CUR", icon_file(2, {four, alpha}), {alpha.picture, four.picture}}};
}

}  // namespace pixvane::test

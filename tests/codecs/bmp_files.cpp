// BMP files of every kind, and icons.
// SPDX-License-Identifier: MIT
#include <array>
#include <functional>

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

Bytes bmp_file(const Bytes& headers, const Bytes& pixels) {
    Bytes file = text("BM");
    put32(file, static_cast<std::uint32_t>(14 + headers.size() + pixels.size()));
    put32(file, 0);
    put32(file, static_cast<std::uint32_t>(14 + headers.size()));
    append(file, headers);
    append(file, pixels);
    return file;
}

/// Rows bottom first, each padded to 4 bytes; `put` appends the bits of one pixel, first pixel highest.
Bytes bottom_up(const Picture& picture, std::uint32_t bits, const std::function<std::uint32_t(Pixel)>& value,
                bool topDown = false) {
    Bytes bytes;
    for (std::int32_t i = 0; i < picture.height; ++i) {
        const std::int32_t y = topDown ? i : picture.height - 1 - i;
        Bytes row((static_cast<std::size_t>(picture.width) * bits + 31) / 32 * 4);
        for (std::int32_t x = 0; x < picture.width; ++x) {
            const std::uint32_t v = value(picture.at(x, y));
            const std::size_t bit = static_cast<std::size_t>(x) * bits;
            if (bits >= 8)
                for (std::uint32_t b = 0; b < bits / 8; ++b)
                    row[bit / 8 + b] = static_cast<std::uint8_t>(v >> 8 * b);
            else
                row[bit / 8] = static_cast<std::uint8_t>(row[bit / 8] | v << (8 - bits - bit % 8));
        }
        append(bytes, row);
    }
    return bytes;
}

struct Indexed {
    std::vector<Pixel> palette;
    Picture picture;
    std::vector<std::uint8_t> indices;

    std::uint32_t index_of(Pixel p) const {
        for (std::uint32_t i = 0; i < palette.size(); ++i)
            if (palette[i] == p) return i;
        ADD_FAILURE() << "no such colour";
        return 0;
    }
    Bytes palette_bytes(bool three) const {
        Bytes bytes;
        for (const Pixel p : palette) {
            append(bytes, {static_cast<std::uint8_t>(blue_of(p)), static_cast<std::uint8_t>(green_of(p)),
                           static_cast<std::uint8_t>(red_of(p))});
            if (!three) bytes.push_back(0);
        }
        return bytes;
    }
};

Indexed indexed_picture(std::uint32_t colors) {
    Indexed result;
    TestRandom random(colors);
    for (std::uint32_t i = 0; i < colors; ++i)
        result.palette.push_back(kOpaque | (random.next() & 0xFFFF00) | i);
    result.picture = Picture(kWidth, kHeight);
    for (Pixel& p : result.picture.pixels) {
        const std::uint32_t index = random.below(colors);
        result.indices.push_back(static_cast<std::uint8_t>(index));
        p = result.palette[index];
    }
    return result;
}

OddFile palette_bmp(std::uint32_t bits, bool os2, std::uint32_t used = 0) {
    const Indexed indexed = indexed_picture(used != 0 ? used : 1u << bits);
    Bytes headers;
    if (os2) {
        put32(headers, 12);
        put16(headers, kWidth);
        put16(headers, kHeight);
        put16(headers, 1);
        put16(headers, bits);
    } else {
        headers = info_header({.bits = bits, .colors = used});
    }
    append(headers, indexed.palette_bytes(os2));
    const Bytes pixels = bottom_up(indexed.picture, bits, [&](Pixel p) { return indexed.index_of(p); });
    return {"BMP, " + std::to_string(bits) + " bits" + (os2 ? ", OS/2" : "") +
                (used != 0 ? ", short palette" : ""),
            bmp_file(headers, pixels),
            {indexed.picture}};
}

/// Runs, bytes as they are, a jump over pixels, and ends of rows.
OddFile rle8_bmp() {
    const Indexed colors = indexed_picture(256);
    Picture picture(8, 4, colors.palette[0]);
    const auto set = [&](std::int32_t x, std::int32_t row, std::uint32_t index) {
        picture.view().row(3 - row)[x] = colors.palette[index];
    };
    const Bytes data{5,  9,  3, 8,              // a whole row
                     0,  0,  0, 3, 1, 2, 3, 0,  // three as they are, padded
                     0,  2,  1, 1,              // one right, one up
                     2,  77, 0, 0,              //
                     20, 4,  0, 1};             // a run that leaves the picture
    for (std::int32_t x = 0; x < 8; ++x) set(x, 0, x < 5 ? 9 : 8);
    for (std::int32_t x = 0; x < 3; ++x) set(x, 1, static_cast<std::uint32_t>(x) + 1);
    set(4, 2, 77);
    set(5, 2, 77);
    for (std::int32_t x = 0; x < 8; ++x) set(x, 3, 4);
    Bytes headers = info_header({.width = 8, .height = 4, .bits = 8, .compression = 1});
    append(headers, colors.palette_bytes(false));
    return {"BMP, RLE8", bmp_file(headers, data), {picture}};
}

OddFile rle4_bmp() {
    const Indexed colors = indexed_picture(16);
    Picture picture(6, 2, colors.palette[0]);
    const std::array<std::uint32_t, 12> indices{1, 2, 3, 4, 5, 0, 7, 8, 7, 8, 7, 3};
    for (std::int32_t i = 0; i < 12; ++i)
        picture.view().row(1 - i / 6)[i % 6] = colors.palette[indices[static_cast<std::size_t>(i)]];
    const Bytes data{0, 5, 0x12, 0x34, 0x50, 0, 1, 0, 0, 0, 5, 0x78, 1, 0x30, 0, 1};
    Bytes headers = info_header({.width = 6, .height = 2, .bits = 4, .compression = 2});
    append(headers, colors.palette_bytes(false));
    return {"BMP, RLE4", bmp_file(headers, data), {picture}};
}

struct Masks {
    const char* name;
    std::uint32_t bits;
    std::array<std::uint32_t, 4> masks;
    bool stated = true;  ///< in the file; else its kind says so
    bool topDown = false;
};

std::uint32_t scale_to(std::uint32_t mask, std::uint32_t value) {
    return mask == 0 ? 0 : (value * 255 + mask / 2) / mask;
}

OddFile masked_bmp(const Masks& kind) {
    TestRandom random(kind.bits + kind.masks[0]);
    Picture picture(kWidth, kHeight);
    std::vector<std::uint32_t> values;
    for (Pixel& p : picture.pixels) {
        const std::uint32_t value = random.next() & (kind.bits == 16 ? 0xFFFFu : 0xFFFFFFFFu);
        values.push_back(value);
        std::array<std::uint32_t, 4> channels{};
        for (std::size_t c = 0; c < 4; ++c) {
            const std::uint32_t mask = kind.masks[c];
            if (mask == 0) continue;
            const int shift = __builtin_ctz(mask);
            channels[c] = scale_to(mask >> shift, (value & mask) >> shift);
        }
        p = make_pixel(kind.masks[3] == 0 ? 255 : channels[3], channels[0], channels[1], channels[2]);
    }
    const bool alpha = kind.masks[3] != 0;
    Bytes headers = info_header({.height = kind.topDown ? -kHeight : kHeight,
                                 .bits = kind.bits,
                                 .compression = kind.stated ? 3u : 0u,
                                 .size = kind.stated && alpha ? 108u : 40u});
    if (kind.stated)
        for (std::size_t c = 0; c < (alpha ? 4u : 3u); ++c) put32(headers, kind.masks[c]);
    if (kind.stated && alpha) headers.resize(108);
    Bytes pixels;
    for (std::int32_t i = 0; i < kHeight; ++i) {
        const std::int32_t y = kind.topDown ? i : kHeight - 1 - i;
        for (std::int32_t x = 0; x < kWidth; ++x) {
            const std::uint32_t value = values[static_cast<std::size_t>(y * kWidth + x)];
            kind.bits == 16 ? put16(pixels, value) : put32(pixels, value);
        }
        if (kind.bits == 16) put16(pixels, 0);  // 13 pixels of 2 bytes are padded
    }
    return {std::string("BMP, ") + kind.name, bmp_file(headers, pixels), {picture}};
}

OddFile true_color_bmp(bool topDown) {
    const Picture picture = random_opaque_picture(kWidth, kHeight, 3);
    const Bytes headers = info_header({.height = topDown ? -kHeight : kHeight});
    return {topDown ? "BMP, 24 bits, top down" : "BMP, 24 bits",
            bmp_file(headers, bottom_up(
                                  picture, 24, [](Pixel p) { return p; }, topDown)),
            {picture}};
}

/// An entry of an icon: a bitmap whose height counts the mask too.
Bytes icon_entry(std::uint32_t bits, const Picture& picture, const Bytes& palette, const Bytes& pixels,
                 const std::function<bool(std::int32_t, std::int32_t)>& hidden) {
    Bytes entry = info_header({.width = picture.width, .height = picture.height * 2, .bits = bits});
    append(entry, palette);
    append(entry, pixels);
    Picture mask(picture.width, picture.height);
    for (std::int32_t y = 0; y < mask.height; ++y)
        for (std::int32_t x = 0; x < mask.width; ++x) mask.view().row(y)[x] = hidden(x, y) ? 1 : 0;
    append(entry, bottom_up(mask, 1, [](Pixel p) { return p; }));
    return entry;
}

Bytes icon_file(std::uint32_t kind, const std::vector<std::pair<Bytes, std::int32_t>>& entries) {
    Bytes file;
    put16(file, 0);
    put16(file, kind);
    put16(file, static_cast<std::uint32_t>(entries.size()));
    std::size_t offset = 6 + 16 * entries.size();
    for (const auto& [entry, side] : entries) {
        file.push_back(static_cast<std::uint8_t>(side));
        file.push_back(static_cast<std::uint8_t>(side));
        // Colours, planes and depth, which are often wrong; hot spots in cursors.
        put16(file, 0);
        put32(file, 0x00030005);
        put32(file, static_cast<std::uint32_t>(entry.size()));
        put32(file, static_cast<std::uint32_t>(offset));
        offset += entry.size();
    }
    for (const auto& [entry, side] : entries) append(file, entry);
    return file;
}

bool on_diagonal(std::int32_t x, std::int32_t y) { return (x + y) % 3 == 0; }

Picture hide_diagonal(Picture picture) {
    for (std::int32_t y = 0; y < picture.height; ++y)
        for (std::int32_t x = 0; x < picture.width; ++x)
            if (on_diagonal(x, y)) picture.view().row(y)[x] = 0;
    return picture;
}

struct IconEntry {
    Bytes bytes;
    Picture picture;
};

IconEntry palette_entry(std::uint32_t bits) {
    Indexed indexed = indexed_picture(1u << bits);
    const Bytes pixels = bottom_up(indexed.picture, bits, [&](Pixel p) { return indexed.index_of(p); });
    return {icon_entry(bits, indexed.picture, indexed.palette_bytes(false), pixels, on_diagonal),
            hide_diagonal(indexed.picture)};
}

IconEntry true_color_entry(std::int32_t side) {
    const Picture picture = random_opaque_picture(side, side, 8);
    return {icon_entry(24, picture, {}, bottom_up(picture, 24, [](Pixel p) { return p; }), on_diagonal),
            hide_diagonal(picture)};
}

/// 32 bits: with alpha, the mask means nothing; without any, it is all there is.
IconEntry alpha_entry(std::int32_t side, bool empty) {
    const Picture stored = random_picture(side, side, 4);
    const Bytes pixels = bottom_up(stored, 32, [&](Pixel p) { return empty ? p & 0xFFFFFF : p; });
    Picture expected = stored;
    if (empty) {
        for (Pixel& p : expected.pixels) p |= kOpaque;
        expected = hide_diagonal(expected);
    }
    return {icon_entry(32, stored, {}, pixels, on_diagonal), expected};
}

}  // namespace

std::vector<OddFile> bmp_files() {
    std::vector<OddFile> files;
    for (const std::uint32_t bits : {1u, 4u, 8u}) {
        files.push_back(palette_bmp(bits, false));
        files.push_back(palette_bmp(bits, true));
    }
    files.push_back(palette_bmp(8, false, 20));
    files.push_back(rle8_bmp());
    files.push_back(rle4_bmp());
    files.push_back(masked_bmp({"555", 16, {0x7C00, 0x3E0, 0x1F, 0}, false}));
    files.push_back(masked_bmp({"565", 16, {0xF800, 0x7E0, 0x1F, 0}}));
    files.push_back(masked_bmp({"4444", 16, {0xF00, 0xF0, 0xF, 0xF000}}));
    files.push_back(masked_bmp({"32 bits without masks", 32, {0xFF0000, 0xFF00, 0xFF, 0}, false}));
    files.push_back(masked_bmp({"32 bits, RGBA masks", 32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}}));
    files.push_back(masked_bmp({"32 bits, own masks", 32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}}));
    files.push_back(masked_bmp({"10 bits a channel", 32, {0x3FF00000, 0xFFC00, 0x3FF, 0}}));
    files.push_back(masked_bmp({"565, top down", 16, {0xF800, 0x7E0, 0x1F, 0}, true, true}));
    files.push_back(true_color_bmp(false));
    files.push_back(true_color_bmp(true));
    return files;
}

std::vector<OddFile> icon_files() {
    const IconEntry one = palette_entry(1);
    const IconEntry four = palette_entry(4);
    const IconEntry eight = palette_entry(8);
    const IconEntry rgb = true_color_entry(20);
    const IconEntry alpha = alpha_entry(24, false);
    const IconEntry masked = alpha_entry(20, true);
    const Picture picture = random_picture(48, 48, 6);
    // The largest first, then the deeper of two that are as large.
    OddFile icon{
        "ICO with seven entries",
        icon_file(1, {{one.bytes, 13},
                      {rgb.bytes, 20},
                      {png_of(picture), 0},
                      {masked.bytes, 20},
                      {four.bytes, 13},
                      {alpha.bytes, 24},
                      {eight.bytes, 13}}),
        {picture, alpha.picture, masked.picture, rgb.picture, eight.picture, four.picture, one.picture}};
    OddFile cursor{"CUR", icon_file(2, {{four.bytes, 13}, {alpha.bytes, 24}}), {alpha.picture, four.picture}};
    return {icon, cursor};
}

}  // namespace pixvane::test

// PNG files of every kind.
// SPDX-License-Identifier: MIT
#include <png.h>

#include <array>
#include <functional>

#include "codecs/odd_files.h"

namespace pixvane::test {
namespace {

struct LibpngKind {
    int bitDepth;
    int color;
    bool interlaced = false;
    std::vector<png_color> palette{};
    Bytes paletteAlpha{};
    png_color_16* transparent = nullptr;
    int firstFilter = -1;  ///< where each row has its own, one after the other; else libpng chooses
};

/// `rows` as libpng wants them for the kind; 16-bit samples with the high byte first.
Bytes write_with_libpng(std::int32_t width, std::int32_t height, const LibpngKind& kind, Bytes rows) {
    Bytes file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &file,
        [](png_structp p, png_bytep bytes, size_t size) {
            auto* out = static_cast<Bytes*>(png_get_io_ptr(p));
            out->insert(out->end(), bytes, bytes + size);
        },
        [](png_structp) {});
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), kind.bitDepth,
                 kind.color, kind.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!kind.palette.empty())
        png_set_PLTE(png, info, kind.palette.data(), static_cast<int>(kind.palette.size()));
    if (!kind.paletteAlpha.empty())
        png_set_tRNS(png, info, kind.paletteAlpha.data(), static_cast<int>(kind.paletteAlpha.size()),
                     nullptr);
    if (kind.transparent != nullptr) png_set_tRNS(png, info, nullptr, 0, kind.transparent);
    // Small chunks of data, as many writers make them.
    png_set_compression_buffer_size(png, 500);
    png_write_info(png, info);
    const std::size_t stride = rows.size() / static_cast<std::size_t>(height);
    for (int pass = png_set_interlace_handling(png); pass > 0; --pass)
        for (int y = 0; y < height; ++y) {
            if (kind.firstFilter >= 0) {
                const int filter = PNG_FILTER_NONE << (kind.firstFilter + y) % 5;
                // The row above is only kept from the start if the first filter may want it.
                const int first = y == 0 && filter < PNG_FILTER_UP ? filter | PNG_FILTER_UP : filter;
                png_set_filter(png, PNG_FILTER_TYPE_BASE, first);
            }
            png_write_row(png, rows.data() + static_cast<std::size_t>(y) * stride);
        }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

std::uint32_t to_byte(std::uint32_t wide) { return (wide * 255 + 32767) / 65535; }

OddFile all_filters(int color, int firstFilter) {
    const std::string order = color == 0 ? "G" : color == 2 ? "RGB" : color == 4 ? "GA" : "RGBA";
    Picture picture = random_picture(61, 47, static_cast<std::uint64_t>(31 + color));
    if (order.size() < 3) picture = grey_of(picture);
    if (order.size() % 2 != 0)
        for (Pixel& p : picture.pixels) p |= kOpaque;
    const LibpngKind kind{8, color, false, {}, {}, nullptr, firstFilter};
    return {"PNG with all filters, colour type " + std::to_string(color) + ", from filter " +
                std::to_string(firstFilter),
            write_with_libpng(61, 47, kind, channels(picture.pixels, order)),
            {picture}};
}

OddFile wide_samples(bool alpha, bool interlaced) {
    TestRandom random(77);
    Picture picture(33, 21);
    Bytes rows;
    for (Pixel& p : picture.pixels) {
        std::array<std::uint32_t, 4> samples;
        for (std::uint32_t& sample : samples) sample = random.below(65536);
        for (std::size_t i = 0; i < (alpha ? 4u : 3u); ++i) {
            rows.push_back(static_cast<std::uint8_t>(samples[i] >> 8));
            rows.push_back(static_cast<std::uint8_t>(samples[i]));
        }
        p = make_pixel(alpha ? to_byte(samples[3]) : 255, to_byte(samples[0]), to_byte(samples[1]),
                       to_byte(samples[2]));
    }
    const LibpngKind kind{16, alpha ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, interlaced};
    return {std::string("PNG, 16 bits") + (alpha ? ", alpha" : "") + (interlaced ? ", interlaced" : ""),
            write_with_libpng(33, 21, kind, rows),
            {picture}};
}

OddFile palette_png(int bitDepth, bool transparent, bool interlaced) {
    Indexed indexed(37, 19, 1u << bitDepth);
    LibpngKind kind{bitDepth, PNG_COLOR_TYPE_PALETTE, interlaced};
    for (std::size_t i = 0; i < indexed.palette.size(); ++i) {
        Pixel& p = indexed.palette[i];
        kind.palette.push_back({static_cast<png_byte>(red_of(p)), static_cast<png_byte>(green_of(p)),
                                static_cast<png_byte>(blue_of(p))});
        if (!transparent || i >= indexed.palette.size() / 2) continue;
        p = (p & 0xFFFFFF) | static_cast<Pixel>(i * 37 % 256) << 24;
        kind.paletteAlpha.push_back(static_cast<std::uint8_t>(alpha_of(p)));
    }
    return {"PNG, palette, " + std::to_string(bitDepth) + " bits" + (transparent ? ", tRNS" : "") +
                (interlaced ? ", interlaced" : ""),
            write_with_libpng(37, 19, kind,
                              packed_rows(indexed.indices, static_cast<std::uint32_t>(bitDepth), 1)),
            {indexed.picture()}};
}

OddFile transparent_color_png() {
    Picture picture = random_opaque_picture(23, 17, 9);
    png_color_16 key{0, 12, 34, 56, 0};
    for (std::size_t i = 0; i < picture.pixels.size(); i += 5)
        picture.pixels[i] = make_pixel(255, 12, 34, 56);
    const Bytes rows = channels(picture.pixels, "RGB");
    for (std::size_t i = 0; i < picture.pixels.size(); i += 5) picture.pixels[i] &= 0xFFFFFF;
    return {"PNG, one colour transparent",
            write_with_libpng(23, 17, {8, PNG_COLOR_TYPE_RGB, false, {}, {}, &key}, rows),
            {picture}};
}

OddFile interlaced_rgba_png() {
    const Picture picture = random_picture(29, 31, 12);
    return {"PNG, RGBA, interlaced",
            write_with_libpng(29, 31, {8, PNG_COLOR_TYPE_RGBA, true}, channels(picture.pixels, "RGBA")),
            {picture}};
}

}  // namespace

Bytes png_of(const Picture& picture) {
    return write_with_libpng(picture.width, picture.height,
                             {8, PNG_COLOR_TYPE_RGBA, false, {}, {}, nullptr, 1},
                             channels(picture.pixels, "RGBA"));
}

std::vector<OddFile> png_files() {
    std::vector<OddFile> files;
    for (const int color : {0, 2, 4, 6})
        for (int first = 0; first < 5; ++first) files.push_back(all_filters(color, first));
    for (const bool alpha : {false, true})
        for (const bool interlaced : {false, true}) files.push_back(wide_samples(alpha, interlaced));
    for (const int bits : {1, 2, 4, 8})
        for (const bool transparent : {false, true})
            files.push_back(palette_png(bits, transparent, bits == (transparent ? 2 : 4)));
    files.push_back(transparent_color_png());
    files.push_back(interlaced_rgba_png());
    return files;
}

}  // namespace pixvane::test

// TIFF files of every kind.
// SPDX-License-Identifier: MIT
#include <tiffio.h>

#include <algorithm>
#include <array>
#include <functional>

#include "codecs/odd_files.h"
#include "codecs/temporary_folder.h"

namespace pixvane::test {
namespace {

constexpr std::int32_t kWidth = 45;
constexpr std::int32_t kHeight = 37;

struct Page {
    std::vector<std::uint16_t> tags;  ///< bits, samples, photometric, planar configuration, compression
    std::function<void(TIFF*)> change = [](TIFF*) {};
    std::uint32_t tile = 0;
    std::uint32_t rowsPerStrip = 10;
    /// The bytes of a row of one plane, of `count` pixels from x on.
    std::function<Bytes(std::int32_t x, std::int32_t y, std::int32_t count, std::uint16_t plane)> row;
};

void write_page(TIFF* tiff, const Page& page) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, page.tags[0]);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, page.tags[1]);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, page.tags[2]);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, page.tags[3]);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, page.tags[4]);
    page.change(tiff);
    const std::uint16_t planes = page.tags[3] == PLANARCONFIG_SEPARATE ? page.tags[1] : std::uint16_t{1};
    if (page.tile == 0) {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, page.rowsPerStrip);
        for (std::uint16_t plane = 0; plane < planes; ++plane)
            for (std::int32_t y = 0; y < kHeight; ++y)
                TIFFWriteScanline(tiff, page.row(0, y, kWidth, plane).data(), static_cast<std::uint32_t>(y),
                                  plane);
    } else {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, page.tile);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, page.tile);
        const auto side = static_cast<std::int32_t>(page.tile);
        for (std::uint16_t plane = 0; plane < planes; ++plane)
            for (std::int32_t top = 0; top < kHeight; top += side)
                for (std::int32_t left = 0; left < kWidth; left += side) {
                    Bytes tile;
                    for (std::int32_t y = top; y < top + side; ++y)
                        append(tile, page.row(left, y, side, plane));
                    TIFFWriteTile(tiff, tile.data(), static_cast<std::uint32_t>(left),
                                  static_cast<std::uint32_t>(top), 0, plane);
                }
    }
    TIFFWriteDirectory(tiff);
}

Bytes tiff_file(const std::vector<Page>& pages, const char* mode = "w") {
    const TemporaryFolder folder;
    TIFF* tiff = TIFFOpen((folder / "file.tif").c_str(), mode);
    for (const Page& page : pages) write_page(tiff, page);
    TIFFClose(tiff);
    return content_of(folder / "file.tif");
}

/// A page of the channels in this order, of 8 or 16 bits: one after the other, or in planes.
Page page_of(const Picture& picture, std::vector<std::uint16_t> tags, const std::string& order) {
    Page page;
    page.tags = std::move(tags);
    page.row = [picture, order, bits = page.tags[0], planes = page.tags[3] == PLANARCONFIG_SEPARATE](
                   std::int32_t x, std::int32_t y, std::int32_t count, std::uint16_t plane) {
        std::vector<Pixel> pixels(static_cast<std::size_t>(count));  // zeros outside of the picture
        for (std::int32_t i = 0; i < count; ++i)
            if (x + i < picture.width && y < picture.height)
                pixels[static_cast<std::size_t>(i)] = picture.at(x + i, y);
        const Bytes samples = channels(pixels, planes ? order.substr(plane, 1) : order);
        if (bits == 8) return samples;
        // Sixteen bits that round to these eight, off from their exact multiples.
        Bytes wide;
        for (const std::uint8_t sample : samples) put16(wide, std::min(65535u, sample * 257u + 100u));
        return wide;
    };
    return page;
}

void set_alpha(TIFF* tiff, std::uint16_t kind) { TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind); }

constexpr std::uint16_t kRgb = PHOTOMETRIC_RGB;
constexpr std::uint16_t kGrey = PHOTOMETRIC_MINISBLACK;
constexpr std::uint16_t kContig = PLANARCONFIG_CONTIG;
constexpr std::uint16_t kPlanes = PLANARCONFIG_SEPARATE;

std::vector<OddFile> straight_alpha_files() {
    const Picture picture = random_picture(kWidth, kHeight, 21);
    const auto alpha = [](TIFF* tiff) { set_alpha(tiff, EXTRASAMPLE_UNASSALPHA); };
    std::vector<OddFile> files;
    for (const std::uint16_t planar : {kContig, kPlanes})
        for (const std::uint32_t tile : {0u, 16u}) {
            Page page = page_of(picture, {8, 4, kRgb, planar, COMPRESSION_LZW}, "RGBA");
            page.change = [=](TIFF* tiff) {
                alpha(tiff);
                TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
            };
            page.tile = tile;
            files.push_back({std::string("TIFF, RGBA") + (planar == kPlanes ? ", planes" : "") +
                                 (tile != 0 ? ", tiles" : ""),
                             tiff_file({page}, tile != 0 ? "wb" : "w8"),
                             {picture}});
        }
    const Picture grey = grey_of(picture);
    Page page = page_of(grey, {8, 2, kGrey, kContig, COMPRESSION_PACKBITS}, "GA");
    page.change = alpha;
    files.push_back({"TIFF, grey and alpha", tiff_file({page}), {grey}});
    return files;
}

OddFile associated_alpha_file() {
    Picture picture = random_picture(kWidth, kHeight, 22);
    Picture stored = picture;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        const std::uint32_t a = alpha_of(picture.pixels[i]);
        Pixel multiplied = a << 24, back = a << 24;
        for (const int shift : {0, 8, 16}) {
            const std::uint32_t product = ((picture.pixels[i] >> shift & 0xFF) * a + 127) / 255;
            multiplied |= product << shift;
            back |= (a == 0 ? 0 : std::min(255u, (product * 255 + a / 2) / a)) << shift;
        }
        stored.pixels[i] = multiplied;
        picture.pixels[i] = back;
    }
    Page page = page_of(stored, {8, 4, kRgb, kContig, COMPRESSION_ADOBE_DEFLATE}, "RGBA");
    page.change = [](TIFF* tiff) { set_alpha(tiff, EXTRASAMPLE_ASSOCALPHA); };
    return {"TIFF, associated alpha", tiff_file({page}), {picture}};
}

OddFile wide_file(bool alpha, const char* mode) {
    const Picture picture =
        alpha ? random_picture(kWidth, kHeight, 23) : random_opaque_picture(kWidth, kHeight, 23);
    const std::uint16_t samples = alpha ? 4 : 3;
    Page page = page_of(picture, {16, samples, kRgb, kContig, COMPRESSION_NONE}, alpha ? "RGBA" : "RGB");
    if (alpha) page.change = [](TIFF* tiff) { set_alpha(tiff, EXTRASAMPLE_UNASSALPHA); };
    return {std::string("TIFF, 16 bits") + (alpha ? ", alpha" : "") + ", written " + mode,
            tiff_file({page}, mode),
            {picture}};
}

OddFile palette_file() {
    const Indexed indexed(kWidth, kHeight, 256);
    std::array<std::array<std::uint16_t, 256>, 3> map{};
    for (std::size_t i = 0; i < 256; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            map[c][i] = static_cast<std::uint16_t>((indexed.palette[i] >> (16 - 8 * c) & 0xFF) * 257);
    Page page = page_of(indexed.indices, {8, 1, PHOTOMETRIC_PALETTE, kContig, COMPRESSION_LZW}, "B");
    page.change = [&](TIFF* tiff) {
        TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0].data(), map[1].data(), map[2].data());
    };
    return {"TIFF, palette", tiff_file({page}), {indexed.picture()}};
}

OddFile fax_file() {
    Picture ink(kWidth, kHeight), picture(kWidth, kHeight);
    for (std::size_t i = 0; i < ink.pixels.size(); ++i) {
        ink.pixels[i] = i / 3 % 5 < 2 ? 1 : 0;
        picture.pixels[i] = ink.pixels[i] != 0 ? 0xFF000000u : 0xFFFFFFFFu;
    }
    Page page;
    page.tags = {1, 1, PHOTOMETRIC_MINISWHITE, kContig, COMPRESSION_CCITTFAX4};
    page.row = [&](std::int32_t, std::int32_t y, std::int32_t, std::uint16_t) {
        return packed_rows(Picture(std::as_const(ink).view().rows(y, y + 1)), 1, 1);
    };
    return {"TIFF, fax", tiff_file({page}), {picture}};
}

std::vector<OddFile> libtiff_only_files() {
    const Picture picture = smooth_picture(kWidth, kHeight);
    Page jpeg = page_of(picture, {8, 3, PHOTOMETRIC_YCBCR, kContig, COMPRESSION_JPEG}, "RGB");
    jpeg.change = [](TIFF* tiff) {
        TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        TIFFSetField(tiff, TIFFTAG_JPEGQUALITY, 98);
    };
    jpeg.rowsPerStrip = 16;
    Picture inks = picture;
    for (Pixel& p : inks.pixels) p = ~p;
    const Page separated = page_of(inks, {8, 4, PHOTOMETRIC_SEPARATED, kContig, COMPRESSION_LZW}, "RGB0");
    return {{"TIFF, JPEG inside", tiff_file({jpeg}), {picture}, 6},
            {"TIFF, CMYK", tiff_file({separated}), {picture}, 1}};
}

OddFile many_pages_file() {
    const Picture grey = grey_of(random_opaque_picture(kWidth, kHeight, 25));
    const Picture second = random_opaque_picture(kWidth, kHeight, 26);
    const Picture third = random_opaque_picture(kWidth, kHeight, 27);
    Picture inverse = grey;
    for (Pixel& p : inverse.pixels) p = ~p;
    // A sample that is no alpha follows the three colours.
    Page extra = page_of(third, {8, 4, kRgb, kContig, COMPRESSION_LZW}, "RGB7");
    extra.change = [](TIFF* tiff) { set_alpha(tiff, EXTRASAMPLE_UNSPECIFIED); };
    return {"TIFF with three pages",
            tiff_file({page_of(inverse, {8, 1, PHOTOMETRIC_MINISWHITE, kContig, COMPRESSION_NONE}, "G"),
                       page_of(second, {8, 3, kRgb, kContig, COMPRESSION_NONE}, "RGB"), extra}),
            {grey, second, third}};
}

}  // namespace

std::vector<OddFile> tiff_files() {
    std::vector<OddFile> files = straight_alpha_files();
    for (OddFile& file : libtiff_only_files()) files.push_back(std::move(file));
    for (OddFile& file :
         std::vector<OddFile>{associated_alpha_file(), wide_file(false, "w"), wide_file(true, "wb"),
                              palette_file(), fax_file(), many_pages_file()})
        files.push_back(std::move(file));
    return files;
}

}  // namespace pixvane::test

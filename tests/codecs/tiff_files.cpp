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

/// The channels of a pixel of the picture, zeros outside of it.
Pixel pixel_or_none(const Picture& picture, std::int32_t x, std::int32_t y) {
    return x < picture.width && y < picture.height ? picture.at(x, y) : 0;
}

using ToBytes = std::function<Bytes(Pixel)>;

/// A page that holds the bytes of each pixel, one after the other or in planes of `sampleBytes`.
Page page_of(const Picture& picture, std::vector<std::uint16_t> tags, const ToBytes& bytes) {
    const std::size_t sampleBytes = tags[0] / 8u;
    const bool planes = tags[3] == PLANARCONFIG_SEPARATE;
    Page page;
    page.tags = std::move(tags);
    page.row = [=](std::int32_t x, std::int32_t y, std::int32_t count, std::uint16_t plane) {
        Bytes row;
        for (std::int32_t i = 0; i < count; ++i) {
            const Bytes all = bytes(pixel_or_none(picture, x + i, y));
            const auto first = all.begin() + (planes ? static_cast<std::ptrdiff_t>(plane * sampleBytes) : 0);
            row.insert(row.end(), first,
                       planes ? first + static_cast<std::ptrdiff_t>(sampleBytes) : all.end());
        }
        return row;
    };
    return page;
}

Bytes rgb(Pixel p) {
    return {static_cast<std::uint8_t>(red_of(p)), static_cast<std::uint8_t>(green_of(p)),
            static_cast<std::uint8_t>(blue_of(p))};
}
Bytes rgba(Pixel p) {
    Bytes bytes = rgb(p);
    bytes.push_back(static_cast<std::uint8_t>(alpha_of(p)));
    return bytes;
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
            Page page = page_of(picture, {8, 4, kRgb, planar, COMPRESSION_LZW}, rgba);
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
    Picture grey = picture;
    for (Pixel& p : grey.pixels) p = (p & kOpaque) | green_of(p) * 0x010101;
    Page page = page_of(grey, {8, 2, kGrey, kContig, COMPRESSION_PACKBITS}, [](Pixel p) {
        return Bytes{static_cast<std::uint8_t>(green_of(p)), static_cast<std::uint8_t>(alpha_of(p))};
    });
    page.change = alpha;
    files.push_back({"TIFF, grey and alpha", tiff_file({page}), {grey}});
    return files;
}

OddFile associated_alpha_file() {
    Picture picture = random_picture(kWidth, kHeight, 22);
    Picture stored = picture;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        const std::uint32_t a = alpha_of(picture.pixels[i]);
        std::array<std::uint32_t, 3> back{};
        std::array<std::uint32_t, 3> multiplied{};
        const std::array<std::uint32_t, 3> channels{red_of(picture.pixels[i]), green_of(picture.pixels[i]),
                                                    blue_of(picture.pixels[i])};
        for (std::size_t c = 0; c < 3; ++c) {
            multiplied[c] = (channels[c] * a + 127) / 255;
            back[c] = a == 0 ? 0 : std::min(255u, (multiplied[c] * 255 + a / 2) / a);
        }
        stored.pixels[i] = make_pixel(a, multiplied[0], multiplied[1], multiplied[2]);
        picture.pixels[i] = make_pixel(a, back[0], back[1], back[2]);
    }
    Page page = page_of(stored, {8, 4, kRgb, kContig, COMPRESSION_ADOBE_DEFLATE}, rgba);
    page.change = [](TIFF* tiff) { set_alpha(tiff, EXTRASAMPLE_ASSOCALPHA); };
    return {"TIFF, associated alpha", tiff_file({page}), {picture}};
}

OddFile wide_file(bool alpha, const char* mode) {
    Picture picture = random_picture(kWidth, kHeight, 23);
    if (!alpha)
        for (Pixel& p : picture.pixels) p |= kOpaque;
    // Sixteen bits that round to the eight of the picture, off from its exact multiples.
    const ToBytes wide = [=](Pixel p) {
        Bytes bytes;
        Bytes narrow = alpha ? rgba(p) : rgb(p);
        for (const std::uint8_t value : narrow) {
            const std::uint32_t sample = std::min(65535u, value * 257u + 100u);
            bytes.push_back(static_cast<std::uint8_t>(sample));
            bytes.push_back(static_cast<std::uint8_t>(sample >> 8));
        }
        return bytes;
    };
    Page page = page_of(
        picture, {16, static_cast<std::uint16_t>(alpha ? 4 : 3), kRgb, kContig, COMPRESSION_NONE}, wide);
    if (alpha) page.change = [](TIFF* tiff) { set_alpha(tiff, EXTRASAMPLE_UNASSALPHA); };
    return {std::string("TIFF, 16 bits") + (alpha ? ", alpha" : "") + ", written " + mode,
            tiff_file({page}, mode),
            {picture}};
}

OddFile palette_file() {
    std::array<std::array<std::uint16_t, 256>, 3> map{};
    TestRandom random(24);
    Picture picture(kWidth, kHeight);
    for (auto& channel : map)
        for (std::uint16_t& value : channel) value = static_cast<std::uint16_t>(random.below(256) * 257);
    const auto color = [&](std::size_t i) {
        return make_pixel(255, map[0][i] >> 8, map[1][i] >> 8, map[2][i] >> 8);
    };
    Picture indices(kWidth, kHeight);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        indices.pixels[i] = random.below(256);
        picture.pixels[i] = color(indices.pixels[i]);
    }
    Page page = page_of(indices, {8, 1, PHOTOMETRIC_PALETTE, kContig, COMPRESSION_LZW},
                        [](Pixel p) { return Bytes{static_cast<std::uint8_t>(p)}; });
    page.change = [&](TIFF* tiff) {
        TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0].data(), map[1].data(), map[2].data());
    };
    return {"TIFF, palette", tiff_file({page}), {picture}};
}

OddFile fax_file() {
    Picture picture(kWidth, kHeight);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        picture.pixels[i] = i / 3 % 5 < 2 ? 0xFF000000u : 0xFFFFFFFFu;
    Page page;
    page.tags = {1, 1, PHOTOMETRIC_MINISWHITE, kContig, COMPRESSION_CCITTFAX4};
    page.row = [&](std::int32_t, std::int32_t y, std::int32_t, std::uint16_t) {
        Bytes row((kWidth + 7) / 8);
        for (std::int32_t x = 0; x < kWidth; ++x)
            if (picture.at(x, y) == 0xFF000000u)
                row[static_cast<std::size_t>(x / 8)] =
                    static_cast<std::uint8_t>(row[static_cast<std::size_t>(x / 8)] | 0x80 >> x % 8);
        return row;
    };
    return {"TIFF, fax", tiff_file({page}), {picture}};
}

std::vector<OddFile> libtiff_only_files() {
    const Picture picture = smooth_picture(kWidth, kHeight);
    Page jpeg = page_of(picture, {8, 3, PHOTOMETRIC_YCBCR, kContig, COMPRESSION_JPEG}, rgb);
    jpeg.change = [](TIFF* tiff) {
        TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        TIFFSetField(tiff, TIFFTAG_JPEGQUALITY, 98);
    };
    jpeg.rowsPerStrip = 16;
    Page inks = page_of(picture, {8, 4, PHOTOMETRIC_SEPARATED, kContig, COMPRESSION_LZW}, [](Pixel p) {
        Bytes bytes = rgb(~p);
        bytes.push_back(0);
        return bytes;
    });
    return {{"TIFF, JPEG inside", tiff_file({jpeg}), {picture}, 6},
            {"TIFF, CMYK", tiff_file({inks}), {picture}, 1}};
}

OddFile many_pages_file() {
    Picture white = random_opaque_picture(kWidth, kHeight, 25);
    for (Pixel& p : white.pixels) p = kOpaque | green_of(p) * 0x010101;
    const Picture second = random_opaque_picture(kWidth, kHeight, 26);
    const Picture third = random_opaque_picture(kWidth, kHeight, 27);
    const auto inverse = [](Pixel p) { return Bytes{static_cast<std::uint8_t>(~green_of(p))}; };
    // A sample that is no alpha follows the three colours.
    const Page extra = page_of(third, {8, 4, kRgb, kContig, COMPRESSION_LZW}, [](Pixel p) {
        Bytes bytes = rgb(p);
        bytes.push_back(7);
        return bytes;
    });
    Page plain = extra;
    plain.change = [](TIFF* tiff) { set_alpha(tiff, EXTRASAMPLE_UNSPECIFIED); };
    return {"TIFF with three pages",
            tiff_file({page_of(white, {8, 1, PHOTOMETRIC_MINISWHITE, kContig, COMPRESSION_NONE}, inverse),
                       page_of(second, {8, 3, kRgb, kContig, COMPRESSION_NONE}, rgb), plain}),
            {white, second, third}};
}

}  // namespace

std::vector<OddFile> tiff_files() {
    std::vector<OddFile> files = straight_alpha_files();
    for (OddFile& file : libtiff_only_files()) files.push_back(std::move(file));
    files.push_back(associated_alpha_file());
    files.push_back(wide_file(false, "w"));
    files.push_back(wide_file(true, "wb"));
    files.push_back(palette_file());
    files.push_back(fax_file());
    files.push_back(many_pages_file());
    return files;
}

}  // namespace pixvane::test

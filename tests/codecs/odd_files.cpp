// What the makers of files share, and all files together.
// SPDX-License-Identifier: MIT
#include "codecs/odd_files.h"

namespace pixvane::test {

Picture smooth_picture(std::int32_t width, std::int32_t height) {
    return picture_of(width, height, [=](std::int32_t x, std::int32_t y) {
        return make_pixel(255, static_cast<std::uint32_t>(40 + 160 * x / width),
                          static_cast<std::uint32_t>(60 + 120 * y / height),
                          static_cast<std::uint32_t>(200 - 100 * (x + y) / (width + height)));
    });
}

Picture grey_of(Picture picture) {
    for (Pixel& p : picture.pixels) p = (p & kOpaque) | green_of(p) * 0x010101;
    return picture;
}

Indexed::Indexed(std::int32_t width, std::int32_t height, std::uint32_t colors) : indices(width, height) {
    TestRandom random(colors);
    for (std::uint32_t i = 0; i < colors; ++i) palette.push_back(kOpaque | (random.next() & 0xFFFF00) | i);
    for (Pixel& index : indices.pixels) index = random.below(colors);
}

Picture Indexed::picture() const {
    Picture picture = indices;
    for (Pixel& p : picture.pixels) p = palette[p];
    return picture;
}

Bytes channels(const std::vector<Pixel>& pixels, const std::string& order) {
    Bytes bytes;
    for (const Pixel p : pixels)
        for (const char name : order)
            bytes.push_back(static_cast<std::uint8_t>(name == 'R'   ? red_of(p)
                                                      : name == 'G' ? green_of(p)
                                                      : name == 'B' ? blue_of(p)
                                                      : name == 'A'
                                                          ? alpha_of(p)
                                                          : static_cast<std::uint32_t>(name - '0')));
    return bytes;
}

Bytes packed_rows(const Picture& values, std::uint32_t bits, std::size_t unit) {
    const std::size_t stride =
        (static_cast<std::size_t>(values.width) * bits + 8 * unit - 1) / (8 * unit) * unit;
    Bytes rows(stride * static_cast<std::size_t>(values.height));
    for (const PixelPoint at : places(values.width, values.height)) {
        std::uint8_t* row = &rows[static_cast<std::size_t>(at.y) * stride];
        const std::size_t bit = static_cast<std::size_t>(at.x) * bits;
        const Pixel value = values.at(at.x, at.y);
        if (bits < 8)
            row[bit / 8] = static_cast<std::uint8_t>(row[bit / 8] | value << (8 - bits - bit % 8));
        else
            for (std::uint32_t byte = 0; byte < bits / 8; ++byte)
                row[bit / 8 + byte] = static_cast<std::uint8_t>(value >> 8 * byte);
    }
    return rows;
}

std::vector<OddFile> all_odd_files() {
    std::vector<OddFile> all;
    for (const auto& make :
         {bmp_files, gif_files, icon_files, jpeg_files, png_files, tiff_files, webp_files, other_files})
        for (OddFile& file : make()) all.push_back(std::move(file));
    return all;
}

}  // namespace pixvane::test

// Files of every kind that the codecs read, made here, with the pictures that must come out.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/pictures.h"

namespace pixvane::test {

using Bytes = std::vector<std::uint8_t>;

struct OddFile {
    std::string name;
    Bytes bytes;
    std::vector<Picture> frames;  ///< in the order of the file's frames
    int tolerance = 0;            ///< by which a channel may be off, for kinds that lose something
};

std::vector<OddFile> bmp_files();
std::vector<OddFile> gif_files();
std::vector<OddFile> icon_files();
std::vector<OddFile> jpeg_files();
std::vector<OddFile> png_files();
std::vector<OddFile> tiff_files();
std::vector<OddFile> webp_files();
/// Formats that gdk-pixbuf decodes.
std::vector<OddFile> other_files();
std::vector<OddFile> all_odd_files();

/// Smooth colours that lossy formats keep, opaque.
Picture smooth_picture(std::int32_t width, std::int32_t height);
/// The picture with the green of each pixel in all colours.
Picture grey_of(Picture picture);

/// A picture of few colours, and the numbers of its pixels among them.
struct Indexed {
    std::vector<Pixel> palette;
    Picture indices;

    Indexed(std::int32_t width, std::int32_t height, std::uint32_t colors);
    Picture picture() const;
};

inline void put16(Bytes& bytes, std::uint32_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}
inline void put32(Bytes& bytes, std::uint32_t value) {
    put16(bytes, value);
    put16(bytes, value >> 16);
}
inline void append(Bytes& bytes, const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }
inline Bytes text(const std::string& characters) { return {characters.begin(), characters.end()}; }
/// The channels of pixels one after the other, in an order such as "BGRA"; a digit stands for itself.
Bytes channels(const std::vector<Pixel>& pixels, const std::string& order);
/// Rows of values of so many bits, padded to a multiple of `unit` bytes. Values of whole bytes begin with the
/// lowest one, the others with the highest bit.
Bytes packed_rows(const Picture& values, std::uint32_t bits, std::size_t unit);

/// A plain RGBA PNG of a picture.
Bytes png_of(const Picture& picture);

}  // namespace pixvane::test

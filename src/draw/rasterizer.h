// The port that turns outlines, strokes and text into masks of coverage.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "draw/path.h"

namespace pixvane {

/// A pixel, of a picture or of a window.
struct PixelPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const PixelPoint&) const = default;
};

/// Whole pixels; width and height are not negative.
struct PixelRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const PixelRect&) const = default;
};

/// How much of each pixel of `area` is covered, 0 to 255. The memory is the rasterizer's and lasts until its
/// next call. An area of no pixels: nothing is covered.
struct Mask {
    PixelRect area;
    const std::uint8_t* coverage = nullptr;
    std::size_t stride = 0;  ///< bytes between rows
    const std::uint8_t* row(std::int32_t y) const { return coverage + static_cast<std::size_t>(y) * stride; }
};

/// Square caps and mitred joins.
struct Stroke {
    double width = 1;                ///< pixels
    std::span<const double> dashes;  ///< lengths in pixels, on and off in turn; none for a solid line
};

struct Font {
    std::string_view family;
    std::int32_t size = 16;  ///< pixels from ascent to descent of the design, 1 to 255
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeout = false;
};

struct TextSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// What is outside of `clip` is left out of the mask, and costs nothing. Every value is safe: numbers that
/// are not finite and shapes without an extent cover nothing. Without memory nothing is covered.
class Rasterizer {
public:
    virtual ~Rasterizer() = default;
    /// The inside by the even-odd rule. Not smooth: a pixel is covered wholly or not at all.
    virtual Mask fill(const Path& path, bool smooth, PixelRect clip) = 0;
    virtual Mask stroke(const Path& path, const Stroke& stroke, bool smooth, PixelRect clip) = 0;
    /// UTF-8, one line or several, its top left corner at (x, y); always smooth.
    virtual Mask text(std::string_view text, const Font& font, std::int32_t x, std::int32_t y,
                      PixelRect clip) = 0;
    virtual TextSize measure(std::string_view text, const Font& font) = 0;
    /// The families that text can be drawn in, sorted by name, the same list as long as the process lives.
    virtual std::span<const std::string> families() = 0;
};

}  // namespace pixvane

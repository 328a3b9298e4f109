// The port that turns outlines, strokes and text into masks of coverage.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "draw/draw_scratch.h"
#include "draw/path.h"

namespace pixvane {

/// How much of each pixel of `area` is covered, 0 to 255. The memory is the rasterizer's and lasts until its
/// next call. An area of no pixels: nothing is covered.
struct Mask {
    PixelRect area;
    const std::uint8_t* coverage = nullptr;
    std::size_t stride = 0;  ///< bytes between rows
    const std::uint8_t* row(std::int32_t y) const { return coverage + static_cast<std::size_t>(y) * stride; }
    bool is_empty() const { return area.width <= 0 || area.height <= 0; }
};

struct Font {
    std::string_view family;
    std::int32_t size = 16;  ///< pixels of the em square, 1 to 512
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeout = false;
};

struct TextSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// The largest width and height of a clip, and the largest distance of an outline's points from it.
constexpr std::int32_t kMaxMaskSide = 16384;
constexpr double kMaxReach = 4194304;

/// Coverage is true to about 1/15 of a pixel, and to a few levels the same whatever the clip cuts off.
/// Made for one thread; several threads use several. What is outside of `clip` is left out of the mask. Every
/// value is safe: outlines that reach too far, numbers that are not finite, clips that are too large and
/// shapes without an extent cover nothing. Without memory nothing is covered.
class Rasterizer {
public:
    virtual ~Rasterizer() = default;
    /// The inside by the even-odd rule. Not smooth: a pixel is covered wholly or not at all.
    virtual Mask fill(const Path& path, bool smooth, PixelRect clip) = 0;
    /// `width` pixels wide, with ends that are cut straight off and mitred joins (to 10 half widths).
    virtual Mask stroke(const Path& path, double width, bool smooth, PixelRect clip) = 0;
    /// UTF-8, one line or several, its top left corner at (x, y); always smooth. Only the first 8192 bytes
    /// are drawn. Bytes that are no UTF-8 show as replacement characters.
    virtual Mask text(std::string_view text, const Font& font, std::int32_t x, std::int32_t y,
                      PixelRect clip) = 0;
    virtual TextSize measure(std::string_view text, const Font& font) = 0;
    /// The families that text can be drawn in, sorted by name, the same list as long as the process lives.
    virtual std::span<const std::string> families() = 0;

    /// For whoever draws through this rasterizer: what it needs again for the next shape.
    DrawScratch scratch;
};

}  // namespace pixvane

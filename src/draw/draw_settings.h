// What drawing uses: pen, brush, font, tool sizes and stamp settings.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/bitmap.h"
#include "core/pixel_buffer.h"

namespace pixvane {

struct PenSettings {
    float width = 1;         ///< pixels; members put 1 to 8, a macro anything
    std::int32_t style = 0;  ///< 0 solid, 1 to 4 dashed; any other value: there is no pen
    Pixel color = 0xFF000000;
    bool operator==(const PenSettings&) const = default;
};

struct BrushSettings {
    std::int32_t style = 0;          ///< 0 solid, 1 linear gradient, 2 hatch, 3 texture; else no brush
    std::int32_t hatchStyle = 0;     ///< 0 to 52
    std::int32_t gradientStyle = 0;  ///< 0 horizontal, 1 vertical, 2 forward, 3 backward diagonal
    std::int32_t textureStyle = 0;   ///< 0 tiles, 1 flipped in x, 2 in y, 3 in both
    Pixel color1 = 0xFFFFFFFF;  ///< solid, start of a gradient, ground of a hatch; its alpha is the brush's
    Pixel color2 = 0xFF000000;  ///< end of a gradient, lines of a hatch
    std::shared_ptr<const Bitmap> texture;
    std::string textureFileName;
    bool operator==(const BrushSettings&) const = default;
};

/// Bits of FontSettings::style.
enum FontStyle : std::int32_t { kBold = 1, kItalic = 2, kUnderline = 4, kStrikeout = 8 };

struct FontSettings {
    std::optional<std::int32_t> index;  ///< among the families of the machine; not there: the default one
    std::int32_t style = 0;             ///< bits of FontStyle
    std::uint8_t size = 16;             ///< pixels
    bool operator==(const FontSettings&) const = default;
};

/// How a picture is stamped into the picture.
struct StampSettings {
    std::int32_t style = 0;  ///< 0 to 6
    std::uint8_t transparency1 = 255;
    std::uint8_t transparency2 = 255;
    Pixel maskColor = 0xFFFFFFFF;
    bool useMaskColor = false;
    bool operator==(const StampSettings&) const = default;
};

/// All of it: saved and restored whole while a macro plays; tools hold no settings of their own. A macro may
/// put any value, so whoever draws checks what it uses.
struct DrawSettings {
    PenSettings pen;
    BrushSettings brush;
    FontSettings font;
    StampSettings stamp;
    std::int32_t sprayRadius = 20;    ///< 8 to 50
    std::int32_t toolBrushSize = 5;   ///< 1 to 11
    std::int32_t toolBrushStyle = 0;  ///< 0 to 5
    std::int32_t eraserSize = 5;      ///< 1 to 11
    std::int32_t smoothMode = 0;      ///< 1: lines and shapes are smooth; any other value: aliased
    bool operator==(const DrawSettings&) const = default;
};

}  // namespace pixvane

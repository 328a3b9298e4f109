// What a shape is filled with, pixel by pixel.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/gradient.h"
#include "core/pixel_buffer.h"
#include "draw/draw_settings.h"
#include "draw/path.h"

namespace pixvane {

/// Hatches and textures are anchored at the target's top left corner. A brush whose numbers name no style,
/// and a texture brush without a texture, paint nothing.
class Paint {
public:
    explicit Paint(Pixel color) : color_(color), kind_(alpha_of(color) == 0 ? Kind::Nothing : Kind::Solid) {}
    /// `bounds`: what a gradient spans; outside of it its outermost colours go on. The brush's texture must
    /// outlive the paint.
    Paint(const BrushSettings& brush, PixelRect bounds);

    bool is_nothing() const { return kind_ == Kind::Nothing; }
    /// The one colour of all pixels, or null.
    const Pixel* solid() const { return kind_ == Kind::Solid ? &color_ : nullptr; }
    /// `count` pixels of row y of the target, from pixel x on, neither negative. For a gradient t is as in
    /// LinearGradient. A texture's alpha is multiplied by that of the brush's first colour.
    void row(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const;

private:
    enum class Kind { Nothing, Solid, Gradient, Hatch, Texture };

    void gradient(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const;
    void hatch(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const;
    void texture(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const;

    Pixel color_;
    Kind kind_ = Kind::Nothing;
    Pixel lines_ = 0;  // of a hatch
    std::uint64_t pattern_ = 0;
    LinearGradient gradient_;
    PixelRect bounds_;
    ConstPixelBuffer texture_;
    bool flipsInX_ = false;
    bool flipsInY_ = false;
};

}  // namespace pixvane

// Scaling: bilinear, and by the mean of what a pixel covers where a picture shrinks below one half.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"
#include "core/scaling/scale_axis.h"

namespace pixvane {

/// How a picture, or a rectangle of it, is brought to another size; made once, then run on as many bands of
/// rows as wanted.
///
/// A target pixel is the mean of some neighbouring source pixels with weights x * y, which ScaleAxis gives
/// for each axis. With the sums over these pixels W = sum of w and A = sum of w * alpha, its alpha is A / W
/// and each channel (sum of w * alpha * channel) / A. Every one of these quotients is of exact integers and
/// rounded once, halves up. A pixel whose alpha comes out as 0 is 0.
///
/// So what is opaque stays opaque and a plain colour stays that colour, a transparent pixel lends its colour
/// to nobody, and no border appears. Where neither axis changes its length pixels are copied as they are.
class Scaling {
public:
    /// Of one pixel to one.
    Scaling() : Scaling(1, 1, 1, 1) {}
    /// A rectangle (x.from, y.from, x.length, y.length) of the source is brought to x.size x y.size pixels,
    /// of which a target of x.count x y.count pixels gets those from (x.first, y.first) on: only they are
    /// computed, each as it would be in the whole.
    Scaling(const ScaledRange& x, const ScaledRange& y) : x_(x), y_(y) {}
    /// The whole of a picture.
    Scaling(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t width, std::int32_t height)
        : Scaling({0, sourceWidth, width, 0, width}, {0, sourceHeight, height, 0, height}) {}

    /// The same for other rectangles, in the memory that it has.
    void assign(const ScaledRange& x, const ScaledRange& y) {
        x_.assign(x);
        y_.assign(y);
    }

    const ScaleAxis& x() const { return x_; }
    const ScaleAxis& y() const { return y_; }
    bool is_copy() const { return x_.is_copy() && y_.is_copy(); }
    /// An estimate, for the division among threads.
    double nanoseconds_per_pixel() const;

private:
    ScaleAxis x_;
    ScaleAxis y_;
};

/// What scaled pixels are laid over, source-over (core/compose.h): nothing, so that they are stored as they
/// are; one colour; or what the target holds.
struct Ground {
    enum class Kind : std::uint8_t { Nothing, Color, Target };
    Kind kind = Kind::Nothing;
    Pixel color = 0;
};

/// Rows first..last of the target, the rest of it untouched. The source holds the rectangle, the target has
/// the size that `scaling` was made for; the memory must be different.
void scale_rows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, std::int32_t first,
                std::int32_t last, Ground ground = {});

/// The whole of a picture to the target's size.
void scale(ConstPixelBuffer source, PixelBuffer target);

namespace plain {
/// The target's pixel (x, y), before it is laid over anything.
Pixel scaled_pixel(ConstPixelBuffer source, const Scaling& scaling, std::int32_t x, std::int32_t y);
void scale_rows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, std::int32_t first,
                std::int32_t last, Ground ground);
}  // namespace plain

}  // namespace pixvane

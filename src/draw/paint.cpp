// What a shape is filled with, pixel by pixel.
// SPDX-License-Identifier: MIT
#include "draw/paint.h"

#include <algorithm>
#include <cmath>

#include "draw/hatch_patterns.h"

namespace pixvane {
namespace {

bool is_between(std::int32_t n, std::int32_t first, std::int32_t last) { return n >= first && n <= last; }

/// Shapes larger than any picture, of which only a part can be seen: LinearGradient's formula in doubles.
Pixel far_gradient(const LinearGradient& gradient, std::int64_t x, std::int64_t y) {
    const double across = (static_cast<double>(x) + 0.5) / gradient.width;
    const double down = (static_cast<double>(y) + 0.5) / gradient.height;
    const double ways[] = {across, down, (across + down) / 2, (1 - across + down) / 2};
    const double t = std::clamp(ways[static_cast<int>(gradient.mode)], 0.0, 1.0);
    const auto mix = [&](std::uint32_t from, std::uint32_t to) {
        return static_cast<std::uint32_t>(std::floor(from + (static_cast<double>(to) - from) * t + 0.5));
    };
    return make_pixel(mix(alpha_of(gradient.from), alpha_of(gradient.to)),
                      mix(red_of(gradient.from), red_of(gradient.to)),
                      mix(green_of(gradient.from), green_of(gradient.to)),
                      mix(blue_of(gradient.from), blue_of(gradient.to)));
}

}  // namespace

Paint::Paint(const BrushSettings& brush, PixelRect bounds) : color_(brush.color1), bounds_(bounds) {
    switch (brush.style) {
        case 0:
            if (alpha_of(color_) != 0) kind_ = Kind::Solid;
            break;
        case 1:
            if (!is_between(brush.gradientStyle, 0, 3) || bounds.width <= 0 || bounds.height <= 0) break;
            kind_ = Kind::Gradient;
            gradient_ = {brush.color1, brush.color2, GradientMode{brush.gradientStyle}, bounds.width,
                         bounds.height};
            break;
        case 2:
            if (!is_between(brush.hatchStyle, 0, kHatchStyles - 1)) break;
            kind_ = Kind::Hatch;
            lines_ = brush.color2;
            pattern_ = hatch_pattern(brush.hatchStyle);
            break;
        case 3:
            if (!is_between(brush.textureStyle, 0, 3) || brush.texture == nullptr || alpha_of(color_) == 0)
                break;
            kind_ = Kind::Texture;
            texture_ = brush.texture->pixels();
            flipsInX_ = (brush.textureStyle & 1) != 0;
            flipsInY_ = (brush.textureStyle & 2) != 0;
            break;
        default:
            break;
    }
}

void Paint::row(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const {
    switch (kind_) {
        case Kind::Nothing:
            std::fill_n(to, count, 0);
            break;
        case Kind::Solid:
            std::fill_n(to, count, color_);
            break;
        case Kind::Gradient:
            gradient(x, y, to, count);
            break;
        case Kind::Hatch:
            hatch(x, y, to, count);
            break;
        case Kind::Texture:
            texture(x, y, to, count);
            break;
    }
}

void Paint::gradient(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const {
    const std::int64_t left = std::int64_t{x} - bounds_.x;
    const std::int64_t row = std::clamp<std::int64_t>(std::int64_t{y} - bounds_.y, 0, bounds_.height - 1);
    const auto length = static_cast<std::int64_t>(count);
    if (!is_picture_size(bounds_.width, bounds_.height)) {
        for (std::int64_t i = 0; i < length; ++i)
            to[i] = far_gradient(gradient_, std::clamp<std::int64_t>(left + i, 0, bounds_.width - 1), row);
        return;
    }
    // Before, on and behind the gradient.
    const std::int64_t first = std::clamp<std::int64_t>(-left, 0, length);
    const std::int64_t last = std::clamp<std::int64_t>(bounds_.width - left, first, length);
    const auto gradientRow = static_cast<std::int32_t>(row);
    const auto outside = [&](std::int32_t column, std::int64_t from, std::int64_t end) {
        if (from >= end) return;
        gradient_row(gradient_, column, gradientRow, to + from, 1);
        std::fill(to + from + 1, to + end, to[from]);
    };
    outside(0, 0, first);
    if (first < last) {
        gradient_row(gradient_, static_cast<std::int32_t>(left + first), gradientRow, to + first,
                     static_cast<std::size_t>(last - first));
    }
    outside(bounds_.width - 1, last, length);
}

void Paint::hatch(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const {
    const std::uint64_t bits = pattern_ >> (8 * (y % 8));
    Pixel eight[8];
    for (std::int32_t i = 0; i < 8; ++i) eight[i] = ((bits >> ((x + i) % 8)) & 1) != 0 ? lines_ : color_;
    for (std::size_t i = 0; i < count; ++i) to[i] = eight[i % 8];
}

void Paint::texture(std::int32_t x, std::int32_t y, Pixel* to, std::size_t count) const {
    const bool isFlippedRow = flipsInY_ && (y / texture_.height) % 2 == 1;
    const std::int32_t inTile = y % texture_.height;
    const Pixel* from = texture_.row(isFlippedRow ? texture_.height - 1 - inTile : inTile);
    const std::uint32_t opacity = alpha_of(color_);
    std::int32_t column = x % texture_.width;
    bool isFlipped = flipsInX_ && (x / texture_.width) % 2 == 1;
    for (std::size_t i = 0; i < count; ++i) {
        const Pixel pixel = from[isFlipped ? texture_.width - 1 - column : column];
        const std::uint32_t alpha = (alpha_of(pixel) * opacity + 127) / 255;
        to[i] = (pixel & 0x00FFFFFF) | alpha << 24;
        if (++column == texture_.width) {
            column = 0;
            isFlipped = flipsInX_ && !isFlipped;
        }
    }
}

}  // namespace pixvane

// Draws a picture scaled and rotated about its centre.
// SPDX-License-Identifier: MIT
#include "draw/rotated_picture.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "core/compose.h"
#include "core/integer_math.h"
#include "core/parallel_rows.h"
#include "core/scaling/scaled_picture.h"

namespace pixvane {
namespace {

constexpr double kUnits = 256;  // of a pixel's place
constexpr double kNanoseconds = 6;

/// Where the pixel (x, y) of the target falls in the picture: u = atOrigin + x * perX + y * perY.
struct Axis {
    double atOrigin;
    double perX;
    double perY;
    double at(std::int32_t x, std::int32_t y) const { return atOrigin + x * perX + y * perY; }
};

struct Span {
    std::int32_t first;
    std::int32_t last;
};

/// The pixels of row y that fall between -1 and `length` pixels along the axis, one more on each side.
Span reached(const Axis& axis, std::int32_t y, std::int32_t length, Span within) {
    const double start = axis.at(0, y) / kUnits;
    const double step = axis.perX / kUnits;
    const double low = -1 - start;
    const double high = length - start;
    if (std::fabs(step) < 1e-9) return low <= 0 && high >= 0 ? within : Span{0, 0};
    const double from = std::min(low / step, high / step) - 1;
    const double to = std::max(low / step, high / step) + 2;
    return {std::max(within.first, trunc_to_int32(std::floor(from))),
            std::min(within.last, trunc_to_int32(std::ceil(to)))};
}

/// Four times a channel in 32 bits each: sums of them with weights that make 65536 fit.
struct Channels {
    std::uint64_t blueRed = 0;
    std::uint64_t greenAlpha = 0;

    void add(Pixel pixel, std::uint32_t weight) {
        const auto parted = [](std::uint32_t bytes) {
            return (bytes & 0xFF) | std::uint64_t{bytes & 0xFF0000} << 16;
        };
        blueRed += parted(pixel) * weight;
        greenAlpha += parted(pixel >> 8) * weight;
    }
    /// The sums divided by 65536.
    Pixel mean() const {
        constexpr std::uint64_t kHalves = 0x0000800000008000;
        const std::uint64_t br = blueRed + kHalves, ga = greenAlpha + kHalves;
        const auto byte = [](std::uint64_t sums, int shift) {
            return static_cast<std::uint32_t>(sums >> shift) & 0xFF;
        };
        return make_pixel(byte(ga, 48), byte(br, 48), byte(ga, 16), byte(br, 16));
    }
};

/// Of four pixels and their weights, which make 65536.
Pixel mixed(const Pixel (&pixels)[4], const std::uint32_t (&weights)[4]) {
    if ((pixels[0] & pixels[1] & pixels[2] & pixels[3]) >= kOpaque) {
        Channels sum;
        for (int i = 0; i < 4; ++i) sum.add(pixels[i], weights[i]);
        return sum.mean();
    }
    std::uint64_t alpha = 0, red = 0, green = 0, blue = 0;
    for (int i = 0; i < 4; ++i) {
        const std::uint64_t visible = std::uint64_t{weights[i]} * alpha_of(pixels[i]);
        alpha += visible;
        red += visible * red_of(pixels[i]);
        green += visible * green_of(pixels[i]);
        blue += visible * blue_of(pixels[i]);
    }
    const auto mean = static_cast<std::uint32_t>((alpha + 0x8000) >> 16);
    if (mean == 0) return 0;
    const auto channel = [alpha](std::uint64_t sum) {
        return static_cast<std::uint32_t>((2 * sum + alpha) / (2 * alpha));
    };
    return make_pixel(mean, channel(red), channel(green), channel(blue));
}

class Rotation {
public:
    Rotation(ConstPixelBuffer picture, const Axis& u, const Axis& v) : picture_(picture), u_(u), v_(v) {}

    void draw_row(Pixel* to, std::int32_t width, std::int32_t y) const {
        Span span = reached(u_, y, picture_.width, {0, width});
        span = reached(v_, y, picture_.height, span);
        for (std::int32_t x = span.first; x < span.last; ++x) {
            const std::int32_t u = trunc_to_int32(std::floor(u_.at(x, y)));
            const std::int32_t v = trunc_to_int32(std::floor(v_.at(x, y)));
            const Pixel pixel = at(u >> 8, v >> 8, static_cast<std::uint32_t>(u & 0xFF),
                                   static_cast<std::uint32_t>(v & 0xFF));
            to[x] = pixel >= kOpaque ? pixel : source_over(to[x], pixel);
        }
    }

private:
    Pixel at(std::int32_t x, std::int32_t y, std::uint32_t right, std::uint32_t lower) const {
        const std::uint32_t left = 256 - right, upper = 256 - lower;
        const std::uint32_t weights[4] = {left * upper, right * upper, left * lower, right * lower};
        if (x >= 0 && y >= 0 && x < picture_.width - 1 && y < picture_.height - 1) {
            const Pixel* above = picture_.row(y) + x;
            const Pixel* below = above + picture_.width;
            return mixed({above[0], above[1], below[0], below[1]}, weights);
        }
        return mixed({edge(x, y), edge(x + 1, y), edge(x, y + 1), edge(x + 1, y + 1)}, weights);
    }
    Pixel edge(std::int32_t x, std::int32_t y) const {
        const bool inside = x >= 0 && y >= 0 && x < picture_.width && y < picture_.height;
        return inside ? picture_.row(y)[x] : 0;
    }

    ConstPixelBuffer picture_;
    Axis u_;
    Axis v_;
};

/// The picture as large as it is to be shown; null if there is no memory.
const Bitmap* reduced(ConstPixelBuffer picture, double scale, RotationScratch& scratch) {
    const auto side = [scale](std::int32_t length) {
        return std::max(1, trunc_to_int32(length * scale + 0.5));
    };
    const std::int32_t width = side(picture.width), height = side(picture.height);
    auto& bitmap = scratch.reduced;
    if (bitmap == nullptr || bitmap->width() != width || bitmap->height() != height) {
        bitmap.reset();
        bitmap = Bitmap::create(width, height);
    }
    if (bitmap == nullptr) return nullptr;
    draw_scaled(bitmap->pixels(), picture, {0, 0, width, height}, {}, scratch.scaling);
    return bitmap.get();
}

}  // namespace

void draw_rotated(PixelBuffer target, ConstPixelBuffer picture, DrawPoint center, double scale,
                  double degrees, RotationScratch& scratch) {
    const bool sound =
        std::isfinite(center.x) && std::isfinite(center.y) && std::isfinite(scale) && std::isfinite(degrees);
    if (!sound || !(scale > 0) || picture.width < 1 || picture.height < 1) return;
    const double shownWidth = picture.width * scale, shownHeight = picture.height * scale;
    if (scale < 0.5) {
        if (const Bitmap* small = reduced(picture, scale, scratch)) picture = small->pixels();
    }
    const double angle = std::fmod(degrees, 360) * std::numbers::pi / 180;
    const double perU = kUnits * picture.width / shownWidth;
    const double perV = kUnits * picture.height / shownHeight;
    // From the centre, along the turned axes of the picture; the centres of pixels lie half a pixel on.
    const auto axis = [&](double x, double y, double units, std::int32_t length) {
        const double middle = kUnits * (length - 1) / 2 + 0.5;
        return Axis{middle + ((0.5 - center.x) * x + (0.5 - center.y) * y) * units, x * units, y * units};
    };
    const Rotation rotation(picture, axis(std::cos(angle), std::sin(angle), perU, picture.width),
                            axis(-std::sin(angle), std::cos(angle), perV, picture.height));
    parallel_rows(target.height, target.width * kNanoseconds, [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y) rotation.draw_row(target.row(y), target.width, y);
    });
}

}  // namespace pixvane

// Composes what the window shows, whole frame by whole frame.
// SPDX-License-Identifier: MIT
#include "view/painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/compose.h"
#include "core/integer_math.h"
#include "core/scaling/scaled_picture.h"

namespace pixvane {
namespace {

// A client area with a side below this shows no picture.
constexpr std::int32_t kLeastClient = 16;
constexpr std::int32_t kBorder = 2;

/// Where the picture is drawn. Steps in and out again may leave a zoom that is not quite 1, which mustn't
/// blur the picture.
PixelRect place_of(const Viewport& view) {
    if (std::fabs(view.zoom() - 1) > 1e-9) {
        const WindowRect r = view.ImageRect();
        return {r.x, r.y, r.width, r.height};
    }
    const std::int32_t width = view.image_width(), height = view.image_height();
    return {trunc_to_int32(view.anchor().x - width * 0.5) + 1,
            trunc_to_int32(view.anchor().y - height * 0.5) + 1, width, height};
}

/// How much smaller a rectangle must be to stay within itself when it is turned.
double scale_to_stay_within(PixelRect r, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const double c = std::fabs(std::cos(angle)), s = std::fabs(std::sin(angle));
    const double width = r.width, height = r.height;
    return std::min(width / (width * c + height * s), height / (width * s + height * c));
}

}  // namespace

bool Painter::open_frame(std::int32_t width, std::int32_t height) {
    if (frame_ != nullptr && frame_->width() == width && frame_->height() == height) return true;
    auto frame = Bitmap::create(width, height);
    if (frame == nullptr) return false;
    frame_ = std::move(frame);
    isWhole_ = false;
    return true;
}

void Painter::draw_picture(const FrameContent& content) {
    const PixelBuffer target = buffer();
    const bool isShown =
        content.picture.pixels.count() > 0 && target.width >= kLeastClient && target.height >= kLeastClient;
    if (!isShown) {
        fill(target, content.background);
        return;
    }
    const PixelRect place = place_of(content.view);
    if (content.rotation.active) {
        draw_rotated(content, place);
    } else {
        clear_around(place, content.background);
        const Ground ground{Ground::Kind::Color, content.background};
        draw_scaled(target, content.picture.pixels, place, ground, scaling_, true);
    }
    if (content.showBorder) draw_border(place, content.frameColor);
}

void Painter::draw_rotated(const FrameContent& content, PixelRect place) {
    const PixelBuffer target = buffer();
    if (place.width < 1 || place.height < 1 || !std::isfinite(content.rotation.degrees)) {
        fill(target, content.background);
        return;
    }
    const double inner = scale_to_stay_within(place, content.rotation.degrees);
    const double scale = content.view.zoom() * (content.rotation.fit ? 1 / inner : inner);
    const DrawPoint center{place.x + place.width * 0.5, place.y + place.height * 0.5};
    if (content.rotation.fit) {
        fill_area(target, place, content.pictureBackground);
    } else {
        fill(target, content.background);
    }
    Canvas(target, rasterizer_, content.smooth)
        .rotated_picture(content.picture.pixels, center, scale, content.rotation.degrees);
    if (content.rotation.fit) clear_around(place, content.background);
}

void Painter::clear_around(PixelRect place, Pixel color) {
    const PixelBuffer target = buffer();
    const std::int64_t width = std::max(place.width, 0), height = std::max(place.height, 0);
    const auto within = [](std::int64_t x, std::int32_t limit) {
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(x, 0, limit));
    };
    const std::int32_t left = within(place.x, target.width), right = within(place.x + width, target.width);
    const std::int32_t top = within(place.y, target.height), bottom = within(place.y + height, target.height);
    fill_area(target, {0, 0, target.width, top}, color);
    fill_area(target, {0, top, left, bottom - top}, color);
    fill_area(target, {right, top, target.width - right, bottom - top}, color);
    fill_area(target, {0, bottom, target.width, target.height - bottom}, color);
}

// The outermost pixels of the place, grown by as much as the border is wide.
void Painter::draw_border(PixelRect place, Pixel color) {
    if (place.width < 0 || place.height < 0) return;
    const auto sum = [](std::int64_t a, std::int64_t b) { return saturate_to_int32(a + b); };
    const std::int32_t x = sum(place.x, -kBorder), y = sum(place.y, -kBorder);
    const std::int32_t width = sum(place.width, 2 * kBorder);
    const std::int32_t right = sum(place.x, place.width), bottom = sum(place.y, place.height);
    fill_area(buffer(), {x, y, width, kBorder}, color);
    fill_area(buffer(), {x, bottom, width, kBorder}, color);
    fill_area(buffer(), {x, place.y, kBorder, place.height}, color);
    fill_area(buffer(), {right, place.y, kBorder, place.height}, color);
}

void Painter::draw_panels(const FrameContent& content) {
    if (content.overview != nullptr)
        overview_.draw(buffer(), *content.overview, content.picture, content.view.zoom(), rasterizer_,
                       content.smooth);
    if (content.busy) banner_.draw_band(buffer(), content.scanned, rasterizer_);
    if (content.details != nullptr) banner_.draw_details(buffer(), *content.details, rasterizer_);
}

}  // namespace pixvane

// Where the picture lies in the window: zoom, anchor, overflow, and the mapping between their coordinates.
// SPDX-License-Identifier: MIT
#include "core/viewport.h"

#include <algorithm>
#include <cmath>

#include "core/integer_math.h"

namespace pixvane {
namespace {

constexpr double kStepIn = 1.1;
constexpr double kStepOut = 0.9090909090909091;  // the reciprocal as a constant: a division rounds otherwise
constexpr double kStepInBelow = 8.0;
constexpr double kStepOutAbove = 0.1;
constexpr double kLowestSetZoom = 0.1;
constexpr double kHighestSetZoom = 16.0;
constexpr std::int32_t kFitMargin = 4;  // pixels on each side
constexpr std::int32_t kFitMargins = 2 * kFitMargin;
// One zoom change can't take more steps than lie between its ends.
constexpr std::int32_t kMostSteps = 100;

bool is_actual_size(double zoom) { return std::fabs(zoom - 1.0) < 0.01; }

std::int32_t add(std::int32_t a, std::int32_t b) { return saturate_to_int32(std::int64_t{a} + b); }

struct Span {
    std::int32_t start;
    std::int32_t length;
};

Span image_span(std::int32_t anchor, std::int32_t size, double zoom) {
    return {add(trunc_to_int32(anchor - size * zoom * 0.5), 1), trunc_to_int32(size * zoom)};
}

bool fits(Span span, std::int32_t client) {
    return span.start >= 0 && std::int64_t{span.start} + span.length < client;
}

bool covers(Span span, std::int32_t client) {
    return span.start < 1 && std::int64_t{span.start} + span.length > client;
}

std::int32_t to_image(double zoom, std::int32_t position, std::int32_t anchor, std::int32_t size) {
    if (is_actual_size(zoom))
        return saturate_to_int32(std::int64_t{position} - trunc_to_int32(anchor - size * 0.5) - 1);
    const std::int32_t half = size / 2;
    const double first = anchor - half * zoom - 0.5;
    const double last = anchor + half * zoom - 0.5;
    const double extent = last - first + 1;
    // A negative zoom can make the extent vanish: then every point falls on the first pixel.
    if (extent == 0.0) return 0;
    return trunc_to_int32(size * (position - first) / extent + 0.5);
}

std::int32_t to_window(double zoom, std::int32_t position, std::int32_t anchor, std::int32_t size,
                       std::int32_t client) {
    if (is_actual_size(zoom)) {
        std::int32_t start = add(trunc_to_int32(anchor - size * zoom * 0.5), 1);
        if ((std::int64_t{client} + 1) % 2 != 0) start = add(start, -1);
        return saturate_to_int32(std::int64_t{start} + position + 1);
    }
    const std::int32_t half = size / 2;
    return trunc_to_int32(anchor - half * zoom + position * zoom);
}

/// The anchor moved by `step`, or as it was if the picture would uncover background.
std::int32_t panned(std::int32_t anchor, std::int32_t step, std::int32_t size, double zoom,
                    std::int32_t client) {
    const std::int32_t moved = add(anchor, step);
    return covers(image_span(moved, size, zoom), client) ? moved : anchor;
}

/// The anchor brought as near to `wanted` as the picture keeps covering the client area.
std::int32_t panned_toward(std::int32_t anchor, std::int32_t wanted, std::int32_t size, double zoom,
                           std::int32_t client) {
    // Whether a place is allowed changes once between here and there: halve until it is found.
    std::int64_t good = anchor;
    std::int64_t bad = wanted;
    if (covers(image_span(wanted, size, zoom), client)) return wanted;
    if (!covers(image_span(anchor, size, zoom), client)) return anchor;
    while (std::abs(bad - good) > 1) {
        const std::int64_t middle = good + (bad - good) / 2;
        const auto place = static_cast<std::int32_t>(middle);
        (covers(image_span(place, size, zoom), client) ? good : bad) = middle;
    }
    return static_cast<std::int32_t>(good);
}

}  // namespace

void Viewport::set_image_size(std::int32_t width, std::int32_t height) {
    imageWidth_ = width;
    imageHeight_ = height;
}

void Viewport::SetClientSize(std::int32_t width, std::int32_t height) {
    clientWidth_ = width;
    clientHeight_ = height;
    recompute_layout();
}

void Viewport::resize(std::int32_t width, std::int32_t height, bool autoResize) {
    SetClientSize(width, height);
    if (!autoResize || !has_image()) return;
    if (clientWidth_ > imageWidth_ + kFitMargins && clientHeight_ >= imageHeight_ + kFitMargins)
        set_clamped_zoom(1.0);
    else
        ZoomToFit();
}

void Viewport::recompute_layout() {
    anchorX_ = clientWidth_ / 2;
    anchorY_ = clientHeight_ / 2;
    UpdateOverflow();
}

void Viewport::lay_out_document() {
    zoom_ = 1.0;
    recompute_layout();
    if (imageWidth_ >= clientWidth_ || imageHeight_ >= clientHeight_) ZoomToFit();
}

void Viewport::begin_zoom_change() {
    previousZoom_ = zoom_;
    anchorX_ = clientWidth_ / 2;
    anchorY_ = clientHeight_ / 2;
}

void Viewport::ZoomIn() {
    if (!(zoom_ < kStepInBelow)) return;
    begin_zoom_change();
    zoom_ *= kStepIn;
    UpdateOverflow();
}

void Viewport::ZoomOut() {
    if (!(zoom_ > kStepOutAbove)) return;
    begin_zoom_change();
    zoom_ *= kStepOut;
    UpdateOverflow();
}

void Viewport::ActialSize() { set_clamped_zoom(1.0); }

// The limits test the zoom that was, not the one that is asked for; hosts rely on it.
void Viewport::set_clamped_zoom(double zoom) {
    begin_zoom_change();
    if (zoom_ < kLowestSetZoom)
        zoom_ = kLowestSetZoom;
    else if (zoom_ > kHighestSetZoom)
        zoom_ = kHighestSetZoom;
    else
        zoom_ = zoom;
    UpdateOverflow();
}

void Viewport::ZoomToFit() {
    if (!has_image()) return;
    begin_zoom_change();
    zoom_ = (static_cast<double>(clientWidth_) - kFitMargins) / imageWidth_;
    const std::int32_t middle = clientHeight_ / 2;
    if (middle - imageHeight_ * zoom_ * 0.5 < kFitMargin)
        zoom_ = (static_cast<double>(clientHeight_) - kFitMargins) / imageHeight_;
    UpdateOverflow();
}

void Viewport::UpdateOverflow() {
    overflowX_ = !fits(image_span(anchorX_, imageWidth_, zoom_), clientWidth_);
    overflowY_ = !fits(image_span(anchorY_, imageHeight_, zoom_), clientHeight_);
}

void Viewport::zoom_at(std::int32_t steps, WindowPoint at) {
    if (!has_image()) return;
    const double zoomBefore = zoom_;
    const double fromCentreX = (at.x - static_cast<double>(anchorX_)) / zoomBefore;
    const double fromCentreY = (at.y - static_cast<double>(anchorY_)) / zoomBefore;
    for (std::int32_t i = 0; i < std::min(std::abs(std::clamp(steps, -kMostSteps, kMostSteps)), kMostSteps);
         ++i)
        steps > 0 ? ZoomIn() : ZoomOut();
    if (zoom_ == zoomBefore || zoomBefore == 0.0) return;
    previousZoom_ = zoomBefore;
    const std::int32_t wantedX = trunc_to_int32(at.x - fromCentreX * zoom_);
    const std::int32_t wantedY = trunc_to_int32(at.y - fromCentreY * zoom_);
    if (overflowX_) anchorX_ = panned_toward(anchorX_, wantedX, imageWidth_, zoom_, clientWidth_);
    if (overflowY_) anchorY_ = panned_toward(anchorY_, wantedY, imageHeight_, zoom_, clientHeight_);
    UpdateOverflow();
}

bool Viewport::pan(std::int32_t dx, std::int32_t dy) {
    if (!has_image()) return false;
    const WindowPoint before = anchor();
    if (overflowX_) anchorX_ = panned(anchorX_, dx, imageWidth_, zoom_, clientWidth_);
    if (overflowY_) anchorY_ = panned(anchorY_, dy, imageHeight_, zoom_, clientHeight_);
    return anchor() != before;
}

void Viewport::pan_toward(std::int32_t dx, std::int32_t dy) {
    if (!has_image()) return;
    if (overflowX_) anchorX_ = panned_toward(anchorX_, add(anchorX_, dx), imageWidth_, zoom_, clientWidth_);
    if (overflowY_) anchorY_ = panned_toward(anchorY_, add(anchorY_, dy), imageHeight_, zoom_, clientHeight_);
}

void Viewport::ScrollTo(ImagePoint topLeft) {
    if (!has_image()) return;
    const auto anchor = [this](std::int32_t size, std::int32_t first) {
        return trunc_to_int32(static_cast<double>(std::int64_t{size / 2} - first) * zoom_);
    };
    if (overflowY_) anchorY_ = anchor(imageHeight_, topLeft.y);
    if (overflowX_ || !overflowY_) anchorX_ = anchor(imageWidth_, topLeft.x);
}

WindowRect Viewport::ImageRect() const {
    const Span x = image_span(anchorX_, imageWidth_, zoom_);
    const Span y = image_span(anchorY_, imageHeight_, zoom_);
    return {x.start, y.start, x.length, y.length};
}

ImagePoint Viewport::WindowToImage(double zoom, WindowPoint point) const {
    return {to_image(zoom, point.x, anchorX_, imageWidth_), to_image(zoom, point.y, anchorY_, imageHeight_)};
}

WindowPoint Viewport::ImageToWindow(double zoom, ImagePoint point) const {
    return {to_window(zoom, point.x, anchorX_, imageWidth_, clientWidth_),
            to_window(zoom, point.y, anchorY_, imageHeight_, clientHeight_)};
}

}  // namespace pixvane

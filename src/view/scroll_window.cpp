// The overview panel: a small picture in the corner on which the part that the window shows can be dragged.
// SPDX-License-Identifier: MIT
#include "view/scroll_window.h"

#include <algorithm>
#include <cstdlib>

#include "core/integer_math.h"

namespace pixvane {
namespace {

constexpr std::int32_t kLongSide = 108;  // of the thumbnail
constexpr std::int32_t kNarrow = 95;     // a thumbnail below this width leaves the panel its least width
constexpr std::int32_t kCloseBox = 10;
constexpr std::int32_t kStillSize = 2;  // the frame's size changes by this much at least

/// value * numerator / denominator, truncated; 0 where there is nothing to divide by.
std::int32_t scaled(std::int64_t value, std::int32_t numerator, std::int32_t denominator) {
    return denominator == 0 ? 0 : saturate_to_int32(value * numerator / denominator);
}

struct Size {
    std::int32_t width, height;
};

Size thumbnail_size(std::int32_t width, std::int32_t height) {
    if (width <= height) return {scaled(width, kLongSide, height), kLongSide};
    return {kLongSide, scaled(height, kLongSide, width)};
}

struct Extent {
    std::int32_t start, length;
};

/// Where the body lies along x.
Extent body_extent(std::int32_t imageWidth, std::int32_t imageHeight, std::int32_t thumbnail,
                   std::int32_t client) {
    if (imageWidth > imageHeight) return {client - 129, 128};
    if (thumbnail < kNarrow) return {client - 116, 115};
    return {client - thumbnail - 21, thumbnail + 20};
}

}  // namespace

ScrollWindowLayout ScrollWindowLayout::of(std::int32_t imageWidth, std::int32_t imageHeight,
                                          std::int32_t clientWidth, std::int32_t clientHeight) {
    if (imageWidth < 1 || imageHeight < 1) return {};
    const Size thumbnail = thumbnail_size(imageWidth, imageHeight);
    const Extent x = body_extent(imageWidth, imageHeight, thumbnail.width, clientWidth);
    const std::int32_t above = clientHeight - thumbnail.height;
    const std::int32_t tabHeight = thumbnail.height + 25;
    ScrollWindowLayout layout;
    layout.body = {x.start, above - 51, x.length, thumbnail.height + 40};
    layout.tab = {x.start - 8, above - 43, 8, tabHeight};
    layout.upperCorner = {x.start - 8, above - 51, 16, 16};
    layout.lowerCorner = {x.start - 8, above - 43 + tabHeight - 8, 16, 15};
    layout.thumbnail = {x.start + x.length / 2 - thumbnail.width / 2, above - 31, thumbnail.width,
                        thumbnail.height};
    layout.closeBox = {clientWidth - 20, above - 46, kCloseBox, kCloseBox};
    return layout;
}

void ScrollWindow::update(const Viewport& view) {
    imageWidth_ = view.image_width();
    imageHeight_ = view.image_height();
    layout_ = ScrollWindowLayout::of(imageWidth_, imageHeight_, view.client_width(), view.client_height());
    if (!dragging_) renew_frame(view);
}

void ScrollWindow::renew_frame(const Viewport& view) {
    const ImagePoint first = view.WindowToImage(view.zoom(), {0, 0});
    const ImagePoint last = view.WindowToImage(view.zoom(), {view.client_width(), view.client_height()});
    const std::int32_t left = std::clamp(first.x, 0, imageWidth_);
    const std::int32_t top = std::clamp(first.y, 0, imageHeight_);
    const std::int32_t right = std::clamp(last.x, left, imageWidth_);
    const std::int32_t bottom = std::clamp(last.y, top, imageHeight_);

    const WindowRect& small = layout_.thumbnail;
    const std::int32_t width = scaled(right - left, small.width, imageWidth_);
    const std::int32_t height = scaled(bottom - top, small.height, imageHeight_);
    if (std::abs(width - frame_.width) >= kStillSize || std::abs(height - frame_.height) >= kStillSize) {
        frame_.width = width;
        frame_.height = height;
    }
    // However small its part of the picture, the frame is there to be seen; nor does a size that was kept
    // reach beyond a smaller thumbnail.
    frame_.width = std::min(std::max(frame_.width, 1), small.width);
    frame_.height = std::min(std::max(frame_.height, 1), small.height);
    frame_.x = std::min(scaled(left, small.width, imageWidth_), small.width - frame_.width);
    frame_.y = std::min(scaled(top, small.height, imageHeight_), small.height - frame_.height);
}

WindowRect ScrollWindow::frame() const {
    return {layout_.thumbnail.x + frame_.x, layout_.thumbnail.y + frame_.y, frame_.width, frame_.height};
}

void ScrollWindow::begin_drag(WindowPoint p) {
    dragging_ = true;
    grip_ = {saturate_to_int32(std::int64_t{p.x} - frame().x),
             saturate_to_int32(std::int64_t{p.y} - frame().y)};
}

ImagePoint ScrollWindow::drag_to(WindowPoint p) {
    const auto follow = [](std::int64_t pointer, std::int32_t grip, std::int32_t origin, std::int32_t room) {
        return static_cast<std::int32_t>(
            std::clamp<std::int64_t>(pointer - grip - origin, 0, std::max(room, 0)));
    };
    const WindowRect& small = layout_.thumbnail;
    frame_.x = follow(p.x, grip_.x, small.x, small.width - frame_.width);
    frame_.y = follow(p.y, grip_.y, small.y, small.height - frame_.height);
    return {scaled(frame_.x, imageWidth_, small.width), scaled(frame_.y, imageHeight_, small.height)};
}

}  // namespace pixvane

// The overview panel as it is drawn; its parts are made once and kept until they change.
// SPDX-License-Identifier: MIT
#include "view/scroll_window_image.h"

#include <algorithm>
#include <cstdio>

#include "core/compose.h"
#include "core/integer_math.h"
#include "core/scaling/scaled_picture.h"
#include "draw/coverage.h"

namespace pixvane {
namespace {

constexpr Pixel kWhite = 0xFFFFFFFF;
constexpr Pixel kLightGrey = 0xFFD3D3D3;
constexpr Pixel kDarkRed = 0xFF8B0000;
constexpr std::int32_t kCaptionGap = 4;  // below the thumbnail
constexpr std::int32_t kCrossInset = 3;

PixelRect moved(WindowRect rect, std::int32_t dx, std::int32_t dy) {
    return {rect.x + dx, rect.y + dy, rect.width, rect.height};
}

/// A frame that covers the outermost pixels of a rectangle.
void frame_area(PixelBuffer target, PixelRect r, Pixel color) {
    fill_area(target, {r.x, r.y, r.width, 1}, color);
    fill_area(target, {r.x, r.y + r.height - 1, r.width, 1}, color);
    fill_area(target, {r.x, r.y, 1, r.height}, color);
    fill_area(target, {r.x + r.width - 1, r.y, 1, r.height}, color);
}

/// Adds a quarter of an ellipse from where the path is to `to`, around the corner that both see.
void round_corner(Path& path, DrawPoint from, DrawPoint to, DrawPoint corner) {
    constexpr double kReach = 0.5522847498;  // of the control points, for the best circle
    const auto toward = [&](DrawPoint p) {
        return DrawPoint{p.x + (corner.x - p.x) * kReach, p.y + (corner.y - p.y) * kReach};
    };
    path.curve_to(toward(from), toward(to), to);
}

/// Body, tab and corners in one outline, so that no pixel is blended twice.
void outline(Path& path, const ScrollWindowLayout& layout) {
    const WindowRect& body = layout.body;
    const WindowRect& upper = layout.upperCorner;
    const WindowRect& lower = layout.lowerCorner;
    const double left = layout.tab.x, middle = body.x, right = body.x + body.width;
    const double top = body.y, bottom = body.y + body.height;
    path.clear();
    path.move_to({right, top});
    path.line_to({right, bottom});
    path.line_to({middle, bottom});
    const double lowerMiddle = lower.y + lower.height / 2.0;
    round_corner(path, {middle, bottom}, {left, lowerMiddle}, {left, bottom});
    const double upperMiddle = upper.y + upper.height / 2.0;
    path.line_to({left, upperMiddle});
    round_corner(path, {left, upperMiddle}, {middle, top}, {left, top});
    path.close();
}

void draw_close_box(PixelBuffer target, PixelRect box) {
    fill_area(target, box, kDarkRed);
    frame_area(target, box, kLightGrey);
    for (std::int32_t i = kCrossInset; i < box.width - kCrossInset; ++i) {
        fill_area(target, {box.x + i, box.y + i, 1, 1}, kLightGrey);
        fill_area(target, {box.x + i, box.y + box.height - 1 - i, 1, 1}, kLightGrey);
    }
}

}  // namespace

void ScrollWindowImage::draw(PixelBuffer target, const ScrollWindow& panel, const ShownPicture& picture,
                             double zoom, Rasterizer& rasterizer, bool smooth) {
    const ScrollWindowLayout& there = panel.layout();
    if (there.body.width <= 0) return;
    const std::int32_t x = there.tab.x, y = there.body.y;
    const auto here = [&](WindowRect r) { return WindowRect{r.x - x, r.y - y, r.width, r.height}; };
    const ScrollWindowLayout layout{here(there.body),        here(there.tab),       here(there.upperCorner),
                                    here(there.lowerCorner), here(there.thumbnail), here(there.closeBox)};
    const Content content{layout, panel.color, picture.version, trunc_to_int32(zoom * 100), smooth};
    if (image_.empty() || content != content_) make(content, picture, rasterizer);
    draw_over(target, {image_.data(), width_, height_}, x, y);
    if (panel.frame().width > 0 && panel.frame().height > 0)
        frame_area(target, moved(panel.frame(), 0, 0), kLightGrey);
}

void ScrollWindowImage::make(const Content& content, const ShownPicture& picture, Rasterizer& rasterizer) {
    const ScrollWindowLayout& layout = content.layout;
    width_ = layout.tab.width + layout.body.width;
    height_ = layout.body.height;
    image_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0);
    const PixelBuffer image{image_.data(), width_, height_};
    make_ground(image, content, rasterizer);
    make_thumbnail(content, picture);
    draw_over(image, {thumbnail_.data(), thumbnailWidth_, thumbnailHeight_}, layout.thumbnail.x,
              layout.thumbnail.y);
    char text[32];
    std::snprintf(text, sizeof text, "Zoomed to %d%%", static_cast<int>(content.percent));
    caption_.set(rasterizer, text, true, kWhite);
    const std::int32_t middle = layout.body.x + layout.body.width / 2;
    caption_.draw(image, trunc_to_int32(middle - caption_.width() * 0.5),
                  layout.thumbnail.y + layout.thumbnail.height + kCaptionGap);
    draw_close_box(image, moved(layout.closeBox, 0, 0));
    content_ = content;
}

void ScrollWindowImage::make_ground(PixelBuffer image, const Content& content, Rasterizer& rasterizer) {
    Path& path = rasterizer.scratch.outline;
    outline(path, content.layout);
    const Mask mask = rasterizer.fill(path, content.smooth, {0, 0, image.width, image.height});
    blend_mask(image, mask, Paint(content.color), rasterizer.scratch);
}

void ScrollWindowImage::make_thumbnail(const Content& content, const ShownPicture& picture) {
    const std::int32_t width = content.layout.thumbnail.width, height = content.layout.thumbnail.height;
    const bool isThere = !thumbnail_.empty() && thumbnailVersion_ == picture.version &&
                         thumbnailWidth_ == width && thumbnailHeight_ == height;
    if (isThere) return;
    thumbnail_.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    draw_scaled({thumbnail_.data(), width, height}, picture.pixels, {0, 0, width, height}, {}, scaling_,
                true);
    thumbnailVersion_ = picture.version;
    thumbnailWidth_ = width;
    thumbnailHeight_ = height;
}

}  // namespace pixvane

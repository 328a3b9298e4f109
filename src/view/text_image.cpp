// A line of text of the view, drawn once and kept until it changes.
// SPDX-License-Identifier: MIT
#include "view/text_image.h"

#include <algorithm>

#include "core/compose.h"
#include "draw/canvas.h"

namespace pixvane {
namespace {

constexpr std::int32_t kSize = 11;
// Letters may reach a little beyond the measured box.
constexpr std::int32_t kMargin = 2;
// No window shows more of a file's name.
constexpr std::int32_t kMostWidth = 8192;
constexpr std::size_t kMostBytes = 2048;

}  // namespace

void TextImage::set(Rasterizer& rasterizer, std::string_view text, bool bold, Pixel color) {
    text = text.substr(0, kMostBytes);
    if (text == text_ && bold == bold_ && color == color_) return;
    text_ = text;
    bold_ = bold;
    color_ = color;
    Font font;
    font.family = "Arial";
    font.size = kSize;
    font.bold = bold;
    size_ = rasterizer.measure(text, font);
    size_.width = std::clamp(size_.width, 0, kMostWidth);
    size_.height = std::clamp(size_.height, 0, 8 * kSize);
    memory_.clear();
    const auto width = static_cast<std::size_t>(size_.width + 2 * kMargin);
    memory_.resize(width * static_cast<std::size_t>(size_.height + 2 * kMargin));
    Canvas(pixels(), rasterizer, true).text(text, font, kMargin, kMargin, color);
}

PixelBuffer TextImage::pixels() {
    return {memory_.data(), size_.width + 2 * kMargin, size_.height + 2 * kMargin};
}

void TextImage::draw(PixelBuffer target, std::int32_t x, std::int32_t y) const {
    if (memory_.empty()) return;
    const ConstPixelBuffer image{memory_.data(), size_.width + 2 * kMargin, size_.height + 2 * kMargin};
    draw_over(target, image, x - kMargin, y - kMargin);
}

}  // namespace pixvane

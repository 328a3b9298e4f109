// A sheet of every pen and brush.
// SPDX-License-Identifier: MIT
#include "brushes/sheet.h"

#include <iterator>
#include <string>

#include "core/compose.h"
#include "draw/canvas.h"
#include "draw/hatch_patterns.h"

namespace pixvane {
namespace {

constexpr Pixel kPaper = 0xFFF7F6F2;
constexpr Pixel kInk = 0xFF22303C;
constexpr Pixel kFaint = 0xFF6B7780;
constexpr Pixel kAccent = 0xFF1F6FB2;
constexpr Pixel kWarm = 0xFFE8743B;
constexpr std::int32_t kMargin = 40;
constexpr std::int32_t kInner = kSheetWidth - 2 * kMargin;

constexpr const char* kHatches[] = {"horizontal",
                                    "vertical",
                                    "forward diagonal",
                                    "backward diagonal",
                                    "cross",
                                    "diagonal cross",
                                    "5 percent",
                                    "10 percent",
                                    "20 percent",
                                    "25 percent",
                                    "30 percent",
                                    "40 percent",
                                    "50 percent",
                                    "60 percent",
                                    "70 percent",
                                    "75 percent",
                                    "80 percent",
                                    "90 percent",
                                    "light downward",
                                    "light upward",
                                    "dark downward",
                                    "dark upward",
                                    "wide downward",
                                    "wide upward",
                                    "light vertical",
                                    "light horizontal",
                                    "narrow vertical",
                                    "narrow horizontal",
                                    "dark vertical",
                                    "dark horizontal",
                                    "dashed downward",
                                    "dashed upward",
                                    "dashed horizontal",
                                    "dashed vertical",
                                    "small confetti",
                                    "large confetti",
                                    "zigzag",
                                    "wave",
                                    "diagonal brick",
                                    "horizontal brick",
                                    "weave",
                                    "plaid",
                                    "divot",
                                    "dotted grid",
                                    "dotted diamond",
                                    "shingle",
                                    "trellis",
                                    "sphere",
                                    "small grid",
                                    "small checker board",
                                    "large checker board",
                                    "outlined diamond",
                                    "solid diamond"};
static_assert(std::size(kHatches) == kHatchStyles);

Font font(std::int32_t size, bool bold = false) {
    return {.family = "DejaVu Sans", .size = size, .bold = bold};
}

PenSettings pen(float width, std::int32_t style = 0, Pixel color = kInk) { return {width, style, color}; }

BrushSettings brush(std::int32_t style, Pixel color1, Pixel color2) {
    BrushSettings settings;
    settings.style = style;
    settings.color1 = color1;
    settings.color2 = color2;
    return settings;
}

class Sheet {
public:
    Sheet(PixelBuffer target, Rasterizer& rasterizer)
        : target_(target),
          rasterizer_(rasterizer),
          hard_(target, rasterizer, false),
          smooth_(target, rasterizer, true) {}

    void draw() {
        pixvane::fill(target_, kPaper);
        hard_.text("Pens and brushes", font(30, true), kMargin, 26, kInk);
        pens();
        shapes();
        hatches();
        gradients();
        textures();
    }

private:
    void heading(const char* text) {
        hard_.text(text, font(17, true), kMargin, y_, kAccent);
        hard_.line(pen(1, 0, 0x401F6FB2), {kMargin, y_ + 27}, {kMargin + kInner - 1, y_ + 27});
        y_ += 40;
    }

    void pens() {
        y_ = 78;
        heading("Pen styles 0 to 4, 1 to 8 pixels wide");
        // Dashes grow with the square of the width: wide pens need long lines to show them.
        const struct {
            std::int32_t width, length;
        } columns[] = {{1, 90}, {2, 130}, {3, 180}, {5, 250}, {8, 395}};
        std::int32_t x = kMargin + 30;
        for (const auto& column : columns) {
            hard_.text(std::to_string(column.width), font(12), x, y_ - 6, kFaint);
            for (std::int32_t style = 0; style < 5; ++style)
                hard_.line(pen(static_cast<float>(column.width), style), {x, y_ + 22 * (style + 1)},
                           {x + column.length, y_ + 22 * (style + 1)});
            x += column.length + 20;
        }
        for (std::int32_t style = 0; style < 5; ++style)
            hard_.text(std::to_string(style), font(12, true), kMargin, y_ + 22 * (style + 1) - 7, kInk);
        y_ += 6 * 22;
        y_ += 10;
    }

    void shapes() {
        heading("Shapes, aliased above and smooth below, half transparent strokes blended once");
        for (Canvas* canvas : {&hard_, &smooth_}) {
            std::int32_t x = kMargin;
            const std::int32_t step = kInner / 9;
            const auto at = [&](std::int32_t dx, std::int32_t dy) { return PixelPoint{x + dx, y_ + dy}; };
            const PenSettings thin = pen(1), wide = pen(3, 0, kAccent);
            for (std::int32_t i = 0; i < 8; ++i)
                canvas->line(thin, at(0, 4), i < 4 ? at(100, 4 + 18 * i) : at(100 - 25 * (i - 4), 66));
            x += step;
            const PixelPoint star[] = {at(50, 0), at(70, 66), at(14, 24), at(86, 24), at(30, 66)};
            canvas->fill_polygon(brush(0, 0x60E8743B, 0), star);
            canvas->polygon(pen(2, 0, kWarm), star);
            x += step;
            canvas->ellipse(thin, {x, y_, 100, 68});
            canvas->ellipse(wide, {x + 16, y_ + 12, 68, 44});
            x += step;
            canvas->fill_pie(brush(0, 0xFFCFE3F2, 0), {x, y_, 100, 68}, -30, 220);
            canvas->pie(wide, {x, y_, 100, 68}, -30, 220);
            x += step;
            for (std::int32_t i = 0; i < 4; ++i)
                canvas->arc(pen(static_cast<float>(i + 1), i),
                            {x + 12 * i, y_ + 8 * i, 100 - 24 * i, 68 - 16 * i}, 40 * i, 250);
            x += step;
            const PixelPoint curve[] = {at(0, 66), at(20, -6), at(80, 74), at(100, 0)};
            canvas->polyline(pen(1, 1, 0xFFB0B8BE), curve);
            canvas->bezier(wide, curve);
            x += step;
            const PixelPoint knots[] = {at(4, 34), at(30, 4), at(52, 50), at(74, 4), at(98, 34), at(52, 66)};
            canvas->fill_spline(brush(0, 0x5022A06B, 0), knots);
            canvas->spline(pen(2, 0, 0xFF22A06B), knots, true);
            x += step;
            const PixelPoint knot[] = {at(4, 60), at(40, 6), at(76, 60), at(4, 26), at(90, 26), at(10, 60)};
            canvas->polyline(pen(8, 0, 0x80C0392B), knot);
            x += step;
            constexpr float kWidths[] = {1, 1, 2, 2, 3};
            for (std::int32_t i = 0; i < 5; ++i)
                canvas->rectangle(pen(kWidths[i], i % 3 == 2 ? 1 : 0),
                                  {x + 9 * i, y_ + 7 * i, 100 - 18 * i, 68 - 14 * i});
            y_ += 86;
        }
        y_ += 4;
    }

    void hatches() {
        heading(
            "Hatch styles 0 to 52: lines in the second colour on a ground of the first, and four times "
            "magnified");
        constexpr std::int32_t kColumns = 9;
        const std::int32_t step = kInner / kColumns;
        for (std::int32_t style = 0; style < kHatchStyles; ++style) {
            const std::int32_t x = kMargin + style % kColumns * step;
            const std::int32_t y = y_ + style / kColumns * 92;
            BrushSettings hatch = brush(2, 0xFFFFFFFF, kInk);
            hatch.hatchStyle = style;
            const PixelRect area{x, y, step - 14, 60};
            hard_.fill_rectangle(hatch, area);
            magnified(style, {x + area.width - 48, y, 48, 60});
            hard_.rectangle(pen(1, 0, 0xFFB8BEC2), area);
            const std::string number = std::to_string(style);
            hard_.text(number, font(11, true), x, y + 63, kInk);
            const std::int32_t after = hard_.measure(number, font(11, true)).width + 5;
            hard_.text(kHatches[style], font(10), x + after, y + 64, kFaint);
        }
        y_ += 6 * 92 + 4;
    }

    /// A part of the pattern, each pixel as four by four.
    void magnified(std::int32_t style, PixelRect area) {
        hard_.fill_rectangle(brush(0, 0xFFFFFFFF, 0), area);
        const std::uint64_t pattern = hatch_pattern(style);
        for (std::int32_t y = 0; y < area.height; y += 4)
            for (std::int32_t x = 0; x < area.width; x += 4) {
                if (((pattern >> (y / 4 % 8 * 8 + x / 4 % 8)) & 1) != 0)
                    hard_.fill_rectangle(brush(0, kAccent, 0), {area.x + x, area.y + y, 4, 4});
            }
    }

    void gradients() {
        heading("Gradient styles 0 to 3, opaque and over a ground");
        const char* names[] = {"horizontal", "vertical", "forward diagonal", "backward diagonal"};
        const std::int32_t step = kInner / 4;
        for (std::int32_t style = 0; style < 4; ++style) {
            const std::int32_t x = kMargin + style * step;
            BrushSettings gradient = brush(1, 0xFF173F6B, 0xFFFFC857);
            gradient.gradientStyle = style;
            hard_.fill_rectangle(gradient, {x, y_, 130, 76});
            chequer({x + 140, y_, 130, 76});
            gradient.color1 = 0xFFC0392B;
            gradient.color2 = 0x00C0392B;
            smooth_.fill_ellipse(gradient, {x + 140, y_, 130, 76});
            caption(style, names[style], x, y_ + 80);
        }
        y_ += 112;
    }

    void textures() {
        heading("Texture styles 0 to 3, opaque and with half of the alpha");
        const char* names[] = {"tiles", "flipped in x", "flipped in y", "flipped in both"};
        const auto tile = Bitmap::create(34, 30);
        if (tile == nullptr) return;
        pixvane::fill(tile->pixels(), 0xFFCFE3F2);
        Canvas picture(tile->pixels(), rasterizer_, true);
        picture.fill_rectangle(brush(0, 0xFF8FBBDD, 0), {0, 22, 34, 8});
        picture.text("R", font(22, true), 4, 1, 0xFF173F6B);
        picture.fill_ellipse(brush(0, kWarm, 0), {23, 3, 8, 8});
        const std::int32_t step = kInner / 4;
        for (std::int32_t style = 0; style < 4; ++style) {
            const std::int32_t x = kMargin + style * step;
            BrushSettings texture = brush(3, 0xFF000000, 0);
            texture.texture = tile;
            texture.textureStyle = style;
            hard_.fill_rectangle(texture, {x, y_, 130, 90});
            texture.color1 = 0x80000000;
            chequer({x + 140, y_, 130, 90});
            smooth_.fill_ellipse(texture, {x + 140, y_, 130, 90});
            caption(style, names[style], x, y_ + 94);
        }
    }

    void chequer(PixelRect area) {
        BrushSettings checks = brush(2, 0xFFFFFFFF, 0xFFE2E5E7);
        checks.hatchStyle = 50;
        hard_.fill_rectangle(checks, area);
    }

    void caption(std::int32_t number, const char* name, std::int32_t x, std::int32_t y) {
        hard_.text(std::to_string(number), font(11, true), x, y, kInk);
        hard_.text(name, font(11), x + 14, y, kFaint);
    }

    PixelBuffer target_;
    Rasterizer& rasterizer_;
    Canvas hard_;
    Canvas smooth_;
    std::int32_t y_ = 0;
};

}  // namespace

void draw_sheet(PixelBuffer target, Rasterizer& rasterizer) { Sheet(target, rasterizer).draw(); }

}  // namespace pixvane

// Masks by Cairo, text by Pango.
// SPDX-License-Identifier: MIT
#include "platform/cairo/cairo_rasterizer.h"

#include <algorithm>
#include <cmath>

#include "platform/cairo/mask_surface.h"
#include "platform/cairo/text_layout.h"

namespace pixvane {
namespace {

/// Beyond its borders by at most `margin`, as far as it lies in `clip`.
PixelRect around(double left, double top, double right, double bottom, double margin, PixelRect clip) {
    const double x1 = std::max<double>(clip.x, std::floor(left - margin));
    const double y1 = std::max<double>(clip.y, std::floor(top - margin));
    const double x2 = std::min<double>(clip.x + 1.0 * clip.width, std::ceil(right + margin));
    const double y2 = std::min<double>(clip.y + 1.0 * clip.height, std::ceil(bottom + margin));
    if (!(x2 > x1 && y2 > y1)) return {};
    return {static_cast<std::int32_t>(x1), static_cast<std::int32_t>(y1), static_cast<std::int32_t>(x2 - x1),
            static_cast<std::int32_t>(y2 - y1)};
}

/// Where a path may leave marks, or nothing if it can't be drawn: Cairo's numbers end at 2^23.
PixelRect reach(const Path& path, double margin, PixelRect clip) {
    if (path.points().empty()) return {};
    double left = path.points()[0].x, right = left;
    double top = path.points()[0].y, bottom = top;
    const auto tooFar = [](double a, double b) { return !(std::abs(a - b) <= kMaxReach); };
    for (const DrawPoint p : path.points()) {
        if (tooFar(p.x, clip.x) || tooFar(p.y, clip.y)) return {};
        left = std::min(left, p.x);
        right = std::max(right, p.x);
        top = std::min(top, p.y);
        bottom = std::max(bottom, p.y);
    }
    return around(left, top, right, bottom, margin, clip);
}

void trace(cairo_t* context, const Path& path, PixelRect area) {
    const DrawPoint* p = path.points().data();
    const auto x = [&](int i) { return p[i].x - area.x; };
    const auto y = [&](int i) { return p[i].y - area.y; };
    for (const Path::Verb verb : path.verbs()) {
        switch (verb) {
            case Path::Verb::Move:
                cairo_move_to(context, x(0), y(0));
                p += 1;
                break;
            case Path::Verb::Line:
                cairo_line_to(context, x(0), y(0));
                p += 1;
                break;
            case Path::Verb::Curve:
                cairo_curve_to(context, x(0), y(0), x(1), y(1), x(2), y(2));
                p += 3;
                break;
            case Path::Verb::Close:
                cairo_close_path(context);
                break;
        }
    }
}

cairo_antialias_t antialias(bool smooth) { return smooth ? CAIRO_ANTIALIAS_GOOD : CAIRO_ANTIALIAS_NONE; }

class CairoRasterizer final : public Rasterizer {
public:
    Mask fill(const Path& path, bool smooth, PixelRect clip) override {
        const PixelRect area = reach(path, 1, clip);
        cairo_t* context = surface_.begin(area);
        if (context == nullptr) return {};
        trace(context, path, area);
        cairo_set_antialias(context, antialias(smooth));
        cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
        cairo_fill(context);
        return surface_.end();
    }

    Mask stroke(const Path& path, double width, bool smooth, PixelRect clip) override {
        constexpr double kMiterLimit = 10;
        if (!(width > 0 && width <= kMaxReach / kMiterLimit)) return {};
        const PixelRect area = reach(path, 1 + width * (kMiterLimit / 2), clip);
        cairo_t* context = surface_.begin(area);
        if (context == nullptr) return {};
        trace(context, path, area);
        cairo_set_antialias(context, antialias(smooth));
        cairo_set_line_width(context, width);
        cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
        cairo_set_line_join(context, CAIRO_LINE_JOIN_MITER);
        cairo_set_miter_limit(context, kMiterLimit);
        cairo_stroke(context);
        return surface_.end();
    }

    Mask text(std::string_view text, const Font& font, std::int32_t x, std::int32_t y,
              PixelRect clip) override {
        PangoLayout* layout = layout_.lay_out(text, font);
        PangoRectangle ink;
        pango_layout_get_pixel_extents(layout, &ink, nullptr);
        if (ink.width <= 0 || ink.height <= 0) return {};
        const double left = 1.0 * x + ink.x;
        const double top = 1.0 * y + ink.y;
        const PixelRect area = around(left, top, left + ink.width, top + ink.height, 1, clip);
        cairo_t* context = surface_.begin(area);
        if (context == nullptr) return {};
        cairo_translate(context, 1.0 * x - area.x, 1.0 * y - area.y);
        pango_cairo_show_layout(context, layout);
        return surface_.end();
    }

    TextSize measure(std::string_view text, const Font& font) override {
        TextSize size;
        pango_layout_get_pixel_size(layout_.lay_out(text, font), &size.width, &size.height);
        return size;
    }

    std::span<const std::string> families() override { return font_families(); }

private:
    MaskSurface surface_;
    TextLayout layout_;
};

}  // namespace

std::unique_ptr<Rasterizer> make_cairo_rasterizer() { return std::make_unique<CairoRasterizer>(); }

}  // namespace pixvane

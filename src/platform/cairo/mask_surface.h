// An 8-bit surface that Cairo draws masks on, used again and again.
// SPDX-License-Identifier: MIT
#pragma once

#include <cairo.h>

#include <memory>

#include "draw/rasterizer.h"

namespace pixvane {

struct CairoDelete {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};

class MaskSurface {
public:
    /// A context over cleared pixels, whose origin is the top left corner of `area` and which draws nothing
    /// outside of it. Null if the area is empty, too large, or there is no memory. The surface only grows.
    cairo_t* begin(PixelRect area);
    /// What was drawn since begin().
    Mask end();

private:
    bool make_room(std::int32_t width, std::int32_t height);

    std::unique_ptr<cairo_surface_t, CairoDelete> surface_;
    std::unique_ptr<cairo_t, CairoDelete> context_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    PixelRect area_;
};

}  // namespace pixvane

// An 8-bit surface that Cairo draws masks on, used again and again.
// SPDX-License-Identifier: MIT
#include "platform/cairo/mask_surface.h"

#include <algorithm>
#include <cstring>

namespace pixvane {

bool MaskSurface::make_room(std::int32_t width, std::int32_t height) {
    if (surface_ != nullptr && width <= width_ && height <= height_) return true;
    width_ = std::max(width, width_);
    height_ = std::max(height, height_);
    context_.reset();
    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, width_, height_));
    context_.reset(cairo_create(surface_.get()));
    if (cairo_status(context_.get()) == CAIRO_STATUS_SUCCESS) return true;
    // Wide and high masks may never come together: the next try asks for no more than it needs.
    context_.reset();
    surface_.reset();
    width_ = height_ = 0;
    return false;
}

cairo_t* MaskSurface::begin(PixelRect area) {
    area_ = {};
    if (area.width <= 0 || area.height <= 0 || area.width > kMaxMaskSide || area.height > kMaxMaskSide)
        return nullptr;
    if (!make_room(area.width, area.height) && !make_room(area.width, area.height)) return nullptr;
    area_ = area;
    cairo_surface_flush(surface_.get());
    unsigned char* row = cairo_image_surface_get_data(surface_.get());
    const int stride = cairo_image_surface_get_stride(surface_.get());
    for (std::int32_t y = 0; y < area.height; ++y, row += stride)
        std::memset(row, 0, static_cast<std::size_t>(area.width));
    cairo_surface_mark_dirty(surface_.get());

    cairo_t* context = context_.get();
    cairo_identity_matrix(context);
    cairo_reset_clip(context);
    cairo_new_path(context);
    cairo_rectangle(context, 0, 0, area.width, area.height);
    cairo_clip(context);
    return context;
}

Mask MaskSurface::end() {
    cairo_surface_flush(surface_.get());
    // A context that failed once draws nothing any more: the next mask gets a fresh one.
    if (cairo_status(context_.get()) != CAIRO_STATUS_SUCCESS) {
        context_.reset();
        surface_.reset();
        return {};
    }
    return {area_, cairo_image_surface_get_data(surface_.get()),
            static_cast<std::size_t>(cairo_image_surface_get_stride(surface_.get()))};
}

}  // namespace pixvane

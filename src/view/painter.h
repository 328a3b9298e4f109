// Composes what the window shows, whole frame by whole frame.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "core/bitmap.h"
#include "core/scaling/scale.h"
#include "core/viewport.h"
#include "draw/canvas.h"
#include "view/scan_banner.h"
#include "view/scroll_window.h"
#include "view/scroll_window_image.h"

namespace pixvane {

/// The picture as it would be turned, while an angle is being chosen.
struct RotationPreview {
    bool active = false;
    double degrees = 0;
    bool fit =
        false;  ///< enlarged until it fills its place, and cut off there; else made small enough for it
};

/// All that one frame depends on.
struct FrameContent {
    ShownPicture picture;  ///< of size 0 x 0 if there is none
    const Viewport& view;
    Pixel background = 0xFF00008B;  ///< opaque
    Pixel pictureBackground = 0xFFFFFFFF;
    Pixel frameColor = 0xFFD3D3D3;
    bool showBorder = true;
    bool smooth = false;
    RotationPreview rotation = {};
    const ScrollWindow* overview = nullptr;  ///< updated for the view; null if it isn't shown
    bool busy = false;
    const ScannedFile* scanned = nullptr;
    const FileDetails* details = nullptr;
};

/// Keeps the last frame. Made again and again with the same content, a frame allocates nothing.
class Painter {
public:
    explicit Painter(Rasterizer& rasterizer) : rasterizer_(rasterizer) {}

    /// Background, picture and its border, what `overlay(canvas)` draws, the overview panel, the scan's
    /// banner, the line about the file. The frame is as large as the client area of the view. False, and the
    /// last frame stays, if that is nothing or if there is no memory.
    template <class Overlay>
    bool compose(const FrameContent& content, const Overlay& overlay) {
        if (!open_frame(content.view.client_width(), content.view.client_height())) return false;
        isWhole_ = false;
        draw_picture(content);
        Canvas canvas(buffer(), rasterizer_, content.smooth);
        overlay(canvas);
        draw_panels(content);
        isWhole_ = true;
        return true;
    }

    /// The last whole frame, every pixel opaque; of size 0 x 0 if there is none. It stays until the next
    /// call of compose().
    ConstPixelBuffer frame() const { return isWhole_ ? std::as_const(*frame_).pixels() : ConstPixelBuffer{}; }

private:
    PixelBuffer buffer() { return frame_->pixels(); }
    bool open_frame(std::int32_t width, std::int32_t height);
    void draw_picture(const FrameContent& content);
    void draw_rotated(const FrameContent& content, PixelRect place);
    void clear_around(PixelRect place, Pixel color);
    void draw_border(PixelRect place, Pixel color);
    void draw_panels(const FrameContent& content);

    Rasterizer& rasterizer_;
    std::shared_ptr<Bitmap> frame_;
    bool isWhole_ = false;
    Scaling scaling_;
    ScrollWindowImage overview_;
    ScanBanner banner_;
};

}  // namespace pixvane

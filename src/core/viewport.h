// Where the picture lies in the window: zoom, anchor, overflow, and the mapping between their coordinates.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/geometry.h"

namespace pixvane {

/// Arithmetic only; nothing here paints. Every conversion of a double truncates toward zero and is defined
/// for every value: a window of size zero gives a negative zoom, and that is carried through as it is.
class Viewport {
public:
    double zoom() const { return zoom_; }
    /// The zoom before the last change of it.
    double previous_zoom() const { return previousZoom_; }
    std::int32_t client_width() const { return clientWidth_; }
    std::int32_t client_height() const { return clientHeight_; }
    /// The size of the picture, 0 x 0 for none.
    std::int32_t image_width() const { return imageWidth_; }
    std::int32_t image_height() const { return imageHeight_; }
    /// The window position of the picture's centre.
    WindowPoint anchor() const { return {anchorX_, anchorY_}; }
    /// Whether the picture reaches beyond the client area (one exactly as wide as the client does).
    bool overflow_x() const { return overflowX_; }
    bool overflow_y() const { return overflowY_; }

    /// Tells the size of the picture, 0 x 0 for none. Nothing is laid out anew.
    void set_image_size(std::int32_t width, std::int32_t height);
    /// Stores the client size, centres the picture and recomputes the overflow; the zoom is kept.
    void SetClientSize(std::int32_t width, std::int32_t height);
    /// The resize of a window: SetClientSize, and with `autoResize` zoom 1.0 or the fit, as the size allows.
    void resize(std::int32_t width, std::int32_t height, bool autoResize);
    /// Centres the picture and recomputes the overflow; the zoom is kept.
    void recompute_layout();
    /// The layout of a new document: zoom 1.0, centred, and fitted if it is as wide or as tall as the window.
    void lay_out_document();

    void ZoomIn();      ///< times 1.1, from below 8.0 only
    void ZoomOut();     ///< times 0.9090909090909091, from above 0.1 only
    void ActialSize();  ///< zoom 1.0; but 0.1 where it was below 0.1, and 16.0 where it was above 16.0
    void ZoomToFit();   ///< a margin of 4 pixels on the limiting axis; nothing without a picture
    void UpdateOverflow();

    /// Zooms by whole steps (positive in, negative out) and then moves the picture so that the image point
    /// under (x, y) stays there, as far as it may move. Nothing without a picture.
    void zoom_at(std::int32_t steps, WindowPoint at);
    /// Moves the picture on each axis on which it overflows; a move that would uncover background is refused
    /// as a whole. Returns whether it moved.
    bool pan(std::int32_t dx, std::int32_t dy);
    /// Moves the picture likewise, but as far as it may where it may not move all the way.
    void pan_toward(std::int32_t dx, std::int32_t dy);
    /// Brings an image point to the top left corner of the window: on both axes where both overflow, else on
    /// y alone where only that one overflows, else on x alone, whether it overflows or not. The picture may
    /// be moved off the window's edges. Nothing without a picture.
    void ScrollTo(ImagePoint topLeft);

    /// The rectangle that the picture covers in the window.
    WindowRect ImageRect() const;
    bool operator==(const Viewport&) const = default;

    ImagePoint WindowToImage(double zoom, WindowPoint point) const;
    WindowPoint ImageToWindow(double zoom, ImagePoint point) const;

private:
    bool has_image() const { return imageWidth_ >= 1 && imageHeight_ >= 1; }
    void begin_zoom_change();
    void set_clamped_zoom(double zoom);

    double zoom_ = 1.0;
    double previousZoom_ = 1.0;
    std::int32_t clientWidth_ = 0;
    std::int32_t clientHeight_ = 0;
    std::int32_t anchorX_ = 0;
    std::int32_t anchorY_ = 0;
    bool overflowX_ = false;
    bool overflowY_ = false;
    std::int32_t imageWidth_ = 0;
    std::int32_t imageHeight_ = 0;
};

}  // namespace pixvane

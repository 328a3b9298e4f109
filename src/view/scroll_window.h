// The overview panel: a small picture in the corner on which the part that the window shows can be dragged.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/color.h"
#include "core/geometry.h"
#include "core/pixel_buffer.h"
#include "core/viewport.h"

namespace pixvane {

/// Where the parts of the panel lie in the window; all empty without a picture. The panel is its body, a tab
/// on the body's left, and two quarters of ellipses that round the tab's corners.
struct ScrollWindowLayout {
    WindowRect body;
    WindowRect tab;
    WindowRect upperCorner;  ///< of this ellipse, the upper left quarter
    WindowRect lowerCorner;  ///< of this ellipse, the lower left quarter
    WindowRect thumbnail;    ///< the longer side 108 pixels; a side of a very long picture may be 0
    WindowRect closeBox;
    bool operator==(const ScrollWindowLayout&) const = default;

    static ScrollWindowLayout of(std::int32_t imageWidth, std::int32_t imageHeight, std::int32_t clientWidth,
                                 std::int32_t clientHeight);
};

/// State and geometry only. A press asks hits_close_box and hits_frame; a drag of the frame is begin_drag,
/// drag_to for every move, whose result goes to Viewport::ScrollTo, and end_drag.
class ScrollWindow {
public:
    bool visible = false;
    Pixel color = 0x8C505050;
    /// The alpha stays that of `color`.
    void set_color(Color c) { color = (color & kOpaque) | (to_pixel(c) & ~kOpaque); }

    /// Whether there is a panel to be seen and pressed: it is visible and the picture overflows.
    bool is_shown(const Viewport& view) const { return visible && (view.overflow_x() || view.overflow_y()); }
    /// Lays the panel out for the picture and window as they are, and renews the frame unless it is being
    /// dragged. What is hit is what was laid out last, which is what the user sees.
    void update(const Viewport& view);
    const ScrollWindowLayout& layout() const { return layout_; }
    /// The part that the window shows, on the thumbnail, in window coordinates. Its size changes by two
    /// pixels at least, so that it doesn't jitter while the picture is moved.
    WindowRect frame() const;

    bool hits_close_box(WindowPoint p) const { return layout_.closeBox.contains(p); }
    bool hits_frame(WindowPoint p) const { return frame().contains(p); }

    bool is_dragging() const { return dragging_; }
    void begin_drag(WindowPoint p);
    /// Moves the frame with the pointer, within the thumbnail; returns the image point that is to appear at
    /// the window's top left corner.
    ImagePoint drag_to(WindowPoint p);
    void end_drag() { dragging_ = false; }

private:
    void renew_frame(const Viewport& view);

    ScrollWindowLayout layout_;
    std::int32_t imageWidth_ = 0;
    std::int32_t imageHeight_ = 0;
    // From the thumbnail's corner.
    WindowRect frame_;
    bool dragging_ = false;
    WindowPoint grip_;  // the pointer, from the frame's corner
};

}  // namespace pixvane

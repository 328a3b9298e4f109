// Members on the view: repainting, colours, zoom, the overview panel.
// SPDX-License-Identifier: MIT
#include "control/cpixvane.h"

#include <new>

namespace pixvane {

void CPixvane::Repaint() {
    const bool hasWindow = store_.view.client_width() > 0 && store_.view.client_height() > 0;
    if (updatesSuspended_ || !hasWindow || !paint()) return;
    window_.frame_ready();
}

bool CPixvane::paint() {
    const Viewport& view = store_.view;
    FrameContent content{{store_.shown(), store_.version()}, view};
    content.background = backColor1_;
    content.pictureBackground = store_.BitmapBackColor;
    content.frameColor = store_.FrameColor;
    content.showBorder = showBorder_;
    content.smooth = settings_.smoothMode == 1;
    scrollWindow_.update(view);
    if (mouse_.overview_is_shown()) content.overview = &scrollWindow_;
    try {
        return painter_.compose(content, [this](Canvas& canvas) { mouse_.draw_tool(canvas); });
    } catch (const std::bad_alloc&) {
        // What was to be shown is done; it is not undone for want of a frame.
        return false;
    }
}

void CPixvane::put_color(Pixel& setting, Color color) {
    setting = to_pixel(color);
    Repaint();
}

void CPixvane::put_ShowBorder(bool show) {
    showBorder_ = show;
    if (!store_.is_empty()) Repaint();
}

void CPixvane::put_ShowDetails(bool show) {
    showDetails_ = show;
    Repaint();
}

void CPixvane::put_ScrollWindowVisible(bool visible) {
    scrollWindow_.visible = visible;
    Repaint();
}

void CPixvane::put_ScrollWindowColor(Color color) {
    scrollWindow_.set_color(color);
    if (scrollWindow_.visible) Repaint();
}

void CPixvane::EndUpdate() {
    updatesSuspended_ = false;
    Repaint();
}

void CPixvane::change_zoom(void (Viewport::*change)()) {
    Viewport& view = store_.view;
    const double before = view.zoom();
    (view.*change)();
    if (view.zoom() != before) mouse_.carry_over({view, view.previous_zoom(), view});
    Repaint();
}

void CPixvane::ZoomIn() { change_zoom(&Viewport::ZoomIn); }

void CPixvane::ZoomOut() { change_zoom(&Viewport::ZoomOut); }

void CPixvane::ActialSize() { change_zoom(&Viewport::ActialSize); }

void CPixvane::ZoomToFit() { change_zoom(&Viewport::ZoomToFit); }

}  // namespace pixvane

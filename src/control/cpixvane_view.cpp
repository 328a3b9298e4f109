// Members on the view: repainting, colours, zoom, the overview panel.
// SPDX-License-Identifier: MIT
#include "control/cpixvane.h"

namespace pixvane {

void CPixvane::Repaint() {
    const bool hasWindow = store_.view.client_width() > 0 && store_.view.client_height() > 0;
    if (updatesSuspended_ || !hasWindow) return;
    scrollWindow_.update(store_.view);
    window_.frame_ready();
}

void CPixvane::put_color(Pixel& setting, Color color) {
    setting = to_pixel(color);
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

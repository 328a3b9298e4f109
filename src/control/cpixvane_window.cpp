// What the window reports, and what the mouse makes of the control.
// SPDX-License-Identifier: MIT
#include "control/cpixvane.h"
#include "control/member_table.h"

namespace pixvane {

/// Whether the view changed; the tool's points stay on their image points.
template <class Change>
bool CPixvane::change_view(Change change) {
    const Viewport before = store_.view;
    change(store_.view);
    if (store_.view == before) return false;
    mouse_.carry_over({before, before.zoom(), store_.view});
    return true;
}

void CPixvane::window_resized(std::int32_t width, std::int32_t height) {
    change_view([&](Viewport& view) { view.resize(width, height, autoResize_); });
    Repaint();
}

void CPixvane::window_zoom_at(std::int32_t steps, WindowPoint at) {
    if (store_.is_empty()) return;
    change_view([&](Viewport& view) { view.zoom_at(steps, at); });
    Repaint();
}

void CPixvane::window_pan(std::int32_t dx, std::int32_t dy) {
    if (change_view([&](Viewport& view) { view.pan_toward(dx, dy); })) Repaint();
}

void CPixvane::file_dropped(std::string_view path) {
    const Value argument = Value::string(path);
    events_.fire("OnDropFile", {&argument, 1});
}

void CPixvane::put_PaintStatus(std::int32_t mode) {
    if (store_.is_empty()) return;
    end_preview();
    mouse_.SetToolMode(mode);
    mouse_.ResetTools();
    Repaint();
}

void CPixvane::run_command(std::string_view command, std::span<const Value> arguments) {
    const Row* row = find_member(command);
    if (row == nullptr) return;
    Result nothing;
    invoke(*row, *this, arguments, nothing);
}

}  // namespace pixvane

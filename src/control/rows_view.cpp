// The table's rows of the view: zoom, colours around the picture, suspended updates.
// SPDX-License-Identifier: MIT
#include "control/member_table.h"

namespace pixvane {

std::vector<Row> view_rows() {
    using C = CPixvane;
    const char* view = "View";
    return {
        property("Zoom", &C::Zoom, view, "Window pixels for each pixel of the picture."),
        method("ZoomIn", &C::ZoomIn, view, "Zooms in by one tenth, from below 8 only."),
        method("ZoomOut", &C::ZoomOut, view, "Zooms out by the same step, from above 0.1 only."),
        method("ActialSize", &C::ActialSize, view,
               "Zooms to 1.0 (to 0.1 from below it, to 16.0 from above it)."),
        method("ZoomToFit", &C::ZoomToFit, view, "Zooms so that the picture fits the window."),
        property("AutoResize", &C::AutoResize, &C::put_AutoResize, view,
                 "Whether a resize of the window fits the picture anew.", {.name = "Value", .initial = 0}),
        property("BackColor1", &C::BackColor1, &C::put_BackColor1, view, "Colour around the picture.",
                 {.name = "Value", .initial = 0x8B0000}),
        property("FrameColor", &C::FrameColor, &C::put_FrameColor, view,
                 "Colour of the frame around the picture.", {.name = "Value", .initial = 0xD3D3D3}),
        property("ShowBorder", &C::ShowBorder, &C::put_ShowBorder, view,
                 "Whether a frame is drawn around the picture.", {.name = "Value", .initial = -1}),
        property("ShowDetails", &C::ShowDetails, &C::put_ShowDetails, view,
                 "Whether name and size of the folder's current file are shown.",
                 {.name = "Value", .initial = 0}),
        property("ScrollWindowVisible", &C::ScrollWindowVisible, &C::put_ScrollWindowVisible, view,
                 "Whether an overview is shown while the picture overflows the window.",
                 {.name = "Value", .initial = 0}),
        property("ScrollWindowColor", &C::ScrollWindowColor, &C::put_ScrollWindowColor, view,
                 "Colour of the overview, which is half transparent.",
                 {.name = "Value", .initial = 0x505050}),
        method("BeginUpdate", &C::BeginUpdate, view, "Suspends repainting until EndUpdate."),
        method("EndUpdate", &C::EndUpdate, view,
               "Repaints, and goes on repainting; one ends any number of BeginUpdate."),
    };
}

}  // namespace pixvane

// The table's rows of the mouse, its modes and events, and of live preview.
// SPDX-License-Identifier: MIT
#include "control/member_table.h"

namespace pixvane {
namespace {

/// The arguments of Preview: the name of a command, and what that command takes.
Status check_previewed(std::span<const Value> arguments) {
    const Row* command = find_member(Wire<std::string_view>::get(arguments[0]));
    if (command == nullptr || !command->edits) return Status::Member;
    return check_arguments(*command, arguments.subspan(1));
}

Row preview_row(const char* category) {
    Row row = method("Preview", &CPixvane::Preview, category,
                     "Shows what a command would make of the picture, until the next one is shown.",
                     {{.name = "Name"}, {.name = "Arguments"}});
    row.check = check_previewed;
    return row;
}

}  // namespace

std::vector<Row> interaction_rows() {
    using C = CPixvane;
    const char* mouse = "Mouse";
    const char* preview = "Live preview";
    const Arg button{.name = "Button"}, x{.name = "X"}, y{.name = "Y"};
    using Int = std::int32_t;
    return {
        property("PaintStatus", &C::PaintStatus, &C::put_PaintStatus, mouse,
                 "Mode of the mouse: 0 none, 1 to 26 a tool; a put resets every tool.",
                 {.name = "Value", .slider = {0, kLastMode}, .initial = 0}),
        event<Int, Int, Int>("OnMouseDown", mouse,
                             "A button (0 left, 1 middle, 2 right) was pressed at a point of the picture.",
                             {button, x, y}),
        event<Int, Int, Int>("OnMouseUp", mouse, "A button was released at a point of the picture.",
                             {button, x, y}),
        event<Int, Int, Int>("OnMouseMove", mouse,
                             "The pointer moved, with a button held or -1, to a point of the picture.",
                             {button, x, y}),
        event<Int, Int, Int>("OnDblClick", mouse, "A button was double-clicked at a point of the picture.",
                             {button, x, y}),
        event<Int, Int>("OnTrackPointMouseDown", mouse, "A track point was picked in mode 21.", {x, y}),
        event<Int, Int>("OnTrackPointMouseMove", mouse, "The track point that is held was dragged.", {x, y}),
        event<Int, Int>("OnTrackPointMouseUp", mouse, "The track point that was held is let go.", {x, y}),
        event<>("OnHitApplyRotate", mouse, "APPLY was pressed in mode 20: the picture is rotated."),
        event<>("OnHitCancelRotate", mouse, "CANCEL was pressed in mode 20: the picture stays as it is."),
        event<double>("OnRotateAt", mouse, "The angle of rotation was dragged in mode 20.",
                      {{.name = "Angle"}}),
        event<>("OnRedEyeCorrect", mouse, "Red eyes were corrected in mode 19."),
        event<>("OnColorChanged", mouse, "Another colour was picked in mode 26."),
        event<>("OnHitCloseScrollWindow", mouse,
                "The close box of the overview was pressed; hiding it is up to the host."),

        method("BeginPreview", &C::BeginPreview, preview,
               "Opens a preview; any edit, undo, new document or mode ends it again."),
        preview_row(preview),
        method("EndPreview", &C::EndPreview, preview,
               "Ends the preview; with Apply the command shown last is called.", {{.name = "Apply"}}),
    };
}

}  // namespace pixvane

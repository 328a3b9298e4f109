// The table's rows of macros, and of the steps in them that no member has.
// SPDX-License-Identifier: MIT
#include "control/member_table.h"

namespace pixvane {

std::vector<Row> macro_rows() {
    using C = CPixvane;
    const char* macros = "Macros";
    return {
        method("BeginMacros", &C::BeginMacros, macros,
               "Starts a macro with all drawing settings, and records what follows."),
        method("EndMacros", &C::EndMacros, macros, "Ends the recording; the macro stays."),
        property("Recording", &C::Recording, macros, "Whether a macro is being recorded."),
        method("SaveMacros", &C::SaveMacros, macros,
               "Saves the macro; false if it has no steps or can't be written.", {{.name = "Path"}}),
        method("LoadMacros", &C::LoadMacros, macros, "Loads a macro; false, and it is empty, if that fails.",
               {{.name = "Path"}}),
        method("PlayMacros", &C::PlayMacros, macros,
               "Replays the macro on the picture; drawing settings are afterwards as before."),
    };
}

std::vector<Row> step_rows() {
    using I = std::int32_t;
    return {
        passed_over<I, I>("BlurMotion", 16, {{.name = "nVal"}, {.name = "Direction"}}),
        passed_over<I>("Aquarelle", 19, {{.name = "nVal"}}),
        passed_over<I, I, I>("BlurZoom", 27, {{.name = "nVal"}, {.name = "X"}, {.name = "Y"}}),
        passed_over<I, I, I>("BlurRadial", 34, {{.name = "X"}, {.name = "Y"}, {.name = "Angle"}}),
        passed_over<I, I, I>("Glow", 51, {{.name = "Level"}, {.name = "Radius"}, {.name = "Intensity"}}),
        passed_over<I, I, I>("GlowingEdge", 56,
                             {{.name = "Level"}, {.name = "Radius"}, {.name = "Intensity"}}),
        passed_over<I>("Twirl", 67, {{.name = "nVal"}}),
        passed_over<I, I, I, I>("Area", 144,
                                {{.name = "Left"}, {.name = "Top"}, {.name = "Width"}, {.name = "Height"}}),
        passed_over<I>("Rotation", 145, {{.name = "Angle"}}),
        passed_over<>("DrawDateTime", 148),
        passed_over<>("Reserved", 151),
        passed_over<I, I, I, I>("Line", 152,
                                {{.name = "X1"}, {.name = "Y1"}, {.name = "X2"}, {.name = "Y2"}}),
        passed_over<I, I, I, I>("FilledShape", 153,
                                {{.name = "Left"}, {.name = "Top"}, {.name = "Width"}, {.name = "Height"}}),
        passed_over<I, I, I, I>("FilledArea", 154,
                                {{.name = "Left"}, {.name = "Top"}, {.name = "Width"}, {.name = "Height"}}),
        passed_over<Points>("Lines", 155, {{.name = "Points"}}),
        passed_over<Points>("ClosedLines", 156, {{.name = "Points"}}),
        passed_over<Points>("Curve", 157, {{.name = "Points"}}),
        passed_over<Points>("Polygon", 158, {{.name = "Points"}}),
        passed_over<I, I, I, I, I, I>("Arc", 159,
                                      {{.name = "Left"},
                                       {.name = "Top"},
                                       {.name = "Width"},
                                       {.name = "Height"},
                                       {.name = "Value1"},
                                       {.name = "Value2"}}),
        passed_over<I, I, I, I, I, I>("Sector", 160,
                                      {{.name = "Left"},
                                       {.name = "Top"},
                                       {.name = "Width"},
                                       {.name = "Height"},
                                       {.name = "Value1"},
                                       {.name = "Value2"}}),
        passed_over<Points>("ClosedCurve", 161, {{.name = "Points"}}),
        passed_over<I, I, std::string_view>("Text", 162, {{.name = "X"}, {.name = "Y"}, {.name = "Text"}}),
        passed_over<I, I, I, I, MaybeBytes>(
            "Stamp", 163,
            {{.name = "X"}, {.name = "Y"}, {.name = "Width"}, {.name = "Height"}, {.name = "Pixels"}}),
        passed_over<I, I, I, I>("Shape", 164,
                                {{.name = "Left"}, {.name = "Top"}, {.name = "Width"}, {.name = "Height"}}),
        passed_over<I, I, Color>("FloodFill", 165, {{.name = "X"}, {.name = "Y"}, {.name = "Color"}}),
        passed_over<Points>("Freehand1", 166, {{.name = "Points"}}),
        passed_over<Points>("Freehand2", 167, {{.name = "Points"}}),
        passed_over<Points>("Freehand3", 168, {{.name = "Points"}}),
        passed_over<Points>("Freehand4", 169, {{.name = "Points"}}),
        passed_over<I, I, I, std::uint8_t, Color, I>("DrawCalendar", 213,
                                                     {{.name = "Location"},
                                                      {.name = "Size"},
                                                      {.name = "nCol"},
                                                      {.name = "A"},
                                                      {.name = "Color"},
                                                      {.name = "Year"}}),
        passed_over<I, I, I, I>("FramedRectangle", 220,
                                {{.name = "Left"}, {.name = "Top"}, {.name = "Width"}, {.name = "Height"}}),
        passed_over<I, I, I, I>("RedEye", 221,
                                {{.name = "Left"}, {.name = "Top"}, {.name = "Width"}, {.name = "Height"}}),
    };
}

}  // namespace pixvane

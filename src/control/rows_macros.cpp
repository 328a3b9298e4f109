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
    const Arg value{.name = "nVal"}, x{.name = "X"}, y{.name = "Y"};
    const Arg left{.name = "Left"}, top{.name = "Top"}, width{.name = "Width"}, height{.name = "Height"};
    const Arg level{.name = "Level"}, radius{.name = "Radius"}, intensity{.name = "Intensity"};
    const auto rectangle = [&](const char* name, I code) {
        return passed_over<I, I, I, I>(name, code, {left, top, width, height});
    };
    const auto with_two_values = [&](const char* name, I code) {
        return passed_over<I, I, I, I, I, I>(
            name, code, {left, top, width, height, {.name = "Value1"}, {.name = "Value2"}});
    };
    const auto points = [](const char* name, I code) {
        return passed_over<Points>(name, code, {{.name = "Points"}});
    };
    return {
        passed_over<I, I>("BlurMotion", 16, {value, {.name = "Direction"}}),
        passed_over<I>("Aquarelle", 19, {value}),
        passed_over<I, I, I>("BlurZoom", 27, {value, x, y}),
        passed_over<I, I, I>("BlurRadial", 34, {x, y, {.name = "Angle"}}),
        passed_over<I, I, I>("Glow", 51, {level, radius, intensity}),
        passed_over<I, I, I>("GlowingEdge", 56, {level, radius, intensity}),
        passed_over<I>("Twirl", 67, {value}),
        rectangle("Area", 144),
        passed_over<I>("Rotation", 145, {{.name = "Angle"}}),
        passed_over<>("DrawDateTime", 148),
        passed_over<>("Reserved", 151),
        passed_over<I, I, I, I>("Line", 152,
                                {{.name = "X1"}, {.name = "Y1"}, {.name = "X2"}, {.name = "Y2"}}),
        rectangle("FilledShape", 153),
        rectangle("FilledArea", 154),
        points("Lines", 155),
        points("ClosedLines", 156),
        points("Curve", 157),
        points("Polygon", 158),
        with_two_values("Arc", 159),
        with_two_values("Sector", 160),
        points("ClosedCurve", 161),
        passed_over<I, I, std::string_view>("Text", 162, {x, y, {.name = "Text"}}),
        passed_over<I, I, I, I, MaybeBytes>("Stamp", 163, {x, y, width, height, {.name = "Pixels"}}),
        rectangle("Shape", 164),
        passed_over<I, I, Color>("FloodFill", 165, {x, y, {.name = "Color"}}),
        points("Freehand1", 166),
        points("Freehand2", 167),
        points("Freehand3", 168),
        points("Freehand4", 169),
        passed_over<I, I, I, std::uint8_t, Color, I>("DrawCalendar", 213,
                                                     {{.name = "Location"},
                                                      {.name = "Size"},
                                                      {.name = "nCol"},
                                                      {.name = "A"},
                                                      {.name = "Color"},
                                                      {.name = "Year"}}),
        rectangle("FramedRectangle", 220),
        rectangle("RedEye", 221),
    };
}

}  // namespace pixvane

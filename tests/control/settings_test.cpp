// Settings: what each takes, keeps, records and shows, and that a macro sets the same without asking.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "control/random_calls.h"
#include "control/step_listing.h"
#include "control/test_control.h"

namespace pixvane::test {
namespace {

/// What a put left behind in the macro: the value of the one step that it added, if it did.
std::vector<std::int32_t> put(TestControl& c, const std::string& setting, const Value& value) {
    const std::size_t before = c.codes().size();
    c.window.frames = 0;
    c.call(setting, {value});
    StepListing listing;
    const auto& steps = listing.steps(c.control.macro());
    std::vector<std::int32_t> values;
    for (std::size_t i = before; i < steps.size(); ++i) {
        EXPECT_EQ(steps[i].code, find_member(setting)->macroCode);
        StepArguments step;
        listing.read(c.control.macro(), steps[i], step);
        values.push_back(step.values.at(0).i);
    }
    return values;
}

/// A setting as a macro would record it now.
std::int32_t current(const Row& row, TestControl& c) { return row.currentThunk(row, c.control, {}).value.i; }

TEST(Settings, keep_to_their_ranges) {
    using Recorded = std::vector<std::int32_t>;
    struct Case {
        const char* name;
        std::int32_t initial, low, high;
        /// What a put of `high` + 1 or `low` - 1 records after a put of `high`.
        Recorded (*afterRefusal)(std::int32_t given, std::int32_t kept);
        int shown, shownWhenRefused;
    };
    const auto nothing = [](std::int32_t, std::int32_t) { return Recorded{}; };
    const auto given = [](std::int32_t value, std::int32_t) { return Recorded{value}; };
    const auto kept = [](std::int32_t, std::int32_t value) { return Recorded{value}; };
    const std::vector<Case> cases = {
        {"PenWidth", 1, 1, 8, nothing, 1, 0},         {"BrushHatchStyle", 0, 0, 52, given, 0, 0},
        {"BrushGradientStyle", 0, 0, 3, given, 0, 0}, {"BrushTextureStyle", 0, 0, 3, given, 0, 0},
        {"SprayRadius", 20, 8, 50, kept, 0, 0},       {"ToolBrushSize", 5, 1, 11, kept, 1, 1},
        {"ToolBrushStyle", 0, 0, 5, kept, 1, 1},      {"EraserSize", 5, 1, 11, kept, 1, 1},
        {"ImageStyle", 0, 0, 6, kept, 1, 1},          {"FontIndex", 2, 0, 2, kept, 1, 1},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.name);
        TestControl c;
        c.control.window_resized(10, 10);
        EXPECT_EQ(c.number(k.name), k.initial);
        c.call("BeginMacros");
        for (const std::int32_t value : {k.low, k.high}) {
            EXPECT_EQ(put(c, k.name, integer(value)), Recorded{value});
            EXPECT_EQ(c.window.frames, k.shown);
            EXPECT_EQ(c.number(k.name), value);
        }
        for (const std::int32_t value : {k.low - 1, k.high + 1, INT32_MIN, INT32_MAX}) {
            EXPECT_EQ(put(c, k.name, integer(value)), k.afterRefusal(value, k.high));
            EXPECT_EQ(c.window.frames, k.shownWhenRefused);
            EXPECT_EQ(c.number(k.name), k.high);
        }
    }
    TestControl c;
    c.control.window_resized(10, 10);
    c.call("BeginMacros");
    EXPECT_EQ(c.number("FontSize"), 16);
    for (const auto& [name, value, refused] : {std::tuple{"FontSize", 255, 5}, {"BrushStyle", 9, -1}}) {
        EXPECT_EQ(put(c, name, integer(value)), Recorded{value});
        EXPECT_EQ(put(c, name, integer(refused)), Recorded{value});
        EXPECT_EQ(c.number(name), value);
    }
    for (const char* any : {"PenStyle", "SmoothMode"}) {
        for (const std::int32_t value : {7, -7, INT32_MIN}) {
            EXPECT_EQ(put(c, any, integer(value)), Recorded{value});
            EXPECT_EQ(c.window.frames, 1);
            EXPECT_EQ(c.number(any), value);
        }
    }
}

TEST(Settings, of_brushes_are_shown_while_a_tool_is_chosen) {
    TestControl c;
    c.control.window_resized(10, 10);
    c.load(random_picture(5, 5, 1));
    for (const std::int32_t mode : {0, 1, 26}) {
        c.call("PaintStatus", {integer(mode)});
        for (const char* name :
             {"BrushStyle", "BrushHatchStyle", "BrushGradientStyle", "BrushTextureStyle", "SprayRadius"}) {
            const bool isShown = mode != 0 && std::string(name) != "SprayRadius";
            for (const std::int32_t value : {1, -1}) {
                c.window.frames = 0;
                c.call(name, {integer(value)});
                EXPECT_EQ(c.window.frames, isShown ? 1 : 0) << name << value;
            }
        }
    }
}

TEST(Settings, of_a_byte_take_nothing_else) {
    TestControl c;
    c.call("BeginMacros");
    const std::size_t steps = c.codes().size();
    int bytes = 0;
    for (const Row& row : setting_table()) {
        if (row.arguments[0].field != Field::Byte) continue;
        ++bytes;
        for (const std::int32_t value : {-1, 256, INT32_MAX}) {
            const Value argument = integer(value);
            Result result;
            EXPECT_EQ(invoke(row, c.control, {&argument, 1}, result), Status::Type) << row.name;
        }
    }
    EXPECT_EQ(bytes, 5);
    EXPECT_EQ(c.codes().size(), steps);
    EXPECT_EQ(c.control.settings(), DrawSettings());
}

TEST(Settings, of_colours_and_alpha_leave_each_other_alone) {
    TestControl c;
    const DrawSettings& settings = c.control.settings();
    c.call("PenTransparency", {integer(0x12)});
    c.call("PenColor", {color(0xAB030201)});
    EXPECT_EQ(settings.pen.color, 0x12010203u);
    EXPECT_EQ(c.number("PenColor"), 0x030201);
    EXPECT_EQ(c.number("PenTransparency"), 0x12);
    c.call("BrushTransparency", {integer(0x34)});
    c.call("BrushColor1", {color(0x060504)});
    c.call("BrushColor2", {color(0x090807)});
    EXPECT_EQ(settings.brush.color1, 0x34040506u);
    EXPECT_EQ(settings.brush.color2, 0x34070809u);
    EXPECT_EQ(c.number("BrushTransparency"), 0x34);
    c.call("ImageMaskColor", {color(0x0C0B0A)});
    EXPECT_EQ(settings.stamp.maskColor, 0xFF0A0B0Cu);
    for (const auto& [style, on] :
         {std::pair{"Bold", true}, {"Strikeout", true}, {"Bold", false}, {"Italic", true}})
        c.call(std::string("FontStyle") + style, {truth(on)});
    EXPECT_EQ(settings.font.style, 2 | 8);
}

TEST(Settings, are_set_by_their_step_as_by_their_put) {
    for (const Row& row : setting_table()) {
        if (!row.stepFields.empty()) continue;
        SCOPED_TRACE(row.name);
        for (std::uint64_t seed = 1; seed <= 20; ++seed) {
            TestRandom random(seed);
            TestControl c;
            for (const Row& other : setting_table())
                if (other.stepFields.empty())
                    c.call(other.name, {random_argument(other.arguments[0], random)});
            TestControl d;
            d.control.settings() = c.control.settings();
            c.call("BeginMacros");
            const std::size_t before = c.codes().size();
            c.call(row.name, {random_argument(row.arguments[0], random)});
            StepListing listing;
            const auto& steps = listing.steps(c.control.macro());
            for (std::size_t i = before; i < steps.size(); ++i) {
                StepArguments step;
                listing.read(c.control.macro(), steps[i], step);
                // What was refused but recorded a macro sets.
                if (accepts_setting(row, d.control, step.values[0])) row.apply(row, d.control, step.values);
            }
            for (const Row& other : setting_table()) {
                if (other.stepFields.empty()) {
                    EXPECT_EQ(current(other, c), current(other, d)) << other.name;
                }
            }
        }
    }
}

TEST(Settings, take_any_value_from_a_macro) {
    TestControl c;
    for (const Row& row : setting_table()) {
        if (row.arguments[0].kind != Kind::Int32 || row.arguments[0].field == Field::Byte) continue;
        for (const std::int32_t value : {INT32_MIN, -1, 1000, INT32_MAX}) {
            const Value argument = integer(value);
            row.apply(row, c.control, {&argument, 1});
            EXPECT_EQ(c.number(row.name), value) << row.name;
        }
    }
}

TEST(Settings, find_fonts_by_number_and_name) {
    TestControl c;
    EXPECT_EQ(c.number("FontCount"), 3);
    EXPECT_EQ(c.text("FontName", {integer(c.number("FontIndex"))}), "Liberation Sans");
    for (const std::int32_t none : {-1, 3, INT32_MAX}) EXPECT_EQ(c.text("FontName", {integer(none)}), "");
    c.call("BeginMacros");
    const std::size_t before = c.codes().size();
    c.call("SetupFontByName", {Value::string("courier")});
    c.call("SetupFontByName", {Value::string("")});
    EXPECT_EQ(c.codes().size(), before);
    EXPECT_EQ(c.number("FontIndex"), 2);
    c.call("SetupFontByName", {Value::string("Courier")});
    EXPECT_EQ(c.number("FontIndex"), 0);
    ASSERT_EQ(c.codes().size(), before + 1);
    EXPECT_EQ(c.codes().back(), 175);

    c.control.settings().font.index.reset();
    using Names = std::vector<std::string>;
    for (const auto& [names, usual] : {std::pair{Names{"Courier", "DejaVu Sans", "Verdana"}, 1},
                                       {{"Arial", "DejaVu Sans", "Liberation Sans"}, 0},
                                       {{}, 0}}) {
        c.rasterizer.names = names;
        EXPECT_EQ(c.number("FontIndex"), usual);
    }
    EXPECT_EQ(put(c, "FontIndex", integer(0)), std::vector<std::int32_t>{0});
}

TEST(Settings, load_a_texture_whole_or_keep_the_old_one) {
    const Picture picture = random_picture(5, 3, 1);
    TestControl c;
    c.files.files = {{"texture", RawCodec::file_of(picture)}, {"broken", "no picture at all"}};
    c.call("BeginMacros");
    const std::size_t before = c.codes().size();
    c.call("TextureFileName", {Value::string("texture")});
    ASSERT_EQ(c.codes().size(), before + 1);
    EXPECT_EQ(c.codes().back(), 194);
    const DrawSettings loaded = c.control.settings();
    ASSERT_NE(loaded.brush.texture, nullptr);
    EXPECT_TRUE(same_pixels(picture, loaded.brush.texture->pixels()));
    for (const char* path : {"none", "broken", ""}) c.call("TextureFileName", {Value::string(path)});
    EXPECT_EQ(c.control.settings(), loaded);
    EXPECT_EQ(c.codes().size(), before + 1);
    EXPECT_EQ(c.text("TextureFileName"), "texture");

    // Its step makes the same texture.
    StepListing listing;
    StepArguments step;
    listing.read(c.control.macro(), listing.steps(c.control.macro()).back(), step);
    TestControl d;
    EXPECT_TRUE(find_step(194)->apply(*find_step(194), d.control, step.values));
    EXPECT_TRUE(same_pixels(picture, d.control.settings().brush.texture->pixels()));
    step.values[0].i = 0;
    EXPECT_FALSE(find_step(194)->apply(*find_step(194), d.control, step.values));
    EXPECT_NE(d.control.settings().brush.texture, nullptr);
}

}  // namespace
}  // namespace pixvane::test

// Macros: what is recorded of each member, what replays, and what stays as it was. A new command is tested
// without a new test.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/random_calls.h"
#include "control/step_listing.h"
#include "control/test_control.h"
#include "core/random.h"

namespace pixvane::test {
namespace {

using Codes = std::vector<std::int32_t>;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kSnapshotSteps = 27, kSnapshotBytes = 78;

/// The codes that follow the snapshot.
Codes recorded(TestControl& c) {
    const Codes all = c.codes();
    return {all.begin() + kSnapshotSteps, all.end()};
}

void append(Bytes& bytes, const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }
Bytes words(std::initializer_list<std::uint32_t> numbers) {
    Bytes bytes;
    for (const std::uint32_t n : numbers)
        for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<std::uint8_t>(n >> shift));
    return bytes;
}

/// The bytes of a macro file.
std::string macro_file(const Codes& codes, const Bytes& arguments) {
    Bytes file{static_cast<std::uint8_t>(codes.size())};
    for (const std::int32_t code : codes) append(file, words({static_cast<std::uint32_t>(code)}));
    append(file, words({static_cast<std::uint32_t>(arguments.size())}));
    append(file, arguments);
    return {file.begin(), file.end()};
}

/// Loads a macro into a control with a picture and plays it.
void play(TestControl& c, const Codes& codes, const Bytes& arguments) {
    c.files.files["macro"] = macro_file(codes, arguments);
    ASSERT_TRUE(c.is("LoadMacros", {Value::string("macro")}));
    c.call("PlayMacros");
}

/// What a macro file makes of a picture in a control of its own.
Picture replay(const std::string& file, const Picture& picture) {
    TestControl c;
    c.files.files["macro"] = file;
    c.load(picture);
    EXPECT_TRUE(c.is("LoadMacros", {Value::string("macro")}));
    const DrawSettings before = c.control.settings();
    thread_random().set_state(1);
    c.call("PlayMacros");
    EXPECT_EQ(c.control.settings(), before);
    return c.picture();
}

/// Records what is done to a picture, and replays it on a copy: they must be the same to the bit.
template <class Work>
::testing::AssertionResult replays(const Picture& picture, Work work) {
    std::string file;
    Picture expected;
    {
        TestControl c;
        c.load(picture);
        c.call("BeginMacros");
        thread_random().set_state(1);
        work(c);
        c.call("EndMacros");
        expected = c.picture();
        EXPECT_TRUE(c.is("SaveMacros", {Value::string("macro")}));
        file = c.files.files["macro"];
    }
    return same_pixels(expected, replay(file, picture));
}

TEST(Macros, replay_any_mixture) {
    // Small, so that many small steps are made rather than a few large ones.
    const MemoryScope memory(std::uint64_t{1} << 20);
    std::vector<const Row*> rows;
    for (const Row& row : member_table())
        if (row.macroCode >= 0 && row.plays && row.stepFields.empty()) rows.push_back(&row);
    // Each of them first in a few macros, then whatever comes.
    for (std::uint64_t seed = 0; seed < 4 * rows.size(); ++seed) {
        SCOPED_TRACE(seed);
        TestRandom random(seed);
        const Picture picture = random_picture(31, 42, seed);
        ASSERT_TRUE(replays(picture, [&](TestControl& c) {
            for (int i = 0; i < 6; ++i) {
                const Row& row = *(i == 0 ? rows[seed % rows.size()] : random.one_of(rows));
                c.invoke(row, random_arguments(row, random));
                // What isn't recorded between the steps doesn't matter to them.
                if (random.below(8) == 0) c.call("ZoomIn");
            }
        }));
    }
}

TEST(Macros, start_with_all_settings) {
    TestControl c;
    struct Setting {
        std::int32_t code;
        std::size_t bytes;
        std::uint32_t value;
    };
    // In their order; "Liberation Sans" is the third family of the test.
    Setting settings[] = {{171, 4, 1},  {172, 4, 0},          {173, 4, 0xFF000000}, {174, 1, 255},
                          {211, 4, 0},  {175, 4, 2},          {176, 1, 0},          {177, 1, 0},
                          {178, 1, 0},  {179, 1, 0},          {180, 1, 16},         {190, 4, 0},
                          {191, 4, 0},  {192, 4, 0},          {193, 4, 0},          {195, 1, 255},
                          {200, 4, 20}, {201, 4, 5},          {202, 4, 0},          {203, 4, 5},
                          {204, 4, 0},  {205, 1, 255},        {206, 1, 255},        {207, 4, 0xFFFFFFFF},
                          {208, 1, 0},  {209, 4, 0xFFFFFFFF}, {210, 4, 0xFF000000}};
    Bytes texture;
    const auto expect_settings = [&] {
        Codes codes;
        Bytes bytes;
        for (const Setting& setting : settings) {
            // The texture comes after the brush.
            if (setting.code == 200 && !texture.empty()) {
                codes.push_back(194);
                append(bytes, texture);
            }
            codes.push_back(setting.code);
            Bytes value = words({setting.value});
            value.resize(setting.bytes);
            append(bytes, value);
        }
        EXPECT_EQ(c.codes(), codes);
        EXPECT_EQ(c.recorded_bytes(), bytes);
        EXPECT_TRUE(c.is("SaveMacros", {Value::string("macro")}));
        EXPECT_EQ(c.files.files["macro"], macro_file(codes, bytes));
    };
    const auto becomes = [&](std::int32_t code, std::uint32_t value) {
        for (Setting& setting : settings)
            if (setting.code == code) setting.value = value;
    };
    c.call("BeginMacros");
    c.call("EndMacros");
    expect_settings();

    c.call("PenColor", {color(0x123456)});
    c.call("PenTransparency", {integer(7)});
    c.call("BrushTransparency", {integer(8)});
    c.call("BrushColor2", {color(0xFF010203)});
    c.call("ImageMaskColor", {color(0x00040506)});
    c.call("FontStyleUnderline", {truth(true)});
    becomes(173, 0x07123456);
    becomes(174, 7);
    becomes(178, 1);
    becomes(195, 8);
    becomes(207, 0xFF040506);
    becomes(209, 0x08FFFFFF);
    becomes(210, 0x08010203);
    c.call("BeginMacros");
    expect_settings();

    // Begun anew while it is recorded.
    c.files.files["texture"] = RawCodec::file_of(Picture(2, 1, {0x44332211, 0x88776655}));
    c.call("TextureFileName", {Value::string("texture")});
    c.call("BeginMacros");
    texture = words({2, 1, 0x44332211, 0x88776655});
    expect_settings();
}

TEST(Macros, replay_a_new_size_as_a_scale) {
    TestControl c;
    c.load(random_picture(20, 10, 1));
    c.call("BeginMacros");
    c.call("SetNewSize", {integer(640), integer(480)});
    EXPECT_EQ(recorded(c), Codes{63});
    EXPECT_EQ(c.recorded_bytes().size(), kSnapshotBytes + 8);
    EXPECT_EQ(c.number("ImageWidth"), 640);
    c.call("EndMacros");

    // By itself it reaches beyond the stream, and the run stops there.
    ASSERT_TRUE(c.is("SaveMacros", {Value::string("macro")}));
    const Picture picture = random_picture(20, 10, 2);
    EXPECT_TRUE(same_pixels(picture, replay(c.files.files["macro"], picture)));

    // Its sizes are the first factor, here 0.5, and the argument of Gamma the second; Gamma takes that of
    // Contrast and Saturate, and nothing is left for them.
    c.call("BeginMacros");
    c.call("SetNewSize", {integer(0), integer(0x3FE00000)});
    c.call("Gamma", {real(0.5)});
    c.call("Contrast", {integer(0)});
    c.call("Saturate", {integer(0x3FF80000)});
    ASSERT_TRUE(c.is("SaveMacros", {Value::string("macro")}));
    TestControl expected;
    expected.load(picture);
    expected.call("ScaleImage", {real(0.5), real(0.5)});
    expected.call("Gamma", {real(1.5)});
    EXPECT_TRUE(same_pixels(expected.picture(), replay(c.files.files["macro"], picture)));
}

TEST(Macros, resize_by_a_step_that_nothing_records) {
    TestControl c;
    c.load(random_picture(20, 10, 1));
    c.control.window_resized(100, 100);
    c.call("BitmapBackColor", {color(0x0000FF)});
    play(c, {149, 12}, words({30, 15}));
    ASSERT_EQ(c.picture().pixels.size(), 30u * 15u);
    EXPECT_EQ(c.picture().at(29, 14), 0xFF00FFFFu);
}

TEST(Macros, step_over_what_they_do_not_know) {
    // Unknown codes take nothing, the reserved one neither; every step without a function takes its bytes, so
    // that Lightness behind it gets its own arguments.
    const Picture picture = random_picture(9, 9, 4);
    TestControl expected;
    expected.load(picture);
    expected.call("Lightness", {integer(50), integer(60), integer(70)});
    Bytes kernel = words({16});
    kernel.resize(4 + 64, 1);
    std::vector<std::pair<Codes, Bytes>> steps = {
        {{2, -1307, 151, 100000, INT32_MIN}, {}}, {{38}, kernel}, {{38}, words({0})}};
    steps.push_back({{194}, words({0, 0xFFFFFFFF})});  // a picture without a side has no pixels
    const std::vector<std::pair<std::int32_t, std::size_t>> sizes = {
        {16, 8}, {19, 4}, {27, 12}, {34, 12}, {51, 12}, {56, 12}, {67, 4}, {148, 0}, {213, 21}};
    for (const auto& [code, size] : sizes) steps.push_back({{code}, Bytes(size, 1)});
    for (auto [codes, arguments] : steps) {
        SCOPED_TRACE(codes.front());
        TestControl c;
        c.load(picture);
        codes.push_back(8);
        append(arguments, words({50, 60, 70}));
        play(c, codes, arguments);
        EXPECT_TRUE(same_pixels(expected.picture(), c.picture()));
    }
}

TEST(Macros, know_the_size_of_every_step) {
    // The stream says 3, then 2, wherever a step has a count.
    const Bytes counted = words({3, 2, 3, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    const std::vector<std::pair<Codes, std::size_t>> sizes = {
        {{0, 4, 12, 17, 18, 20, 21, 54, 146, 148, 150, 151}, 0},
        {{174, 176, 177, 178, 179, 180, 195, 205, 206, 208}, 1},
        {{1,   5,   10,  11,  19,  22,  23,  24,  35,  36,  37,  47,  67,  142, 143, 145, 147, 171,
          172, 173, 175, 190, 191, 192, 193, 200, 201, 202, 203, 204, 207, 209, 210, 211, 212},
         4},
        {{6, 9, 13, 15, 16, 28, 29, 44, 138, 149}, 8},
        {{7, 8, 14, 27, 34, 51, 52, 56, 165}, 12},
        {{62, 63, 139, 144, 152, 153, 154, 164, 220, 221}, 16},
        {{61}, 20},
        {{213}, 21},
        {{159, 160}, 24},
        {{38}, 4 + 4 * 3},
        {{155, 156, 157, 158, 161, 166, 167, 168, 169}, 4 + 8 * 3},
        {{194}, 8 + 4 * 3 * 2},
        {{162}, 12 + 2 * 3},
        {{163}, 16 + 4 * 3 * 2},
    };
    std::size_t known = 0, all = 0;
    for (const auto& [codes, size] : sizes)
        for (const std::int32_t code : codes) {
            SCOPED_TRACE(code);
            const Row* row = find_step(code);
            ASSERT_NE(row, nullptr);
            ++known;
            StepReader reader(counted);
            StepArguments step;
            EXPECT_TRUE(read_step(*row, reader, step));
            EXPECT_EQ(step.values.size(), row->step_fields().size());
            EXPECT_EQ(reader.offset(), size);
        }
    for (const auto rows : {member_table(), step_table()})
        for (const Row& row : rows) all += row.macroCode >= 0 && row.plays;
    EXPECT_EQ(known, all);
}

TEST(Macros, stop_where_the_arguments_end) {
    const Picture picture = random_picture(9, 9, 4);
    const Codes list = {12, 7, 12};
    for (std::size_t size = 1; size <= 12; ++size) {
        TestControl c;
        c.load(picture);
        play(c, list, Bytes(size, 0));
        c.call("Undo");
        // All of the three steps ran, or only the first.
        EXPECT_EQ(c.is("UndoEnable"), size == 12) << size;
    }
}

TEST(Macros, leave_the_settings_as_they_were) {
    TestControl c;
    c.load(random_picture(8, 8, 1));
    c.files.files["texture"] = RawCodec::file_of(random_picture(3, 2, 1));
    c.call("TextureFileName", {Value::string("texture")});
    c.call("PenWidth", {integer(3)});
    const DrawSettings before = c.control.settings();
    // Every setting is put to a value, many of them out of their range, and the run doesn't come to its end.
    Codes list;
    Bytes arguments;
    for (const Row& row : setting_table()) {
        if (!row.stepFields.empty()) continue;
        const Field field = row.arguments[0].field;
        list.push_back(row.macroCode);
        arguments.resize(arguments.size() + (field == Field::Byte || field == Field::Flag ? 1 : 4), 0x7F);
    }
    list.push_back(194);
    append(arguments, words({1, 1, 0x09090909}));
    list.push_back(1);
    play(c, list, arguments);
    EXPECT_EQ(c.control.settings(), before);

    // What never was in its range gives way to what the macro has set.
    DrawSettings& settings = c.control.settings();
    settings.toolBrushSize = 12, settings.toolBrushStyle = -1, settings.eraserSize = 0;
    settings.stamp.style = 7, settings.sprayRadius = 99;
    play(c, {201, 202, 200}, words({4, 3, 9}));
    EXPECT_EQ(c.number("ToolBrushSize"), 4);
    EXPECT_EQ(c.number("ToolBrushStyle"), 3);
    EXPECT_EQ(c.number("EraserSize"), 0);
    EXPECT_EQ(c.number("ImageStyle"), 7);
    EXPECT_EQ(c.number("SprayRadius"), 99);
}

TEST(Macros, play_without_being_recorded_and_show_the_result_once) {
    TestControl c;
    c.control.window_resized(50, 50);
    c.window.frames = 0;
    c.call("PlayMacros");
    EXPECT_EQ(c.window.frames, 0) << "without a picture";
    c.load(random_picture(8, 8, 1));
    c.window.frames = 0;
    c.call("PlayMacros");
    EXPECT_EQ(c.window.frames, 1) << "an empty macro";
    EXPECT_FALSE(c.is("Modified"));

    c.call("BeginMacros");
    c.call("Invert");
    c.call("Mosaic", {integer(0), integer(1)});
    c.window.frames = 0;
    const Codes before = c.codes();
    c.call("PlayMacros");
    EXPECT_EQ(c.codes(), before);
    EXPECT_TRUE(c.is("Recording"));
    EXPECT_EQ(c.window.frames, 1);
    const Picture once = c.picture();
    c.call("Undo");
    c.call("Undo");
    c.call("BeginUpdate");
    c.call("PlayMacros");
    EXPECT_TRUE(same_pixels(once, c.picture()));
    c.window.frames = 0;
    c.call("PlayMacros");
    EXPECT_EQ(c.window.frames, 0);
}

TEST(Macros, survive_all_but_a_new_one) {
    TestControl c;
    EXPECT_FALSE(c.is("SaveMacros", {Value::string("macro")}));
    EXPECT_TRUE(c.files.files.empty());
    c.call("Invert");
    EXPECT_TRUE(c.codes().empty());
    c.call("BeginMacros");
    c.call("Invert");
    c.load(random_picture(8, 8, 1));
    c.call("Undo");
    c.call("EndMacros");
    c.call("Sepia");
    EXPECT_EQ(recorded(c), Codes{12});
    c.files.diskFull = true;
    EXPECT_FALSE(c.is("SaveMacros", {Value::string("macro")}));
    c.files.diskFull = false;
    EXPECT_TRUE(c.is("SaveMacros", {Value::string("macro")}));
    EXPECT_EQ(recorded(c), Codes{12});

    // A load that fails empties the macro, and leaves the recording as it is.
    for (const bool isRecording : {true, false}) {
        c.call(isRecording ? "BeginMacros" : "EndMacros");
        c.files.files["short"] = "abcd";
        for (const char* path : {"none", "short"}) {
            EXPECT_TRUE(c.is("LoadMacros", {Value::string("macro")}));
            EXPECT_FALSE(c.is("LoadMacros", {Value::string(path)}));
            EXPECT_TRUE(c.codes().empty());
            EXPECT_EQ(c.is("Recording"), isRecording);
        }
        EXPECT_FALSE(c.is("SaveMacros", {Value::string("new")}));
        EXPECT_EQ(c.files.files.count("new"), 0u);
    }
}

TEST(StepListing, tells_where_each_step_lies_and_which_do_not_run) {
    TestControl c;
    c.files.files["macro"] = macro_file(
        {1, 2, 162, 7, 12, 3}, {9, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0, 0, 'a', 0, 5, 0, 0, 0, 6});
    ASSERT_TRUE(c.is("LoadMacros", {Value::string("macro")}));
    StepListing listing;
    const MacroScript& script = c.control.macro();
    struct Expected {
        const char* name;
        std::size_t offset, size, arguments;
        bool isComplete;
    };
    const std::vector<Expected> expected = {{"Saturate", 0, 4, 1, true}, {nullptr, 4, 0, 0, true},
                                            {"Text", 4, 14, 3, true},    {"Brightness", 18, 5, 1, false},
                                            {"Invert", 23, 0, 0, false}, {nullptr, 23, 0, 0, false}};
    ASSERT_EQ(listing.steps(script).size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(i);
        const ListedStep step = listing.steps(script)[i];
        StepArguments arguments;
        listing.read(script, step, arguments);
        EXPECT_STREQ(step.row != nullptr ? step.row->name : nullptr, expected[i].name);
        EXPECT_EQ(step.offset, expected[i].offset);
        EXPECT_EQ(step.size, expected[i].size);
        EXPECT_EQ(step.isComplete, expected[i].isComplete);
        EXPECT_EQ(arguments.values.size(), expected[i].arguments);
    }
    c.call("BeginMacros");
    EXPECT_EQ(listing.steps(script).size(), kSnapshotSteps);
}

}  // namespace
}  // namespace pixvane::test

// Live preview: what is shown, that nothing of it is left, and that applying is the call itself.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "control/random_calls.h"
#include "control/test_control.h"
#include "core/random.h"

namespace pixvane::test {
namespace {

/// All that a preview must leave alone.
struct Trace {
    Picture picture;
    bool modified, undo, redo;
    Viewport view;
    std::uint32_t random;
    std::size_t recorded;
    bool operator==(const Trace&) const = default;

    static Trace of(TestControl& c) {
        const ImageStore& store = c.control.store();
        return {c.picture(), store.modified(),        store.can_undo(), store.can_redo(),
                store.view,  thread_random().state(), c.codes().size()};
    }
};

/// A control in a window, with a picture that overflows it, a step to undo and one to redo.
struct Stage : TestControl {
    explicit Stage(std::uint64_t seed) {
        control.window_resized(30, 30);
        load(random_picture(41, 37, seed));
        call("Invert");
        call("Brightness", {integer(3), integer(4), integer(5)});
        call("Undo");
        call("ActialSize");
        control.window_pan(3, -2);
        thread_random().set_state(static_cast<std::uint32_t>(seed));
    }
    void preview(const Row& row, const std::vector<Value>& values) {
        std::vector<Value> arguments = {Value::string(row.name)};
        arguments.insert(arguments.end(), values.begin(), values.end());
        invoke(*find_member("Preview"), arguments);
    }
    Picture shown() { return Picture(control.store().shown()); }
};

TEST(Preview, of_every_command_shows_what_the_command_makes_and_leaves_no_trace) {
    const MemoryScope limit(64 << 20);
    for (const Row* row : commands()) {
        TestRandom random(5);
        for (std::uint64_t round = 0; round < 3; ++round) {
            const std::vector<Value> values = random_arguments(*row, random);
            SCOPED_TRACE(describe(*row, values));
            Stage c(round), direct(round);
            direct.call("BeginMacros");
            direct.invoke(*row, values);
            const Trace after = Trace::of(direct);

            thread_random().set_state(static_cast<std::uint32_t>(round));
            c.call("BeginMacros");
            const Trace before = Trace::of(c);
            c.call("BeginPreview");
            c.preview(*row, values);
            EXPECT_TRUE(same_pixels(after.picture, c.shown()));
            EXPECT_EQ(c.control.store().view.ImageRect(), after.view.ImageRect());
            EXPECT_TRUE(same_pixels(before.picture, c.picture()));
            EXPECT_EQ(thread_random().state(), before.random);
            c.call("EndPreview", {truth(false)});
            EXPECT_TRUE(Trace::of(c) == before);
            EXPECT_TRUE(same_pixels(before.picture, c.shown()));

            // Another one before, so that the last one counts.
            c.call("BeginPreview");
            c.preview(*find_member("Invert"), {});
            c.preview(*row, values);
            c.call("EndPreview", {truth(true)});
            EXPECT_TRUE(Trace::of(c) == after);
        }
    }
}

TEST(Preview, keeps_a_copy_of_its_arguments) {
    Stage c(1), direct(1);
    std::vector<std::int32_t> kernel = {0, 1, 0, 1, 2, 1, 0, 1, 0};
    const auto numbers = [&] { return Value{Kind::Int32Array, 0, 0, kernel.data(), kernel.size()}; };
    direct.call("UserEffect", {numbers()});
    c.call("BeginPreview");
    c.call("Preview", {Value::string("UserEffect"), numbers()});
    kernel.assign(9, 0);
    c.call("EndPreview", {truth(true)});
    EXPECT_TRUE(same_pixels(direct.picture(), c.picture()));
}

TEST(Preview, is_ended_by_whatever_else_changes_the_picture) {
    const std::string picture = RawCodec::file_of(random_picture(9, 8, 3));
    const std::vector<std::function<void(TestControl&)>> edits = {
        [](TestControl& c) { c.call("Invert"); },
        [](TestControl& c) { c.call("Undo"); },
        [](TestControl& c) { c.call("Redo"); },
        [](TestControl& c) { c.call("PaintStatus", {integer(7)}); },
        [](TestControl& c) {
            c.call("NewImage", {integer(9), integer(8)});
        },
        [](TestControl& c) { c.call("LoadImage", {Value::string("picture")}); },
        [](TestControl& c) { c.call("LoadImage", {Value::string("none")}); },
        [&](TestControl& c) { c.call("Picture", {bytes(picture)}); },
        [](TestControl& c) { c.load(random_picture(5, 5, 1)); },
        [](TestControl& c) { c.call("Empty"); },
        [](TestControl& c) { c.call("PlayMacros"); },
        [](TestControl& c) { c.call("BeginPreview"); },
    };
    for (std::size_t i = 0; i < edits.size(); ++i) {
        SCOPED_TRACE(i);
        Stage c(2), plain(2);
        c.files.files["picture"] = plain.files.files["picture"] = picture;
        c.call("BeginPreview");
        c.call("Preview", {Value::string("RotateFlip"), integer(1)});
        edits[i](c);
        edits[i](plain);
        EXPECT_TRUE(same_pixels(plain.picture(), c.shown()));
        EXPECT_TRUE(c.control.store().view == plain.control.store().view);
        // It is over: nothing is applied any more.
        c.call("EndPreview", {truth(true)});
        EXPECT_TRUE(same_pixels(plain.picture(), c.picture()));
    }
}

TEST(Preview, without_a_beginning_or_a_picture_does_nothing) {
    TestControl c;
    c.call("BeginPreview");
    c.call("Preview", {Value::string("Invert")});
    c.call("EndPreview", {truth(true)});
    c.load(random_picture(5, 5, 1));
    c.call("Preview", {Value::string("Invert")});
    EXPECT_TRUE(same_pixels(c.picture(), c.control.store().shown()));
    c.call("BeginPreview");
    c.call("EndPreview", {truth(true)});
    EXPECT_FALSE(c.is("Modified"));
}

TEST(Preview, refuses_what_is_no_command_and_what_does_not_fit_one) {
    Stage c(1);
    c.call("BeginPreview");
    const auto status = [&](std::vector<Value> arguments) {
        Result result;
        return invoke(*find_member("Preview"), c.control, arguments, result);
    };
    EXPECT_EQ(status({}), Status::Count);
    EXPECT_EQ(status({integer(1)}), Status::Type);
    for (const char* name : {"", "invert", "Undo", "PenWidth", "Preview", "OnDropFile"})
        EXPECT_EQ(status({Value::string(name)}), Status::Member) << name;
    EXPECT_EQ(status({Value::string("Saturate")}), Status::Count);
    EXPECT_EQ(status({Value::string("Saturate"), integer(1), integer(1)}), Status::Count);
    EXPECT_EQ(status({Value::string("Saturate"), real(1)}), Status::Type);
    EXPECT_EQ(status({Value::string("Saturate"), integer(1)}), Status::Ok);
}

TEST(Preview, that_is_refused_shows_the_picture_itself) {
    Stage c(1);
    c.call("BeginPreview");
    for (const int type : {1, 99}) c.call("Preview", {Value::string("RotateFlip"), integer(type)});
    EXPECT_TRUE(same_pixels(c.picture(), c.shown()));
    EXPECT_EQ(c.control.store().view.image_width(), 41);
}

}  // namespace
}  // namespace pixvane::test

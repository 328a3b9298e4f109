// Every command of the table on random pictures: the fast code against the plain, undo and redo, the
// pipeline around it. A new command is tested without a new test.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "control/random_calls.h"
#include "control/test_control.h"
#include "core/random.h"
#include "support/instruction_sets.h"

namespace pixvane::test {
namespace {

/// Odd sizes; `kind` chooses opaque, any alpha, or one colour all over.
Picture make_picture(std::int32_t width, std::int32_t height, std::uint64_t seed) {
    if (seed % 3 == 0) return random_opaque_picture(width, height, seed);
    if (seed % 7 == 1) return Picture(width, height, static_cast<Pixel>(seed * 2654435761u));
    return random_picture(width, height, seed);
}

Value numbers(const std::vector<std::int32_t>& list) {
    return {Kind::Int32Array, 0, 0, list.data(), list.size()};
}

TEST(Commands, do_in_vectors_what_they_do_plainly) {
    const MemoryScope memory(std::uint64_t{16} << 20);
    for (const Row* row : commands()) {
        std::uint64_t seed = 0;
        for (const auto& [width, height] : odd_sizes()) {
            // The smallest picture that an array can be loaded as; 1 x 1 comes by way of SetNewSize below.
            if (width < 2 || height < 2) continue;
            for (int repeat = 0; repeat < 4; ++repeat) {
                TestRandom random(++seed);
                const Picture picture = make_picture(width, height, seed);
                const std::vector<Value> values = random_arguments(*row, random);
                SCOPED_TRACE(describe(*row, values));
                Picture plain;
                {
                    const PlainScope scope;
                    plain = run(*row, picture, values);
                }
                for (const std::int64_t target : available_targets()) {
                    const TargetScope scope(target);
                    ASSERT_STREQ(scope.name(), running_target());
                    ASSERT_TRUE(same_pixels(plain, run(*row, picture, values))) << scope.name();
                }
            }
        }
    }
}

TEST(Commands, work_on_a_single_pixel) {
    const MemoryScope memory(std::uint64_t{16} << 20);
    for (const Row* row : commands()) {
        for (std::uint64_t seed = 0; seed < 20; ++seed) {
            TestRandom random(seed);
            const std::vector<Value> values = random_arguments(*row, random);
            SCOPED_TRACE(describe(*row, values));
            const auto result = [&] {
                TestControl c;
                c.load(make_picture(2, 2, seed));
                c.call("SetNewSize", {integer(1), integer(1)});
                thread_random().set_state(1);
                c.invoke(*row, values);
                return c.picture().pixels[0];
            };
            const PlainScope scope;
            const Pixel plain = result();
            set_kernel_path(KernelPath::Fast);
            EXPECT_EQ(plain, result());
        }
    }
}

TEST(Commands, are_undone_and_redone) {
    const Picture picture = random_picture(37, 23, 3);
    for (const Row* row : commands()) {
        TestRandom random(11);
        TestControl c;
        c.load(picture);
        const std::vector<Value> values = random_arguments(*row, random);
        SCOPED_TRACE(describe(*row, values));
        c.invoke(*row, values);
        const Picture after = c.picture();
        ASSERT_TRUE(c.is("Modified") && c.is("UndoEnable"));
        c.call("Undo");
        EXPECT_TRUE(same_pixels(picture, c.picture()));
        EXPECT_TRUE(c.is("Modified"));
        c.call("Redo");
        EXPECT_TRUE(same_pixels(after, c.picture()));
    }
}

TEST(Commands, are_recorded_first_and_shown_last_even_without_a_picture) {
    for (const Row* row : commands()) {
        SCOPED_TRACE(row->name);
        TestRandom random(13);
        TestControl c;
        c.control.window_resized(100, 100);
        c.call("BeginMacros");
        std::vector<std::int32_t> expected = c.codes();
        c.window.frames = 0;
        const std::uint32_t state = thread_random().state();
        c.invoke(*row, random_arguments(*row, random));
        if (row->records != Records::IfRun) expected.push_back(row->macroCode);
        EXPECT_EQ(c.codes(), expected);
        EXPECT_EQ(c.window.frames, 1);
        EXPECT_EQ(thread_random().state(), state) << "draws on an empty control";
        EXPECT_TRUE(c.is("IsEmpty"));
        c.load(random_picture(5, 5, 1));
        c.call("Undo");
        c.call("Redo");
        EXPECT_EQ(c.codes(), expected);
    }
}

TEST(Commands, refuse_what_is_outside_of_their_range) {
    const std::vector<std::int32_t> sixteen(16, 1);
    const std::vector<std::pair<const char*, std::vector<Value>>> refused = {
        {"Lightness", {integer(-1), integer(100), integer(100)}},
        {"Lightness", {integer(100), integer(100), integer(-1)}},
        {"Temperature", {integer(101)}},
        {"Temperature", {integer(-101)}},
        {"Hue", {integer(256), integer(0), integer(0)}},
        {"Hue", {integer(0), integer(0), integer(-1)}},
        {"BWLevels", {integer(1)}},
        {"BWLevels", {integer(257)}},
        {"Gamma", {real(0.0199)}},
        {"Gamma", {real(-1)}},
        {"Gamma", {real(std::nan(""))}},
        {"Gamma", {real(HUGE_VAL)}},
        {"RotateFlip", {integer(8)}},
        {"RotateFlip", {integer(-1)}},
        {"AddSimpleBorder", {integer(0), color(0)}},
        {"AddSimpleBorder", {integer(40000), color(0)}},
        {"AddSimpleBorder", {integer(INT32_MAX), color(0)}},
        {"ScaleImage", {real(0), real(1)}},
        {"ScaleImage", {real(1), real(-1)}},
        {"ScaleImage", {real(std::nan("")), real(1)}},
        {"ScaleImage", {real(1), real(HUGE_VAL)}},
        {"ScaleImage", {real(0.01), real(1)}},
        {"ScaleImage", {real(60000), real(60000)}},
        {"AddGradientBorder", {integer(0), color(0), color(0), integer(0)}},
        {"AddGradientBorder", {integer(kMaxSide), color(0), color(0), integer(0)}},
        {"SetNewSize", {integer(0), integer(5)}},
        {"SetNewSize", {integer(5), integer(-3)}},
        {"SetNewSize", {integer(65536), integer(5)}},
        {"SetNewSize", {integer(60000), integer(60000)}},
        {"Blur", {integer(0)}},
        {"Blur", {integer(16385)}},
        {"Average", {integer(1), integer(-9)}},
        {"Average", {integer(1), integer(16385)}},
        {"SmartBlur", {integer(0), integer(255)}},
        {"SmartBlur", {integer(INT32_MAX), integer(255)}},
        {"GaussianBlur", {integer(0), integer(1)}},
        {"GaussianBlur", {integer(16385), integer(1)}},
        {"GaussianBlur", {integer(5), integer(0)}},
        {"GaussianBlur", {integer(16384), integer((1 << 22) + 1)}},
        {"Emboss", {integer(11), integer(0)}},
        {"Emboss", {integer(INT32_MIN), integer(0)}},
        {"UserEffect", {numbers(sixteen)}},
        {"UserEffect", {Value{}}},
    };
    const Picture picture = random_picture(37, 23, 3);
    TestControl c;
    c.control.window_resized(20, 10);
    c.load(picture);
    for (int i = 0; i < 15; ++i) c.call("ZoomIn");
    c.control.window_pan(3, 1);
    const WindowPoint anchor = c.control.store().view.anchor();
    for (const auto& [member, values] : refused) {
        SCOPED_TRACE(member);
        c.invoke(*find_member(member), values);
        EXPECT_FALSE(c.is("UndoEnable") || c.is("Modified"));
        EXPECT_EQ(c.control.store().view.anchor(), anchor);
        EXPECT_TRUE(same_pixels(picture, c.picture()));
    }
}

TEST(Commands, average_of_no_square_is_black) {
    TestControl c;
    c.load(random_picture(9, 7, 3));
    for (const std::int32_t radius : {-1, -8}) {
        c.call("Average", {integer(3), integer(radius)});
        EXPECT_TRUE(same_pixels(Picture(9, 7, kOpaque), c.picture()));
        c.call("Undo");
    }
    c.call("Average", {integer(1), integer(0)});
    EXPECT_NE(c.picture().pixels[5], kOpaque);
}

TEST(Commands, emboss_looks_into_eight_directions) {
    // Each neighbour of the centre has a grey of its own.
    Picture picture(3, 3);
    for (std::uint32_t i = 0; i < 9; ++i) picture.pixels[i] = kOpaque | 0x010101 * (20 * i);
    const std::size_t neighbours[] = {1, 2, 5, 8, 7, 6, 3, 0};
    for (std::int32_t direction = -1; direction < 10; ++direction) {
        const std::size_t compared = neighbours[direction >= 0 && direction < 8 ? direction : 7];
        const std::size_t opposite = 8 - compared;
        for (const std::int32_t distance : {1, -1}) {
            TestControl c;
            c.load(picture);
            c.call("Emboss", {integer(distance), integer(direction)});
            const std::size_t other = distance > 0 ? compared : opposite;
            EXPECT_EQ(blue_of(c.picture().pixels[4]), (255 + 80 - 20 * other) / 2) << direction;
        }
    }
}

TEST(Commands, user_effect_is_recorded_after_it_ran) {
    const std::vector<std::int32_t> zeros(9, 0), ones(25, 1), ten(10, 1);
    TestControl c;
    c.call("BeginMacros");
    const std::size_t steps = c.codes().size(), bytes = c.recorded_bytes().size();
    c.call("UserEffect", {numbers(zeros)});
    EXPECT_EQ(c.codes().size(), steps) << "without a picture";
    c.load(random_picture(6, 6, 1));
    for (const Value& refused : {Value{}, numbers(ten)}) c.call("UserEffect", {refused});
    EXPECT_EQ(c.codes().size(), steps);
    c.call("UserEffect", {numbers(zeros)});
    EXPECT_EQ(c.picture(), Picture(6, 6, kOpaque));
    c.call("UserEffect", {numbers(ones)});
    EXPECT_EQ(c.codes().size(), steps + 2);
    EXPECT_EQ(c.recorded_bytes().size(), bytes + 2 * 4 + (9 + 25) * 4);
}

}  // namespace
}  // namespace pixvane::test

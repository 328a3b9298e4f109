// Tests of gradients, and of pictures placed on them.
// SPDX-License-Identifier: MIT
#include "filters/geometry/gradient_border.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/compose.h"
#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

Picture filled(const LinearGradient& gradient) {
    Picture picture(gradient.width, gradient.height);
    for (std::int32_t y = 0; y < gradient.height; ++y)
        gradient_row(gradient, 0, y, picture.view().row(y), static_cast<std::size_t>(gradient.width));
    return picture;
}

std::vector<std::uint32_t> blues(const Picture& picture) {
    std::vector<std::uint32_t> list;
    for (const Pixel pixel : picture.pixels) list.push_back(blue_of(pixel));
    return list;
}

TEST(Gradient, runs_through_the_centres_of_pixels) {
    // 4 pixels at t = 1/8, 3/8, 5/8, 7/8 from 0 to 100: 12.5 and 87.5 are halves and go up.
    const std::vector<std::uint32_t> steps{13, 38, 63, 88};
    EXPECT_EQ(blues(filled({0xFF000000, 0xFF000064, GradientMode::Horizontal, 4, 1})), steps);
    EXPECT_EQ(blues(filled({0xFF000000, 0xFF000064, GradientMode::Vertical, 1, 4})), steps);
    // Downwards halves go up as well: 87.5, 62.5, 37.5, 12.5.
    EXPECT_EQ(blues(filled({0xFF000064, 0xFF000000, GradientMode::Horizontal, 4, 1})),
              (std::vector<std::uint32_t>{88, 63, 38, 13}));
    // t = (1/4 or 3/4 + 1/6, 1/2 or 5/6) / 2, of 240.
    EXPECT_EQ(blues(filled({0xFF000000, 0xFF0000F0, GradientMode::ForwardDiagonal, 2, 3})),
              (std::vector<std::uint32_t>{50, 110, 90, 150, 130, 190}));
    EXPECT_EQ(blues(filled({0xFF000000, 0xFF0000F0, GradientMode::BackwardDiagonal, 2, 3})),
              (std::vector<std::uint32_t>{110, 50, 150, 90, 190, 130}));
}

TEST(Gradient, mixes_every_channel_and_alpha) {
    EXPECT_EQ(filled({0x00FF1080, 0xFF003090, GradientMode::Horizontal, 1, 1}), Picture(1, 1, 0x80802088));
    EXPECT_EQ(filled({0xFF123456, 0xFF123456, GradientMode::BackwardDiagonal, 33, 7}),
              Picture(33, 7, 0xFF123456));
}

TEST(Gradient, shows_where_the_picture_does_not_cover_it) {
    const Picture source(3, 2, {0xFF111111, 0x00FFFFFF, 0x80654321, 0xFF222222, 0xFF333333, 0xFF444444});
    for (const std::int32_t mode : {0, 1, 2, 3}) {
        const LinearGradient gradient{0xFFFF0000, 0xFF00FF80, GradientMode{mode}, 7, 6};
        Picture expected = filled(gradient);
        draw_over(expected.view(), source.view(), 2, 2);
        Picture result(7, 6);
        filters::place_on_gradient_rows(source.view(), result.view(), 2, 2, gradient, 0, 3);
        filters::place_on_gradient_rows(source.view(), result.view(), 2, 2, gradient, 3, 6);
        EXPECT_TRUE(same_pixels(expected, result));
    }
}

TEST(Gradient, equals_the_plain_version_on_every_instruction_set) {
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        TestRandom random(5);
        for (int i = 0; i < 4000; ++i) {
            const std::int32_t largest = i % 8 == 0 ? kMaxSide : 90;
            LinearGradient gradient{random.next(), random.next(), GradientMode{i % 4},
                                    random.between(1, largest), 1};
            gradient.height = random.between(
                1, static_cast<std::int32_t>(std::min<std::int64_t>(largest, kMaxPixels / gradient.width)));
            const std::int32_t x = random.between(0, gradient.width - 1),
                               y = random.between(0, gradient.height - 1);
            const auto count = static_cast<std::size_t>(std::min(gradient.width - x, 100));
            std::vector<Pixel> plain(count + 1, 7), fast(count + 1, 7);
            plain::gradient_row(gradient, x, y, plain.data(), count);
            gradient_row(gradient, x, y, fast.data(), count);
            ASSERT_EQ(plain, fast) << scope.name() << ": " << gradient.width << " x " << gradient.height;
        }
    }
}

}  // namespace
}  // namespace pixvane::test

// Every effect on every instruction set of the machine, against its plain version.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/streaming.h"
#include "filters/effects/effects.h"
#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

struct Effect {
    std::string name;
    std::function<void(ConstPixelBuffer, PixelBuffer, std::int32_t, std::int32_t)> run;
};

std::vector<Effect> rank_effects(const std::vector<std::int32_t>& radii) {
    std::vector<Effect> list;
    for (const std::int32_t radius : radii) {
        const auto add = [&](const char* name, auto filter) {
            list.push_back({name + std::to_string(radius), [=](auto s, auto t, auto first, auto last) {
                                filter(s, t, radius, first, last);
                            }});
        };
        add("minimal ", filters::minimal);
        add("maximal ", filters::maximal);
        add("median ", filters::median);
        if (radius > 0) add("anti noise ", filters::anti_noise);
    }
    return list;
}

std::vector<Effect> other_effects() {
    std::vector<Effect> list;
    const auto add = [&](const std::string& name, auto run) { list.push_back({name, run}); };
    for (const std::int32_t reach : {1, 3, 40, 5'000, 0x7FFFFFFF}) {
        add("diffuse " + std::to_string(reach), [=](auto s, auto t, auto first, auto last) {
            RandomGenerator start;
            start.set_state(99);
            filters::diffuse(s, t, reach, start, first, last);
        });
    }
    for (const std::int32_t half : {1, 2, 5, 8, 30, 200}) {
        for (const auto color : {filters::TileColor::Centre, filters::TileColor::Mean}) {
            add((color == filters::TileColor::Mean ? "means " : "mosaic ") + std::to_string(half),
                [=](auto s, auto t, auto first, auto last) {
                    filters::mosaic(s, t, color, half, first, last);
                });
        }
    }
    for (const filters::Focus focus : {filters::Focus{10, 20, 30, 15},
                                       {1, 1, -5, 400},
                                       {1, 700, 60, 40},
                                       {300, 5000, -200, -200},
                                       {3, 8188, 20, 1},
                                       {1, 8189, 600, 300},
                                       {5, 0x7FFFFFFF, 3, 3},
                                       {0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, -0x7FFFFFFF}}) {
        const std::string number = std::to_string(list.size());
        add("focal bw " + number,
            [=](auto s, auto t, auto first, auto last) { filters::focal_bw(s, t, focus, first, last); });
        add("soft focus " + number, [=](auto s, auto t, auto first, auto last) {
            filters::soft_focus(s, t, {}, focus, first, last);
        });
        add("weights " + number,
            [=](auto, auto t, auto first, auto last) { filters::soft_focus_weights(t, focus, first, last); });
        add("weighted focus " + number, [=](auto s, auto t, auto first, auto last) {
            Picture weights(s.width, s.height);
            filters::soft_focus_weights(weights.view(), focus, 0, s.height);
            filters::soft_focus(s, t, weights.view(), focus, first, last);
        });
    }
    for (const std::int32_t transition : {0, -3}) {
        add("grey " + std::to_string(transition), [=](auto s, auto t, auto first, auto last) {
            filters::focal_bw(s, t, {-1, transition, 5, 5}, first, last);
        });
    }
    return list;
}

/// In bands of this many rows; memory around the target must stay as it is.
Picture result_of(const Effect& effect, const Picture& source, std::int32_t band, std::size_t offset) {
    constexpr Pixel kGuard = 0xDEADBEEF;
    std::vector<Pixel> memory(source.pixels.size() + offset + 1, kGuard);
    const PixelBuffer target{memory.data() + offset, source.width, source.height};
    for (std::int32_t first = 0; first < source.height; first += band)
        effect.run(source.view(), target, first, std::min(first + band, source.height));
    EXPECT_EQ(memory.back(), kGuard) << effect.name;
    if (offset > 0) {
        EXPECT_EQ(memory[offset - 1], kGuard) << effect.name;
    }
    return {source.width, source.height, {target.data, target.data + target.count()}};
}

/// The plain version is the same for every instruction set, so it runs once for each of a test's pictures.
const Picture& plain_result_of(const Effect& effect, const Picture& source, const std::string& picture) {
    static std::map<std::string, Picture> known;
    const auto [entry, isNew] = known.try_emplace(effect.name + " of " + picture);
    if (isNew) {
        const PlainScope plain;
        entry->second = result_of(effect, source, source.height, 0);
    }
    return entry->second;
}

/// Smooth, with a little noise and some even areas: what the windows of photographs are like.
Picture smooth_picture(std::int32_t width, std::int32_t height) {
    Picture picture(width, height);
    TestRandom random(17);
    for (std::int32_t y = 0; y < height; ++y) {
        for (std::int32_t x = 0; x < width; ++x) {
            const auto red = static_cast<std::uint32_t>(x + y) / 2 % 248 + random.below(8);
            const auto green = static_cast<std::uint32_t>(x / 16 * 16 + y / 16 * 16) % 256;
            picture.view().row(y)[x] =
                make_pixel(random.below(256), red, green, static_cast<std::uint32_t>(x ^ y) & 255u);
        }
    }
    return picture;
}

class EffectsOfEveryInstructionSet : public ::testing::TestWithParam<std::int64_t> {};

TEST_P(EffectsOfEveryInstructionSet, equal_the_plain_version) {
    const TargetScope scope(GetParam());
    ASSERT_STREQ(scope.name(), running_target());
    std::vector<Effect> effects = rank_effects({0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 15, 20});
    for (Effect& effect : other_effects()) effects.push_back(effect);
    for (const Effect& effect : effects) {
        std::size_t seed = 0;
        for (const auto& [width, height] : odd_sizes()) {
            const Picture source = ++seed % 3 == 0 ? random_opaque_picture(width, height, seed)
                                                   : random_picture(width, height, seed);
            const Picture& expected = plain_result_of(effect, source, std::to_string(seed));
            SCOPED_TRACE(effect.name);
            ASSERT_TRUE(same_pixels(expected, result_of(effect, source, height, seed % 5)));
            ASSERT_TRUE(same_pixels(expected, result_of(effect, source, 13, 1)));
        }
    }
}

TEST_P(EffectsOfEveryInstructionSet, equal_the_plain_version_in_large_windows) {
    const TargetScope scope(GetParam());
    for (const Effect& effect : rank_effects({63, 64, 127, 128, 300, 16384})) {
        for (const Picture& source : {random_picture(79, 71, 3), smooth_picture(301, 37)}) {
            SCOPED_TRACE(effect.name);
            const Picture& expected = plain_result_of(effect, source, std::to_string(source.width));
            ASSERT_TRUE(same_pixels(expected, result_of(effect, source, source.height, 3)));
            ASSERT_TRUE(same_pixels(expected, result_of(effect, source, 30, 0)));
        }
    }
}

TEST_P(EffectsOfEveryInstructionSet, equal_the_plain_version_when_streaming) {
    const TargetScope scope(GetParam());
    std::vector<Effect> effects = rank_effects({1, 2, 6});
    for (Effect& effect : other_effects()) effects.push_back(effect);
    for (const auto& [width, height] : {std::pair{1024, 544}, std::pair{787, 703}}) {
        const Picture source = smooth_picture(width, height);
        ASSERT_GE(source.view().bytes(), kStreamingBytes);
        for (const Effect& effect : effects) {
            SCOPED_TRACE(effect.name);
            const Picture& expected = plain_result_of(effect, source, std::to_string(source.width));
            // The system gives blocks of this size out aligned, but for its own 16 bytes before them.
            ASSERT_TRUE(same_pixels(expected, result_of(effect, source, height, 12)));
            ASSERT_TRUE(same_pixels(expected, result_of(effect, source, height, 1)));
        }
    }
}

TEST_P(EffectsOfEveryInstructionSet, weave_like_the_plain_version) {
    const TargetScope scope(GetParam());
    for (const std::int32_t opacity : {1, 2, 40, 256, 1000, 0x7FFFFFFF}) {
        std::size_t seed = 0;
        std::vector<std::pair<std::int32_t, std::int32_t>> sizes = odd_sizes();
        sizes.emplace_back(1100, 130);
        for (const auto& [width, height] : sizes) {
            const Picture source = ++seed % 2 == 0 ? random_opaque_picture(width, height, seed)
                                                   : random_picture(width, height, seed);
            const auto woven = [&, w = width, h = height](RandomGenerator& random) {
                Picture target(w, h);
                filters::textile(source.view(), target.view(), opacity, random);
                return target;
            };
            RandomGenerator random;
            const Picture actual = woven(random);
            const PlainScope plain;
            RandomGenerator plainRandom;
            ASSERT_TRUE(same_pixels(woven(plainRandom), actual)) << opacity;
            ASSERT_EQ(plainRandom.state(), random.state());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, EffectsOfEveryInstructionSet, ::testing::ValuesIn(available_targets()),
                         [](const auto& info) { return std::string(hwy::TargetName(info.param)); });

}  // namespace
}  // namespace pixvane::test

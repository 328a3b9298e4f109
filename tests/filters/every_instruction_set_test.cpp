// Every kernel on every instruction set of the machine, against its plain version.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "core/compose.h"
#include "core/streaming.h"
#include "filters/adjust/adjust.h"
#include "filters/adjust/histogram.h"
#include "filters/geometry/geometry.h"
#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

struct Kernel {
    std::string name;
    std::function<void(ConstPixelBuffer, PixelBuffer)> run;
    bool exchangesSides = false;
    bool inPlace = true;
};

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

filters::ChannelTables random_tables() {
    filters::ChannelTables tables;
    TestRandom random(77);
    for (auto* table : {&tables.red, &tables.green, &tables.blue}) {
        for (auto& entry : *table) entry = static_cast<std::uint8_t>(random.next());
    }
    return tables;
}

std::vector<Kernel> kernels() {
    using namespace filters;
    std::vector<Kernel> list;
    const auto add = [&](const std::string& name, auto run) { list.push_back({name, run}); };
    add("desaturate", [](auto s, auto t) { desaturate(s, t); });
    add("invert", [](auto s, auto t) { invert(s, t); });
    add("tables", [](auto s, auto t) { apply_tables(s, t, random_tables()); });
    add("autocolor", [](auto s, auto t) { apply_tables(s, t, autocolor_tables(channel_ranges(s))); });
    add("autolevels", [](auto s, auto t) { apply_tables(s, t, autolevels_tables(channel_histograms(s))); });
    add("autocontrast",
        [](auto s, auto t) { apply_tables(s, t, autocontrast_tables(channel_histograms(s))); });
    for (const std::int32_t percent :
         {-400, -29, 0, 30, 29, 57, 100, 130, 199, 250, 5000, 200'000, kLargest, -kLargest - 1})
        add("saturate " + std::to_string(percent), [=](auto s, auto t) { saturate(s, t, percent); });
    for (const std::int32_t d : {0, 1, -1, 100, -255, 256, kLargest, -kLargest - 1})
        add("brightness " + std::to_string(d), [=](auto s, auto t) { brightness(s, t, d, 17, -40); });
    for (const std::int32_t level : {-1, 0, 100, 127, 254, 255, kLargest, -kLargest - 1})
        add("monochrome " + std::to_string(level),
            [=](auto s, auto t) { monochrome(s, t, level, 0xFFFEDCBA, 0x00123456); });
    add("hue", [](auto s, auto t) { hue(s, t, 160, 133, 107); });
    add("hue of black", [](auto s, auto t) { hue(s, t, 0, 0, 0); });
    for (const std::int32_t levels : {2, 3, 7, 49, 255, 256})
        add("bw levels " + std::to_string(levels), [=](auto s, auto t) { bw_levels(s, t, levels); });
    for (const std::int32_t amount : {0, 1, 40, 255, 70'000, -40, kLargest, -kLargest - 1}) {
        for (const bool same : {true, false}) {
            add("noise " + std::to_string(amount) + (same ? " same" : ""), [=](auto s, auto t) {
                RandomGenerator random;
                random.set_state(12345);
                noise(s, t, same, amount, random);
                // The state that is left shows as well.
                if (t.count() > 1) t.data[0] = random.state();
            });
        }
    }
    for (std::int32_t type = 0; type < 8; ++type) {
        list.push_back({"rotate flip " + std::to_string(type),
                        [=](auto s, auto t) { rotate_flip(s, t, type); }, type % 2 != 0, false});
    }
    list.push_back({"copy", [](auto s, auto t) { copy(t, s); }, false, false});
    list.push_back({"flatten", [](auto s, auto t) { flatten(t, s, 0xFF808040); }, false, false});
    list.push_back({"flatten on glass", [](auto s, auto t) { flatten(t, s, 0x40808040); }, false, false});
    list.push_back({"place", [](auto s, auto t) { place(t, s, 3, -2, 0xFF808040); }, false, false});
    return list;
}

/// Runs a kernel on pictures that start so many pixels behind a line of the cache.
Picture result_of(const Kernel& kernel, const Picture& source, std::size_t sourceOffset,
                  std::size_t targetOffset) {
    constexpr std::size_t kLine = 16;
    const auto start_of = [](std::vector<Pixel>& memory, std::size_t offset) {
        const std::size_t past = reinterpret_cast<std::uintptr_t>(memory.data()) / sizeof(Pixel) % kLine;
        return memory.data() + (kLine - past) + offset;
    };
    std::vector<Pixel> from(source.pixels.size() + sourceOffset + kLine);
    Pixel* const sourceStart = start_of(from, sourceOffset);
    std::copy(source.pixels.begin(), source.pixels.end(), sourceStart);

    std::vector<Pixel> to(source.pixels.size() + targetOffset + kLine + 1, 0xDEADBEEF);
    Pixel* const targetStart = start_of(to, targetOffset);
    Picture result(kernel.exchangesSides ? source.height : source.width,
                   kernel.exchangesSides ? source.width : source.height);
    kernel.run({sourceStart, source.width, source.height}, {targetStart, result.width, result.height});
    EXPECT_EQ(targetStart[-1], 0xDEADBEEF) << kernel.name;
    EXPECT_EQ(targetStart[source.pixels.size()], 0xDEADBEEF) << kernel.name;
    std::copy_n(targetStart, source.pixels.size(), result.pixels.begin());
    return result;
}

Picture plain_result_of(const Kernel& kernel, const Picture& source) {
    const PlainScope plain;
    return result_of(kernel, source, 0, 0);
}

class EveryInstructionSet : public ::testing::TestWithParam<std::int64_t> {};

TEST_P(EveryInstructionSet, EqualsThePlainVersion) {
    const TargetScope scope(GetParam());
    ASSERT_STREQ(scope.name(), running_target());
    for (const Kernel& kernel : kernels()) {
        std::size_t seed = 0;
        for (const auto& [width, height] : odd_sizes()) {
            const Picture source = random_picture(width, height, ++seed);
            const Picture expected = plain_result_of(kernel, source);
            ASSERT_TRUE(same_pixels(expected, result_of(kernel, source, seed % 5, seed % 7))) << kernel.name;
            if (!kernel.inPlace) continue;
            Picture inPlace = source;
            kernel.run(inPlace.view(), inPlace.view());
            ASSERT_TRUE(same_pixels(expected, inPlace)) << kernel.name;
        }
    }
}

TEST_P(EveryInstructionSet, EqualsThePlainVersionWhenStreaming) {
    const TargetScope scope(GetParam());
    // Sides that fit the blocks of the quarter turns, and sides that don't.
    for (const auto& [width, height] : {std::pair{1024, 544}, std::pair{787, 703}}) {
        const Picture source = random_picture(width, height, 31);
        ASSERT_GE(source.view().bytes(), kStreamingBytes);
        for (const Kernel& kernel : kernels()) {
            const Picture expected = plain_result_of(kernel, source);
            ASSERT_TRUE(same_pixels(expected, result_of(kernel, source, 1, 3))) << kernel.name;
            ASSERT_TRUE(same_pixels(expected, result_of(kernel, source, 0, 0))) << kernel.name;
        }
    }
}

TEST_P(EveryInstructionSet, SameStatistics) {
    const TargetScope scope(GetParam());
    for (const auto& [width, height] : odd_sizes()) {
        const Picture source = random_picture(width, height, 41);
        const ConstPixelBuffer view = source.view();
        const auto statistics = [&] {
            return std::tuple(filters::channel_histograms(view), filters::luminance_histogram(view),
                              filters::channel_histogram(view, filters::Channel::Red),
                              filters::channel_histogram(view, filters::Channel::Green),
                              filters::channel_histogram(view, filters::Channel::Blue),
                              filters::channel_ranges(view));
        };
        const auto fast = statistics();
        const PlainScope plain;
        ASSERT_EQ(statistics(), fast);
    }
}

TEST_P(EveryInstructionSet, RowsOfAQuarterTurnEqualTheWhole) {
    const TargetScope scope(GetParam());
    const Picture source = random_picture(83, 61, 51);
    for (std::int32_t type = 0; type < 8; ++type) {
        Picture whole(type % 2 != 0 ? 61 : 83, type % 2 != 0 ? 83 : 61);
        Picture parts = whole;
        filters::rotate_flip(source.view(), whole.view(), type);
        for (std::int32_t first = 0; first < parts.height; first += 19)
            filters::rotate_flip_rows(source.view(), parts.view(), type, first,
                                      std::min(first + 19, parts.height));
        ASSERT_TRUE(same_pixels(whole, parts)) << type;
    }
}

INSTANTIATE_TEST_SUITE_P(All, EveryInstructionSet, ::testing::ValuesIn(available_targets()),
                         [](const auto& info) { return std::string(hwy::TargetName(info.param)); });

}  // namespace
}  // namespace pixvane::test

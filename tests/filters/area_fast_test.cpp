// The filters of areas on every instruction set, against their plain versions: where arguments change the way
// they go, radii beyond the picture, bands of any size, streaming.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>

#include "core/streaming.h"
#include "filters/area_reference.h"
#include "support/instruction_sets.h"

namespace pixvane::test {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

filters::Kernel random_kernel(std::int32_t side, std::int32_t lowest, std::int32_t highest,
                              std::uint64_t seed) {
    TestRandom random(seed);
    filters::Kernel kernel;
    kernel.side = side;
    const auto span = static_cast<std::uint32_t>(highest - lowest + 1);
    for (std::int32_t i = 0; i < side * side; ++i)
        kernel.weights[static_cast<std::size_t>(i)] = lowest + static_cast<std::int32_t>(random.below(span));
    return kernel;
}

void add_kernels(std::vector<AreaFilter>& list) {
    using namespace filters;
    list.push_back(convolving(sharpen_kernel(), "sharpen"));
    list.push_back(convolving(laplas_kernel(), "laplas"));
    list.push_back(convolving(contour_kernel(), "contour"));
    for (std::int32_t i = 0; i < 4; ++i)
        list.push_back(convolving(sobel_kernel(i), "sobel " + std::to_string(i)));
    for (std::int32_t i = 0; i < 8; ++i)
        list.push_back(convolving(relief_kernel(i), "relief " + std::to_string(i)));
    list.push_back(convolving(Kernel{}, "no weights"));
    for (const std::int32_t side : {3, 5}) {
        for (const auto& [lowest, highest] : {std::pair{0, 1},
                                              {1, 1},
                                              {-1, 1},
                                              {0, 9},
                                              {0, 10},
                                              {10, 11},
                                              {-10, 10},
                                              {-11, -9},
                                              {-300, 900},
                                              {30'000, 32'767},
                                              {32'000, 40'000},
                                              {-32'768, -32'700},
                                              {-1'000'000, 9'000'000},
                                              {-1'000'000'000, 1'000'000'000}}) {
            for (std::uint64_t seed = 0; seed < 4; ++seed)
                list.push_back(convolving(random_kernel(side, lowest, highest, seed),
                                          "kernel " + std::to_string(side) + " of " + std::to_string(lowest) +
                                              ".." + std::to_string(highest)));
        }
    }
    // Sums far beyond what their divisors, multiples of powers of two, make bytes of.
    for (const std::int32_t rest : {-7000, -7488, -7500}) {
        Kernel kernel;
        kernel.weights = {8000, -8000, 8000, -8000, 8000, rest};
        list.push_back(convolving(kernel, "steep " + std::to_string(rest)));
    }
    // One neighbour alone, at each place of its own.
    for (std::size_t i = 0; i < 25; ++i) {
        Kernel kernel;
        kernel.side = 5;
        kernel.weights[i] = i % 2 == 0 ? 1 : 1 << (i / 2 + 3);
        list.push_back(convolving(kernel, "one weight at " + std::to_string(i)));
    }
}

std::vector<AreaFilter> area_filters() {
    std::vector<AreaFilter> list;
    add_kernels(list);
    for (const std::int32_t radius :
         {0, 1, 2, 3, 7, 8, 15, 16, 63, 64, 126, 127, 128, 129, 300, 2051, 2052, 16384}) {
        list.push_back(averaging(radius, 1));
        // 0 is where the sum of the weights is.
        const std::int32_t others = 2 * radius * (2 * radius + 2);
        for (const std::int32_t weight : {0, -1, -8, -others, 1000, kLargest})
            if (radius < 300 || weight == 0) list.push_back(averaging(radius, weight));
    }
    // Where integers of 16 bits and of 32, and the floats that divide them, end.
    for (const std::int32_t radius : {1, 7, 8, 63, 127, 128}) {
        const std::int32_t others = 2 * radius * (2 * radius + 2);
        for (const std::int32_t weight : {5, -(1 << 22), (1 << 22) + 1})
            list.push_back(averaging(radius, weight));
        for (const std::int32_t sum : {257, 258, 16384, 16385, -16384, -16385})
            list.push_back(averaging(radius, sum - others));
    }
    for (const std::int32_t radius : {1, 2, 5, 20, 63, 64, 127, 128, 300, 2000}) {
        for (const std::int32_t fallOff : {1, 7, 1000})
            if (radius < 300 || fallOff == 7) list.push_back(blurring_by_rings(radius, fallOff));
    }
    list.push_back(blurring_by_rings(3, 100'000'000));
    list.push_back(blurring_by_rings(100, kLargest));
    for (const std::int32_t radius : {1, 2, 3, 4, 5, 8, 20, 33, 128, 300, 16384}) {
        for (const std::int32_t level : {-1, 0, 20, 200, 254, 255, kLargest})
            list.push_back(blurring_smartly(radius, level));
    }
    for (const std::int32_t level : {-1, 0, 1, 20, 100, 255, 256, kLargest, -kLargest - 1})
        list.push_back(sharpening_edges(level));
    for (const std::int32_t dx : {0, 1, -1, 10, -10}) {
        for (const std::int32_t dy : {0, 3, -10}) list.push_back(embossing(dx, dy));
    }
    return list;
}

Picture plain_result(const AreaFilter& filter, const Picture& source) {
    const PlainScope scope;
    return run(filter, source.view());
}

/// Half of it even areas, so that local ranges are small there.
Picture part_flat(std::int32_t width, std::int32_t height, std::uint64_t seed) {
    Picture picture = random_picture(width, height, seed);
    TestRandom random(seed);
    for (std::int32_t y = 0; y < height; ++y) {
        for (std::int32_t x = 0; x < width; ++x) {
            Pixel& p = picture.view().row(y)[x];
            if ((x / 13 + y / 7) % 2 == 0) p = (p & 0xFF010103) + 0x40F00000;
        }
    }
    return picture;
}

class AreaFast : public ::testing::TestWithParam<std::int64_t> {};

TEST_P(AreaFast, EqualsThePlainVersionInBandsOfAnySize) {
    const TargetScope scope(GetParam());
    ASSERT_STREQ(scope.name(), running_target());
    const std::vector<AreaFilter> filters = area_filters();
    std::size_t seed = 0;
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 9}, {9, 2}, {16, 16}, {50, 70}, {131, 33}}) {
        const Picture source = part_flat(width, height, ++seed);
        for (const AreaFilter& filter : filters) {
            const Picture expected = plain_result(filter, source);
            ASSERT_TRUE(same_pixels(expected, run(filter, source.view(), 1 << 30, seed % 7))) << filter.name;
            ASSERT_TRUE(same_pixels(expected, run(filter, source.view(), 1 + height / 3))) << filter.name;
        }
    }
}

TEST_P(AreaFast, EqualsThePlainVersionAtTheEndsOfTheRange) {
    // White and black in blocks: the largest sums there are.
    const TargetScope scope(GetParam());
    Picture source(150, 60, 0x00FFFFFF);
    for (std::int32_t y = 20; y < 40; ++y) {
        for (std::int32_t x = 100; x < 150; ++x) source.view().row(y)[x] = kOpaque;
    }
    for (const AreaFilter& filter : area_filters())
        ASSERT_TRUE(same_pixels(plain_result(filter, source), run(filter, source.view()))) << filter.name;
}

TEST_P(AreaFast, EqualsThePlainVersionWhenStreaming) {
    const TargetScope scope(GetParam());
    const std::vector<AreaFilter> filters = {convolving(filters::sharpen_kernel(), "sharpen"),
                                             convolving(filters::relief_kernel(1), "relief"),
                                             averaging(4, 1),
                                             averaging(130, 1),
                                             averaging(130, 7),
                                             blurring_by_rings(4, 1),
                                             blurring_by_rings(70, 1),
                                             blurring_smartly(3, 40),
                                             sharpening_edges(40),
                                             embossing(1, -1)};
    for (const auto& [width, height] : {std::pair{1024, 544}, std::pair{787, 703}}) {
        const Picture source = part_flat(width, height, 3);
        ASSERT_GE(source.view().bytes(), kStreamingBytes);
        for (const AreaFilter& filter : filters) {
            const Picture expected = plain_result(filter, source);
            ASSERT_TRUE(same_pixels(expected, run(filter, source.view(), 1 << 30, 3))) << filter.name;
            ASSERT_TRUE(same_pixels(expected, run(filter, source.view(), 1 << 30, 12))) << filter.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, AreaFast, ::testing::ValuesIn(available_targets()),
                         [](const auto& info) { return std::string(hwy::TargetName(info.param)); });

}  // namespace
}  // namespace pixvane::test

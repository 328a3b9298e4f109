// The limit on bitmaps and the reuse of their memory; random numbers.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <set>

#include "core/bitmap.h"
#include "core/integer_math.h"
#include "core/random.h"

namespace pixvane {
namespace {

/// A source that counts what it gave, and may have no more to give.
class CountingPages final : public PageSource {
public:
    std::set<void*> out;
    int allocations = 0;
    int most = 1 << 30;

    void* allocate(std::size_t size) noexcept override {
        if (static_cast<int>(out.size()) >= most) return nullptr;
        ++allocations;
        void* block = ::operator new(size, std::align_val_t{64});
        out.insert(block);
        return block;
    }
    void release(void* block, std::size_t) noexcept override {
        EXPECT_EQ(out.erase(block), 1u);
        ::operator delete(block, std::align_val_t{64});
    }
    std::size_t machine_memory() const noexcept override { return 400 << 20; }
};

TEST(PixelMemory, reuses_blocks_within_its_limit) {
    static CountingPages pages;
    PixelMemory& memory = PixelMemory::instance();
    memory.trim();
    memory.use(pages);
    EXPECT_EQ(memory.limit(), 300u << 20);
    const std::uint64_t before = memory.in_use();
    for (int i = 0; i < 50; ++i) {
        auto bitmap = Bitmap::create(1000, 1000);
        ASSERT_NE(bitmap, nullptr);
        bitmap->pixels().row(999)[999] = 1;
    }
    EXPECT_EQ(pages.allocations, 1);
    EXPECT_EQ(memory.in_use(), before);

    // 72 bitmaps of 4,000,000 bytes and their pages fit into 300 MiB, and kept blocks make room for others.
    memory.set_limit(before + (40u << 20));
    std::vector<std::shared_ptr<Bitmap>> bitmaps;
    while (auto bitmap = Bitmap::create(1000, 1000)) bitmaps.push_back(bitmap);
    EXPECT_EQ(bitmaps.size(), 10u);
    EXPECT_EQ(Bitmap::create(1000, 1000), nullptr);
    bitmaps.resize(5);
    EXPECT_NE(Bitmap::create(2000, 2000), nullptr);
    EXPECT_EQ(Bitmap::create(3000, 2000), nullptr);

    // When the system has no more, what is kept is given back first.
    bitmaps.clear();
    memory.set_limit(300u << 20);
    pages.most = static_cast<int>(pages.out.size());
    EXPECT_NE(Bitmap::create(1234, 567), nullptr);
    pages.most = 0;
    memory.trim();
    EXPECT_TRUE(pages.out.empty());
    EXPECT_EQ(Bitmap::create(10, 10), nullptr);
    pages.most = 1 << 30;
}

TEST(Bitmap, exists_only_in_sizes_that_pictures_have) {
    for (const auto& [width, height] : {std::pair<std::int64_t, std::int64_t>{0, 5},
                                        {5, -1},
                                        {65536, 1},
                                        {65535, 8193},
                                        {1LL << 40, 1LL << 40}})
        EXPECT_EQ(Bitmap::create(width, height), nullptr);
    EXPECT_NE(Bitmap::create(65535, 1), nullptr);
}

TEST(RandomGenerator, starts_at_one_and_jumps_as_far_as_it_steps) {
    RandomGenerator stepped;
    EXPECT_EQ(stepped.next(), 41);
    EXPECT_EQ(stepped.next(), 18467);
    EXPECT_EQ(stepped.next(), 6334);
    for (const std::uint64_t count : {0u, 1u, 2u, 3u, 1000u, 65537u}) {
        RandomGenerator jumped = stepped;
        jumped.jump(count);
        for (std::uint64_t i = 0; i < count; ++i) stepped.next();
        EXPECT_EQ(jumped.state(), stepped.state()) << count;
    }
    // The period is 2^32.
    RandomGenerator round = stepped;
    round.jump(std::uint64_t{1} << 32);
    EXPECT_EQ(round.state(), stepped.state());
}

TEST(IntegerMath, converts_every_double) {
    EXPECT_EQ(trunc_to_int32(-1.9), -1);
    EXPECT_EQ(trunc_to_int32(1e300), INT32_MAX);
    EXPECT_EQ(trunc_to_int32(-1e300), INT32_MIN);
    EXPECT_EQ(trunc_to_int32(2147483646.5), 2147483646);
    EXPECT_EQ(trunc_to_int32(0.0 / 1e-320), 0);
    EXPECT_EQ(trunc_to_int32(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(mul_div(10, 5, 100), 1);  // 0.5 goes up
    EXPECT_EQ(mul_div(9, 5, 100), 0);
    EXPECT_EQ(clamp_to_byte(INT64_MIN), 0);
    EXPECT_EQ(clamp_to_byte(256), 255);
}

}  // namespace
}  // namespace pixvane

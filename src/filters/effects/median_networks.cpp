// The median of small windows by sorting networks: as many windows at once as a vector has pixels.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/median_networks.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/pixel_runs-inl.h"
#include "filters/effects/effects_plain.h"
#include "filters/effects/median_plans.h"
#include "filters/effects/median_versions.h"
#include "filters/effects/network_steps-inl.h"

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// Windows one below the other, walked down two rows at a time.
template <int kRadius>
class Walk {
public:
    /// `rows` are the pixels `kRadius` to the left of the vector's, from `kRadius` rows above the first of
    /// `count` rows to `kRadius` + 1 below the last. write(row, vector) gets the medians.
    template <class Write>
    HWY_INLINE void run(const Pixel* const* rows, std::int32_t count, const Write& write) {
        constexpr std::int32_t kPairs = kRadius;
        sort_row(rows[0], seconds_[kPairs]);
        for (std::int32_t pair = 0; pair < kPairs; ++pair) {
            ByteVec first[kSide];
            sort_row(rows[1 + 2 * pair], first);
            sort_row(rows[2 + 2 * pair], seconds_[pair]);
            merge_pair(first, seconds_[pair], pairs_[pair]);
        }
        if constexpr (Plans::kQuads > 0) {
            for (std::size_t quad = 0; quad + 1 < kQuadSlots; ++quad)
                merge_quad(pairs_[quad], pairs_[quad + 1], quads_[quad]);
        }
        std::size_t slot = 0;        // of the pair of rows that is the upmost in common
        std::size_t above = kPairs;  // the row before it
        std::size_t quadSlot = 0;
        for (std::int32_t y = 0; y < count; y += 2) {
            if constexpr (Plans::kQuads > 0) {
                merge_quad(pairs_[later<kPairs>(slot, 2 * Plans::kQuads - 2)],
                           pairs_[later<kPairs>(slot, 2 * Plans::kQuads - 1)],
                           quads_[later<kQuadSlots>(quadSlot, kQuadSlots - 1)]);
            }
            ByteVec common[Plans::kCommon.results.count];
            merge_common(slot, quadSlot, common);
            write(y, last(common, seconds_[above]));
            ByteVec below[kSide];
            sort_row(rows[y + 2 * kRadius + 1], below);
            if (y + 1 < count) write(y + 1, last(common, below));
            if (y + 2 < count) {
                sort_row(rows[y + 2 * kRadius + 2], seconds_[above]);
                merge_pair(below, seconds_[above], pairs_[slot]);
            }
            slot = later<kPairs>(slot, 1);
            above = later<kPairs + 1>(above, 1);
            quadSlot = later<kQuadSlots>(quadSlot, 1);
        }
    }

private:
    using Plans = MedianPlans<kRadius>;
    static constexpr std::size_t kSide = Plans::kSide;
    static constexpr std::size_t kQuadSlots = Plans::kQuads > 0 ? 2 * Plans::kQuads - 1 : 1;

    template <std::size_t kSlots>
    static HWY_INLINE std::size_t later(std::size_t slot, std::size_t steps) {
        slot += steps;
        return slot >= kSlots ? slot - kSlots : slot;
    }

    static PIXVANE_NETWORK_INLINE void sort_row(const Pixel* row, ByteVec* sorted) {
        const PixelTag d;
        ByteVec values[kSide];
        for (std::size_t i = 0; i < kSide; ++i) values[i] = hn::BitCast(ByteTag(), hn::LoadU(d, row + i));
        run_network<Plans::kRow>(values, sorted);
    }

    static PIXVANE_NETWORK_INLINE void merge_pair(const ByteVec* first, const ByteVec* second,
                                                  ByteVec* merged) {
        ByteVec values[2 * kSide];
        load_values<kSide>(first, values);
        load_values<kSide>(second, values + kSide);
        run_network<Plans::kPair>(values, merged);
    }

    static PIXVANE_NETWORK_INLINE void merge_quad(const ByteVec* first, const ByteVec* second,
                                                  ByteVec* merged) {
        constexpr std::size_t kCount = Plans::kPair.results.count;
        ByteVec values[2 * kCount];
        load_values<kCount>(first, values);
        load_values<kCount>(second, values + kCount);
        run_network<Plans::kQuad>(values, merged);
    }

    PIXVANE_NETWORK_INLINE void merge_common(std::size_t slot, std::size_t quadSlot, ByteVec* common) const {
        constexpr std::size_t kPairCount = Plans::kPair.results.count;
        constexpr std::size_t kQuadCount = Plans::kQuad.results.count;
        ByteVec values[Plans::kQuads * kQuadCount + (Plans::kPairs - 2 * Plans::kQuads) * kPairCount];
        ByteVec* next = values;
        for (std::size_t quad = 0; quad < Plans::kQuads; ++quad, next += kQuadCount)
            load_values<kQuadCount>(quads_[later<kQuadSlots>(quadSlot, 2 * quad)], next);
        for (std::size_t pair = 2 * Plans::kQuads; pair < Plans::kPairs; ++pair, next += kPairCount)
            load_values<kPairCount>(pairs_[later<Plans::kPairs>(slot, pair)], next);
        run_network<Plans::kCommon>(values, common);
    }

    static PIXVANE_NETWORK_INLINE ByteVec last(const ByteVec* common, const ByteVec* row) {
        constexpr std::size_t kCount = Plans::kCommon.results.count;
        ByteVec values[kCount + kSide];
        load_values<kCount>(common, values);
        load_values<kSide>(row, values + kCount);
        ByteVec median;
        run_network<Plans::kLast>(values, &median);
        return median;
    }

    ByteVec seconds_[Plans::kPairs + 1][kSide];  // the lower row of each pair
    ByteVec pairs_[Plans::kPairs][Plans::kPair.results.count];
    ByteVec quads_[kQuadSlots][Plans::kQuad.results.count];
};

// How many rows are walked down at once: enough for the start of the walk not to matter, few enough for the
// pictures' rows to be read as streams.
template <int kRadius>
constexpr std::int32_t kWalkRows = kRadius < 3 ? 16 : 64;

template <int kRadius, bool kStreaming>
HWY_INLINE void walk_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t first,
                          std::int32_t last) {
    const PixelTag d;
    constexpr std::int32_t kReach = 2 * kRadius + 2;
    constexpr std::int32_t kRows = kWalkRows<kRadius> + kReach;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(d));
    const Pixel* rows[kRows];
    Walk<kRadius> walk;
    for (std::int32_t top = first; top < last; top += kWalkRows<kRadius>) {
        const std::int32_t count = std::min(kWalkRows<kRadius>, last - top);
        const auto row_of = [&](std::int32_t i) {
            return source.row(std::clamp(top - kRadius + i, 0, source.height - 1));
        };
        // Vectors that reach beyond the picture work on a copy with its edges repeated.
        const auto walk_edge = [&](std::int32_t x) {
            constexpr auto kMostLanes = static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));
            Pixel copies[kRows][kMostLanes + 2 * kRadius];
            for (std::int32_t i = 0; i < count + kReach; ++i) {
                for (std::int32_t u = 0; u < lanes + 2 * kRadius; ++u)
                    copies[i][u] = row_of(i)[std::clamp(x - kRadius + u, 0, source.width - 1)];
                rows[i] = copies[i];
            }
            const std::int32_t inside = std::min(lanes, source.width - x);
            walk.run(rows, count, [&](std::int32_t y, ByteVec medians) HWY_ATTR {
                Pixel result[kMostLanes];
                hn::StoreU(opaque(hn::BitCast(d, medians)), d, result);
                std::copy_n(result, inside, target.row(top + y) + x);
            });
        };
        std::int32_t x = 0;
        for (; x < std::min(kRadius, source.width); x += lanes) walk_edge(x);
        for (std::int32_t i = 0; i < count + kReach; ++i)
            rows[i] = row_of(i) + std::clamp(x - kRadius, 0, source.width);
        for (; x + lanes + kRadius <= source.width; x += lanes) {
            walk.run(rows, count, [&](std::int32_t y, ByteVec medians) HWY_ATTR {
                Pixel* to = target.row(top + y) + x;
                if constexpr (kStreaming) {
                    hn::Stream(opaque(hn::BitCast(d, medians)), d, to);
                } else {
                    hn::StoreU(opaque(hn::BitCast(d, medians)), d, to);
                }
            });
            for (std::int32_t i = 0; i < count + kReach; ++i) {
                rows[i] += lanes;
                hwy::Prefetch(rows[i] + lanes);
            }
        }
        for (; x < source.width; x += lanes) walk_edge(x);
    }
    if constexpr (kStreaming) hwy::FlushStream();
}

template <int kRadius>
HWY_NOINLINE void walk_picture(ConstPixelBuffer source, PixelBuffer target, std::int32_t first,
                               std::int32_t last) {
    constexpr std::size_t kBytes = hn::MaxLanes(PixelTag()) * sizeof(Pixel);
    const bool aligned = reinterpret_cast<std::uintptr_t>(target.data) % kBytes == 0 &&
                         static_cast<std::size_t>(target.width) * sizeof(Pixel) % kBytes == 0;
    // Beyond radius 2 memory is not what the time is spent on.
    if constexpr (kRadius < 3) {
        if (aligned && target.rows(first, last).bytes() >= kStreamingBytes)
            return walk_rows<kRadius, true>(source, target, first, last);
    }
    walk_rows<kRadius, false>(source, target, first, last);
}

void median_by_networks(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                        std::int32_t last) {
    switch (radius) {
        case 1:
            return walk_picture<1>(source, target, first, last);
        case 2:
            return walk_picture<2>(source, target, first, last);
        case 3:
            return walk_picture<3>(source, target, first, last);
        case 4:
            return walk_picture<4>(source, target, first, last);
        default:
            return walk_picture<5>(source, target, first, last);
    }
}
#else
void median_by_networks(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                        std::int32_t last) {
    plain::median(source, target, radius, first, last);
}
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(median_by_networks);

void median_by_networks(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                        std::int32_t last) {
    HWY_DYNAMIC_DISPATCH(median_by_networks)(source, target, radius, first, last);
}

}  // namespace pixvane::filters
#endif

// The networks for the median of a window, in the parts that neighbouring windows share.
// SPDX-License-Identifier: MIT
#pragma once

#include "filters/effects/sorting_network.h"

namespace pixvane::filters {

/// Rows are sorted, each once for all windows that it is in. Two windows, one below the other, have 2 r rows
/// in common: r pairs of rows, merged once as they come; from radius 4 on, pairs of pairs, too. What they
/// have in common is merged into the few values that may be the median of either window, and each window's
/// own row is merged into these last.
template <int kRadius>
struct MedianPlans {
    static constexpr std::size_t kSide = 2 * kRadius + 1;
    static constexpr std::size_t kWindow = kSide * kSide;
    static constexpr std::size_t kPairs = kRadius;
    /// Pairs of pairs in a window; none if they'd be used but once.
    static constexpr std::size_t kQuads = kRadius < 4 ? 0 : kRadius / 2;

    static constexpr Network make_row() {
        Network network;
        network.finish(network.sort(places_from(0, kSide, 0, kSide)));
        return network;
    }
    static constexpr Network make_pair() {
        Network network;
        network.finish(network.merge_trimmed(places_from(0, kSide, 0, kSide),
                                             places_from(kSide, kSide, 0, kSide), kWindow));
        return network;
    }
    static constexpr Network kRow = make_row();
    static constexpr Network kPair = make_pair();

    static constexpr Network make_quad() {
        Network network;
        const NetworkList first = places_like(kPair.results, 0);
        network.finish(network.merge_trimmed(first, places_like(kPair.results, first.count), kWindow));
        return network;
    }
    static constexpr Network kQuad = make_quad();

    static constexpr Network make_common() {
        Network network;
        std::size_t next = 0;
        NetworkList common;
        const auto join = [&](const NetworkList& like) {
            const NetworkList list = places_like(like, next);
            next += list.count;
            if (common.total == 0) {
                common = list;
            } else {
                common = network.merge_trimmed(common, list, kWindow);
            }
        };
        for (std::size_t i = 0; i < kQuads; ++i) join(kQuad.results);
        for (std::size_t i = 2 * kQuads; i < kPairs; ++i) join(kPair.results);
        network.finish(common);
        return network;
    }
    static constexpr Network kCommon = make_common();

    static constexpr Network make_last() {
        Network network;
        const NetworkList common = places_like(kCommon.results, 0);
        network.finish(network.merge_trimmed(common, places_from(common.count, kSide, 0, kSide), kWindow));
        return network;
    }
    static constexpr Network kLast = make_last();
    static_assert(kLast.results.count == 1);
};

}  // namespace pixvane::filters

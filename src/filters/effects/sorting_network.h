// Sorting networks for medians, worked out by the compiler: sorted lists are merged, and what can't be the
// median any more, or reaches no output, is left out.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace pixvane::filters {

/// Places in order, of which `below` more were left out at the low end.
struct NetworkList {
    static constexpr std::size_t kMost = 176;
    std::size_t count = 0;
    std::size_t below = 0;
    std::size_t total = 0;  // with all that was left out
    std::uint8_t places[kMost] = {};

    constexpr void append(std::size_t place) { places[count++] = static_cast<std::uint8_t>(place); }
    constexpr std::size_t operator[](std::size_t i) const { return places[i]; }

    /// The elements first, first + 2 and so on.
    constexpr NetworkList every_second(std::size_t first) const {
        NetworkList list;
        for (std::size_t i = first; i < count; i += 2) list.append(places[i]);
        return list;
    }
};

/// The smaller of two places' values goes to `low`, the larger to `high`, unless nobody wants it.
struct NetworkStep {
    std::uint8_t low = 0;
    std::uint8_t high = 0;
    bool keepsLow = false;
    bool keepsHigh = false;
};

/// Steps, in their order, and where the results lie then.
struct Network {
    static constexpr std::size_t kMost = 1024;
    std::size_t count = 0;
    NetworkStep steps[kMost] = {};
    NetworkList results;

    constexpr void exchange(std::size_t low, std::size_t high) {
        steps[count++] = {static_cast<std::uint8_t>(low), static_cast<std::uint8_t>(high), true, true};
    }

    /// Batcher's odd-even merge of lists of any length.
    constexpr NetworkList merge(const NetworkList& a, const NetworkList& b) {
        if (a.count == 0) return b;
        if (b.count == 0) return a;
        NetworkList merged;
        if (a.count == 1 && b.count == 1) {
            exchange(a[0], b[0]);
            merged.append(a[0]);
            merged.append(b[0]);
            return merged;
        }
        const NetworkList even = merge(a.every_second(0), b.every_second(0));
        const NetworkList odd = merge(a.every_second(1), b.every_second(1));
        merged.append(even[0]);
        std::size_t i = 0;
        for (; i < odd.count && i + 1 < even.count; ++i) {
            exchange(odd[i], even[i + 1]);
            merged.append(odd[i]);
            merged.append(even[i + 1]);
        }
        for (std::size_t k = i; k < odd.count; ++k) merged.append(odd[k]);
        for (std::size_t k = i + 1; k < even.count; ++k) merged.append(even[k]);
        return merged;
    }

    constexpr NetworkList sort(const NetworkList& list) {
        if (list.count < 2) return list;
        return merge(sort(list.every_second(0)), sort(list.every_second(1)));
    }

    /// Leaves out what is among the `windowSize` values of the window above or below the median for sure.
    static constexpr NetworkList trimmed(const NetworkList& list, std::size_t windowSize) {
        const std::size_t middle = windowSize / 2;
        NetworkList kept;
        kept.total = list.total;
        kept.below = list.below;
        for (std::size_t i = 0; i < list.count; ++i) {
            const std::size_t rank = list.below + i;
            if (list.total - 1 - rank > middle) {
                ++kept.below;
            } else if (rank <= middle) {
                kept.append(list[i]);
            }
        }
        return kept;
    }

    constexpr NetworkList merge_trimmed(const NetworkList& a, const NetworkList& b, std::size_t windowSize) {
        NetworkList merged = merge(a, b);
        merged.below = a.below + b.below;
        merged.total = a.total + b.total;
        return trimmed(merged, windowSize);
    }

    /// Drops the steps that reach none of these places.
    constexpr void finish(const NetworkList& wanted) {
        results = wanted;
        bool live[NetworkList::kMost] = {};
        for (std::size_t i = 0; i < wanted.count; ++i) live[wanted[i]] = true;
        std::size_t kept = count;
        for (std::size_t i = count; i-- > 0;) {
            NetworkStep step = steps[i];
            step.keepsLow = live[step.low];
            step.keepsHigh = live[step.high];
            if (!step.keepsLow && !step.keepsHigh) continue;
            live[step.low] = live[step.high] = true;
            steps[--kept] = step;
        }
        for (std::size_t i = kept; i < count; ++i) steps[i - kept] = steps[i];
        count -= kept;
    }
};

/// `count` places from `first` on, a sorted list of which `below` of `total` were left out below.
constexpr NetworkList places_from(std::size_t first, std::size_t count, std::size_t below,
                                  std::size_t total) {
    NetworkList list;
    list.below = below;
    list.total = total;
    for (std::size_t i = 0; i < count; ++i) list.append(first + i);
    return list;
}

/// Like `like`, but in places from `first` on.
constexpr NetworkList places_like(const NetworkList& like, std::size_t first) {
    return places_from(first, like.count, like.below, like.total);
}

}  // namespace pixvane::filters

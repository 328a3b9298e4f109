// Which source pixels make a pixel of a scaled picture along one axis, and how much each weighs.
// SPDX-License-Identifier: MIT
#include "core/scaling/scale_axis.h"

#include <algorithm>
#include <bit>

namespace pixvane {

void ScaleAxis::assign(const ScaledRange& range) {
    if (range == range_) return;
    range_ = range;
    taps_.clear();
    coarseWeights_.clear();
    left_.clear();
    rightWeights_.clear();
    unusedBits_ = 0;
    const auto count = static_cast<std::size_t>(range.count);
    taps_.reserve(count);
    for (std::int32_t i = 0; i < range.count; ++i) {
        const std::int64_t x = std::int64_t{range.first} + i;
        taps_.push_back(is_bilinear() ? bilinear_taps(x) : covered_taps(x));
        if (is_coarse()) make_coarse(taps_.back(), x);
    }
    if (!is_bilinear()) return;
    left_.reserve(count + kPadding);
    rightWeights_.reserve(count + kPadding);
    std::uint32_t bits = kBilinearTotal;
    for (const Taps& taps : taps_) {
        bits |= static_cast<std::uint32_t>(taps.lastWeight);
        left_.push_back(taps.first);
        rightWeights_.push_back(static_cast<std::uint32_t>(taps.lastWeight) * 0x10001u);
    }
    unusedBits_ = std::countr_zero(bits);
    left_.resize(count + kPadding, left_.back());
    rightWeights_.resize(count + kPadding, rightWeights_.back());
}

Taps ScaleAxis::bilinear_taps(std::int64_t x) const {
    const std::int64_t length = range_.length;
    const std::int64_t size = range_.size;
    if (length == 1) return {range_.from, 1, kBilinearTotal, 0};
    // p in units of 1/256 is 256 ((2 x + 1) s - d) / (2 d); what is negative is limited to 0 in any case.
    const std::int64_t numerator = kBilinearTotal * ((2 * x + 1) * length - size) + size;
    const std::int64_t place =
        std::min(std::max<std::int64_t>(numerator, 0) / (2 * size), (length - 1) * kBilinearTotal);
    // The very last pixel counts as the right one of the last two.
    const std::int64_t left = std::min(place / kBilinearTotal, length - 2);
    const auto right = static_cast<std::int32_t>(place - left * kBilinearTotal);
    return {range_.from + static_cast<std::int32_t>(left), 2, kBilinearTotal - right, right};
}

Taps ScaleAxis::covered_taps(std::int64_t x) const {
    const std::int64_t size = range_.size;
    const std::int64_t begin = x * range_.length;
    const std::int64_t end = begin + range_.length;
    const std::int64_t first = begin / size;
    const std::int64_t last = (end - 1) / size;
    return {range_.from + static_cast<std::int32_t>(first), static_cast<std::int32_t>(last - first + 1),
            static_cast<std::int32_t>((first + 1) * size - begin),
            static_cast<std::int32_t>(end - last * size)};
}

void ScaleAxis::make_coarse(Taps& taps, std::int64_t x) {
    const std::int64_t length = range_.length;
    taps.innerWeights = static_cast<std::int32_t>(coarseWeights_.size());
    // What lies before a border of two source pixels, rounded.
    std::int64_t before = 0;
    for (std::int32_t i = 0; i < taps.count; ++i) {
        const std::int64_t border = std::int64_t{taps.first - range_.from + i + 1} * range_.size - x * length;
        const std::int64_t covered = std::min(border, length);
        const std::int64_t upTo = (2 * kBilinearTotal * covered + length) / (2 * length);
        coarseWeights_.push_back(static_cast<std::uint16_t>(upTo - before));
        before = upTo;
    }
    taps.firstWeight = coarseWeights_[static_cast<std::size_t>(taps.innerWeights)];
    taps.lastWeight = coarseWeights_.back();
}

}  // namespace pixvane

// Which source pixels make a pixel of a scaled picture along one axis, and how much each weighs.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace pixvane {

/// `length` source pixels from `from` on are brought to `size` pixels, of which `count` from `first` on are
/// wanted. 1 <= length <= kMaxSide, 1 <= size < 2^31, 0 <= first, 1 <= count, first + count <= size.
struct ScaledRange {
    std::int32_t from;
    std::int32_t length;
    std::int32_t size;
    std::int32_t first;
    std::int32_t count;
    bool coarse = false;  ///< where pixels cover the source: weights of 8 bits, for what is only looked at

    bool operator==(const ScaledRange&) const = default;
};

/// `count` neighbours, from `first` on: the first and the last of them have weights of their own, those
/// between all the same. Of a single one, the weight is `firstWeight`.
struct Taps {
    std::int32_t first;
    std::int32_t count;
    std::int32_t firstWeight;
    std::int32_t lastWeight;
    std::int32_t innerWeights = 0;  ///< of a coarse axis: where the others are kept
};

/// One axis of a scaling. With d = size and s = length, pixel x of the scaled row
/// - covers the source from x s / d to (x + 1) s / d, if 2 d < s: each source pixel weighs as much as is
/// covered
///   of it, in units of 1 / d pixel, which makes s together;
/// - else lies at p = (x + 1/2) s / d - 1/2, rounded to 1/256 pixel, halves up, and limited to 0..s - 1: the
/// two
///   source pixels next to p weigh (1 - f) and f in units of 1/256, where f is the fraction of p.
class ScaleAxis {
public:
    explicit ScaleAxis(const ScaledRange& range) { assign(range); }
    /// Makes it the axis of another range, in the memory that it has; of the same one, it stays as it is.
    void assign(const ScaledRange& range);

    bool is_copy() const { return range_.size == range_.length; }
    /// Whether weights are bilinear; else pixels are means of what they cover.
    bool is_bilinear() const { return std::int64_t{2} * range_.size >= range_.length; }
    bool shrinks() const { return range_.size < range_.length; }
    bool is_half() const { return std::int64_t{2} * range_.size == range_.length; }
    std::int32_t count() const { return range_.count; }
    /// Of an axis that is a copy: the source pixel that is pixel i.
    std::int32_t source_of(std::int32_t i) const { return range_.from + range_.first + i; }

    const Taps& taps(std::int32_t i) const { return taps_[static_cast<std::size_t>(i)]; }
    /// Whether a pixel that covers the source weighs in units of 1/256 of itself: what is covered up to each
    /// border of two source pixels is rounded, halves up. So no edge is off by more than one level.
    bool is_coarse() const { return range_.coarse && !is_bilinear(); }
    /// Of the neighbours between the first and the last, unless the axis is coarse.
    std::int32_t inner_weight() const { return range_.size; }
    /// Of neighbour i of those.
    std::int32_t weight(const Taps& taps, std::int32_t i) const {
        if (i == 0) return taps.firstWeight;
        if (i == taps.count - 1) return taps.lastWeight;
        return is_coarse() ? coarseWeights_[static_cast<std::size_t>(taps.innerWeights + i)] : inner_weight();
    }
    /// Of all weights of a pixel.
    std::int32_t total_weight() const {
        return is_bilinear() || is_coarse() ? kBilinearTotal : range_.length;
    }
    /// The total of the same weights without common divisors.
    std::int32_t steps() const {
        return is_bilinear() || is_coarse() ? kBilinearTotal >> unusedBits_
                                            : range_.length / std::gcd(range_.length, range_.size);
    }
    /// How much further on those neighbours end that pixel i + 1 has; 0 for the last pixel.
    std::int32_t advance(std::int32_t i) const {
        if (i + 1 >= count()) return 0;
        return taps(i + 1).first + taps(i + 1).count - taps(i).first - taps(i).count;
    }
    /// The part of the source that is used: from the first pixel to behind the last.
    std::int32_t begin() const { return taps_.front().first; }
    std::int32_t end() const { return taps_.back().first + taps_.back().count; }

    /// The same for vector code, of a bilinear axis: the left one of both source pixels, and the weight of
    /// the right one in both halves of each number. The last entry is repeated kPadding times.
    const std::int32_t* left() const { return left_.data(); }
    const std::uint32_t* right_weights() const { return rightWeights_.data(); }
    /// How many low bits are 0 in all these weights, at most 8.
    std::int32_t unused_bits() const { return unusedBits_; }
    static constexpr std::size_t kPadding = 64;
    static constexpr std::int32_t kBilinearTotal = 256;

private:
    Taps bilinear_taps(std::int64_t x) const;
    Taps covered_taps(std::int64_t x) const;
    void make_coarse(Taps& taps, std::int64_t x);

    ScaledRange range_{};
    std::vector<Taps> taps_;
    std::vector<std::uint16_t> coarseWeights_;
    std::vector<std::int32_t> left_;
    std::vector<std::uint32_t> rightWeights_;
    std::int32_t unusedBits_ = 0;
};

}  // namespace pixvane

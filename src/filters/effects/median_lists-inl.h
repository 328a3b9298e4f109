// Lists of 16 counts, one in each block of a vector; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_MEDIAN_LISTS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_MEDIAN_LISTS_INL_H_
#undef PIXVANE_FILTERS_MEDIAN_LISTS_INL_H_
#else
#define PIXVANE_FILTERS_MEDIAN_LISTS_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "core/pixel_runs-inl.h"
#include "filters/effects/median_versions.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// Columns that are looked at together, a list of each in a block of a vector.
constexpr std::ptrdiff_t kTogether = hn::MaxLanes(ByteTag()) / kEntries;

// A word for each entry of a list.
class ListSums {
public:
    using Tag = hn::CappedTag<std::uint16_t, kEntries>;
    static constexpr std::size_t kVectors = kEntries / hn::MaxLanes(Tag());

    static HWY_INLINE ListSums zero() {
        ListSums sums;
        for (auto& v : sums.v_) v = hn::Zero(Tag());
        return sums;
    }
    static HWY_INLINE ListSums load(const std::uint16_t* from) {
        ListSums sums;
        for (std::size_t i = 0; i < kVectors; ++i) sums.v_[i] = hn::Load(Tag(), from + i * hn::Lanes(Tag()));
        return sums;
    }
    HWY_INLINE void store(std::uint16_t* to) const {
        for (std::size_t i = 0; i < kVectors; ++i) hn::Store(v_[i], Tag(), to + i * hn::Lanes(Tag()));
    }

    // Of a list of signed or unsigned bytes.
    template <class ListVec>
    HWY_INLINE void add(ListVec list) {
        using Byte = hn::TFromV<ListVec>;
        const hn::Rebind<Byte, Tag> bytes;
        const hn::Rebind<std::conditional_t<std::is_signed_v<Byte>, std::int16_t, std::uint16_t>, Tag> words;
        if constexpr (kVectors == 1) {
            add_to(0, hn::PromoteTo(words, list));
        } else {
            add_to(0, hn::PromoteTo(words, hn::LowerHalf(bytes, list)));
            add_to(1, hn::PromoteTo(words, hn::UpperHalf(bytes, list)));
        }
    }
    template <class ListVec>
    HWY_INLINE void take(ListVec list) {
        const hn::Rebind<std::uint8_t, Tag> bytes;
        if constexpr (kVectors == 1) {
            v_[0] = hn::Sub(v_[0], hn::PromoteTo(Tag(), list));
        } else {
            v_[0] = hn::Sub(v_[0], hn::PromoteTo(Tag(), hn::LowerHalf(bytes, list)));
            v_[1] = hn::Sub(v_[1], hn::PromoteTo(Tag(), hn::UpperHalf(bytes, list)));
        }
    }
    HWY_INLINE void add(const ListSums& other) {
        for (std::size_t i = 0; i < kVectors; ++i) v_[i] = hn::Add(v_[i], other.v_[i]);
    }

    // Each entry gets what is in those before it.
    HWY_INLINE void cumulate() {
        const Tag d;
        for (auto& v : v_) {
            v = hn::Add(v, hn::ShiftLeftLanes<1>(d, v));
            v = hn::Add(v, hn::ShiftLeftLanes<2>(d, v));
            v = hn::Add(v, hn::ShiftLeftLanes<4>(d, v));
        }
        const auto last = hn::Broadcast<7>(v_[0]);
        if constexpr (kVectors == 1) {
            v_[0] = hn::Add(v_[0], hn::ConcatLowerLower(d, last, hn::Zero(d)));
        } else {
            v_[1] = hn::Add(v_[1], last);
        }
    }

    // A bit for each entry above `middle`.
    HWY_INLINE void store_above(std::uint16_t middle, std::uint16_t* bits) const {
        const Tag d;
        auto* bytes = reinterpret_cast<std::uint8_t*>(bits);
        for (std::size_t i = 0; i < kVectors; ++i)
            hn::StoreMaskBits(d, hn::Gt(v_[i], hn::Set(d, middle)), bytes + i * hn::Lanes(d) / 8);
    }

private:
    template <class V>
    HWY_INLINE void add_to(std::size_t i, V more) {
        v_[i] = hn::Add(v_[i], hn::BitCast(Tag(), more));
    }

    hn::Vec<Tag> v_[kVectors];
};

// The list in one of the blocks of a vector.
template <std::size_t kIndex, class V>
HWY_INLINE auto list_in(V v) {
    using D = hn::DFromV<V>;
    if constexpr (hn::MaxLanes(D()) == kEntries) {
        return v;
    } else {
        constexpr std::size_t kHalf = hn::MaxLanes(D()) / kEntries / 2;
        const hn::Half<D> half;
        if constexpr (kIndex < kHalf) {
            return list_in<kIndex>(hn::LowerHalf(half, v));
        } else {
            return list_in<kIndex - kHalf>(hn::UpperHalf(half, v));
        }
    }
}

// The sum of each entry of a list and those before it, in each block.
HWY_INLINE ByteVec cumulated(ByteVec v) {
    v = hn::Add(v, hn::ShiftLeftBytes<1>(v));
    v = hn::Add(v, hn::ShiftLeftBytes<2>(v));
    v = hn::Add(v, hn::ShiftLeftBytes<4>(v));
    return hn::Add(v, hn::ShiftLeftBytes<8>(v));
}

// The first `count` of the blocks; in the others 0.
HWY_INLINE ByteVec first_blocks(ByteVec v, std::ptrdiff_t count) {
    constexpr std::ptrdiff_t kSize = hn::MaxLanes(ByteTag());
    struct Ones {
        std::uint8_t bytes[2 * kSize];
        constexpr Ones() : bytes() {
            for (std::ptrdiff_t i = 0; i < kSize; ++i) bytes[i] = 0xFF;
        }
    };
    static constexpr Ones kOnes;
    const std::ptrdiff_t kept = std::min(count, kTogether) * static_cast<std::ptrdiff_t>(kEntries);
    return hn::And(v, hn::LoadU(ByteTag(), kOnes.bytes + (kSize - kept)));
}

// What windows gain from one column to the next, a list in each block. While windows have no more than 127
// columns this is a byte with its sign; else both parts of the difference are kept.
template <bool kFitsSign>
struct ListGains {
    ByteVec in, out;

    HWY_INLINE ListGains(ByteVec added, ByteVec taken)
        : in(kFitsSign ? hn::Sub(added, taken) : added), out(taken) {}

    HWY_INLINE void cumulate() {
        in = cumulated(in);
        if constexpr (!kFitsSign) out = cumulated(out);
    }
    HWY_INLINE void keep(std::ptrdiff_t count) {
        in = first_blocks(in, count);
        if constexpr (!kFitsSign) out = first_blocks(out, count);
    }
    template <std::size_t kIndex>
    HWY_INLINE void add_to(ListSums& sums) const {
        if constexpr (kFitsSign) {
            sums.add(list_in<kIndex>(hn::BitCast(hn::RebindToSigned<ByteTag>(), in)));
        } else {
            sums.add(list_in<kIndex>(in));
            sums.take(list_in<kIndex>(out));
        }
    }
};

// Calls each(i) for the blocks of a vector.
template <class Each>
HWY_INLINE void for_blocks(const Each& each) {
    each(std::integral_constant<std::size_t, 0>());
    if constexpr (kTogether > 1) each(std::integral_constant<std::size_t, 1>());
    if constexpr (kTogether > 2) {
        each(std::integral_constant<std::size_t, 2>());
        each(std::integral_constant<std::size_t, 3>());
    }
}

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

// Scaling down with weights of 8 bits in vector code, for pictures that are looked at; included once for each
// instruction set.
//
// Columns are added up first, two rows at a time: bytes less 128 times 256 fit 16 bits with their signs.
// Along the row the sums take 24 bits, and as all weights of a pixel make 65536 together, its channels are
// bytes of them: nothing is divided. SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_COARSE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_COARSE_INL_H_
#undef PIXVANE_CORE_SCALE_COARSE_INL_H_
#else
#define PIXVANE_CORE_SCALE_COARSE_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_bilinear-inl.h"
#include "core/scaling/scale_floats-inl.h"
#include "core/scratch.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

using CoarseTag = hn::RebindToUnsigned<ShortTag>;
using CoarseVec = hn::Vec<CoarseTag>;

// Makes opaque rows of the target, one at a time. Invalid for exact weights, for too narrow targets, for rows
// of too many others, or without memory.
class CoarseScaler {
public:
    CoarseScaler(ConstPixelBuffer source, const Scaling& scaling) : source_(source), scaling_(scaling) {
        const ScaleAxis& axis = scaling.x();
        if (axis.total_weight() != kTotal || scaling.y().total_weight() != kTotal) return;
        if (axis.count() < kColumns) return;
        for (std::int32_t y = 0; y < scaling.y().count(); ++y) {
            const Taps& taps = scaling.y().taps(y);
            // A weight of all is no byte.
            if (taps.count > kMostRows || taps.firstWeight == kTotal || taps.lastWeight == kTotal) return;
        }
        const std::int32_t columns = axis.end() - axis.begin();
        strips_ = std::max(1, std::min(columns / kStrip, axis.count() / kColumns));
        isValid_ = make_windows(axis) && make_room();
    }
    bool is_valid() const { return isValid_; }

    // Returns false if not all of the pixels that row y is made of are opaque; then it is left half done.
    bool make_opaque_row(std::int32_t y, Pixel* to) {
        const std::ptrdiff_t next = std::ptrdiff_t{source_.width} * scaling_.y().advance(y);
        for (std::int32_t i = 0; i < strips_; ++i) {
            const std::int32_t first = edge(i), last = edge(i + 1);
            if (!add_rows(scaling_.y().taps(y), next, begin_of(first), end_of(last))) return false;
            const auto run = windows_ == 1   ? &CoarseScaler::make_pixels<1>
                             : windows_ == 2 ? &CoarseScaler::make_pixels<2>
                                             : &CoarseScaler::make_pixels<0>;
            (this->*run)(first, last, to);
        }
        return true;
    }

private:
    static constexpr std::int32_t kTotal = ScaleAxis::kBilinearTotal;
    // Columns of the source whose sums are made before pixels are made of them: they stay in the nearest
    // cache.
    static constexpr std::int32_t kStrip = 1024;
    static constexpr std::int32_t kMostRows = 64;
    // Pixels of a vector of sums.
    static constexpr std::int32_t kSums = kColumns / 2;
    // Sums are less this, so that they fit signed numbers.
    static constexpr std::uint16_t kBias = 0x8000;

    std::int32_t edge(std::int64_t strip) const {
        return static_cast<std::int32_t>(strip * scaling_.x().count() / strips_);
    }
    // The columns, from the first that is used on, of the pixels that begin or end there.
    std::int32_t begin_of(std::int32_t first) const { return starts_[first]; }
    std::int32_t end_of(std::int32_t last) const {
        const Taps& taps = scaling_.x().taps(last - 1);
        return taps.first + taps.count - scaling_.x().begin();
    }

    // Windows of whole vectors: of each pixel the one that its neighbours begin in, at an even column, and
    // the weights in pairs.
    bool make_windows(const ScaleAxis& axis) {
        const auto start_of = [&](std::int32_t x) { return (axis.taps(x).first - axis.begin()) & ~1; };
        for (std::int32_t x = 0; x < axis.count(); ++x) {
            const Taps& taps = axis.taps(x);
            const std::int32_t end = taps.first + taps.count - axis.begin();
            windows_ = std::max(windows_, (end - start_of(x) + kSums - 1) / kSums);
        }
        const auto count = static_cast<std::size_t>(axis.count());
        const std::size_t pairs = count * static_cast<std::size_t>(windows_) * kGroup;
        starts_ = thread_scratch<std::int32_t>(Scratch::ScaledStarts, count);
        weights_ = thread_scratch<std::uint32_t>(Scratch::ScaledWeights, pairs + kColumns);
        if (starts_ == nullptr || weights_ == nullptr) return false;
        std::fill_n(weights_, pairs + kColumns, 0u);
        for (std::int32_t x = 0; x < axis.count(); ++x) {
            const Taps& taps = axis.taps(x);
            starts_[x] = start_of(x);
            std::uint32_t* to = weights_ + std::ptrdiff_t{windows_} * kGroup * x;
            for (std::int32_t i = 0; i < taps.count; ++i) {
                const std::int32_t place = taps.first - axis.begin() - starts_[x] + i;
                to[place / 2] |= static_cast<std::uint32_t>(axis.weight(taps, i)) << (place % 2 * 16);
            }
        }
        return true;
    }

    bool make_room() {
        std::int32_t most = 0;
        for (std::int32_t i = 0; i < strips_; ++i)
            most = std::max(most, end_of(edge(i + 1)) - begin_of(edge(i)));
        const auto size = static_cast<std::size_t>(most + kColumns + windows_ * kSums) * 4;
        sums_ = thread_scratch<std::uint16_t>(Scratch::ScaledSums, size);
        if (sums_ != nullptr) std::fill_n(sums_, size, std::uint16_t{0});
        return sums_ != nullptr;
    }

    // Sums of the columns from `begin` to `end`; returns whether all of them are opaque. `next` pixels
    // further on begin the rows that come next, which are fetched meanwhile.
    bool add_rows(const Taps& taps, std::ptrdiff_t next, std::int32_t begin, std::int32_t end) {
        switch (taps.count) {
            case 2:
                return add_some_rows<2>(taps, next, begin, end);
            case 3:
                return add_some_rows<3>(taps, next, begin, end);
            case 4:
                return add_some_rows<4>(taps, next, begin, end);
            case 5:
                return add_some_rows<5>(taps, next, begin, end);
            default:
                return add_some_rows<0>(taps, next, begin, end);
        }
    }

    // From kRows rows of the source, or any number if that is 0.
    template <std::int32_t kRows>
    HWY_NOINLINE bool add_some_rows(const Taps& taps, std::ptrdiff_t next, std::int32_t begin,
                                    std::int32_t end) {
        const CoarseTag d;
        const RowSums<kRows> add(scaling_.y(), taps);
        const std::int32_t left = scaling_.x().begin() + begin;
        const Pixel* const top = source_.row(taps.first) + left;
        CoarseVec differences = hn::Zero(d);
        std::int32_t x = 0;
        for (; x < end - begin && left + x + kColumns <= source_.width; x += kColumns)
            add(top + x, source_.width, next, sums_ + 4 * x, differences);
        if (x < end - begin) {
            // At the end of the rows: in a copy, so that nothing is read beyond.
            HWY_ALIGN Pixel few[kMostRows * kColumns];
            std::fill_n(few, taps.count * kColumns, kOpaque);
            const auto bytes = static_cast<std::size_t>(source_.width - left - x) * sizeof(Pixel);
            for (std::int32_t i = 0; i < taps.count; ++i)
                std::memcpy(few + i * kColumns, top + std::ptrdiff_t{source_.width} * i + x, bytes);
            add(few, kColumns, 0, sums_ + 4 * x, differences);
        }
        const auto alphas =
            hn::BitCast(d, hn::Set(hn::Repartition<std::uint64_t, CoarseTag>(), std::uint64_t{0xFFFF} << 48));
        return hn::AllTrue(d, hn::Eq(hn::And(differences, alphas), hn::Zero(d)));
    }

    template <std::int32_t kRows>
    struct RowSums {
        RowSums(const ScaleAxis& axis, const Taps& taps) : count(taps.count) {
            for (std::int32_t i = 0; i < count; i += 2) {
                const std::int32_t second = i + 1 < count ? axis.weight(taps, i + 1) : 0;
                weights[i / 2] = static_cast<std::uint16_t>(axis.weight(taps, i) | second << 8);
            }
        }

        // A vector of pixels from each row. Keeps in which bits alphas differ from opaque ones.
        HWY_INLINE void operator()(const Pixel* from, std::ptrdiff_t pitch, std::ptrdiff_t next,
                                   std::uint16_t* to, CoarseVec& differences) const {
            // Channels of two neighbours side by side.
            alignas(16) static constexpr std::uint8_t kPairs[16] = {0, 1, 8,  9,  2, 3, 10, 11,
                                                                    4, 5, 12, 13, 6, 7, 14, 15};
            const CoarseTag d;
            const ShortTag d16;
            const ByteTag d8;
            const auto row = [&](std::int32_t i) HWY_ATTR {
                fetch_line(from + pitch * i + next);
                const PixelVec pixels = hn::LoadU(PixelTag(), from + pitch * i);
                return hn::BitCast(d8, hn::Xor(pixels, hn::Set(PixelTag(), 0x80808080)));
            };
            ShortVec lower = hn::Zero(d16), upper = lower;
            const std::int32_t rows = kRows == 0 ? count : kRows;
            for (std::int32_t i = 0; i < rows; i += 2) {
                const ByteVec first = row(i);
                const ByteVec second = i + 1 < rows ? row(i + 1) : first;
                const auto factors = hn::BitCast(d8, hn::Set(d, weights[i / 2]));
                lower = hn::Add(lower, byte_products(factors, hn::InterleaveLower(d8, first, second)));
                upper = hn::Add(upper, byte_products(factors, hn::InterleaveUpper(d8, first, second)));
            }
            const ShortVec opaque = hn::Set(d16, kTotal * 127);
            differences =
                hn::Or(differences, hn::BitCast(d, hn::Or(hn::Xor(lower, opaque), hn::Xor(upper, opaque))));
            const auto pairs = hn::LoadDup128(d8, kPairs);
            const auto store = [&](ShortVec sums, std::uint16_t* place) HWY_ATTR {
                hn::StoreU(hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(d8, sums), pairs)), d, place);
            };
            store(blocks_joined<false>(lower, upper), to);
            store(blocks_joined<true>(lower, upper), to + 4 * kSums);
        }

        std::int32_t count;
        std::uint16_t weights[kMostRows / 2];
    };

    // The blocks of two vectors in turns: the first half of them, or the second.
    template <bool kSecond>
    static HWY_INLINE ShortVec blocks_joined(ShortVec even, ShortVec odd) {
        const ShortTag d;
        if constexpr (kColumns == 4) return kSecond ? odd : even;
        const ShortVec half =
            kSecond ? hn::ConcatUpperUpper(d, odd, even) : hn::ConcatLowerLower(d, odd, even);
        if constexpr (kColumns == 8) return half;
        alignas(64) static constexpr std::int64_t kInner[8] = {0, 1, 4, 5, 2, 3, 6, 7};
        const hn::Repartition<std::int64_t, ShortTag> d64;
        return hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(d64, half), hn::SetTableIndices(d64, kInner)));
    }

    // Each of kGroup pairs throughout a block.
    static HWY_INLINE ByteVec pair_weights(const std::uint32_t* weights) {
        struct Order {
            alignas(64) std::uint8_t bytes[4 * kColumns];
            constexpr Order() : bytes() {
                for (std::uint8_t i = 0; i < 4 * kColumns; ++i)
                    bytes[i] = static_cast<std::uint8_t>(i / 16 * 4 + i % 4);
            }
        };
        static constexpr Order kOrder;
        const ByteTag d8;
        const auto pairs = hn::BitCast(d8, hn::LoadDup128(PixelTag(), weights));
        return hn::TableLookupBytes(pairs, hn::Load(d8, kOrder.bytes));
    }

    // The pixels of a strip, each made of kWindows vectors of sums, or any number if that is 0.
    template <std::int32_t kWindows>
    HWY_NOINLINE void make_pixels(std::int32_t first, std::int32_t last, Pixel* to) const {
        const IntTag d;
        // Takes the bias of the sums away again, and rounds.
        const IntVec start = hn::Set(d, kBias * kTotal + 0x8000);
        for (std::int32_t k = first; k < last; k += kColumns) {
            // The last vector overlaps the one before it.
            const std::int32_t x = std::min(k, last - kColumns);
            const auto quarter = [&](std::int32_t offset) HWY_ATTR {
                IntVec parts[kGroup];
                for (std::int32_t i = 0; i < kGroup; ++i)
                    parts[i] = pixel<kWindows>(x + 4 * i + offset, begin_of(first));
                return hn::Add(block_sums(d, parts), start);
            };
            hn::StoreU(third_bytes(quarter(0), quarter(1), quarter(2), quarter(3)), PixelTag(), to + x);
        }
    }

    // The sums of a pixel, in parts: each block has some. `begin`: the column that the strip begins at.
    template <std::int32_t kWindows>
    HWY_INLINE IntVec pixel(std::int32_t x, std::int32_t begin) const {
        const ShortTag d16;
        const std::int32_t windows = kWindows == 0 ? windows_ : kWindows;
        const std::uint32_t* weights = weights_ + std::ptrdiff_t{windows} * kGroup * x;
        const std::uint16_t* sums = sums_ + 4 * std::ptrdiff_t{starts_[x] - begin};
        IntVec sum = hn::Zero(IntTag());
        for (std::int32_t i = 0; i < windows; ++i) {
            const auto values = hn::BitCast(d16, hn::LoadU(CoarseTag(), sums + 4 * kSums * i));
            const auto factors = hn::BitCast(d16, pair_weights(weights + kGroup * i));
            sum = add_products(sum, values, factors);
        }
        return sum;
    }

    ConstPixelBuffer source_;
    const Scaling& scaling_;
    bool isValid_ = false;
    std::int32_t strips_ = 1;
    std::int32_t windows_ = 0;  // vectors of sums that a pixel is made of
    std::int32_t* starts_ = nullptr;
    std::uint32_t* weights_ = nullptr;
    std::uint16_t* sums_ = nullptr;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

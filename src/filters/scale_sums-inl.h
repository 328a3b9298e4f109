// Scaling with weights of any size in vector code; included once for each instruction set.
//
// Columns are added up first, in 32 bits, which hold them all: 65535 * 255 for an opaque pixel, 65535 * 255 *
// 255 for one with alpha. Along the row the sums take up to 48 bits, which doubles hold exactly. So are the
// quotients: what is not a whole number lies 1 / (2 W) away from the next one at least, with W below 2^40,
// far above the error of a double. SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_SCALE_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_SCALE_SUMS_INL_H_
#undef PIXVANE_FILTERS_SCALE_SUMS_INL_H_
#else
#define PIXVANE_FILTERS_SCALE_SUMS_INL_H_
#endif

#include <hwy/aligned_allocator.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/pixel_runs-inl.h"
#include "filters/scale.h"
#include "filters/scale_products-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

constexpr std::int32_t kColumns = static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));

// The pixels of a vector in such an order that interleaving its bytes twice gives whole vectors of
// neighbours.
HWY_INLINE PixelVec parted(PixelVec pixels) {
    constexpr std::int32_t kBlocks = kColumns / 4;
    if constexpr (kBlocks == 1) return pixels;
    struct Order {
        alignas(64) std::int32_t lanes[kColumns];
        constexpr Order() : lanes() {
            for (std::int32_t i = 0; i < kColumns; ++i) lanes[i] = i % 4 * kBlocks + i / 4;
        }
    };
    static constexpr Order kOrder;
    return hn::TableLookupLanes(pixels, hn::SetTableIndices(PixelTag(), kOrder.lanes));
}

// Four vectors of sums: blue, green, red, alpha of each pixel.
struct Sums {
    IntVec v0, v1, v2, v3;
};

HWY_INLINE Sums load_sums(const std::int32_t* from) {
    const IntTag d;
    return {hn::LoadU(d, from), hn::LoadU(d, from + kColumns), hn::LoadU(d, from + 2 * kColumns),
            hn::LoadU(d, from + 3 * kColumns)};
}

HWY_INLINE void store_sums(const Sums& sums, std::int32_t* to) {
    const IntTag d;
    hn::StoreU(sums.v0, d, to);
    hn::StoreU(sums.v1, d, to + kColumns);
    hn::StoreU(sums.v2, d, to + 2 * kColumns);
    hn::StoreU(sums.v3, d, to + 3 * kColumns);
}

// Adds two rows of opaque pixels; `weights` has the one of the upper row below that of the lower one.
HWY_INLINE void add_opaque(Sums& sums, PixelVec upper, PixelVec lower, ShortVec weights) {
    const ByteTag d8;
    const ShortTag d16;
    const auto zero = hn::Zero(d8);
    const auto p = hn::BitCast(d8, upper);
    const auto q = hn::BitCast(d8, lower);
    const auto first = hn::InterleaveLower(d8, p, q);
    const auto second = hn::InterleaveUpper(d8, p, q);
    const auto add = [&](IntVec sum, ByteVec pairs) {
        return add_products(sum, hn::BitCast(d16, pairs), weights);
    };
    sums.v0 = add(sums.v0, hn::InterleaveLower(d8, first, zero));
    sums.v1 = add(sums.v1, hn::InterleaveUpper(d8, first, zero));
    sums.v2 = add(sums.v2, hn::InterleaveLower(d8, second, zero));
    sums.v3 = add(sums.v3, hn::InterleaveUpper(d8, second, zero));
}

// Adds a row of pixels: colours times alpha, and alpha.
HWY_INLINE void add_weighted(Sums& sums, PixelVec pixels, IntVec weight) {
    alignas(16) static constexpr std::uint8_t kAlphas[16] = {6,  0x80, 6,  0x80, 6,  0x80, 0x80, 0x80,
                                                             14, 0x80, 14, 0x80, 14, 0x80, 0x80, 0x80};
    const IntTag d;
    const ByteTag d8;
    const ShortTag d16;
    const auto zero = hn::Zero(d8);
    const auto zero16 = hn::Zero(d16);
    const auto alphas = hn::LoadDup128(d8, kAlphas);
    const auto one =
        hn::BitCast(d16, hn::Set(hn::Repartition<std::uint64_t, IntTag>(), std::uint64_t{1} << 48));
    const auto times_alpha = [&](ByteVec channels) {
        const auto factors = hn::Or(hn::BitCast(d16, hn::TableLookupBytesOr0(channels, alphas)), one);
        return hn::Mul(hn::BitCast(d16, channels), factors);
    };
    const auto add = [&](IntVec sum, ShortVec values) {
        return hn::Add(sum, hn::Mul(hn::BitCast(d, values), weight));
    };
    const auto p = hn::BitCast(d8, pixels);
    const auto first = times_alpha(hn::InterleaveLower(d8, p, zero));
    const auto second = times_alpha(hn::InterleaveUpper(d8, p, zero));
    sums.v0 = add(sums.v0, hn::InterleaveLower(d16, first, zero16));
    sums.v1 = add(sums.v1, hn::InterleaveUpper(d16, first, zero16));
    sums.v2 = add(sums.v2, hn::InterleaveLower(d16, second, zero16));
    sums.v3 = add(sums.v3, hn::InterleaveUpper(d16, second, zero16));
}

// Four sums of one pixel, as doubles.
using SumTag = hn::CappedTag<double, 4>;
using SumVec = hn::Vec<SumTag>;
constexpr std::size_t kPart = hn::MaxLanes(SumTag());
constexpr std::size_t kParts = 4 / kPart;

struct PixelSum {
    SumVec part[kParts];
};

HWY_INLINE PixelSum load_pixel(const std::int32_t* from) {
    const SumTag d;
    PixelSum sum;
    for (std::size_t i = 0; i < kParts; ++i)
        sum.part[i] = hn::PromoteTo(d, hn::LoadU(hn::Rebind<std::int32_t, SumTag>(), from + i * kPart));
    return sum;
}

HWY_INLINE void add_times(PixelSum& sum, const PixelSum& more, double weight) {
    const auto factor = hn::Set(SumTag(), weight);
    for (std::size_t i = 0; i < kParts; ++i) sum.part[i] = hn::MulAdd(more.part[i], factor, sum.part[i]);
}

HWY_INLINE PixelSum sum_of(const std::int32_t* columns, const Taps& taps, double innerWeight, SumVec start) {
    const std::int32_t last = taps.count - 1;
    PixelSum sum;
    for (std::size_t i = 0; i < kParts; ++i) sum.part[i] = start;
    add_times(sum, load_pixel(columns), taps.firstWeight);
    if (last > 1) {
        PixelSum inner = load_pixel(columns + 4);
        for (std::int32_t i = 2; i < last; ++i) {
            const PixelSum more = load_pixel(columns + 4 * i);
            for (std::size_t k = 0; k < kParts; ++k) inner.part[k] = hn::Add(inner.part[k], more.part[k]);
        }
        add_times(sum, inner, innerWeight);
    }
    if (last > 0) add_times(sum, load_pixel(columns + 4 * last), taps.lastWeight);
    return sum;
}

HWY_INLINE void store_pixel(const PixelSum& channels, Pixel* to) {
    const hn::Rebind<std::int32_t, SumTag> d32;
    const hn::Rebind<std::uint8_t, SumTag> d8;
    auto* bytes = reinterpret_cast<std::uint8_t*>(to);
    for (std::size_t i = 0; i < kParts; ++i)
        hn::StoreU(hn::DemoteTo(d8, hn::DemoteTo(d32, channels.part[i])), d8, bytes + i * kPart);
}

// The channels of a pixel from the sums of channels times alpha, and of alpha.
HWY_INLINE PixelSum divided(const PixelSum& sum, double total) {
    const SumTag d;
    const SumVec last = sum.part[kParts - 1];
    SumVec alpha = hn::InterleaveUpper(d, last, last);
    if constexpr (kParts == 1) alpha = hn::ConcatUpperUpper(d, alpha, alpha);
    PixelSum result;
    for (std::size_t i = 0; i < kParts; ++i) {
        SumVec by = alpha;
        if (i + 1 == kParts) by = hn::IfThenElse(hn::FirstN(d, kPart - 1), alpha, hn::Set(d, total));
        result.part[i] = hn::Div(hn::MulAdd(hn::Set(d, 2), sum.part[i], by), hn::Add(by, by));
    }
    return result;
}

// Makes rows of the target, one at a time. Invalid if there was no memory, or if the source is narrower than
// a vector.
class SumScaler {
public:
    SumScaler(ConstPixelBuffer source, const Scaling& scaling)
        : source_(source),
          scaling_(scaling),
          begin_(scaling.x().begin()),
          columns_(scaling.x().end() - begin_) {
        if (columns_ < kColumns) return;
        blocks_ = (columns_ + kColumns - 1) / kColumns;
        sums_ = hwy::AllocateAligned<std::int32_t>(static_cast<std::size_t>(blocks_ * kColumns) * 4);
    }
    bool is_valid() const { return sums_ != nullptr; }

    // Returns false, and has done nothing, if not all of the pixels that row y is made of are opaque.
    bool make_opaque_row(std::int32_t y, Pixel* to) {
        const PixelTag d;
        PixelVec common = hn::Set(d, ~0u);
        for_chunks(y, [&](const Pixel* rows, std::int32_t count, const std::int32_t* weights, bool isFirst) {
            add_opaque_rows(rows, count, weights, isFirst, common);
        });
        if (!hn::AllTrue(d, hn::Eq(hn::ShiftRight<24>(common), hn::Set(d, 0xFF)))) return false;
        const SumTag dSum;
        // Half of the total rounds; the quarter keeps whole quotients from falling short.
        const SumVec start = hn::Set(dSum, total() / 2 + 0.25);
        const SumVec factor = hn::Set(dSum, 1 / total());
        for_pixels(start, [&](PixelSum& sum, std::int32_t x) {
            for (SumVec& part : sum.part) part = hn::Mul(part, factor);
            store_pixel(sum, to + x);
        });
        return true;
    }

    void make_row(std::int32_t y, Pixel* to) {
        for_chunks(y, [&](const Pixel* rows, std::int32_t count, const std::int32_t* weights, bool isFirst) {
            add_weighted_rows(rows, count, weights, isFirst);
        });
        const SumVec start = hn::Set(SumTag(), kOffset * scaling_.x().total_weight());
        for_pixels(start, [&](PixelSum& sum, std::int32_t x) {
            store_pixel(divided(sum, total()), to + x);
            if (alpha_of(to[x]) == 0) to[x] = 0;
        });
    }

private:
    // Rows that are added at once: more would be too many places in memory at the same time.
    static constexpr std::int32_t kChunk = 8;
    // Sums with alpha take 32 bits; less this they fit signed numbers, which convert faster.
    static constexpr double kOffset = 2147483648.0;

    double total() const {
        return static_cast<double>(scaling_.x().total_weight()) * scaling_.y().total_weight();
    }

    template <class Work>
    HWY_INLINE void for_chunks(std::int32_t y, const Work& work) {
        const Taps taps = scaling_.y().taps(y);
        std::int32_t weights[kChunk];
        for (std::int32_t i = 0; i < taps.count; i += kChunk) {
            const std::int32_t count = std::min(kChunk, taps.count - i);
            std::fill_n(weights, kChunk, 0);
            for (std::int32_t k = 0; k < count; ++k) {
                const bool isLast = i + k == taps.count - 1;
                weights[k] = i + k == 0 ? taps.firstWeight
                             : isLast   ? taps.lastWeight
                                        : scaling_.y().inner_weight();
            }
            work(source_.row(taps.first + i) + begin_, count, weights, i == 0);
        }
        // The last block was moved to the left by what it reached over the end; its sums were not.
        if (columns_ % kColumns != 0) {
            std::memmove(sums_.get() + 4 * (columns_ - kColumns), sums_.get() + 4 * kColumns * (blocks_ - 1),
                         sizeof(std::int32_t) * 4 * kColumns);
        }
    }

    template <class Work>
    HWY_INLINE void for_blocks(bool isFirst, std::int32_t start, const Work& work) {
        const IntVec starts = hn::Set(IntTag(), start);
        for (std::int32_t i = 0; i < blocks_; ++i) {
            std::int32_t* const place = sums_.get() + static_cast<std::ptrdiff_t>(4 * kColumns) * i;
            Sums sums = isFirst ? Sums{starts, starts, starts, starts} : load_sums(place);
            work(sums, std::min(i * kColumns, columns_ - kColumns));
            store_sums(sums, place);
        }
    }

    HWY_INLINE void add_opaque_rows(const Pixel* rows, std::int32_t count, const std::int32_t* weights,
                                    bool isFirst, PixelVec& common) {
        const PixelTag d;
        const ShortTag d16;
        const std::ptrdiff_t pitch = source_.width;
        const auto pair = [&](std::int32_t k) {
            const auto both = static_cast<std::uint32_t>(weights[k] | weights[k + 1] << 16);
            return hn::BitCast(d16, hn::Set(d, both));
        };
        PixelVec all = common;
        for_blocks(isFirst, 0, [&](Sums& sums, std::int32_t x) {
            for (std::int32_t k = 0; k < count; k += 2) {
                const Pixel* row = rows + pitch * k + x;
                const PixelVec upper = hn::LoadU(d, row);
                const PixelVec lower = k + 1 < count ? hn::LoadU(d, row + pitch) : upper;
                all = hn::And(all, hn::And(upper, lower));
                add_opaque(sums, parted(upper), parted(lower), pair(k));
            }
        });
        common = all;
    }

    HWY_INLINE void add_weighted_rows(const Pixel* rows, std::int32_t count, const std::int32_t* weights,
                                      bool isFirst) {
        const std::ptrdiff_t pitch = source_.width;
        for_blocks(isFirst, std::numeric_limits<std::int32_t>::min(), [&](Sums& sums, std::int32_t x) {
            for (std::int32_t k = 0; k < count; ++k) {
                const PixelVec pixels = hn::LoadU(PixelTag(), rows + pitch * k + x);
                add_weighted(sums, parted(pixels), hn::Set(IntTag(), weights[k]));
            }
        });
    }

    template <class Work>
    HWY_INLINE void for_pixels(SumVec start, const Work& work) {
        const ScaleAxis& axis = scaling_.x();
        const double inner = axis.inner_weight();
        for (std::int32_t x = 0; x < axis.count(); ++x) {
            const Taps& taps = axis.taps(x);
            PixelSum sum =
                sum_of(sums_.get() + std::ptrdiff_t{4} * (taps.first - begin_), taps, inner, start);
            work(sum, x);
        }
    }

    ConstPixelBuffer source_;
    const Scaling& scaling_;
    std::int32_t begin_;
    std::int32_t columns_;
    std::int32_t blocks_ = 0;
    hwy::AlignedFreeUniquePtr<std::int32_t[]> sums_;
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

// Scaling with weights of any size in vector code; included once for each instruction set.
//
// Columns are added up first, in 32 bits, which hold them all: 65535 * 255 for an opaque pixel, 65535 * 255 *
// 255 for one with alpha. Along the row the sums take up to 48 bits, which doubles hold exactly. So are the
// quotients: what is not a whole number lies 1 / (2 W) away from the next one at least, with W below 2^40,
// far above the error of a double. Opaque pixels with few neighbours are tried in floats first, and done in
// doubles only where the float is so close to the middle of two results that it can't tell.
// SPDX-License-Identifier: MIT
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
#include <limits>
#include <optional>

#include "core/pixel_runs-inl.h"
#include "filters/scale.h"
#include "filters/scale_products-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

constexpr std::int32_t kColumns = static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));

// Where the lanes of a vector come from if its pixels are seen as rows of kAcross and written as columns.
template <std::int32_t kAcross>
struct ExchangedLanes {
    alignas(64) std::int32_t lanes[kColumns];
    constexpr ExchangedLanes() : lanes() {
        for (std::int32_t i = 0; i < kColumns; ++i)
            lanes[i] = i % kAcross * (kColumns / kAcross) + i / kAcross;
    }
};

template <std::int32_t kAcross>
HWY_INLINE PixelVec exchanged(PixelVec pixels) {
    if constexpr (kColumns == 4) return pixels;
    static constexpr ExchangedLanes<kAcross> kOrder;
    return hn::TableLookupLanes(pixels, hn::SetTableIndices(PixelTag(), kOrder.lanes));
}

// The pixels of a vector in such an order that interleaving its bytes twice gives whole vectors of
// neighbours.
HWY_INLINE PixelVec parted(PixelVec pixels) { return exchanged<4>(pixels); }
// Undoes it.
HWY_INLINE PixelVec joined(PixelVec pixels) { return exchanged<kColumns / 4>(pixels); }

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

#if HWY_TARGET == HWY_AVX3_DL
// Channels of the pixels in vector `part` of the sums: of one row in the lower halves, of the other in the
// upper.
struct PairOrder {
    alignas(64) std::uint8_t bytes[64];
    constexpr explicit PairOrder(std::uint8_t part) : bytes() {
        for (std::uint8_t i = 0; i < 16; ++i) {
            bytes[4 * i] = static_cast<std::uint8_t>(16 * part + i);
            bytes[4 * i + 2] = static_cast<std::uint8_t>(64 + 16 * part + i);
        }
    }
};

template <std::uint8_t kPart>
HWY_INLINE ShortVec channel_pairs(PixelVec upper, PixelVec lower) {
    static constexpr PairOrder kOrder(kPart);
    constexpr __mmask64 kUsed = 0x5555555555555555;
    const __m512i order = _mm512_load_si512(kOrder.bytes);
    return ShortVec{_mm512_maskz_permutex2var_epi8(kUsed, upper.raw, order, lower.raw)};
}

HWY_INLINE void add_opaque(Sums& sums, PixelVec upper, PixelVec lower, ShortVec weights) {
    sums.v0 = add_products(sums.v0, channel_pairs<0>(upper, lower), weights);
    sums.v1 = add_products(sums.v1, channel_pairs<1>(upper, lower), weights);
    sums.v2 = add_products(sums.v2, channel_pairs<2>(upper, lower), weights);
    sums.v3 = add_products(sums.v3, channel_pairs<3>(upper, lower), weights);
}
#else
// Adds two rows of opaque pixels; `weights` has the one of the upper row below that of the lower one.
HWY_INLINE void add_opaque(Sums& sums, PixelVec upper, PixelVec lower, ShortVec weights) {
    const ByteTag d8;
    const ShortTag d16;
    const auto zero = hn::Zero(d8);
    const auto p = hn::BitCast(d8, parted(upper));
    const auto q = hn::BitCast(d8, parted(lower));
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
#endif

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

// Four sums of one pixel in each block of 16 bytes, as floats.
using FloatTag = hn::RebindToFloat<IntTag>;
using FloatVec = hn::Vec<FloatTag>;
constexpr std::int32_t kGroup = kColumns / 4;

// Repeats each of the first numbers of a vector throughout a block.
HWY_INLINE FloatVec block_weights(const float* weights) {
    struct Order {
        alignas(64) std::int32_t lanes[kColumns];
        constexpr Order() : lanes() {
            for (std::int32_t i = 0; i < kColumns; ++i) lanes[i] = i / 4;
        }
    };
    static constexpr Order kOrder;
    const FloatTag d;
    return hn::TableLookupLanes(hn::LoadU(d, weights), hn::SetTableIndices(d, kOrder.lanes));
}

// The sums of the blocks of kGroup vectors, in the blocks of one.
HWY_INLINE FloatVec block_sums(const FloatVec (&v)[kGroup]) {
    const FloatTag d;
    if constexpr (kGroup == 1) {
        return v[0];
    } else {
        const auto halves = [&](FloatVec a, FloatVec b) {
            return hn::Add(hn::ConcatLowerLower(d, b, a), hn::ConcatUpperUpper(d, b, a));
        };
        if constexpr (kGroup == 2) {
            return halves(v[0], v[1]);
        } else {
            const FloatVec even = halves(v[0], v[2]);
            const FloatVec odd = halves(v[1], v[3]);
            return hn::Add(hn::OddEvenBlocks(hn::SwapAdjacentBlocks(odd), even),
                           hn::OddEvenBlocks(odd, hn::SwapAdjacentBlocks(even)));
        }
    }
}

// The low bytes of all lanes, with a pixel in each block of each vector, as pixels.
HWY_INLINE PixelVec low_bytes(const PixelVec (&v)[4]) {
    const PixelTag d;
    const auto low = hn::Set(d, 0xFF);
    const auto mixed = hn::Or(hn::Or(hn::And(v[0], low), hn::ShiftLeft<8>(hn::And(v[1], low))),
                              hn::Or(hn::ShiftLeft<16>(hn::And(v[2], low)), hn::ShiftLeft<24>(v[3])));
    return joined(bytes_turned(mixed));
}

// The weights of the pixels of a row as floats, divided by the total of all weights: for each pixel as many
// whole blocks as the one with the most neighbours needs.
class FloatWeights {
public:
    // Beyond, errors would add up and most pixels be done twice.
    static constexpr std::int32_t kMostTaps = 16;

    // `steps`: all sums divided by `total` are multiples of 1 / steps.
    FloatWeights(const ScaleAxis& axis, double total, double steps) {
        std::int32_t most = 0;
        for (std::int32_t x = 0; x < axis.count(); ++x) most = std::max(most, axis.taps(x).count);
        if (most > kMostTaps) return;
        stride_ = (most + kGroup - 1) / kGroup * kGroup;
        const std::size_t count = static_cast<std::size_t>(axis.count()) * static_cast<std::size_t>(stride_);
        starts_ = hwy::AllocateAligned<std::int32_t>(static_cast<std::size_t>(axis.count()));
        if (starts_ == nullptr) return;
        weights_ = hwy::AllocateAligned<float>(count + kColumns);
        if (weights_ == nullptr) return;
        std::fill_n(weights_.get(), count + kColumns, 0.0f);
        for (std::int32_t x = 0; x < axis.count(); ++x) {
            const Taps& taps = axis.taps(x);
            starts_[static_cast<std::size_t>(x)] = 4 * (taps.first - axis.begin());
            float* to = weights_.get() + std::ptrdiff_t{stride_} * x;
            for (std::int32_t i = 0; i < taps.count; ++i) {
                const std::int32_t weight = i == 0                ? taps.firstWeight
                                            : i == taps.count - 1 ? taps.lastWeight
                                                                  : axis.inner_weight();
                to[i] = static_cast<float>(weight / total);
            }
        }
        // Each weight, product and addition is off by 2^-24 of at most 256, and so is what tests the result.
        const double error = (stride_ + 8) / 65536.0;
        sure_ = static_cast<float>(0.5 - error);
        // Middles belong to the upper result. A quarter of the least distance from them takes results away
        // from there, so that all are sure where that distance is more than the errors; it is where weights
        // are simple, and middles frequent.
        bias_ = static_cast<float>(std::min(2 * error, 0.25 / steps));
    }
    bool is_valid() const { return weights_ != nullptr; }
    std::int32_t stride() const { return stride_; }
    // stride() of them for each pixel.
    const float* weights() const { return weights_.get(); }
    // The distance from a whole number up to which a result may be rounded to it.
    float sure() const { return sure_; }
    // To be added to each sum.
    float bias() const { return bias_; }
    // Where the sums that make pixel x begin.
    std::int32_t start(std::int32_t x) const { return starts_[static_cast<std::size_t>(x)]; }

private:
    hwy::AlignedFreeUniquePtr<std::int32_t[]> starts_;
    hwy::AlignedFreeUniquePtr<float[]> weights_;
    std::int32_t stride_ = 0;
    float sure_ = 0;
    float bias_ = 0;
};

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
        // Sums of more than a pixel are read at once, up to as many behind the last.
        const std::size_t size = static_cast<std::size_t>(blocks_ * kColumns) * 4;
        constexpr std::size_t kBehind = 4 * (FloatWeights::kMostTaps + kGroup);
        sums_ = hwy::AllocateAligned<std::int32_t>(size + kBehind);
        if (sums_ != nullptr) std::fill_n(sums_.get() + size, kBehind, 0);
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
        if (!floats_)
            floats_.emplace(scaling_.x(), total(), double{scaling_.x().steps()} * scaling_.y().steps());
        if (floats_->is_valid()) {
            if (floats_->stride() == kGroup) {
                divide_in_floats<true>(y, to);
            } else {
                divide_in_floats<false>(y, to);
            }
        } else {
            divide_in_doubles(0, scaling_.x().count(), to);
        }
        return true;
    }

    void make_row(std::int32_t y, Pixel* to) {
        for_chunks(y, [&](const Pixel* rows, std::int32_t count, const std::int32_t* weights, bool isFirst) {
            add_weighted_rows(rows, count, weights, isFirst);
        });
        const SumVec start = hn::Set(SumTag(), kOffset * scaling_.x().total_weight());
        for_pixels(0, scaling_.x().count(), start, [&](PixelSum& sum, std::int32_t x) {
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
                add_opaque(sums, upper, lower, pair(k));
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
    HWY_INLINE void for_pixels(std::int32_t first, std::int32_t last, SumVec start, const Work& work) const {
        const ScaleAxis& axis = scaling_.x();
        const double inner = axis.inner_weight();
        for (std::int32_t x = first; x < last; ++x) {
            PixelSum sum = sum_of(columns_of(x), axis.taps(x), inner, start);
            work(sum, x);
        }
    }

    const std::int32_t* columns_of(std::int32_t x) const {
        return sums_.get() + std::ptrdiff_t{4} * (scaling_.x().taps(x).first - begin_);
    }

    // Half of the total rounds; the quarter keeps whole quotients from falling short.
    SumVec rounding() const { return hn::Set(SumTag(), total() / 2 + 0.25); }
    // The sums of kGroup pixels, in a block each.
    template <bool kSingle>
    HWY_INLINE FloatVec float_sums(std::int32_t x) const {
        const FloatTag d;
        FloatVec sums[kGroup];
        for (std::int32_t k = 0; k < kGroup; ++k) {
            const std::int32_t* columns = sums_.get() + floats_->start(x + k);
            const float* weights =
                floats_->weights() + std::ptrdiff_t{kSingle ? kGroup : floats_->stride()} * (x + k);
            const auto product = [&](std::int32_t i) {
                const auto values = hn::ConvertTo(d, hn::LoadU(IntTag(), columns + 4 * i));
                return hn::Mul(values, block_weights(weights + i));
            };
            sums[k] = product(0);
            if constexpr (!kSingle) {
                for (std::int32_t i = kGroup; i < floats_->stride(); i += kGroup)
                    sums[k] = hn::Add(sums[k], product(i));
            }
        }
        return block_sums(sums);
    }

    // A vector of pixels at a time.
    template <bool kSingle>
    HWY_INLINE void divide_in_floats(std::int32_t y, Pixel* to) {
        const FloatTag d;
        const PixelTag d32;
        // Brings whole numbers to the end of a float, rounded.
        const auto shift = hn::Set(d, 8388608.0f);
        const auto bias = hn::Set(d, floats_->bias());
        const auto sure = hn::Set(d, floats_->sure());
        const std::int32_t count = scaling_.x().count();
        Ahead ahead(source_, scaling_.y(), y, (count + kColumns - 1) / kColumns);
        if (count < kColumns) {
            divide_in_doubles(0, count, to);
            return;
        }
        for (std::int32_t i = 0; i < count; i += kColumns) {
            // The last vector overlaps the one before it.
            const std::int32_t x = std::min(i, count - kColumns);
            ahead.fetch();
            auto distance = hn::Zero(d);
            PixelVec quarters[4];
            for (std::int32_t k = 0; k < 4; ++k) {
                const auto values = hn::Add(float_sums<kSingle>(x + k * kGroup), bias);
                const auto shifted = hn::Add(values, shift);
                distance = hn::Max(distance, hn::Abs(hn::Sub(values, hn::Sub(shifted, shift))));
                quarters[k] = hn::BitCast(d32, shifted);
            }
            if (HWY_LIKELY(hn::AllTrue(d, hn::Lt(distance, sure)))) {
                hn::StoreU(low_bytes(quarters), d32, to + x);
            } else {
                divide_in_doubles(x, x + kColumns, to);
            }
        }
    }

    HWY_NOINLINE void divide_in_doubles(std::int32_t first, std::int32_t last, Pixel* to) const {
        for_pixels(first, last, rounding(), [&](PixelSum& sum, std::int32_t x) {
            const SumVec factor = hn::Set(SumTag(), 1 / total());
            for (SumVec& part : sum.part) part = hn::Mul(part, factor);
            store_pixel(sum, to + x);
        });
    }

    // Brings the source rows that the next row of the target needs, and this one did not, near meanwhile.
    class Ahead {
    public:
        Ahead(ConstPixelBuffer source, const ScaleAxis& axis, std::int32_t y, std::int32_t steps) {
            if (y + 1 >= axis.count() || steps < 1) return;
            const std::int32_t first = axis.taps(y).first + axis.taps(y).count;
            const std::int32_t last = axis.taps(y + 1).first + axis.taps(y + 1).count;
            if (first >= last) return;
            place_ = reinterpret_cast<const char*>(source.row(first));
            end_ = reinterpret_cast<const char*>(source.row(last - 1) + source.width);
            step_ = (end_ - place_) / steps + 1;
        }
        HWY_INLINE void fetch() {
            constexpr std::ptrdiff_t kLine = 64;
            for (std::ptrdiff_t left = std::min(step_, end_ - place_); left > 0; left -= kLine) {
                hwy::Prefetch(place_);
                place_ += std::min(kLine, left);
            }
        }

    private:
        const char* place_ = nullptr;
        const char* end_ = nullptr;
        std::ptrdiff_t step_ = 0;
    };

    ConstPixelBuffer source_;
    const Scaling& scaling_;
    std::int32_t begin_;
    std::int32_t columns_;
    std::int32_t blocks_ = 0;
    hwy::AlignedFreeUniquePtr<std::int32_t[]> sums_;
    std::optional<FloatWeights> floats_;  // made for the first opaque row
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

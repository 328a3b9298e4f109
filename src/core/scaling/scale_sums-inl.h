// Scaling with weights of any size in vector code; included once for each instruction set.
//
// Columns are added up first, in 32 bits, which hold them all: 65535 * 255 for an opaque pixel, 65535 * 255 *
// 255 for one with alpha. Along the row the sums take up to 48 bits, which doubles hold exactly. So are the
// quotients: what is not a whole number lies 1 / (2 W) away from the next one at least, with W below 2^40,
// far above the error of a double. Opaque pixels with few neighbours are tried in floats first, and done in
// doubles only where the float is so close to the middle of two results that it can't tell.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_SUMS_INL_H_
#undef PIXVANE_CORE_SCALE_SUMS_INL_H_
#else
#define PIXVANE_CORE_SCALE_SUMS_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_columns-inl.h"
#include "core/scaling/scale_doubles-inl.h"
#include "core/scaling/scale_floats-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Makes rows of the target, one at a time. Invalid if there was no memory, or if the source is narrower than
// a vector.
class SumScaler {
public:
    SumScaler(ConstPixelBuffer source, const Scaling& scaling) : source_(source), scaling_(scaling) {
        const std::int32_t columns = scaling.x().end() - scaling.x().begin();
        const std::int32_t count = scaling.x().count();
        // Sums of a strip stay in the nearest cache. No strip is narrower than a vector, neither in the
        // source.
        strips_ = std::max(1, std::min({columns / kStrip, count / kColumns, columns / kColumns}));
        if (columns < kColumns) return;
        // Sums of more than a pixel are read at once, up to as many behind the last.
        std::int32_t most = 0;
        for (std::int32_t i = 0; i < strips_; ++i) {
            enter(i);
            most = std::max(most, blocks_ * kColumns + FloatLimits::kMostTaps + kGroup);
        }
        const std::size_t size = static_cast<std::size_t>(most) * 4;
        sums_ = thread_scratch<std::int32_t>(Scratch::ScaledColumns, size);
        if (sums_ != nullptr) std::fill_n(sums_, size, 0);
    }
    bool is_valid() const { return sums_ != nullptr; }

    // Returns false if not all of the pixels that row y is made of are opaque; then it is left half done.
    bool make_opaque_row(std::int32_t y, Pixel* to) {
        const PixelTag d;
        if (!floats_)
            floats_.emplace(scaling_.x(), total(), double{scaling_.x().steps()} * scaling_.y().steps());
        const std::ptrdiff_t next = std::ptrdiff_t{source_.width} * scaling_.y().advance(y);
        for (std::int32_t i = 0; i < strips_; ++i) {
            enter(i);
            PixelVec common = hn::Set(d, ~0u);
            for_chunks(y,
                       [&](const Pixel* rows, std::int32_t count, const std::int32_t* weights, bool isFirst) {
                           add_opaque_rows(rows, next, count, weights, isFirst, common);
                       });
            if (!hn::AllTrue(d, hn::Eq(hn::ShiftRight<24>(common), hn::Set(d, 0xFF)))) return false;
            if (!floats_->is_valid() || last_ - first_ < kColumns) {
                divide_in_doubles(first_, last_, to);
            } else if (floats_->stride() == kGroup) {
                divide_in_floats<true>(to);
            } else {
                divide_in_floats<false>(to);
            }
        }
        return true;
    }

    void make_row(std::int32_t y, Pixel* to) {
        const SumVec start = hn::Set(SumTag(), kOffset * scaling_.x().total_weight());
        for (std::int32_t i = 0; i < strips_; ++i) {
            enter(i);
            for_chunks(y, [&](const Pixel* rows, std::int32_t count, const std::int32_t* weights,
                              bool isFirst) { add_weighted_rows(rows, count, weights, isFirst); });
            for_pixels(first_, last_, start, [&](PixelSum& sum, std::int32_t x) {
                store_pixel(divided(sum, total()), to + x);
                if (alpha_of(to[x]) == 0) to[x] = 0;
            });
        }
    }

private:
    // Columns of the source whose sums are made before pixels are made of them.
    static constexpr std::int32_t kStrip = 512;
    // Rows that are added at once: more would be too many places in memory at the same time.
    static constexpr std::int32_t kChunk = 8;
    // Sums with alpha take 32 bits; less this they fit signed numbers, which convert faster.
    static constexpr double kOffset = 2147483648.0;

    double total() const {
        return static_cast<double>(scaling_.x().total_weight()) * scaling_.y().total_weight();
    }

    void enter(std::int32_t strip) {
        const auto edge = [&](std::int64_t i) {
            return static_cast<std::int32_t>(i * scaling_.x().count() / strips_);
        };
        first_ = edge(strip);
        last_ = edge(strip + 1);
        const Taps& end = scaling_.x().taps(last_ - 1);
        begin_ = scaling_.x().taps(first_).first;
        columns_ = end.first + end.count - begin_;
        // Of pixels that lie close together a strip may use less than a vector; it takes what is before,
        // then.
        if (columns_ < kColumns) {
            begin_ = std::max(scaling_.x().begin(), end.first + end.count - kColumns);
            columns_ = kColumns;
        }
        blocks_ = (columns_ + kColumns - 1) / kColumns;
    }

    template <class Work>
    HWY_INLINE void for_chunks(std::int32_t y, const Work& work) {
        const Taps taps = scaling_.y().taps(y);
        std::int32_t weights[kChunk];
        for (std::int32_t i = 0; i < taps.count; i += kChunk) {
            const std::int32_t count = std::min(kChunk, taps.count - i);
            std::fill_n(weights, kChunk, 0);
            for (std::int32_t k = 0; k < count; ++k) weights[k] = scaling_.y().weight(taps, i + k);
            work(source_.row(taps.first + i) + begin_, count, weights, i == 0);
        }
        // The last block was moved to the left by what it reached over the end; its sums were not.
        if (columns_ % kColumns != 0) {
            std::memmove(sums_ + 4 * (columns_ - kColumns), sums_ + 4 * kColumns * (blocks_ - 1),
                         sizeof(std::int32_t) * 4 * kColumns);
        }
    }

    template <class Work>
    HWY_INLINE void for_blocks(bool isFirst, std::int32_t start, const Work& work) {
        const IntVec starts = hn::Set(IntTag(), start);
        for (std::int32_t i = 0; i < blocks_; ++i) {
            std::int32_t* const place = sums_ + static_cast<std::ptrdiff_t>(4 * kColumns) * i;
            Sums sums = isFirst ? Sums{starts, starts, starts, starts} : load_sums(place);
            work(sums, std::min(i * kColumns, columns_ - kColumns));
            store_sums(sums, place);
        }
    }

    HWY_INLINE void add_opaque_rows(const Pixel* rows, std::ptrdiff_t next, std::int32_t count,
                                    const std::int32_t* weights, bool isFirst, PixelVec& common) {
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
                fetch_line(row + next);
                fetch_line(row + next + (k + 1 < count ? pitch : 0));
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
            PixelSum sum = axis.is_coarse() ? coarse_sum_of(columns_of(x), axis, axis.taps(x), start)
                                            : sum_of(columns_of(x), axis.taps(x), inner, start);
            work(sum, x);
        }
    }

    const std::int32_t* columns_of(std::int32_t x) const {
        return sums_ + std::ptrdiff_t{4} * (scaling_.x().taps(x).first - begin_);
    }

    // Half of the total rounds; the quarter keeps whole quotients from falling short.
    SumVec rounding() const { return hn::Set(SumTag(), total() / 2 + 0.25); }
    // The sums of kGroup pixels, in a block each.
    template <bool kSingle>
    HWY_INLINE FloatVec float_sums(std::int32_t x) const {
        const FloatTag d;
        const std::int32_t offset = 4 * (begin_ - scaling_.x().begin());
        FloatVec sums[kGroup];
        for (std::int32_t k = 0; k < kGroup; ++k) {
            const std::int32_t* columns = sums_ + (floats_->start(x + k) - offset);
            const float* weights =
                floats_->weights() + std::ptrdiff_t{kSingle ? kGroup : floats_->stride()} * (x + k);
            const auto product = [&](std::int32_t i) {
                const auto values = hn::ConvertTo(d, hn::LoadU(IntTag(), columns + 4 * i));
                return hn::Mul(values, block_weights(d, weights + i));
            };
            sums[k] = product(0);
            if constexpr (!kSingle) {
                for (std::int32_t i = kGroup; i < floats_->stride(); i += kGroup)
                    sums[k] = hn::Add(sums[k], product(i));
            }
        }
        return block_sums(d, sums);
    }

    // A vector of pixels at a time.
    template <bool kSingle>
    HWY_INLINE void divide_in_floats(Pixel* to) {
        const FloatTag d;
        const PixelTag d32;
        const auto shift = hn::Set(d, FloatLimits::kShift);
        const auto bias = hn::Set(d, floats_->limits().bias);
        const auto sure = hn::Set(d, floats_->limits().sure);
        for (std::int32_t i = first_; i < last_; i += kColumns) {
            // The last vector overlaps the one before it.
            const std::int32_t x = std::min(i, last_ - kColumns);
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

    ConstPixelBuffer source_;
    const Scaling& scaling_;
    std::int32_t strips_ = 1;
    // Of the strip that is being made: its pixels, and the columns that they are made of.
    std::int32_t first_ = 0;
    std::int32_t last_ = 0;
    std::int32_t begin_ = 0;
    std::int32_t columns_ = 0;
    std::int32_t blocks_ = 0;
    std::int32_t* sums_ = nullptr;
    std::optional<FloatWeights> floats_;  // made for the first opaque row
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

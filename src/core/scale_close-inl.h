// Scaling down where few neighbours make a pixel, for opaque pixels; included once for each instruction set.
//
// Along a row bytes are multiplied by weights of six bits, four neighbours at once; so weights are taken in
// two parts. These sums are exact, and rows of them are added up in floats. A pixel that comes so close to
// the middle of two results that floats can't tell is done again by the plain version.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_CLOSE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_CLOSE_INL_H_
#undef PIXVANE_CORE_SCALE_CLOSE_INL_H_
#else
#define PIXVANE_CORE_SCALE_CLOSE_INL_H_
#endif

#include <algorithm>
#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "core/scale.h"
#include "core/scale_floats-inl.h"
#include "core/scratch.h"

#if HWY_TARGET == HWY_AVX3_DL
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Makes rows of the target, one at a time.
class CloseScaler {
public:
    CloseScaler(ConstPixelBuffer source, const Scaling& scaling) : source_(source), scaling_(scaling) {
        const ScaleAxis& axis = scaling.x();
        if (axis.count() < kColumns || source.width < kColumns) return;
        std::int32_t most = 0;
        for (std::int32_t y = 0; y < scaling.y().count(); ++y)
            most = std::max(most, scaling.y().taps(y).count);
        if (axis.inner_weight() >= 1 << 2 * kPartBits || most > FloatLimits::kMostTaps) return;
        const std::int32_t vectors = (axis.count() + kColumns - 1) / kColumns;
        groups_ = thread_scratch<Group>(Scratch::ScaledGroups, static_cast<std::size_t>(vectors) * kGroups);
        if (groups_ == nullptr) return;
        for (std::int32_t i = 0; i < vectors; ++i) {
            for (std::int32_t k = 0; k < kGroups; ++k) {
                if (!set_group(groups_[i * kGroups + k], first_of(i) + k * kGroupPixels)) return;
            }
        }
        limits_ = Limits(most, double{1} * axis.steps() * scaling.y().steps());
        isValid_ = true;
    }

    // Whether the scaling is one that this can do.
    bool is_valid() const { return isValid_; }

    // Returns false if not all of the pixels that row y is made of are opaque; then it is left half done.
    bool make_opaque_row(std::int32_t y, Pixel* to) const {
        switch (scaling_.y().taps(y).count) {
            case 2:
                return make<2>(y, to);
            case 3:
                return make<3>(y, to);
            case 4:
                return make<4>(y, to);
            default:
                return make<0>(y, to);
        }
    }

private:
    static constexpr std::int32_t kGroupPixels = 4;
    static constexpr std::int32_t kGroups = kColumns / kGroupPixels;
    // Two bytes times weights of so many bits make a sum that fits 16 bits with its sign.
    static constexpr std::int32_t kPartBits = 6;

    // Sums have the whole number of a result from this bit on, so that it is a byte.
    static constexpr std::int32_t kOne = 1 << 16;

    struct Limits {
        Limits() = default;
        // In units of kOne the weights put a sum off by 1 at most, and so do two additions.
        Limits(std::int32_t taps, double steps)
            : start((0.5F + FloatLimits(taps, steps).bias) * kOne), error(taps / 2 + 4) {}
        float start = 0;         // of a sum, so that it is rounded by truncation
        std::int32_t error = 0;  // how near to a whole number a sum may be on its wrong side
    };

    // Four pixels of the target: where the 16 pixels of the source begin that they are made of, and for each
    // of the four the place of the first byte among these, four times, and both parts of four weights.
    struct alignas(64) Group {
        std::uint32_t places[kGroupPixels];
        std::uint32_t upper[kGroupPixels];
        std::uint32_t lower[kGroupPixels];
        std::int32_t start;
    };

    // The target's pixel that a vector begins with. The last vector overlaps the one before it.
    std::int32_t first_of(std::int32_t vector) const {
        return std::min(vector * kColumns, scaling_.x().count() - kColumns);
    }

    bool set_group(Group& group, std::int32_t x) const {
        const ScaleAxis& axis = scaling_.x();
        group = {};
        group.start = std::min(axis.taps(x).first, source_.width - kColumns);
        for (std::int32_t k = 0; k < kGroupPixels; ++k) {
            const Taps& taps = axis.taps(x + k);
            const std::int32_t place = taps.first - group.start;
            if (taps.count > 4 || place + taps.count > kColumns) return false;
            group.places[k] = static_cast<std::uint32_t>(4 * place) * 0x01010101u;
            for (std::int32_t i = 0; i < taps.count; ++i) {
                const auto weight = static_cast<std::uint32_t>(axis.weight(taps, i));
                group.upper[k] |= weight >> kPartBits << (8 * i);
                group.lower[k] |= weight % (1 << kPartBits) << (8 * i);
            }
        }
        return true;
    }

    // From kRows rows of the source, or any number if that is 0.
    template <std::int32_t kRows>
    HWY_INLINE bool make(std::int32_t y, Pixel* to) const {
        const PixelTag d32;
        const Taps& taps = scaling_.y().taps(y);
        const double total = double{1} * scaling_.x().total_weight() * scaling_.y().total_weight();
        Rows<kRows> rows(source_, taps, limits_);
        for (std::int32_t i = 0; i < taps.count; ++i)
            rows.weights[i] = static_cast<float>(kOne * scaling_.y().weight(taps, i) / total);
        const IntVec error = hn::Set(IntTag(), limits_.error);
        const IntVec fraction = hn::Set(IntTag(), kOne - 1);
        RowsAhead ahead(source_, scaling_.y(), y, scaling_.x().count() / kColumns);
        const Group* group = groups_;
        for (std::int32_t i = 0; i * kColumns < scaling_.x().count(); ++i, group += kGroups) {
            ahead.fetch();
            IntVec beyond = fraction;
            const auto quarter = [&](std::int32_t k) HWY_ATTR {
                const IntVec values = hn::ConvertTo(IntTag(), rows.sums_of(group[k]));
                beyond = hn::Min(beyond, hn::And(hn::Add(values, error), fraction));
                return values;
            };
            const IntVec quarters[kGroups] = {quarter(0), quarter(1), quarter(2), quarter(3)};
            const std::int32_t x = first_of(i);
            hn::StoreU(whole_parts(quarters), d32, to + x);
            const auto unsure = hn::Lt(beyond, hn::Set(IntTag(), 2 * limits_.error));
            if (HWY_UNLIKELY(!hn::AllFalse(IntTag(), unsure))) redo(beyond, x, y, to);
            if (i % 16 == 0 && !is_opaque(rows.common)) return false;
        }
        return is_opaque(rows.common);
    }

    static HWY_INLINE bool is_opaque(PixelVec pixels) {
        const PixelTag d;
        return hn::AllTrue(d, hn::Eq(hn::ShiftRight<24>(pixels), hn::Set(d, 0xFF)));
    }

    template <std::int32_t kRows>
    struct Rows {
        Rows(ConstPixelBuffer source, const Taps& taps, const Limits& limits)
            : top(source.row(taps.first)), width(source.width), count(taps.count), start(limits.start) {}

        const Pixel* top;
        std::ptrdiff_t width;
        std::int32_t count;
        float start;
        float weights[FloatLimits::kMostTaps];
        PixelVec common = hn::Set(PixelTag(), ~0u);  // the bits that all pixels have in common

        // Four pixels, of four sums each.
        HWY_INLINE FloatVec sums_of(const Group& group) {
            // A channel of four neighbours.
            const __m512i neighbours = _mm512_set4_epi32(0x0F0B0703, 0x0E0A0602, 0x0D090501, 0x0C080400);
            const __m512i order = _mm512_add_epi8(in_blocks(group.places), neighbours);
            const __m512i upper = in_blocks(group.upper);
            const __m512i lower = in_blocks(group.lower);
            const Pixel* row = top + group.start;
            __m512 sums = _mm512_set1_ps(start);
            for (std::int32_t i = 0; i < (kRows == 0 ? count : kRows); ++i, row += width) {
                const PixelVec pixels = hn::LoadU(PixelTag(), row);
                common = hn::And(common, pixels);
                const __m512i bytes = _mm512_permutexvar_epi8(order, pixels.raw);
                const __m512i sum = _mm512_add_epi32(
                    _mm512_madd_epi16(_mm512_maddubs_epi16(bytes, upper), _mm512_set1_epi16(1 << kPartBits)),
                    _mm512_madd_epi16(_mm512_maddubs_epi16(bytes, lower), _mm512_set1_epi16(1)));
                sums = _mm512_fmadd_ps(_mm512_cvtepi32_ps(sum), _mm512_set1_ps(weights[i]), sums);
            }
            return FloatVec{sums};
        }

        // In each block a number for each of its lanes.
        static HWY_INLINE __m512i in_blocks(const std::uint32_t* numbers) {
            const __m512i order = _mm512_set_epi32(3, 3, 3, 3, 2, 2, 2, 2, 1, 1, 1, 1, 0, 0, 0, 0);
            const __m128i four = _mm_load_si128(reinterpret_cast<const __m128i*>(numbers));
            return _mm512_permutexvar_epi32(order, _mm512_castsi128_si512(four));
        }
    };

    static HWY_INLINE PixelVec whole_parts(const IntVec (&sums)[kGroups]) {
        struct Order {
            alignas(64) std::uint8_t bytes[64];
            constexpr Order() : bytes() {
                for (std::uint8_t i = 0; i < 32; ++i) bytes[i] = static_cast<std::uint8_t>(4 * i + 2);
            }
        };
        static constexpr Order kOrder;
        const __m512i order = _mm512_load_si512(kOrder.bytes);
        const __m512i low = _mm512_permutex2var_epi8(sums[0].raw, order, sums[1].raw);
        const __m512i high = _mm512_permutex2var_epi8(sums[2].raw, order, sums[3].raw);
        return PixelVec{_mm512_inserti64x4(low, _mm512_castsi512_si256(high), 1)};
    }

    // The pixels of a vector that may be wrong. Each lane of `beyond` stands for one in each group.
    HWY_NOINLINE void redo(IntVec beyond, std::int32_t x, std::int32_t y, Pixel* to) const {
        HWY_ALIGN std::int32_t lanes[kColumns];
        hn::Store(beyond, IntTag(), lanes);
        for (std::int32_t i = 0; i < kColumns; ++i) {
            if (lanes[i] >= 2 * limits_.error) continue;
            for (std::int32_t k = x + i / kGroupPixels; k < x + kColumns; k += kGroupPixels)
                to[k] = plain::scaled_pixel(source_, scaling_, k, y);
        }
    }

    ConstPixelBuffer source_;
    const Scaling& scaling_;
    bool isValid_ = false;
    Limits limits_;
    Group* groups_ = nullptr;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // HWY_TARGET == HWY_AVX3_DL

#endif  // include guard for each instruction set

// Scaling down where few neighbours make a pixel, for opaque pixels; included once for each instruction set.
//
// Along a row each of four pixels takes four bytes times their weights by one instruction; where a pixel has
// more neighbours, eight. What becomes of such sums of several rows is another's business: CloseInBytes adds
// them up exactly, CloseInFloats nearly. SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_CLOSE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_CLOSE_INL_H_
#undef PIXVANE_CORE_SCALE_CLOSE_INL_H_
#else
#define PIXVANE_CORE_SCALE_CLOSE_INL_H_
#endif

#include <algorithm>
#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_close_columns-inl.h"
#include "core/scratch.h"

#if HWY_TARGET == HWY_AVX3_DL
// All processors of this target multiply bytes, though it doesn't name these instructions.
HWY_PUSH_ATTRIBUTES(HWY_TARGET_STR ",avx512vnni")
namespace pixvane::HWY_NAMESPACE {

// Makes rows of the target, one at a time; `Columns` adds up what the rows of the source give.
template <class Columns>
class CloseScaler {
public:
    CloseScaler(ConstPixelBuffer source, const Scaling& scaling)
        : source_(source), scaling_(scaling), columns_(scaling) {
        const ScaleAxis& axis = scaling.x();
        if (!columns_.is_valid() || axis.count() < kColumns || source.width < kColumns) return;
        std::int32_t most = 0, heaviest = 0;
        for (std::int32_t x = 0; x < axis.count(); ++x) {
            const Taps& taps = axis.taps(x);
            most = std::max(most, taps.count);
            for (std::int32_t i = 0; i < taps.count; ++i) heaviest = std::max(heaviest, weight(taps, i));
        }
        quads_ = (most + 3) / 4;
        parts_ = heaviest < 1 << kPartBits ? 1 : 2;
        isValid_ =
            quads_ <= 2 && parts_ <= Columns::kMostParts && heaviest < 1 << 2 * kPartBits && make_groups();
    }

    // Whether the scaling is one that this can do.
    bool is_valid() const { return isValid_; }

    // Returns false if not all of the pixels that row y is made of are opaque; then it is left half done.
    bool make_opaque_row(std::int32_t y, Pixel* to) const {
        if (parts_ == 1) return quads_ == 1 ? make_row<1, 1>(y, to) : make_row<2, 1>(y, to);
        return quads_ == 1 ? make_row<1, Columns::kMostParts>(y, to)
                           : make_row<2, Columns::kMostParts>(y, to);
    }

private:
    static constexpr std::int32_t kGroupPixels = 4;
    static constexpr std::int32_t kGroups = kColumns / kGroupPixels;
    // Of the weights that bytes are multiplied by; larger ones are taken in two parts.
    static constexpr std::int32_t kPartBits = 7;

    // Up to four neighbours of each of four pixels of the target: where the 16 pixels of the source begin
    // that hold them, and for each of the four the place of the first byte among these, four times, and the
    // weights in parts.
    struct alignas(64) Group {
        std::uint32_t places[kGroupPixels];
        std::uint32_t upper[kGroupPixels];
        std::uint32_t lower[kGroupPixels];
        std::int32_t start;
    };

    // The rows that are added up, and how far on those lie that come next, which are fetched meanwhile.
    struct SourceRows {
        const Pixel* top;
        std::ptrdiff_t pitch;
        std::ptrdiff_t next;
    };

    // Without the divisor that all weights have in common.
    std::int32_t weight(const Taps& taps, std::int32_t i) const {
        const ScaleAxis& axis = scaling_.x();
        return axis.weight(taps, i) / (axis.total_weight() / axis.steps());
    }

    // The target's pixel that a vector begins with. The last vector overlaps the one before it.
    std::int32_t first_of(std::int32_t vector) const {
        return std::min(vector * kColumns, scaling_.x().count() - kColumns);
    }

    bool make_groups() {
        const std::int32_t vectors = (scaling_.x().count() + kColumns - 1) / kColumns;
        groups_ = thread_scratch<Group>(Scratch::ScaledGroups,
                                        static_cast<std::size_t>(vectors * kGroups * quads_));
        if (groups_ == nullptr) return false;
        Group* group = groups_;
        for (std::int32_t i = 0; i < vectors; ++i) {
            for (std::int32_t k = 0; k < kGroups; ++k) {
                for (std::int32_t quad = 0; quad < quads_; ++quad)
                    if (!set_group(*group++, first_of(i) + k * kGroupPixels, 4 * quad)) return false;
            }
        }
        return true;
    }

    // For four pixels from x on, and their neighbours from number `skipped` on.
    bool set_group(Group& group, std::int32_t x, std::int32_t skipped) const {
        const ScaleAxis& axis = scaling_.x();
        group = {};
        group.start = std::min(axis.taps(x).first + skipped, source_.width - kColumns);
        for (std::int32_t k = 0; k < kGroupPixels; ++k) {
            const Taps& taps = axis.taps(x + k);
            const std::int32_t count = std::min(taps.count - skipped, 4);
            if (count <= 0) continue;
            const std::int32_t place = taps.first + skipped - group.start;
            if (place + count > kColumns) return false;
            group.places[k] = static_cast<std::uint32_t>(4 * place) * 0x01010101u;
            for (std::int32_t i = 0; i < count; ++i) {
                const auto factor = static_cast<std::uint32_t>(weight(taps, skipped + i));
                group.upper[k] |= factor >> kPartBits << (8 * i);
                group.lower[k] |= factor % (1 << kPartBits) << (8 * i);
            }
        }
        return true;
    }

    // With the number of rows that are added up known beforehand where it is one of the usual ones.
    template <std::int32_t kQuads, std::int32_t kParts>
    bool make_row(std::int32_t y, Pixel* to) const {
        switch (scaling_.y().taps(y).count) {
            case 3:
                return make<kQuads, kParts, 3>(y, to);
            case 4:
                return make<kQuads, kParts, 4>(y, to);
            case 5:
                return make<kQuads, kParts, 5>(y, to);
            default:
                return make<kQuads, kParts, 0>(y, to);
        }
    }

    template <std::int32_t kQuads, std::int32_t kParts, std::int32_t kRows>
    HWY_NOINLINE bool make(std::int32_t y, Pixel* to) const {
        using Of = Neighbours<kQuads, kParts>;
        const Taps& taps = scaling_.y().taps(y);
        const std::int32_t rows = kRows == 0 ? taps.count : kRows;
        const SourceRows source{source_.row(taps.first), source_.width,
                                std::ptrdiff_t{source_.width} * scaling_.y().advance(y)};
        auto column = columns_.begin(y);
        const Group* group = groups_;
        for (std::int32_t i = 0; i * kColumns < scaling_.x().count(); ++i, group += kGroups * kQuads) {
            const IntVec quarters[kGroups] = {column.sum_of(Of(group, source), rows),
                                              column.sum_of(Of(group + kQuads, source), rows),
                                              column.sum_of(Of(group + 2 * kQuads, source), rows),
                                              column.sum_of(Of(group + 3 * kQuads, source), rows)};
            const std::int32_t x = first_of(i);
            hn::StoreU(third_bytes_of(quarters), PixelTag(), to + x);
            if (HWY_UNLIKELY(!column.is_sure())) redo(column.unsure_lanes(), x, y, to);
            if (i % 16 == 0 && !column.is_opaque()) return false;
        }
        return column.is_opaque();
    }

    // The neighbours of four pixels in a row of the source, and what they weigh.
    template <std::int32_t kQuads, std::int32_t kParts>
    struct Neighbours {
        HWY_INLINE Neighbours(const Group* group, const SourceRows& rows) : source(rows) {
            // A channel of four neighbours.
            const __m512i channels = _mm512_set4_epi32(0x0F0B0703, 0x0E0A0602, 0x0D090501, 0x0C080400);
            for (std::int32_t q = 0; q < kQuads; ++q) {
                pixels[q] = source.top + group[q].start;
                order[q] = _mm512_add_epi8(in_blocks(group[q].places), channels);
                lower[q] = in_blocks(group[q].lower);
                if constexpr (kParts == 2) upper[q] = in_blocks(group[q].upper);
            }
        }

        // Their sums in row `i`, added to `start`: of each pixel four.
        HWY_INLINE __m512i sums(std::int32_t i, __m512i start) const {
            const std::ptrdiff_t row = source.pitch * i;
            __m512i bytes[kQuads];
            fetch_line(pixels[0] + row + source.next);
            for (std::int32_t q = 0; q < kQuads; ++q)
                bytes[q] = _mm512_permutexvar_epi8(order[q], _mm512_loadu_si512(pixels[q] + row));
            if constexpr (kParts == 2) {
                __m512i high = _mm512_setzero_si512();
                for (std::int32_t q = 0; q < kQuads; ++q)
                    high = _mm512_dpbusd_epi32(high, bytes[q], upper[q]);
                start = _mm512_add_epi32(start, _mm512_slli_epi32(high, kPartBits));
            }
            for (std::int32_t q = 0; q < kQuads; ++q) start = _mm512_dpbusd_epi32(start, bytes[q], lower[q]);
            return start;
        }

        // In each block a number for each of its lanes.
        static HWY_INLINE __m512i in_blocks(const std::uint32_t* numbers) {
            const __m512i blocks = _mm512_set_epi32(3, 3, 3, 3, 2, 2, 2, 2, 1, 1, 1, 1, 0, 0, 0, 0);
            const __m128i four = _mm_load_si128(reinterpret_cast<const __m128i*>(numbers));
            return _mm512_permutexvar_epi32(blocks, _mm512_castsi128_si512(four));
        }

        const SourceRows& source;
        const Pixel* pixels[kQuads];
        __m512i order[kQuads];
        __m512i lower[kQuads];
        __m512i upper[kQuads];
    };

    // Byte 2 of every sum.
    static HWY_INLINE PixelVec third_bytes_of(const IntVec (&sums)[kGroups]) {
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

    // The pixels of a vector that may be wrong. Each lane stands for one in each group.
    HWY_NOINLINE void redo(std::uint32_t lanes, std::int32_t x, std::int32_t y, Pixel* to) const {
        for (std::int32_t i = 0; i < kColumns; ++i) {
            if ((lanes >> i) % 2 == 0) continue;
            for (std::int32_t k = x + i / kGroupPixels; k < x + kColumns; k += kGroupPixels)
                to[k] = plain::scaled_pixel(source_, scaling_, k, y);
        }
    }

    ConstPixelBuffer source_;
    const Scaling& scaling_;
    Columns columns_;
    bool isValid_ = false;
    std::int32_t quads_ = 0;  // fours of neighbours
    std::int32_t parts_ = 0;  // of weights
    Group* groups_ = nullptr;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_POP_ATTRIBUTES
#endif  // HWY_TARGET == HWY_AVX3_DL

#endif  // include guard for each instruction set

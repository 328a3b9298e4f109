// Histograms of the columns of windows, counted in bytes; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_MEDIAN_BYTE_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_MEDIAN_BYTE_COLUMNS_INL_H_
#undef PIXVANE_FILTERS_MEDIAN_BYTE_COLUMNS_INL_H_
#else
#define PIXVANE_FILTERS_MEDIAN_BYTE_COLUMNS_INL_H_
#endif

#include <hwy/aligned_allocator.h>

#include <algorithm>
#include <cstdint>

#include "filters/effects/median_lists-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// The pixels of 2 radius + 1 rows, column by column, of a strip of a picture and of what its windows reach;
// columns beyond the picture's ends are like the last one there.
class ByteColumns {
public:
    static constexpr std::int32_t kLargestRadius = 127;

    // Of strips up to `width` columns wide; is_valid() tells whether there was memory for it.
    ByteColumns(ConstPixelBuffer source, std::int32_t radius, std::int32_t width)
        : source_(source), radius_(radius), stride_(padded(width + 2 * radius + 1) * kEntries) {
        for (std::size_t value = 0; value < 256; ++value)
            offsets_[value] = static_cast<std::uint32_t>(value / kEntries * stride_ + value % kEntries);
        coarse_ = hwy::AllocateAligned<std::uint8_t>(kChannels * stride_);
        fine_ = hwy::AllocateAligned<std::uint8_t>(kChannels * kEntries * stride_);
        pixels_ = hwy::AllocateAligned<Pixel>(2 * stride_ / kEntries);
    }
    bool is_valid() const { return coarse_ != nullptr && fine_ != nullptr && pixels_ != nullptr; }

    // The strip of `width` columns from `left` on, around row y.
    void start(std::int32_t left, std::int32_t width, std::int32_t y) {
        first_ = left - radius_ - 1;
        count_ = width + 2 * radius_ + 1;
        std::fill_n(coarse_.get(), kChannels * stride_, std::uint8_t{0});
        std::fill_n(fine_.get(), kChannels * kEntries * stride_, std::uint8_t{0});
        std::fill_n(pixels_.get(), 2 * stride_ / kEntries, Pixel{0});
        for (std::int32_t v = y - radius_; v <= y + radius_; ++v) count_row(v);
    }

    // From around row y - 1 to around row y.
    void move_down(std::int32_t y) {
        const Pixel* out = row_of(y - 1 - radius_, pixels_.get());
        const Pixel* in = row_of(y + radius_, pixels_.get() + stride_ / kEntries);
        for (std::ptrdiff_t x = 0; x < count_; x += kTogether) change_segments(in + x, out + x, x);
        std::uint8_t* lists[kChannels];
        for (std::size_t i = 0; i < kChannels; ++i) lists[i] = fine_.get() + i * kEntries * stride_;
        for (std::ptrdiff_t x = 0; x < count_; ++x) {
            const Pixel plus = in[x];
            const Pixel minus = out[x];
            for (std::size_t i = 0; i < kChannels; ++i) {
                ++lists[i][offsets_[plus >> (8 * i) & 0xFF]];
                --lists[i][offsets_[minus >> (8 * i) & 0xFF]];
                lists[i] += kEntries;
            }
        }
    }

    // The lists of a channel's segments, or of the values of one, of each column: from the one before the
    // first window on.
    const std::uint8_t* coarse(std::size_t channel) const { return coarse_.get() + channel * stride_; }
    const std::uint8_t* fine(std::size_t channel, std::size_t segment) const {
        return fine_.get() + (channel * kEntries + segment) * stride_;
    }

private:
    // So many that those looked at together are there.
    static std::size_t padded(std::int32_t columns) {
        return (static_cast<std::size_t>(columns) + 11) / 8 * 8;
    }

    // The pixels of all columns in row y.
    const Pixel* row_of(std::int32_t y, Pixel* buffer) const {
        const Pixel* row = source_.row(std::clamp(y, 0, source_.height - 1));
        const std::int32_t begin = std::clamp(0, first_, first_ + count_);
        const std::int32_t end = std::clamp(source_.width, begin, first_ + count_);
        std::fill_n(buffer, begin - first_, row[0]);
        std::copy(row + begin, row + end, buffer + (begin - first_));
        std::fill_n(buffer + (end - first_), first_ + count_ - end, row[source_.width - 1]);
        return buffer;
    }

    void count_row(std::int32_t y) {
        const Pixel* row = row_of(y, pixels_.get());
        for (std::size_t x = 0; x < static_cast<std::size_t>(count_); ++x) {
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const std::size_t value = row[x] >> (8 * channel) & 0xFF;
                std::uint8_t* segments = coarse_.get() + channel * stride_ + x * kEntries;
                for (std::size_t i = value / kEntries; i < kEntries; ++i) ++segments[i];
                ++fine_[channel * kEntries * stride_ + x * kEntries + offsets_[value]];
            }
        }
    }

    // Which of the bytes of four pixels belongs into each block, for blue, and the largest value that each
    // entry of a list of segments counts.
    struct BlockBytes {
        alignas(64) std::uint8_t blues[64];
        alignas(64) std::uint8_t limits[64];
        constexpr BlockBytes() : blues(), limits() {
            for (std::size_t i = 0; i < 64; ++i) {
                blues[i] = static_cast<std::uint8_t>(i / kEntries * sizeof(Pixel));
                limits[i] = static_cast<std::uint8_t>(i % kEntries * kEntries + kEntries - 1);
            }
        }
    };

    HWY_INLINE void change_segments(const Pixel* in, const Pixel* out, std::ptrdiff_t x) {
        static constexpr BlockBytes kBytes;
        const ByteTag d;
        const auto one = hn::Set(d, 1);
        const auto limits = hn::Load(d, kBytes.limits);
        const auto pixelsIn = hn::BitCast(d, hn::LoadDup128(PixelTag(), in));
        const auto pixelsOut = hn::BitCast(d, hn::LoadDup128(PixelTag(), out));
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            const auto bytes =
                hn::Add(hn::Load(d, kBytes.blues), hn::Set(d, static_cast<std::uint8_t>(channel)));
            // 1 where a value is beyond what an entry counts.
            const auto beyond = [&](ByteVec pixels) HWY_ATTR {
                return hn::Min(hn::SaturatedSub(hn::TableLookupBytes(pixels, bytes), limits), one);
            };
            const auto gain = hn::Sub(beyond(pixelsOut), beyond(pixelsIn));
            std::uint8_t* lists = coarse_.get() + channel * stride_ + static_cast<std::size_t>(x) * kEntries;
            hn::StoreU(hn::Add(hn::LoadU(d, lists), gain), d, lists);
        }
    }

    ConstPixelBuffer source_;
    std::int32_t radius_;
    std::size_t stride_;          // of the lists of one segment, for the widest strip
    std::uint32_t offsets_[256];  // of a value among the lists of its channel
    std::int32_t first_ = 0;      // the picture's column that the columns begin with
    std::int32_t count_ = 0;
    hwy::AlignedFreeUniquePtr<std::uint8_t[]> coarse_;
    hwy::AlignedFreeUniquePtr<std::uint8_t[]> fine_;
    hwy::AlignedFreeUniquePtr<Pixel[]> pixels_;  // of two rows
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

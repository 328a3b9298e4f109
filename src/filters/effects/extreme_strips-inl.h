// The least or the largest channel values of windows, in strips of columns; included once for each
// instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_EXTREME_STRIPS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_EXTREME_STRIPS_INL_H_
#undef PIXVANE_FILTERS_EXTREME_STRIPS_INL_H_
#else
#define PIXVANE_FILTERS_EXTREME_STRIPS_INL_H_
#endif

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

#include "core/pixel_runs-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

struct Least {
    static constexpr Pixel kNeutral = 0xFFFFFFFF;
    HWY_INLINE PixelVec operator()(PixelVec a, PixelVec b) const {
        const ByteTag d;
        return hn::BitCast(PixelTag(), hn::Min(hn::BitCast(d, a), hn::BitCast(d, b)));
    }
};

struct Largest {
    static constexpr Pixel kNeutral = 0;
    HWY_INLINE PixelVec operator()(PixelVec a, PixelVec b) const {
        const ByteTag d;
        return hn::BitCast(PixelTag(), hn::Max(hn::BitCast(d, a), hn::BitCast(d, b)));
    }
};

// A strip of columns. In rows, what four neighbours gave at one width gives four times the width. In columns
// (van Herk), rows come in blocks as long as a window: any window is the end of one block and the start of
// the next one.
template <class Choose>
class Strip {
public:
    Strip(ConstPixelBuffer source, std::int32_t radius, std::int32_t rows)
        : source_(source),
          across_(std::min(radius, source.width - 1)),
          down_(std::min(radius, source.height - 1)),
          slots_(std::min(2 * down_ + 1, rows + 2 * down_)) {
        constexpr std::int64_t kBytes = 700 << 10;  // inside the second cache
        constexpr std::int64_t kUnit = 64;
        // Much wider than the window, which every row reads beyond its strip.
        const std::int64_t wanted =
            std::max<std::int64_t>({256, 8 * std::int64_t{across_}, kBytes / (std::int64_t{slots_} * 4)});
        const std::int64_t strips = (source.width + wanted - 1) / wanted;
        const std::int64_t width = (source.width + strips - 1) / strips;
        width_ = static_cast<std::size_t>((width + kUnit - 1) / kUnit * kUnit);
        const std::size_t pixels = line_size() + width_ * (static_cast<std::size_t>(slots_) + 1) + kUnit;
        memory_.reset(new (std::nothrow) Pixel[pixels]);
        if (memory_ == nullptr) return;
        const std::size_t lead = reinterpret_cast<std::uintptr_t>(memory_.get()) % (kUnit * sizeof(Pixel));
        starts_ = memory_.get() + (kUnit - lead / sizeof(Pixel)) % kUnit;
        ends_ = starts_ + width_;
        line_ = ends_ + width_ * static_cast<std::size_t>(slots_);
        std::fill_n(line_, line_size(), Choose::kNeutral);
    }

    explicit operator bool() const { return memory_ != nullptr; }
    std::size_t width() const { return width_; }

    // Columns from `left` on of rows first..last.
    void run(PixelBuffer target, std::int32_t left, std::int32_t first, std::int32_t last, bool streaming) {
        left_ = left;
        count_ = std::min(width_, static_cast<std::size_t>(source_.width - left));
        std::fill_n(starts_, width_, Choose::kNeutral);
        const std::int32_t top = std::max(0, first - down_);
        const std::int32_t side = 2 * down_ + 1;
        std::int32_t slot = 0;
        for (std::int32_t y = top; y < last + down_; ++y) {
            if (y < source_.height) {
                widen_row(y);
            } else {
                std::fill_n(line_, width_ + 2 * static_cast<std::size_t>(across_), Choose::kNeutral);
            }
            const std::int32_t next = slot + 1 < side ? slot + 1 : 0;
            const bool spansBlocks = y - top >= side - 1 && next != 0;
            Pixel* to = y - down_ >= first ? target.row(y - down_) + left : nullptr;
            finish_row(ends_of(slot), spansBlocks ? ends_of(next) : nullptr, to, streaming);
            slot = next;
            if (slot == 0 && y + 1 < last + down_) end_block(side);
        }
    }

private:
    Pixel* ends_of(std::int32_t slot) { return ends_ + static_cast<std::size_t>(slot) * width_; }
    std::size_t line_size() const { return width_ + 4 * static_cast<std::size_t>(across_) + 256; }

    static HWY_INLINE PixelVec choose_four(const Pixel* at, std::size_t span) {
        const PixelTag d;
        const Choose choose;
        return choose(choose(hn::LoadU(d, at), hn::LoadU(d, at + span)),
                      choose(hn::LoadU(d, at + 2 * span), hn::LoadU(d, at + 3 * span)));
    }

    // The row with what is around it, each pixel chosen from span_ pixels from it on.
    void widen_row(std::int32_t y) {
        const PixelTag d;
        const std::size_t lanes = hn::Lanes(d);
        const auto reach = static_cast<std::size_t>(across_);
        // Where in the line the picture's row begins and ends.
        const std::size_t begin = reach - std::min(reach, static_cast<std::size_t>(left_));
        const std::size_t end =
            std::min(count_ + 2 * reach, static_cast<std::size_t>(source_.width - left_) + reach);
        const Pixel* row = source_.row(y) + (static_cast<std::size_t>(left_) + begin - reach);
        span_ = 1;
        const std::size_t side = 2 * reach + 1;
        if (side < 4) {
            std::memcpy(line_ + begin, row, (end - begin) * sizeof(Pixel));
            return;
        }
        // The first choice reads the picture itself, but for the vectors that reach beyond it.
        const std::size_t head = (begin + lanes - 1) / lanes * lanes;
        const std::size_t tail = end < head + lanes + 3 ? head : (end - lanes - 3) / lanes * lanes;
        const auto copy = [&](std::size_t from, std::size_t to) {
            from = std::max(from, begin);
            to = std::min(to, end);
            if (from < to) std::memcpy(line_ + from, row + (from - begin), (to - from) * sizeof(Pixel));
        };
        copy(0, head + lanes + 3);
        copy(tail, end);
        std::fill_n(line_, begin, Choose::kNeutral);
        std::fill_n(line_ + end, 4 * lanes, Choose::kNeutral);
        std::size_t i = 0;
        for (; i < head; i += lanes) hn::StoreU(choose_four(line_ + i, 1), d, line_ + i);
        for (; i < tail; i += lanes) hn::StoreU(choose_four(row + (i - begin), 1), d, line_ + i);
        for (; i < count_ + 2 * reach; i += lanes) hn::StoreU(choose_four(line_ + i, 1), d, line_ + i);
        for (span_ = 4; span_ * 4 <= side; span_ *= 4) {
            for (i = 0; i < count_ + 2 * reach; i += lanes)
                hn::StoreU(choose_four(line_ + i, span_), d, line_ + i);
        }
    }

    // The end of a row's choice, and with it the block's so far. With `ends` of the block before, and `to`,
    // the windows' that end in this row.
    void finish_row(Pixel* end, const Pixel* ends, Pixel* to, bool streaming) {
        // At most four spans make a window, the last one overlapping.
        const std::size_t far = 2 * static_cast<std::size_t>(across_) + 1 - span_;
        const auto finish = [&](auto write) HWY_ATTR {
            if (far <= span_) return finish_spans<2>(end, ends, far, write);
            if (far <= 2 * span_) return finish_spans<3>(end, ends, far, write);
            finish_spans<4>(end, ends, far, write);
        };
        const PixelTag d;
        if (to == nullptr) return finish([](PixelVec, std::size_t) HWY_ATTR {});
        if (streaming) {
            return finish([=](PixelVec chosen, std::size_t i) HWY_ATTR { hn::Stream(chosen, d, to + i); });
        }
        const std::size_t whole = count_ - count_ % hn::Lanes(d);
        finish([=, this](PixelVec chosen, std::size_t i) HWY_ATTR {
            if (i < whole) return hn::StoreU(chosen, d, to + i);
            Pixel last[hn::MaxLanes(PixelTag())];
            hn::StoreU(chosen, d, last);
            std::copy_n(last, count_ - i, to + i);
        });
    }

    template <int kSpans, class Write>
    HWY_INLINE void finish_spans(Pixel* end, const Pixel* ends, std::size_t far, const Write& write) {
        const PixelTag d;
        const Choose choose;
        const auto run = [&](auto withEnds) HWY_ATTR {
            for (std::size_t i = 0; i < count_; i += hn::Lanes(d)) {
                const Pixel* at = line_ + i;
                PixelVec row = choose(hn::LoadU(d, at), hn::LoadU(d, at + far));
                if constexpr (kSpans > 2) row = choose(row, hn::LoadU(d, at + span_));
                if constexpr (kSpans > 3) row = choose(row, hn::LoadU(d, at + 2 * span_));
                const PixelVec start = choose(row, hn::Load(d, starts_ + i));
                PixelVec window = start;
                if constexpr (decltype(withEnds)::value) window = choose(start, hn::Load(d, ends + i));
                write(opaque(window), i);
                hn::Store(row, d, end + i);
                hn::Store(start, d, starts_ + i);
            }
        };
        if (ends != nullptr) {
            run(std::true_type());
        } else {
            run(std::false_type());
        }
    }

    void end_block(std::int32_t side) {
        const PixelTag d;
        const Choose choose;
        for (std::int32_t slot = side - 2; slot >= 0; --slot) {
            Pixel* ends = ends_of(slot);
            for (std::size_t i = 0; i < count_; i += hn::Lanes(d))
                hn::Store(choose(hn::Load(d, ends + i), hn::Load(d, ends + width_ + i)), d, ends + i);
        }
        std::fill_n(starts_, width_, Choose::kNeutral);
    }

    ConstPixelBuffer source_;
    std::int32_t across_;  // the radius, as far as there are columns
    std::int32_t down_;    // and rows
    std::int32_t slots_;
    std::size_t width_ = 0;
    std::unique_ptr<Pixel[]> memory_;
    Pixel* starts_ = nullptr;  // of the current block, to its present row
    Pixel* ends_ = nullptr;    // a row for each of the block: its own choices, then those from it to the end
    Pixel* line_ = nullptr;
    std::int32_t left_ = 0;
    std::size_t count_ = 0;
    std::size_t span_ = 1;
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

// The median of larger windows by histograms of their columns, at a cost that hardly grows with the radius.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/median_histograms.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "core/pixel_runs-inl.h"
#include "filters/median_versions.h"

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// The values of a channel in 16 segments of 16. Each list of 16 counts is cumulative: an entry counts itself
// and those before it, so that a place is found by one comparison of all.
constexpr std::size_t kEntries = 16;
constexpr std::size_t kSegments = 16;
constexpr int kChannels = 3;

// counts += added - taken, all of them.
template <class Count>
HWY_INLINE void change(Count* counts, const Count* added, const Count* taken) {
    const hn::CappedTag<Count, kEntries> d;
    for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d)) {
        const auto gain = hn::Sub(hn::LoadU(d, added + i), hn::LoadU(d, taken + i));
        hn::Store(hn::Add(hn::Load(d, counts + i), gain), d, counts + i);
    }
}

template <class Count>
HWY_INLINE void add(Count* counts, const Count* added) {
    const hn::CappedTag<Count, kEntries> d;
    for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
        hn::Store(hn::Add(hn::Load(d, counts + i), hn::Load(d, added + i)), d, counts + i);
}

template <class Count>
HWY_INLINE void take(Count* counts, const Count* taken) {
    const hn::CappedTag<Count, kEntries> d;
    for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
        hn::Store(hn::Sub(hn::Load(d, counts + i), hn::Load(d, taken + i)), d, counts + i);
}

// What a value adds to the counts, by its place.
template <class Count>
struct Steps {
    HWY_ALIGN Count of[kEntries][kEntries];

    explicit Steps(std::uint32_t times) {
        for (std::size_t place = 0; place < kEntries; ++place) {
            for (std::size_t i = 0; i < kEntries; ++i)
                of[place][i] = static_cast<Count>(i >= place ? times : 0);
        }
    }
};

// A strip of columns of the picture. `Count` counts the pixels of a column of the window, `Sum` those of the
// window.
template <class Count, class Sum>
class ColumnHistograms {
public:
    ColumnHistograms(ConstPixelBuffer source, std::int32_t radius)
        : source_(source), radius_(radius), once_(1) {
        // What fits the second cache, but wider than the window, which every row of a strip starts with.
        const std::int32_t wanted = std::max(480, 2 * radius);
        const std::int32_t strips = (source.width + wanted - 1) / wanted;
        width_ = (source.width + strips - 1) / strips;
        planeColumns_ = static_cast<std::size_t>(
            std::min<std::int64_t>(source.width, std::int64_t{width_} + 2 * std::int64_t{radius}));
        const std::size_t counts = kPlanes * planeColumns_ * kEntries;
        memory_.reset(new (std::nothrow) Count[counts + kAlignment]);
        if (memory_ == nullptr) return;
        const std::size_t lead = reinterpret_cast<std::uintptr_t>(memory_.get()) % kAlignment;
        counts_ = memory_.get() + (kAlignment - lead) % kAlignment / sizeof(Count);
    }

    explicit operator bool() const { return memory_ != nullptr; }
    std::int32_t width() const { return width_; }

    // Columns from `left` on of rows first..last.
    HWY_INLINE void run(PixelBuffer target, std::int32_t left, std::int32_t first, std::int32_t last) {
        const std::int32_t right = std::min(left + width_, source_.width);
        firstColumn_ = std::max(0, left - radius_);
        columns_ = std::min(source_.width, right + radius_) - firstColumn_;
        count_window(first);
        for (std::int32_t y = first; y < last; ++y) {
            if (y > first) move_down(y);
            choose_row(target.row(y), left, right);
        }
    }

private:
    static constexpr std::size_t kPlanes = kChannels * (kSegments + 1);
    static constexpr std::size_t kAlignment = 64;

    // The lists of one segment of a channel, one of each column; or of the segments themselves, after them.
    Count* plane(int channel, std::size_t segment) const {
        return counts_ +
               (static_cast<std::size_t>(channel) * (kSegments + 1) + segment) * planeColumns_ * kEntries;
    }

    void count_window(std::int32_t y) {
        std::fill_n(counts_, kPlanes * planeColumns_ * kEntries, Count{0});
        const std::int32_t top = std::max(0, y - radius_);
        const std::int32_t bottom = std::min(source_.height - 1, y + radius_);
        for (std::int32_t v = top; v <= bottom; ++v) {
            std::int32_t times = 1;
            if (v == 0) times += std::max(0, radius_ - y);
            if (v == source_.height - 1) times += std::max(0, y + radius_ - v);
            const Steps<Count> steps(static_cast<std::uint32_t>(times));
            const Pixel* row = source_.row(v) + firstColumn_;
            for (std::size_t x = 0; x < static_cast<std::size_t>(columns_); ++x) {
                for (int channel = 0; channel < kChannels; ++channel) {
                    const std::uint32_t value = row[x] >> (8 * channel) & 0xFF;
                    add(plane(channel, kSegments) + x * kEntries, steps.of[value / kEntries]);
                    add(plane(channel, value / kEntries) + x * kEntries, steps.of[value % kEntries]);
                }
            }
        }
    }

    HWY_INLINE void move_down(std::int32_t y) {
        const Pixel* taken = source_.row(std::max(0, y - 1 - radius_)) + firstColumn_;
        const Pixel* added = source_.row(std::min(source_.height - 1, y + radius_)) + firstColumn_;
        Count* planes[kChannels];
        for (int channel = 0; channel < kChannels; ++channel) planes[channel] = plane(channel, 0);
        const std::size_t segmentSize = planeColumns_ * kEntries;
        for (std::size_t x = 0; x < static_cast<std::size_t>(columns_); ++x) {
            const Pixel in = added[x];
            const Pixel out = taken[x];
            for (int channel = 0; channel < kChannels; ++channel) {
                const std::size_t plus = in >> (8 * channel) & 0xFF;
                const std::size_t minus = out >> (8 * channel) & 0xFF;
                Count* column = planes[channel] + x * kEntries;
                change(column + kSegments * segmentSize, once_.of[plus / kEntries],
                       once_.of[minus / kEntries]);
                add(column + plus / kEntries * segmentSize, once_.of[plus % kEntries]);
                take(column + minus / kEntries * segmentSize, once_.of[minus % kEntries]);
            }
        }
    }

    // The sums of a plane over the window around column x.
    void sum_window(const Count* plane, std::int32_t x, Sum* sums) const {
        const hn::CappedTag<Sum, kEntries> d;
        const hn::Rebind<Count, decltype(d)> counts;
        const std::int32_t low = std::max(0, x - radius_);
        const std::int32_t high = std::min(source_.width - 1, x + radius_);
        const Count* at = plane + static_cast<std::size_t>(low - firstColumn_) * kEntries;
        const Count* end = plane + static_cast<std::size_t>(high - firstColumn_ + 1) * kEntries;
        for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d)) {
            auto sum = hn::Zero(d);
            for (const Count* column = at; column < end; column += kEntries)
                sum = hn::Add(sum, hn::PromoteTo(d, hn::Load(counts, column + i)));
            hn::Store(sum, d, sums + i);
        }
        // Columns beyond the edges.
        const auto more = [&](std::int32_t times, const Count* column) {
            for (std::size_t i = 0; i < kEntries && times > 0; ++i)
                sums[i] = static_cast<Sum>(sums[i] + static_cast<Sum>(times) * column[i]);
        };
        more(radius_ - x, at);
        more(x + radius_ - (source_.width - 1), end - kEntries);
    }

    // The sums around column x - 1 become those around x.
    HWY_INLINE void move_right(const Count* plane, std::int32_t x, Sum* sums) const {
        const hn::CappedTag<Sum, kEntries> d;
        const hn::Rebind<Count, decltype(d)> counts;
        const std::int32_t low = std::max(0, x - 1 - radius_) - firstColumn_;
        const std::int32_t high = std::min(source_.width - 1, x + radius_) - firstColumn_;
        const Count* taken = plane + static_cast<std::size_t>(low) * kEntries;
        const Count* added = plane + static_cast<std::size_t>(high) * kEntries;
        for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d)) {
            const auto gain = hn::Sub(hn::PromoteTo(d, hn::Load(counts, added + i)),
                                      hn::PromoteTo(d, hn::Load(counts, taken + i)));
            hn::Store(hn::Add(hn::Load(d, sums + i), gain), d, sums + i);
        }
    }

    // How many entries are at most `place`: the index of the one that holds it.
    static HWY_INLINE std::size_t find(const Sum* sums, Sum place) {
        const hn::CappedTag<Sum, kEntries> d;
        const auto places = hn::Set(d, place);
        std::size_t above = 0;
        for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
            above += hn::CountTrue(d, hn::Gt(hn::Load(d, sums + i), places));
        return kEntries - above;
    }

    // The sums of one channel around the present pixel. Those of a segment are brought up to date when the
    // median falls into it.
    struct Window {
        HWY_ALIGN Sum segments[kEntries];
        HWY_ALIGN Sum entries[kSegments][kEntries];
        std::int32_t columns[kSegments];  // around which the entries are
    };

    HWY_INLINE std::uint32_t choose(Window& window, int channel, std::int32_t x, Sum middle) const {
        const std::size_t segment = find(window.segments, middle);
        const Sum before = segment > 0 ? window.segments[segment - 1] : Sum{0};
        Sum* entries = window.entries[segment];
        const Count* list = plane(channel, segment);
        std::int32_t column = window.columns[segment];
        if (x - column > radius_) {
            sum_window(list, x, entries);
        } else {
            while (column < x) move_right(list, ++column, entries);
        }
        window.columns[segment] = x;
        return static_cast<std::uint32_t>(segment * kEntries +
                                          find(entries, static_cast<Sum>(middle - before)));
    }

    HWY_INLINE void choose_row(Pixel* to, std::int32_t left, std::int32_t right) const {
        const auto side = static_cast<std::uint32_t>(2 * radius_ + 1);
        const auto middle = static_cast<Sum>(side * side / 2);
        Window windows[kChannels];
        const Count* segments[kChannels];
        for (int channel = 0; channel < kChannels; ++channel) {
            segments[channel] = plane(channel, kSegments);
            sum_window(segments[channel], left, windows[channel].segments);
            std::fill_n(windows[channel].columns, kSegments, left - radius_ - 1);
        }
        for (std::int32_t x = left; x < right; ++x) {
            if (x > left) {
                for (int channel = 0; channel < kChannels; ++channel)
                    move_right(segments[channel], x, windows[channel].segments);
            }
            const std::uint32_t blue = choose(windows[0], 0, x, middle);
            const std::uint32_t green = choose(windows[1], 1, x, middle);
            const std::uint32_t red = choose(windows[2], 2, x, middle);
            to[x] = make_pixel(0xFF, red, green, blue);
        }
    }

    ConstPixelBuffer source_;
    std::int32_t radius_;
    Steps<Count> once_;
    std::int32_t width_ = 0;
    std::int32_t firstColumn_ = 0;
    std::int32_t columns_ = 0;
    std::size_t planeColumns_ = 0;
    std::unique_ptr<Count[]> memory_;
    Count* counts_ = nullptr;
};

template <class Count, class Sum>
HWY_NOINLINE bool run_strips(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                             std::int32_t first, std::int32_t last) {
    ColumnHistograms<Count, Sum> histograms(source, radius);
    if (!histograms) return false;
    for (std::int32_t left = 0; left < source.width; left += histograms.width())
        histograms.run(target, left, first, last);
    return true;
}

bool median_by_histograms(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                          std::int32_t first, std::int32_t last) {
    // The side of the window fits the smaller counts up to radius 127.
    return radius <= 127 ? run_strips<std::uint8_t, std::uint16_t>(source, target, radius, first, last)
                         : run_strips<std::uint16_t, std::uint32_t>(source, target, radius, first, last);
}
#else
bool median_by_histograms(ConstPixelBuffer, PixelBuffer, std::int32_t, std::int32_t, std::int32_t) {
    return false;
}
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(median_by_histograms);

bool median_by_histograms(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                          std::int32_t first, std::int32_t last) {
    return HWY_DYNAMIC_DISPATCH(median_by_histograms)(source, target, radius, first, last);
}

}  // namespace pixvane::filters
#endif

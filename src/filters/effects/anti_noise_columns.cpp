// Outlying channels in large windows, by what the columns of the window sum up to.
// SPDX-License-Identifier: MIT
#include "filters/effects/anti_noise_columns.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/anti_noise_columns.cpp"
#include <hwy/aligned_allocator.h>
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/pixel_runs-inl.h"
#include "filters/area/area_plain.h"
#include "filters/effects/whole_means.h"

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

constexpr std::int32_t kLevels = 256;
constexpr std::int32_t kChannels = 3;
constexpr int kShifts[kChannels] = {0, 8, 16};  // blue, green, red in a pixel

using LevelTag = hn::ScalableTag<std::uint16_t>;
using SumTag = hn::Repartition<std::uint32_t, LevelTag>;

// For each column and channel, at each level k of 0..255, the sum of max(k - v, 0) over the values v of the
// 2 radius + 1 rows around the current one; and the sum of the values.
class LevelColumns {
public:
    LevelColumns(ConstPixelBuffer source, std::int32_t radius, std::int32_t width)
        : source_(source), radius_(radius) {
        const auto columns = static_cast<std::size_t>(std::min(source.width, width + 2 * radius));
        levels_ = hwy::AllocateAligned<std::uint16_t>(columns * kChannels * kLevels);
        values_ = hwy::AllocateAligned<std::uint32_t>(columns * kChannels);
    }

    bool is_valid() const { return levels_ != nullptr && values_ != nullptr; }

    // The columns of all windows around pixels left..left + count - 1 of row y.
    void start(std::int32_t left, std::int32_t count, std::int32_t y) {
        left_ = std::max(0, left - radius_);
        right_ = std::min(source_.width, left + count + radius_);
        for (std::int32_t x = left_; x < right_; ++x) {
            for (std::int32_t channel = 0; channel < kChannels; ++channel) start_column(x, y, channel);
        }
    }

    // From around row y - 1 to around row y.
    void move_down(std::int32_t y) {
        const Pixel* in = source_.row(inside(std::int64_t{y} + radius_, source_.height));
        const Pixel* out = source_.row(inside(std::int64_t{y} - radius_ - 1, source_.height));
        for (std::int32_t x = left_; x < right_; ++x) {
            for (std::int32_t channel = 0; channel < kChannels; ++channel)
                exchange(x, channel, (in[x] >> kShifts[channel]) & 0xFF, (out[x] >> kShifts[channel]) & 0xFF);
        }
    }

    const std::uint16_t* levels(std::int32_t x, std::int32_t channel) const {
        return levels_.get() + index(x, channel) * kLevels;
    }
    std::uint32_t values(std::int32_t x, std::int32_t channel) const { return values_[index(x, channel)]; }

private:
    std::size_t index(std::int32_t x, std::int32_t channel) const {
        return static_cast<std::size_t>(x - left_) * kChannels + static_cast<std::size_t>(channel);
    }

    void start_column(std::int32_t x, std::int32_t y, std::int32_t channel) {
        const LevelTag d;
        std::uint16_t column[2 * kLargestNoiseColumns + 1];
        const std::int32_t side = 2 * radius_ + 1;
        std::uint32_t sum = 0;
        for (std::int32_t i = 0; i < side; ++i) {
            const Pixel p = source_.row(inside(std::int64_t{y} - radius_ + i, source_.height))[x];
            column[i] = static_cast<std::uint16_t>((p >> kShifts[channel]) & 0xFF);
            sum += column[i];
        }
        values_[index(x, channel)] = sum;
        std::uint16_t* levels = levels_.get() + index(x, channel) * kLevels;
        for (std::size_t k = 0; k < kLevels; k += hn::Lanes(d)) {
            const auto level = hn::Iota(d, static_cast<std::uint16_t>(k));
            auto total = hn::Zero(d);
            for (std::int32_t i = 0; i < side; ++i)
                total = hn::Add(total, hn::SaturatedSub(level, hn::Set(d, column[i])));
            hn::Store(total, d, levels + k);
        }
    }

    // Levels below both values keep their sums.
    HWY_INLINE void exchange(std::int32_t x, std::int32_t channel, std::uint32_t in, std::uint32_t out) {
        const LevelTag d;
        values_[index(x, channel)] += in - out;
        const auto valueIn = hn::Set(d, static_cast<std::uint16_t>(in));
        const auto valueOut = hn::Set(d, static_cast<std::uint16_t>(out));
        std::uint16_t* levels = levels_.get() + index(x, channel) * kLevels;
        const std::size_t lanes = hn::Lanes(d);
        for (std::size_t k = std::min(in, out) / lanes * lanes; k < kLevels; k += lanes) {
            const auto level = hn::Iota(d, static_cast<std::uint16_t>(k));
            const auto gain = hn::Sub(hn::SaturatedSub(level, valueIn), hn::SaturatedSub(level, valueOut));
            hn::Store(hn::Add(hn::Load(d, levels + k), gain), d, levels + k);
        }
    }

    ConstPixelBuffer source_;
    std::int32_t radius_;
    std::int32_t left_ = 0, right_ = 0;
    hwy::AlignedFreeUniquePtr<std::uint16_t[]> levels_;
    hwy::AlignedFreeUniquePtr<std::uint32_t[]> values_;
};

// A channel of the window as it moves along its row: the sum of its values, and the columns' sums at a few
// levels near the mean, brought up to date only where a value may stand out.
class ChannelWindow {
public:
    ChannelWindow(ConstPixelBuffer source, const LevelColumns& columns, const WholeMeans& whole,
                  std::int32_t radius, std::int32_t channel)
        : source_(source),
          columns_(columns),
          whole_(whole),
          radius_(radius),
          channel_(channel),
          reciprocal_((kOne + whole.pixels - 1) / whole.pixels) {}

    void start(std::int32_t x, std::int32_t y) {
        y_ = y;
        sum_ = 0;
        for (std::int32_t u = x - radius_; u <= x + radius_; ++u)
            sum_ += columns_.values(inside(u, source_.width), channel_);
        first_ = kNowhere;
    }
    HWY_INLINE void move_right(std::int32_t x) {
        sum_ += columns_.values(inside(x + radius_, source_.width), channel_) -
                columns_.values(inside(x - 1 - radius_, source_.width), channel_);
    }

    // What the value at x becomes.
    HWY_INLINE std::uint32_t quieten(std::int32_t x, std::uint32_t value) {
        // Rounded up by less than the least fraction that a mean can miss a whole number by.
        auto mean = static_cast<std::uint32_t>((std::uint64_t{sum_} * reciprocal_) >> kShift);
        auto lower = mean;
        auto upper = mean;
        if (mean * whole_.pixels != sum_) {
            ++upper;
        } else if (!whole_.allExact) {
            if (!whole_.known[mean]) return quieten_in_doubles(x, value);
            lower = whole_.lower[mean];
            upper = whole_.upper[mean];
            mean = whole_.mean[mean];
        }
        const std::uint32_t own = value < lower ? lower - value : value > upper ? value - upper : 0;
        if (own == 0) return value;
        find_levels(x, static_cast<std::int32_t>(lower), static_cast<std::int32_t>(upper));
        // The sum of max(v - upper, 0) is that of v - upper and max(upper - v, 0).
        const std::uint32_t total = sums_[lower - static_cast<std::uint32_t>(first_)] +
                                    sums_[upper - static_cast<std::uint32_t>(first_)] + sum_ -
                                    whole_.pixels * upper;
        const std::uint32_t more = whole_.equalIsAbove ? 0 : 1;
        return 2 * own * whole_.pixels >= 3 * total + more ? mean : value;
    }

private:
    static constexpr std::int32_t kKept = 16;
    static constexpr std::int32_t kNowhere = -kKept;
    static constexpr int kShift = 44;
    static constexpr std::uint64_t kOne = std::uint64_t{1} << kShift;

    HWY_INLINE void find_levels(std::int32_t x, std::int32_t lower, std::int32_t upper) {
        if (lower < first_ || upper >= first_ + kKept || x - place_ > radius_) {
            first_ = std::clamp(lower - kKept / 2 + 1, 0, kLevels - kKept);
            const SumTag d;
            for (std::int32_t i = 0; i < kKept; i += lanes()) hn::Store(hn::Zero(d), d, sums_ + i);
            for (std::int32_t u = x - radius_; u <= x + radius_; ++u) add(u);
        } else {
            for (std::int32_t i = place_ + 1; i <= x; ++i) exchange(i + radius_, i - 1 - radius_);
        }
        place_ = x;
    }

    static std::int32_t lanes() { return static_cast<std::int32_t>(hn::Lanes(SumTag())); }

    HWY_INLINE const std::uint16_t* levels_of(std::int32_t x) const {
        return columns_.levels(inside(x, source_.width), channel_) + first_;
    }
    HWY_INLINE void add(std::int32_t x) {
        const SumTag d;
        const hn::Rebind<std::uint16_t, SumTag> half;
        const std::uint16_t* in = levels_of(x);
        for (std::int32_t i = 0; i < kKept; i += lanes()) {
            const auto more = hn::PromoteTo(d, hn::LoadU(half, in + i));
            hn::Store(hn::Add(hn::Load(d, sums_ + i), more), d, sums_ + i);
        }
    }
    HWY_INLINE void exchange(std::int32_t xIn, std::int32_t xOut) {
        const SumTag d;
        const hn::Rebind<std::uint16_t, SumTag> half;
        const std::uint16_t* in = levels_of(xIn);
        const std::uint16_t* out = levels_of(xOut);
        for (std::int32_t i = 0; i < kKept; i += lanes()) {
            const auto gain = hn::Sub(hn::PromoteTo(d, hn::LoadU(half, in + i)),
                                      hn::PromoteTo(d, hn::LoadU(half, out + i)));
            hn::Store(hn::Add(hn::Load(d, sums_ + i), gain), d, sums_ + i);
        }
    }

    // By the formula itself, where the mean is a whole number that has no limits.
    HWY_NOINLINE std::uint32_t quieten_in_doubles(std::int32_t x, std::uint32_t value) const {
        const Limits limits(radius_);
        const double mean = sum_ * limits.perPixel;
        const std::int32_t own = deviation(value, mean);
        if (own == 0) return value;
        std::int64_t total = 0;
        for (std::int32_t v = y_ - radius_; v <= y_ + radius_; ++v) {
            const Pixel* row = source_.row(inside(v, source_.height));
            for (std::int32_t u = x - radius_; u <= x + radius_; ++u)
                total += deviation((row[inside(u, source_.width)] >> kShifts[channel_]) & 0xFF, mean);
        }
        return own / static_cast<double>(total) > limits.threshold ? static_cast<std::uint32_t>(mean) : value;
    }

    ConstPixelBuffer source_;
    const LevelColumns& columns_;
    const WholeMeans& whole_;
    std::int32_t radius_, channel_;
    std::uint64_t reciprocal_;
    std::int32_t y_ = 0;
    std::uint32_t sum_ = 0;
    std::int32_t first_ = kNowhere;  // the lowest level that is kept
    std::int32_t place_ = 0;         // the pixel whose window the levels are of
    HWY_ALIGN std::uint32_t sums_[kKept];
};

bool anti_noise_by_columns(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                           std::int32_t first, std::int32_t last) {
    const WholeMeans whole(radius);
    // Columns that fit the second cache, but wider than the window that each strip begins with.
    const std::int32_t width = std::min(source.width, std::max(256, 2 * radius));
    LevelColumns columns(source, radius, width);
    if (!columns.is_valid()) return false;
    ChannelWindow blue(source, columns, whole, radius, 0);
    ChannelWindow green(source, columns, whole, radius, 1);
    ChannelWindow red(source, columns, whole, radius, 2);
    for (std::int32_t left = 0; left < source.width; left += width) {
        const std::int32_t right = std::min(source.width, left + width);
        columns.start(left, right - left, first);
        for (std::int32_t y = first; y < last; ++y) {
            if (y > first) columns.move_down(y);
            for (ChannelWindow* window : {&blue, &green, &red}) window->start(left, y);
            const Pixel* from = source.row(y);
            Pixel* to = target.row(y);
            for (std::int32_t x = left; x < right; ++x) {
                if (x > left) {
                    for (ChannelWindow* window : {&blue, &green, &red}) window->move_right(x);
                }
                const Pixel p = from[x];
                to[x] = make_pixel(0xFF, red.quieten(x, red_of(p)), green.quieten(x, green_of(p)),
                                   blue.quieten(x, blue_of(p)));
            }
        }
    }
    return true;
}
#else
bool anti_noise_by_columns(ConstPixelBuffer, PixelBuffer, std::int32_t, std::int32_t, std::int32_t) {
    return false;
}
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(anti_noise_by_columns);

bool anti_noise_by_columns(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                           std::int32_t first, std::int32_t last) {
    return HWY_DYNAMIC_DISPATCH(anti_noise_by_columns)(source, target, radius, first, last);
}

}  // namespace pixvane::filters
#endif

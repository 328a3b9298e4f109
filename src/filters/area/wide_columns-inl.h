// Sums over columns of a picture at any radius; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_WIDE_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_WIDE_COLUMNS_INL_H_
#undef PIXVANE_FILTERS_WIDE_COLUMNS_INL_H_
#else
#define PIXVANE_FILTERS_WIDE_COLUMNS_INL_H_
#endif

#include "filters/area/channel_sums-inl.h"
#include "filters/area/columns_walk-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {
// At any radius: an array of 32-bit sums for each channel.
class WideColumns : public ColumnsWalk<WideColumns> {
public:
    static std::size_t scratch(std::int32_t width) {
        return 3 * filters::ScratchCutter::bytes<std::uint32_t>(length(width, kMostLanes));
    }

    WideColumns(std::int32_t width, std::int32_t radius, filters::ScratchCutter& cutter)
        : ColumnsWalk(width, radius, kMostLanes),
          blue_(cut_from(cutter)),
          green_(cut_from(cutter)),
          red_(cut_from(cutter)) {}

    void start(ConstPixelBuffer source, std::int32_t y) {
        for (std::uint32_t* sums : {blue_, green_, red_}) std::fill_n(sums, width_, 0U);
        add_rows(source, y - radius_, y + radius_);
        repeat_ends();
    }
    void start(ConstPixelBuffer source, std::int32_t y, const WideColumns& smaller) {
        std::copy_n(smaller.blue_, width_, blue_);
        std::copy_n(smaller.green_, width_, green_);
        std::copy_n(smaller.red_, width_, red_);
        add_rows(source, y - radius_, y - smaller.radius_ - 1);
        add_rows(source, y + smaller.radius_ + 1, y + radius_);
        repeat_ends();
    }

    HWY_INLINE ChannelLanes gain(std::int32_t x) const {
        return {channel_gain(blue_, x), channel_gain(green_, x), channel_gain(red_, x)};
    }

    ChannelTotals sum_before() const {
        const std::int32_t count = std::min(radius_, width_);
        std::uint64_t blue = 0, green = 0, red = 0;
        for (std::int32_t x = 0; x < count; ++x) blue += blue_[x];
        for (std::int32_t x = 0; x < count; ++x) green += green_[x];
        for (std::int32_t x = 0; x < count; ++x) red += red_[x];
        ChannelTotals totals;
        totals.add(1, static_cast<std::int64_t>(blue), static_cast<std::int64_t>(green),
                   static_cast<std::int64_t>(red));
        totals.add(radius_ + 1, blue_[0], green_[0], red_[0]);
        totals.add(radius_ - count, blue_[width_ - 1], green_[width_ - 1], red_[width_ - 1]);
        return totals;
    }

private:
    friend ColumnsWalk<WideColumns>;

    // A vector beyond the ends is like the one that is kept there.
    HWY_INLINE PixelVec taken_in(const std::uint32_t* sums, std::int32_t x) const {
        return hn::LoadU(PixelTag(), sums + std::min(x + ahead_, width_));
    }
    HWY_INLINE PixelVec left_behind(const std::uint32_t* sums, std::int32_t x) const {
        return hn::LoadU(PixelTag(), sums + std::max(x - behind_, -kMostLanes));
    }

    HWY_INLINE IntVec channel_gain(const std::uint32_t* sums, std::int32_t x) const {
        return hn::BitCast(IntTag(), hn::Sub(taken_in(sums, x), left_behind(sums, x)));
    }

    // Rows that are added up in words before they are added to the sums.
    static constexpr std::int32_t kTogether = 8;

    void add_rows(ConstPixelBuffer source, std::int32_t first, std::int32_t last) {
        const filters::RowRange rows(first, last, source.height);
        for (std::int32_t i = rows.first; i <= rows.last; i += kTogether)
            add_rows(source.rows(i, std::min(i + kTogether, rows.last + 1)));
        if (rows.above > 0) add(source.row(0), static_cast<std::uint32_t>(rows.above));
        if (rows.below > 0) add(source.row(source.height - 1), static_cast<std::uint32_t>(rows.below));
    }
    void add_rows(ConstPixelBuffer rows) {
        const PixelTag d;
        const WordTag words;
        const auto add_vector = [&](std::int32_t x, const auto& load) HWY_ATTR {
            WordVec blueRed = hn::Zero(words);
            WordVec greenAlpha = blueRed;
            for (std::int32_t y = 0; y < rows.height; ++y) {
                const PixelVec p = load(rows.row(y), x);
                blueRed = hn::Add(blueRed, blue_red_words(p));
                greenAlpha = hn::Add(greenAlpha, green_alpha_words(p));
            }
            const PixelVec lower = hn::Set(d, 0xFFFF);
            add_lanes(blue_ + x, hn::And(hn::BitCast(d, blueRed), lower));
            add_lanes(green_ + x, hn::And(hn::BitCast(d, greenAlpha), lower));
            add_lanes(red_ + x, hn::ShiftRight<16>(hn::BitCast(d, blueRed)));
        };
        const std::int32_t lanes = lanes_of_pixels();
        std::int32_t x = 0;
        for (; x + lanes <= width_; x += lanes) add_vector(x, InTheMidst());
        if (x < width_) add_vector(x, NearTheEnds{width_});
    }

    void add(const Pixel* row, std::uint32_t times) {
        for (std::int32_t x = 0; x < width_; ++x) {
            blue_[x] += times * blue_of(row[x]);
            green_[x] += times * green_of(row[x]);
            red_[x] += times * red_of(row[x]);
        }
    }

    HWY_INLINE void exchange(PixelVec in, PixelVec out, std::int32_t x) {
        add_lanes(blue_ + x, hn::Sub(blue_lanes(in), blue_lanes(out)));
        add_lanes(green_ + x, hn::Sub(green_lanes(in), green_lanes(out)));
        add_lanes(red_ + x, hn::Sub(red_lanes(in), red_lanes(out)));
    }

    static HWY_INLINE void add_lanes(std::uint32_t* sums, PixelVec more) {
        const PixelTag d;
        hn::StoreU(hn::Add(hn::LoadU(d, sums), more), d, sums);
    }

    HWY_INLINE void repeat_ends() {
        for (std::uint32_t* sums : {blue_, green_, red_}) repeat_ends_of(sums);
    }

    std::uint32_t* blue_;
    std::uint32_t* green_;
    std::uint32_t* red_;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set

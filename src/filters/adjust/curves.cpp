// The adjustments whose channel tables follow from their arguments alone.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "core/integer_math.h"
#include "filters/adjust/adjust.h"

namespace pixvane::filters {
namespace {

// Percents are turned into factors by a product: a quotient differs in the last bit, and truncation shows it.
constexpr double kPercent = 0.01;

/// entry(i) for each value i of a channel.
template <class Entry>
ChannelTable make_table(Entry entry) {
    ChannelTable table;
    for (std::int32_t i = 0; i < 256; ++i) table[static_cast<std::size_t>(i)] = entry(i);
    return table;
}

ChannelTable scaled_table(double factor) {
    return make_table([=](std::int32_t i) { return clamp_to_byte(trunc_to_int32(i * factor)); });
}

}  // namespace

ChannelTables contrast_tables(std::int32_t percent) {
    const double f = percent * kPercent;
    const std::int64_t offset = trunc_to_int32((1.0 - f) * 127.0);
    const ChannelTable table =
        make_table([=](std::int32_t i) { return clamp_to_byte(trunc_to_int32(i * f) + offset); });
    return {table, table, table};
}

ChannelTables lightness_tables(std::int32_t redPercent, std::int32_t greenPercent, std::int32_t bluePercent) {
    return {scaled_table(redPercent * kPercent), scaled_table(greenPercent * kPercent),
            scaled_table(bluePercent * kPercent)};
}

ChannelTables temperature_tables(std::int32_t percent) {
    const double t = percent * kPercent;
    const ChannelTable same = make_table([](std::int32_t i) { return static_cast<std::uint8_t>(i); });
    return {scaled_table(1.0 + t), same, scaled_table(1.0 - t)};
}

ChannelTables gamma_tables(double level) {
    constexpr double kUnit = 0.00392156862745098;
    const ChannelTable table = make_table([=](std::int32_t i) {
        if (i == 0) return std::uint8_t{0};
        return static_cast<std::uint8_t>(trunc_to_int32(255.0 * std::pow(i * kUnit, level)));
    });
    return {table, table, table};
}

void contrast(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent) {
    apply_tables(source, target, contrast_tables(percent));
}

void lightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t redPercent,
               std::int32_t greenPercent, std::int32_t bluePercent) {
    apply_tables(source, target, lightness_tables(redPercent, greenPercent, bluePercent));
}

void temperature(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent) {
    apply_tables(source, target, temperature_tables(percent));
}

void gamma(ConstPixelBuffer source, PixelBuffer target, double level) {
    apply_tables(source, target, gamma_tables(level));
}

}  // namespace pixvane::filters

// Adjustments that send each channel through a table of its own.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

/// One output value for each input value of a channel.
using ChannelTable = std::array<std::uint8_t, 256>;

/// Tables for the channels of a pixel.
struct ChannelTables {
    ChannelTable red;
    ChannelTable green;
    ChannelTable blue;
    bool operator==(const ChannelTables&) const = default;
};

/// Each channel through its own table; alpha becomes 255. Source and target have the same size and may be
/// the same memory.
void apply_tables(ConstPixelBuffer source, PixelBuffer target, const ChannelTables& tables);

// The tables of the adjustments of the same names in filters/adjust/adjust.h: for a picture that is done in
// parts, they are made once.
ChannelTables contrast_tables(std::int32_t percent);
ChannelTables lightness_tables(std::int32_t redPercent, std::int32_t greenPercent, std::int32_t bluePercent);
ChannelTables temperature_tables(std::int32_t percent);
ChannelTables gamma_tables(double level);

}  // namespace pixvane::filters

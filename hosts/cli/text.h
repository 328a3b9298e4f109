// Small texts: quoting, JSON strings, numbers.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cli {

/// The parts one behind the other.
template <class... Parts>
std::string concat(const Parts&... parts) {
    std::string text;
    (text.append(std::string_view(parts)), ...);
    return text;
}

/// In single quotes, control characters made visible so that a message stays one line.
std::string in_quotes(std::string_view text);
/// A JSON string with its quotes. Bytes that are no UTF-8 become the replacement character.
std::string json_string(std::string_view text);
/// A JSON number; null for what JSON has no number for.
std::string json_number(double value);
/// As few digits as tell it apart: 130, 0.02.
std::string plain_number(double value);
/// Thousands apart: 24,000,000.
std::string grouped_number(std::uint64_t value);

}  // namespace cli

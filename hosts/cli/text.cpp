// Small texts: quoting, JSON strings, numbers.
// SPDX-License-Identifier: MIT
#include "text.h"

#include <cmath>
#include <cstdio>

namespace cli {
namespace {

std::string hex(const char* format, unsigned value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, format, value);
    return buffer;
}

/// Length of the UTF-8 sequence at the start of `text`; 0 if there is no well-formed one.
std::size_t sequence_length(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80) return 0;
    const unsigned second = byte(1);
    // Overlong forms, surrogates, and what lies beyond the last code point.
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F)) return 0;
    if ((first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F)) return 0;
    return length;
}

}  // namespace

std::string in_quotes(std::string_view text) {
    std::string result = "'";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F)
            result += hex("\\x%02X", byte);
        else
            result += c;
    }
    return result + "'";
}

std::string json_string(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const std::size_t length = sequence_length(text);
        const auto byte = static_cast<unsigned char>(text[0]);
        if (length == 0) {
            // A file name may be no UTF-8; a JSON text must be.
            result += "\\uFFFD";
            text.remove_prefix(1);
            continue;
        }
        if (byte == '"' || byte == '\\')
            result += {'\\', text[0]};
        else if (byte < 0x20 || byte == 0x7F)
            result += hex("\\u%04X", byte);
        else
            result += text.substr(0, length);
        text.remove_prefix(length);
    }
    return result + "\"";
}

std::string json_number(double value) { return std::isfinite(value) ? plain_number(value) : "null"; }

std::string plain_number(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    return buffer;
}

std::string grouped_number(std::uint64_t value) {
    std::string digits = std::to_string(value);
    for (std::size_t i = digits.size(); i > 3;) {
        i -= 3;
        digits.insert(i, ",");
    }
    return digits;
}

}  // namespace cli

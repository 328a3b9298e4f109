// The library's list of members, searched and put into words.
// SPDX-License-Identifier: MIT
#include "member_list.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

#include "text.h"

namespace cli {
namespace {

std::string lower_case(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

/// How many letters must be put in, left out, replaced or swapped with their neighbour.
std::size_t edit_distance(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) cost[i][0] = i;
    for (std::size_t j = 0; j <= b.size(); ++j) cost[0][j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = cost[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
        }
    }
    return cost[a.size()][b.size()];
}

std::string value_text(std::int32_t kind, double value) {
    if (kind == PIXVANE_BOOL) return value != 0 ? "true" : "false";
    if (kind != PIXVANE_COLOR) return plain_number(value);
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%06X", static_cast<unsigned>(value));
    return buffer;
}

}  // namespace

const std::vector<const MemberInfo*>& all_members() {
    static const std::vector<const MemberInfo*> members = [] {
        std::vector<const MemberInfo*> list;
        for (std::size_t i = 0; i < pixvane_member_count(); ++i) list.push_back(pixvane_member_at(i));
        return list;
    }();
    return members;
}

std::vector<std::string_view> categories() {
    std::vector<std::string_view> names;
    for (const MemberInfo* member : all_members())
        if (std::find(names.begin(), names.end(), member->category) == names.end())
            names.push_back(member->category);
    return names;
}

const MemberInfo* find_member(std::string_view name) {
    for (const MemberInfo* member : all_members())
        if (name == member->name) return member;
    return nullptr;
}

std::string nearest_member(std::string_view name) {
    constexpr std::size_t kLongest = 64;
    if (name.size() > kLongest) return {};
    const std::string wanted = lower_case(name);
    std::size_t best = std::max<std::size_t>(2, name.size() / 3) + 1;
    std::string nearest;
    for (const MemberInfo* member : all_members()) {
        const std::size_t distance = edit_distance(wanted, lower_case(member->name));
        if (distance < best) {
            best = distance;
            nearest = member->name;
        }
    }
    return nearest;
}

const char* type_name(const MemberInfo& member) {
    switch (member.type) {
        case PIXVANE_EVENT:
            return "event";
        case PIXVANE_PROPERTY:
            return member.writable ? "property" : "property, read only";
        default:
            return member.edits ? "command" : "method";
    }
}

const char* kind_name(std::int32_t kind) {
    switch (kind) {
        case PIXVANE_INT32:
            return "integer";
        case PIXVANE_DOUBLE:
            return "double";
        case PIXVANE_BOOL:
            return "boolean";
        case PIXVANE_STRING:
            return "string";
        case PIXVANE_BYTES:
            return "bytes";
        case PIXVANE_INT32_ARRAY:
            return "integers";
        case PIXVANE_POINTS:
            return "points";
        case PIXVANE_COLOR:
            return "color";
        case PIXVANE_VALUES:
            return "values";
        default:
            return "null";
    }
}

std::string accepted_text(const ArgumentInfo& argument) {
    const bool above = std::isinf(argument.maximum), below = std::isinf(argument.minimum);
    if (above && below) return "any finite number";
    if (above) return concat("at least ", plain_number(argument.minimum));
    if (below) return concat("at most ", plain_number(argument.maximum));
    return concat(plain_number(argument.minimum), " to ", plain_number(argument.maximum));
}

std::string argument_text(const ArgumentInfo& argument) {
    std::string text = kind_name(argument.kind);
    if (argument.has_range) text += concat(", ", accepted_text(argument));
    if (argument.has_slider)
        text += concat(", slider ", plain_number(argument.slider_minimum), " to ",
                       plain_number(argument.slider_maximum));
    if (argument.has_default) text += concat(", default ", value_text(argument.kind, argument.default_value));
    return text;
}

}  // namespace cli

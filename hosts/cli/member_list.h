// The library's list of members, searched and put into words.
// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pixvane/pixvane.h"

namespace cli {

using MemberInfo = pixvane_member_info;
using ArgumentInfo = pixvane_argument_info;

/// All members in the order of the table.
const std::vector<const MemberInfo*>& all_members();
/// The categories in the order of the table.
std::vector<std::string_view> categories();

/// Null if there is none of this name.
const MemberInfo* find_member(std::string_view name);
/// The name that was probably meant; empty if none is near.
std::string nearest_member(std::string_view name);

inline std::span<const ArgumentInfo> arguments_of(const MemberInfo& member) {
    return {member.arguments, static_cast<std::size_t>(member.argument_count)};
}

/// "command" (a method that edits), "method", "property", "property, read only" or "event".
const char* type_name(const MemberInfo& member);
const char* kind_name(std::int32_t kind);

/// "at least 0.02", "-100 to 100".
std::string accepted_text(const ArgumentInfo& argument);
/// "integer, -100 to 100, slider -100 to 100, default 10".
std::string argument_text(const ArgumentInfo& argument);

}  // namespace cli

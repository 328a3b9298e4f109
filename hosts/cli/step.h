// A step of an edit, as it stands on the command line: Member, or Member=a,b,...
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "member_list.h"

namespace cli {

/// A member and what it is called with, checked against the table.
struct Step {
    std::string text;  ///< as it was written
    const MemberInfo* member = nullptr;
    std::vector<pixvane_value> values;  ///< strings among them stand in `strings`
    std::vector<std::string> strings = {};
    std::vector<std::int32_t> numbers = {};  ///< of its array, if it has one

    Step() = default;
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    // A moved vector keeps its elements where they are, so the values stay right.
    Step(Step&&) = default;
    Step& operator=(Step&&) = default;
};

/// Throws UsageFailure if the control would not do what the step says, as far as the table can tell.
Step parse_step(std::string_view text);

}  // namespace cli

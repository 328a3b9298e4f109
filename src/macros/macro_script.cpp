// A recorded macro: the codes of its steps, and the arguments of all of them in one stream.
// SPDX-License-Identifier: MIT
#include "macros/macro_script.h"

#include <algorithm>
#include <utility>

namespace pixvane {

void MacroScript::replace(std::vector<std::int32_t> codes, std::vector<std::uint8_t> arguments) {
    codes_ = std::move(codes);
    arguments_ = std::move(arguments);
    writePosition_ = 0;
    ++revision_;
}

void MacroScript::append(std::int32_t code, ByteSpan arguments) {
    if (arguments.size() > kMostBytes - writePosition_) return;
    const std::size_t end = writePosition_ + arguments.size();
    if (end > arguments_.capacity()) arguments_.reserve(std::max(end, 2 * arguments_.capacity()));
    codes_.push_back(code);
    if (end > arguments_.size()) arguments_.resize(end);
    std::copy(arguments.begin(), arguments.end(),
              arguments_.begin() + static_cast<std::ptrdiff_t>(writePosition_));
    writePosition_ = end;
    ++revision_;
}

}  // namespace pixvane

// Who listens to the control's events.
// SPDX-License-Identifier: MIT
#include "control/events.h"

#include <algorithm>
#include <utility>

namespace pixvane {

std::int32_t Events::subscribe(std::string_view event, Handler handler) {
    subscriptions_.push_back({nextId_, event, std::move(handler)});
    return nextId_++;
}

bool Events::unsubscribe(std::int32_t subscription) {
    return std::erase_if(subscriptions_, [&](const auto& s) { return s.id == subscription; }) != 0;
}

void Events::fire(std::string_view event, std::span<const Value> arguments) {
    // The list may change under the handlers: ids say who is still to be called.
    std::vector<std::int32_t> ids;
    for (const Subscription& s : subscriptions_)
        if (s.event == event) ids.push_back(s.id);
    for (const std::int32_t id : ids) {
        const auto found = std::find_if(subscriptions_.begin(), subscriptions_.end(),
                                        [&](const auto& s) { return s.id == id; });
        if (found == subscriptions_.end()) continue;
        const Handler handler = found->handler;
        handler(arguments);
    }
}

}  // namespace pixvane

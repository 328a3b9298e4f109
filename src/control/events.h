// Who listens to the control's events.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "control/value.h"

namespace pixvane {

/// Handlers may subscribe and unsubscribe while an event fires: one that is removed is not called any more,
/// one that is added is called from the next event on.
class Events {
public:
    using Handler = std::function<void(std::span<const Value>)>;

    /// `event` is a name out of the member table and is only referred to.
    std::int32_t subscribe(std::string_view event, Handler handler);
    /// False if there is no such subscription.
    bool unsubscribe(std::int32_t subscription);
    /// Calls the handlers of an event in the order in which they subscribed.
    void fire(std::string_view event, std::span<const Value> arguments);

private:
    struct Subscription {
        std::int32_t id;
        std::string_view event;
        Handler handler;
    };
    std::vector<Subscription> subscriptions_;
    std::int32_t nextId_ = 1;
};

}  // namespace pixvane

// A call of a command that is kept to be made later.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>
#include <memory>
#include <span>
#include <vector>

#include "core/value.h"

namespace pixvane {

struct Row;

/// Owns a copy of all that the arguments refer to.
class HeldCall {
public:
    HeldCall(const Row& row, std::span<const Value> arguments)
        : row_(&row), arguments_(arguments.begin(), arguments.end()) {
        for (Value& value : arguments_) hold(value);
    }
    const Row& row() const { return *row_; }
    std::span<const Value> arguments() const { return arguments_; }

private:
    void hold(Value& value) {
        const std::size_t bytes = value.size * element_size(value.kind);
        if (value.data == nullptr || element_size(value.kind) == 0) return;
        // Without an address an empty array would be none.
        auto& copy = memory_.emplace_back(std::make_unique<unsigned char[]>(bytes + 1));
        if (bytes != 0) std::memcpy(copy.get(), value.data, bytes);
        value.data = copy.get();
    }

    const Row* row_;
    std::vector<Value> arguments_;
    std::vector<std::unique_ptr<unsigned char[]>> memory_;
};

}  // namespace pixvane

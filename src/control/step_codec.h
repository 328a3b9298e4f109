// The arguments of a macro's step, from the fields that its row names, into bytes and back.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "control/member_table.h"
#include "macros/step_reader.h"
#include "macros/step_writer.h"

namespace pixvane {

/// What a step was read into: a value for each field, and the memory behind them; pixels stay in the stream.
/// Kept from step to step, it allocates little.
struct StepArguments {
    std::vector<Value> values;
    std::vector<std::int32_t> numbers;
    std::vector<PixelPoint> points;
    std::string text;
};

/// As many values as the row's step has fields.
void write_step(const Row& row, std::span<const Value> values, StepWriter& writer);
/// False if the stream ends before the step does: then `step` holds the values that are there whole, and the
/// reader stands behind them.
bool read_step(const Row& row, StepReader& reader, StepArguments& step);

}  // namespace pixvane

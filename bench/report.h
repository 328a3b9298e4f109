// The benchmark's results as a table for people and as CSV.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "measure.h"

namespace bench {

struct Result {
    std::string label;
    Cost cost;
    std::optional<double> goal;
    std::optional<std::uintmax_t> fileBytes;
    std::optional<double> framesPerSecond;
    std::optional<Cost> compared;  ///< with the other number of threads
};

/// What the results depend on.
struct Setting {
    int rounds = 0;
    int threads = 0;
    int compared = 0;  ///< the other number of threads, or 0
    double unitSeconds = 0;
};

void print_table(const std::vector<Result>& results, const Setting& setting);
void print_csv(const std::vector<Result>& results, const Setting& setting);

}  // namespace bench

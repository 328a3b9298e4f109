// The benchmark's results as a table for people and as CSV.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
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
};

/// Prints each result as soon as it is told of it: as a table that people read and that goes into Markdown as
/// it is, or as comma separated values.
class Report {
public:
    Report(const Setting& setting, bool csv, std::size_t labelWidth);
    /// `unitSeconds` is what memcpy took while this was measured.
    void add(const Result& result, double unitSeconds);
    /// Tells what memcpy took throughout.
    void finish() const;

private:
    void add_to_table(const Result& result) const;

    Setting setting_;
    bool csv_;
    int labelWidth_;
    std::vector<double> unitSeconds_;
};

}  // namespace bench

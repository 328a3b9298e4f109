// What a run over many pictures will read and write, found out before anything is done.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cli {

struct PlayTask {
    std::string in;
    std::string out;
    std::int32_t type = 0;  ///< of SaveImage
};

/// One task for each source, in their order. `format` is the ending of all results, or empty: then each is
/// what its source is. Throws UsageFailure where two results would have one name or replace a source.
std::vector<PlayTask> plan_play(const std::vector<std::string>& sources, const std::string& folder,
                                const std::string& format);

}  // namespace cli

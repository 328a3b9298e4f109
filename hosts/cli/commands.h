// The commands of the command line program.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace cli {

/// What stands behind the command's name, options sorted out.
struct Arguments {
    std::vector<std::string> options;  ///< with their dashes
    std::vector<std::string> words;

    bool has(const char* option) const;
};

/// Each throws FileFailure or UsageFailure.
void run_edit(const Arguments& arguments);
void run_info(const Arguments& arguments);
void run_members(const Arguments& arguments);

extern const char* const kMainHelp;
extern const char* const kEditHelp;
extern const char* const kInfoHelp;
extern const char* const kMembersHelp;

}  // namespace cli

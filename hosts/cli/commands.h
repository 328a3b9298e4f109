// The commands of the command line program.
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace cli {

/// What stands behind the command's name, options sorted out.
struct Arguments {
    struct Option {
        std::string name;   ///< with its dashes
        std::string value;  ///< of an option that takes one
    };
    std::vector<Option> options;
    std::vector<std::string> words;

    bool has(const char* option) const { return value_of(option) != nullptr; }
    /// What was given with an option, the last time that it was; null if it was not given.
    const std::string* value_of(const char* option) const;
};

/// Each throws FileFailure or UsageFailure.
void run_edit(const Arguments& arguments);
void run_info(const Arguments& arguments);
void run_macro(const Arguments& arguments);
void run_members(const Arguments& arguments);
void run_play(const Arguments& arguments);

extern const char* const kMainHelp;
extern const char* const kEditHelp;
extern const char* const kInfoHelp;
extern const char* const kMacroHelp;
extern const char* const kMembersHelp;
extern const char* const kPlayHelp;

}  // namespace cli

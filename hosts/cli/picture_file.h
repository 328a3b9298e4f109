// Picture files as the commands meet them: their names checked before work, reasons told after.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "pixvane/pixvane.hpp"

namespace cli {

/// Throws FileFailure unless `path` is a file that can be opened.
void check_readable(const std::string& path);
/// Throws FileFailure unless `path` could be a file in a folder that is there.
void check_writable(const std::string& path);

/// The type that the ending of `path` names; nothing if no picture is saved under such a name.
std::optional<std::int32_t> type_of_ending(const std::string& path);
/// The number of the save type that the ending of `path` asks for. Throws UsageFailure if it asks for none.
std::int32_t save_type(const std::string& path);

/// Throws FileFailure if the file is no picture that can be loaded.
void load(pixvane::IPixvane& control, const std::string& path);

/// Which kind of picture file this is by its first bytes; empty if they tell nothing.
std::string format_of(const std::string& path);

}  // namespace cli

// The Linux side of the engine's ports: files, memory, and what a fork needs.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/file_system.h"
#include "core/page_source.h"

namespace pixvane {

/// Files through the system calls. Only regular files are read or replaced; a symbolic link stays, and
/// what it points at is replaced; a replaced file keeps its permissions.
FileSystem& linux_file_system();

/// Big blocks from the kernel, aligned to huge pages and asking for them; small ones from the heap.
PageSource& linux_page_source();

/// Makes a forked child forget the parent's worker threads. Calls after the first do nothing.
void install_fork_handler();

}  // namespace pixvane

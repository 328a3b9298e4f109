// Counts what a program takes from the heap; for programs that allocations.cpp is linked into.
// SPDX-License-Identifier: MIT
#pragma once

namespace pixvane::test {

/// How many times this thread called operator new so far. Libraries have threads of their own.
int new_calls();
/// The same of malloc and its kin, which operator new calls too. Under a sanitizer, which has a malloc of its
/// own, only operator new is counted.
int malloc_calls();

}  // namespace pixvane::test

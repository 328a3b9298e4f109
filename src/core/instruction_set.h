// The instruction set that the vector code runs with.
// SPDX-License-Identifier: MIT
#pragma once

namespace pixvane {

/// The name of the instruction set that run-time dispatch chooses on this machine, such as "AVX2"; it is told
/// by the code that dispatch reaches, so it is the one that the kernels really use.
const char* instruction_set();

}  // namespace pixvane

// Which version of a kernel runs: the fast one, or the plain one that it is tested against.
// SPDX-License-Identifier: MIT
#pragma once

namespace pixvane {

enum class KernelPath { Fast, Plain };

/// For tests, which set it while no control works.
void set_kernel_path(KernelPath path);
KernelPath kernel_path();

/// The version of a kernel that is to run; both have one signature.
template <class Function>
Function* pick_kernel(Function* plain, Function* fast) {
    return kernel_path() == KernelPath::Plain ? plain : fast;
}

}  // namespace pixvane

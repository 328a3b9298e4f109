// Runs a test once for every instruction set that the machine has.
//
//     for (const std::int64_t target : available_targets()) {
//         const TargetScope scope(target);
//         ASSERT_STREQ(scope.name(), running_target());
//         ...
//     }
// SPDX-License-Identifier: MIT
#pragma once

#include <hwy/targets.h>

#include <cstdint>
#include <vector>

#include "core/instruction_set.h"
#include "core/kernel_path.h"

namespace pixvane::test {

/// The instruction sets that are compiled in and that this machine has, the best first.
inline std::vector<std::int64_t> available_targets() { return hwy::SupportedAndGeneratedTargets(); }

/// The name of the instruction set that dispatch really picks, as told by the code that it reaches.
inline const char* running_target() { return instruction_set(); }

/// Restricts dispatch to one instruction set while it lives.
class TargetScope {
public:
    explicit TargetScope(std::int64_t target) : target_(target) { hwy::SetSupportedTargetsForTest(target); }
    ~TargetScope() { hwy::SetSupportedTargetsForTest(0); }
    TargetScope(const TargetScope&) = delete;
    TargetScope& operator=(const TargetScope&) = delete;

    const char* name() const { return hwy::TargetName(target_); }

private:
    std::int64_t target_;
};

/// Makes the plain versions of all kernels run while it lives.
class PlainScope {
public:
    PlainScope() { set_kernel_path(KernelPath::Plain); }
    ~PlainScope() { set_kernel_path(KernelPath::Fast); }
    PlainScope(const PlainScope&) = delete;
    PlainScope& operator=(const PlainScope&) = delete;
};

}  // namespace pixvane::test

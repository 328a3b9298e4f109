// The instruction set that the vector code runs with.
// SPDX-License-Identifier: MIT
#include "core/instruction_set.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "core/instruction_set.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

const char* name_of_target() { return hwy::TargetName(HWY_TARGET); }

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane {

HWY_EXPORT(name_of_target);

const char* instruction_set() { return HWY_DYNAMIC_DISPATCH(name_of_target)(); }

}  // namespace pixvane
#endif  // HWY_ONCE

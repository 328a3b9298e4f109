// Values of the C interface and of the control, one into the other.
// SPDX-License-Identifier: MIT
#include "api/values.h"

#include <cstdint>

namespace pixvane {
namespace {

static_assert(
    static_cast<int>(Kind::Null) == PIXVANE_NULL && static_cast<int>(Kind::Int32) == PIXVANE_INT32 &&
    static_cast<int>(Kind::Double) == PIXVANE_DOUBLE && static_cast<int>(Kind::Bool) == PIXVANE_BOOL &&
    static_cast<int>(Kind::String) == PIXVANE_STRING && static_cast<int>(Kind::Bytes) == PIXVANE_BYTES &&
    static_cast<int>(Kind::Int32Array) == PIXVANE_INT32_ARRAY &&
    static_cast<int>(Kind::Points) == PIXVANE_POINTS && static_cast<int>(Kind::Color) == PIXVANE_COLOR &&
    static_cast<int>(Kind::Values) == PIXVANE_VALUES);

}  // namespace

bool from_c(const pixvane_value& from, Value& to) {
    if (from.kind < PIXVANE_NULL || from.kind > PIXVANE_COLOR) return false;
    to = {static_cast<Kind>(from.kind), from.i, from.d, from.data, from.size};
    const std::size_t element = element_size(to.kind);
    if (element == 0) return true;
    if (from.data == nullptr && from.size != 0) return false;
    return from.size <= PTRDIFF_MAX / element;
}

pixvane_value to_c(const Value& value) {
    return {static_cast<std::int32_t>(value.kind), value.i, value.d, value.data, value.size};
}

std::size_t byte_size(const Value& value) { return value.size * element_size(value.kind); }

}  // namespace pixvane

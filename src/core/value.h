// A value that one floor hands to another without knowing what it is for: of a member, of an event.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pixvane {

/// `Values` is no kind of a value: it stands for any number of values of any kind, where an argument list
/// ends.
enum class Kind : std::int32_t {
    Null,
    Int32,
    Double,
    Bool,
    String,
    Bytes,
    Int32Array,
    Points,
    Color,
    Values
};

/// A value that refers to memory of its giver. The size counts bytes, numbers or points.
struct Value {
    Kind kind = Kind::Null;
    std::int32_t i = 0;
    double d = 0;
    const void* data = nullptr;
    std::size_t size = 0;

    static Value integer(std::int32_t number) { return {Kind::Int32, number, 0, nullptr, 0}; }
    static Value string(std::string_view text) { return {Kind::String, 0, 0, text.data(), text.size()}; }
};

/// Bytes that one element of a string or array takes; 0 for all that has no memory behind it.
constexpr std::size_t element_size(Kind kind) {
    switch (kind) {
        case Kind::String:
        case Kind::Bytes:
            return 1;
        case Kind::Int32Array:
            return sizeof(std::int32_t);
        case Kind::Points:
            return 2 * sizeof(std::int32_t);
        default:
            return 0;
    }
}

}  // namespace pixvane

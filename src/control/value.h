// What a member returns, and how each C++ type travels into and out of one.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "core/bitmap.h"
#include "core/byte_buffer.h"
#include "core/color.h"
#include "core/value.h"
#include "draw/rasterizer.h"
#include "filters/adjust/histogram.h"

namespace pixvane {

/// How a value lies in a macro's step (step_codec.h). Pixels are as many as the two integers before them
/// multiply to; numbers, points and text bring their count.
enum class Field : std::uint8_t { Int32, Byte, Flag, Double, Color, Numbers, Points, Text, Pixels };

/// What a member returns: a value and whatever keeps its memory alive.
struct Result {
    Value value;
    std::shared_ptr<const void> owner;
};

/// Bytes or numbers that may be absent, which is not the same as none.
using MaybeBytes = std::optional<ByteSpan>;
using MaybeNumbers = std::optional<std::span<const std::int32_t>>;
using Points = std::span<const PixelPoint>;
/// The last parameter of a member that takes any number of values.
using Values = std::span<const Value>;

/// How a parameter type travels: its kind, its form in a macro, and its value out of a Value of a kind that
/// fits.
template <class T>
struct Wire;

template <>
struct Wire<std::int32_t> {
    static constexpr Kind kind = Kind::Int32;
    static constexpr Field field = Field::Int32;
    static std::int32_t get(const Value& v) { return v.i; }
};
/// An integer that doesn't fit is refused like a value of a wrong kind.
template <>
struct Wire<std::uint8_t> {
    static constexpr Kind kind = Kind::Int32;
    static constexpr Field field = Field::Byte;
    static std::uint8_t get(const Value& v) { return static_cast<std::uint8_t>(v.i); }
};
template <>
struct Wire<double> {
    static constexpr Kind kind = Kind::Double;
    static constexpr Field field = Field::Double;
    static double get(const Value& v) { return v.kind == Kind::Int32 ? v.i : v.d; }
};
template <>
struct Wire<bool> {
    static constexpr Kind kind = Kind::Bool;
    static constexpr Field field = Field::Flag;
    static bool get(const Value& v) { return v.i != 0; }
};
template <>
struct Wire<Color> {
    static constexpr Kind kind = Kind::Color;
    static constexpr Field field = Field::Color;
    static Color get(const Value& v) { return {static_cast<std::uint32_t>(v.i)}; }
};
template <>
struct Wire<std::string_view> {
    static constexpr Kind kind = Kind::String;
    static constexpr Field field = Field::Text;
    static std::string_view get(const Value& v) { return {static_cast<const char*>(v.data), v.size}; }
};
template <>
struct Wire<MaybeBytes> {
    static constexpr Kind kind = Kind::Bytes;
    static constexpr Field field = Field::Pixels;
    static MaybeBytes get(const Value& v) {
        if (v.kind == Kind::Null || v.data == nullptr) return std::nullopt;
        return ByteSpan{static_cast<const std::uint8_t*>(v.data), v.size};
    }
};
template <>
struct Wire<MaybeNumbers> {
    static constexpr Kind kind = Kind::Int32Array;
    static constexpr Field field = Field::Numbers;
    static MaybeNumbers get(const Value& v) {
        if (v.kind == Kind::Null || v.data == nullptr) return std::nullopt;
        return std::span{static_cast<const std::int32_t*>(v.data), v.size};
    }
};
template <>
struct Wire<Points> {
    static constexpr Kind kind = Kind::Points;
    static constexpr Field field = Field::Points;
    static Points get(const Value& v) { return {static_cast<const PixelPoint*>(v.data), v.size}; }
};

/// Taken whole, from its place to the end of the arguments. It is in no macro.
template <>
struct Wire<Values> {
    static constexpr Kind kind = Kind::Values;
    static constexpr Field field = Field::Int32;
};

/// Whether a value may stand where `wanted` is: its own kind, an integer for a double or a colour, and
/// nothing for bytes or numbers.
constexpr bool fits(Kind wanted, Kind given) {
    if (wanted == given) return true;
    if (given == Kind::Int32) return wanted == Kind::Double || wanted == Kind::Color;
    if (given == Kind::Color) return wanted == Kind::Int32;
    return given == Kind::Null && (wanted == Kind::Bytes || wanted == Kind::Int32Array);
}

/// How a result type travels. `kind` is what it is when there is something to return.
template <class T>
struct Outgoing;

template <>
struct Outgoing<std::int32_t> {
    static constexpr Kind kind = Kind::Int32;
    static Result make(std::int32_t n) { return {{kind, n, 0, nullptr, 0}, nullptr}; }
};
template <>
struct Outgoing<std::uint8_t> {
    static constexpr Kind kind = Kind::Int32;
    static Result make(std::uint8_t n) { return {{kind, n, 0, nullptr, 0}, nullptr}; }
};
template <>
struct Outgoing<double> {
    static constexpr Kind kind = Kind::Double;
    static Result make(double d) { return {{kind, 0, d, nullptr, 0}, nullptr}; }
};
template <>
struct Outgoing<bool> {
    static constexpr Kind kind = Kind::Bool;
    static Result make(bool truth) { return {{kind, truth ? -1 : 0, 0, nullptr, 0}, nullptr}; }
};
template <>
struct Outgoing<Color> {
    static constexpr Kind kind = Kind::Color;
    static Result make(Color c) { return {{kind, static_cast<std::int32_t>(c.bgr), 0, nullptr, 0}, nullptr}; }
};
template <>
struct Outgoing<std::string> {
    static constexpr Kind kind = Kind::String;
    static Result make(std::string text) {
        auto owner = std::make_shared<const std::string>(std::move(text));
        const Value value = Value::string(*owner);
        return {value, std::move(owner)};
    }
};
template <>
struct Outgoing<std::optional<ByteBuffer>> {
    static constexpr Kind kind = Kind::Bytes;
    static Result make(std::optional<ByteBuffer> bytes) {
        if (!bytes) return {};
        auto owner = std::make_shared<const ByteBuffer>(std::move(*bytes));
        const Value value{kind, 0, 0, owner->data(), owner->size()};
        return {value, std::move(owner)};
    }
};
/// A bitmap leaves as the bytes of its pixels.
template <>
struct Outgoing<std::shared_ptr<const Bitmap>> {
    static constexpr Kind kind = Kind::Bytes;
    static Result make(std::shared_ptr<const Bitmap> bitmap) {
        if (bitmap == nullptr) return {};
        const ConstPixelBuffer pixels = bitmap->pixels();
        return {{kind, 0, 0, pixels.data, pixels.bytes()}, std::move(bitmap)};
    }
};
template <>
struct Outgoing<std::optional<filters::Histogram>> {
    static constexpr Kind kind = Kind::Int32Array;
    static Result make(const std::optional<filters::Histogram>& histogram) {
        if (!histogram) return {};
        auto owner = std::make_shared<const filters::Histogram>(*histogram);
        const Value value{kind, 0, 0, owner->data(), owner->size()};
        return {value, std::move(owner)};
    }
};

}  // namespace pixvane

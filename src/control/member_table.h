// The one table of everything a host can call, get, put or listen to.
// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

#include "control/cpixvane.h"
#include "control/value.h"

namespace pixvane {

/// A closed range of numbers; not there unless both ends are given.
struct Range {
    double minimum = std::numeric_limits<double>::quiet_NaN();
    double maximum = std::numeric_limits<double>::quiet_NaN();
    bool is_given() const { return !std::isnan(minimum); }
};
constexpr double kUnbounded = std::numeric_limits<double>::infinity();

/// What a row says of an argument; its kind is deduced from the function.
struct Arg {
    const char* name;
    Range slider = {};                                          ///< of a dialog; values beyond may be fine
    double initial = std::numeric_limits<double>::quiet_NaN();  ///< what a dialog shows first
    Range accepts = {};  ///< the member does nothing for values outside
    Kind kind = Kind::Null;
};

enum class MemberType : std::int32_t { Method, Property, Event };
/// When a command is recorded: before it runs, whatever comes of it; or after it, if it ran.
enum class Records { Before, IfRun };
enum class Status { Ok, Count, Type };

/// A pointer to a member function of CPixvane, its signature put away.
class ErasedMember {
public:
    ErasedMember() = default;
    template <class R, class... A>
    explicit ErasedMember(R (CPixvane::*member)(A...)) {
        static_assert(sizeof member <= sizeof bytes_);
        std::memcpy(bytes_, &member, sizeof member);
    }
    /// Only as the signature that it was made from.
    template <class R, class... A>
    auto as() const {
        R (CPixvane::*member)(A...);
        std::memcpy(&member, bytes_, sizeof member);
        return member;
    }

private:
    unsigned char bytes_[sizeof(void(CPixvane::*)())] = {};
};

/// One member. The function is erased; the thunk for its signature knows its type again.
struct Row {
    const char* name;
    MemberType type;
    const char* category;
    const char* help;
    Kind result = Kind::Null;
    bool edits = false;  ///< a command: recorded, undoable
    Records records = Records::Before;
    std::int32_t macroCode = -1;      ///< of its recorded step
    std::vector<Arg> arguments = {};  ///< of a property: the one of its put, if it has one

    using FreeFunction = void (*)();
    using Thunk = Result (*)(const Row& row, CPixvane& control, std::span<const Value> arguments);
    FreeFunction run = nullptr;
    ErasedMember method = {};  ///< or the get of a property
    ErasedMember put = {};
    Thunk callThunk = nullptr;  ///< of a property: get
    Thunk putThunk = nullptr;
};

/// All rows; a row's place in the list is its handle.
std::span<const Row> member_table();
/// A method or property by its name; null if there is none.
const Row* find_member(std::string_view name);
/// An event by its name; null if there is none.
const Row* find_event(std::string_view name);

/// Calls a method, gets a property (no argument) or puts it (one). Checks the arguments' number and kinds.
Status invoke(const Row& row, CPixvane& control, std::span<const Value> arguments, Result& result);

// ---- Making rows. Each deduces the kinds from the function that it is given. ----

namespace detail {

template <class... A, class Function, std::size_t... I>
decltype(auto) apply_values([[maybe_unused]] std::span<const Value> values, Function function,
                            std::index_sequence<I...>) {
    return function(Wire<A>::get(values[I])...);
}

/// The pipeline of every command. `R` is bool if the command tells whether it ran, else void.
template <class R, class... A>
Result call_command(const Row& row, CPixvane& control, std::span<const Value> values) {
    const auto function = reinterpret_cast<R (*)(ImageStore&, A...)>(row.run);
    const auto run = [&](A... a) { return function(control.store(), a...); };
    if (row.records == Records::Before) control.record(row, values);
    if constexpr (std::is_same_v<R, bool>) {
        const bool ran = apply_values<A...>(values, run, std::index_sequence_for<A...>());
        if (ran && row.records == Records::IfRun) control.record(row, values);
    } else {
        apply_values<A...>(values, run, std::index_sequence_for<A...>());
    }
    control.Repaint();
    return {};
}

template <class R, class... A>
Result call_member(CPixvane& control, const ErasedMember& erased, std::span<const Value> values) {
    const auto member = erased.as<R, A...>();
    const auto call = [&](A... a) -> R { return (control.*member)(a...); };
    if constexpr (std::is_void_v<R>) {
        apply_values<A...>(values, call, std::index_sequence_for<A...>());
        return {};
    } else {
        return Outgoing<R>::make(apply_values<A...>(values, call, std::index_sequence_for<A...>()));
    }
}

template <class R, class... A>
Result call_method(const Row& row, CPixvane& control, std::span<const Value> values) {
    return call_member<R, A...>(control, row.method, values);
}

template <class A>
Result call_put(const Row& row, CPixvane& control, std::span<const Value> values) {
    return call_member<void, A>(control, row.put, values);
}

template <class... A>
std::vector<Arg> with_kinds(std::initializer_list<Arg> arguments) {
    std::vector<Arg> list(arguments);
    const Kind kinds[] = {Wire<A>::kind..., Kind::Null};
    for (std::size_t i = 0; i < list.size() && i < sizeof...(A); ++i) list[i].kind = kinds[i];
    return list;
}

}  // namespace detail

/// A command on the picture: recorded under `macroCode`, then run, then shown. One that returns a bool tells
/// whether it ran, and is recorded after its run and only if it did.
template <class R, class... A>
Row command(const char* name, std::int32_t macroCode, R (*run)(ImageStore&, A...), const char* category,
            const char* help, std::initializer_list<Arg> arguments = {}) {
    Row row{name, MemberType::Method, category, help};
    row.edits = true;
    row.macroCode = macroCode;
    row.arguments = detail::with_kinds<A...>(arguments);
    row.run = reinterpret_cast<Row::FreeFunction>(run);
    row.records = std::is_same_v<R, bool> ? Records::IfRun : Records::Before;
    row.callThunk = &detail::call_command<R, A...>;
    return row;
}

/// A method outside of the pipeline.
template <class R, class... A>
Row method(const char* name, R (CPixvane::*member)(A...), const char* category, const char* help,
           std::initializer_list<Arg> arguments = {}) {
    Row row{name, MemberType::Method, category, help};
    if constexpr (!std::is_void_v<R>) row.result = Outgoing<R>::kind;
    row.arguments = detail::with_kinds<A...>(arguments);
    row.method = ErasedMember(member);
    row.callThunk = &detail::call_method<R, A...>;
    return row;
}

/// A property that can only be read.
template <class R>
Row property(const char* name, R (CPixvane::*get)(), const char* category, const char* help) {
    Row row = method(name, get, category, help);
    row.type = MemberType::Property;
    return row;
}

/// A property that can be put; `value` says what of.
template <class R, class A>
Row property(const char* name, R (CPixvane::*get)(), void (CPixvane::*put)(A), const char* category,
             const char* help, Arg value = {"Value"}) {
    Row row = property(name, get, category, help);
    row.arguments = detail::with_kinds<A>({value});
    row.put = ErasedMember(put);
    row.putThunk = &detail::call_put<A>;
    return row;
}

/// An event; `A` are the types of its arguments.
template <class... A>
Row event(const char* name, const char* category, const char* help,
          std::initializer_list<Arg> arguments = {}) {
    Row row{name, MemberType::Event, category, help};
    row.arguments = detail::with_kinds<A...>(arguments);
    return row;
}

// The parts of the table, one file each.
std::vector<Row> document_rows();
std::vector<Row> adjust_rows();
std::vector<Row> area_rows();
std::vector<Row> effect_rows();
std::vector<Row> geometry_rows();
std::vector<Row> view_rows();

}  // namespace pixvane

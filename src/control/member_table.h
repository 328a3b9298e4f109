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
    Field field = Field::Int32;  ///< its form in a macro
};

/// A step is in no list of members: only macros know it.
enum class MemberType : std::int32_t { Method, Property, Event, Step };
/// When a command is recorded: before it runs, whatever comes of it; or after it, if it ran.
enum class Records { Before, IfRun };
enum class Status { Ok, Member, Count, Type };

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

/// What the put of a setting does with a value that is refused: nothing at all; or the value is kept, the
/// given or the kept one is recorded, and the view is shown anew.
enum class Refused { Nothing, RecordsGiven, RecordsKept };
/// Whether the put of a setting shows the view anew: always, while a tool is chosen, or never.
enum class Repaints { Always, WithTool, Never };

struct SettingRules {
    Refused refused = Refused::RecordsKept;
    Repaints repaints = Repaints::Always;
    /// Refused are also values from this number on, which the machine sets.
    std::int32_t (*count)(CPixvane&) = nullptr;
    /// After a macro has run, a value from before it comes back only if it is one that a put accepts.
    bool comesBackChecked = false;
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
    std::int32_t macroCode = -1;       ///< of its recorded step
    bool plays = true;                 ///< false: steps of its code are another row's
    std::vector<Arg> arguments = {};   ///< of a property: the one of its put, if it has one
    std::vector<Arg> stepFields = {};  ///< of its step, where that holds something else than the arguments
    SettingRules rules = {};

    using FreeFunction = void (*)();
    using Thunk = Result (*)(const Row& row, CPixvane& control, std::span<const Value> arguments);
    /// Does what the member does to picture or settings, without anything around it; says whether it did.
    using Apply = bool (*)(const Row& row, CPixvane& control, std::span<const Value> arguments);
    using Check = Status (*)(std::span<const Value> arguments);
    FreeFunction run = nullptr;   ///< or what sets a setting
    FreeFunction read = nullptr;  ///< what reads a setting
    ErasedMember method = {};     ///< or the get of a property
    ErasedMember put = {};
    Thunk callThunk = nullptr;  ///< of a property: get
    Thunk putThunk = nullptr;
    Check check = nullptr;         ///< what else the arguments must be, once their number and kinds are right
    Apply apply = nullptr;         ///< also what playing its step does; without it a step is passed over
    Thunk currentThunk = nullptr;  ///< of a setting: its value as a macro records it
    /// Of a setting: adds its step as it is now to the macro, if there is anything to add.
    void (*snapshot)(const Row& row, CPixvane& control) = nullptr;

    const std::vector<Arg>& step_fields() const { return stepFields.empty() ? arguments : stepFields; }
};

/// All rows; a row's place in the list is its handle.
std::span<const Row> member_table();
/// A method or property by its name; null if there is none.
const Row* find_member(std::string_view name);
/// An event by its name; null if there is none.
const Row* find_event(std::string_view name);
/// The row that plays the steps of a code, be it a member's or no member's; null if the code is unknown.
const Row* find_step(std::int32_t code);
/// The rows of settings in the order of the snapshot that a macro starts with.
std::span<const Row> setting_table();
/// The rows of steps that no member has.
std::span<const Row> step_table();

/// Whether the put of a setting takes a value.
bool accepts_setting(const Row& row, CPixvane& control, const Value& value);

/// Whether arguments fit a method or the put of a property, in number and kinds.
Status check_arguments(const Row& row, std::span<const Value> arguments);
/// Calls a method, gets a property (no argument) or puts it (one). Checks the arguments.
Status invoke(const Row& row, CPixvane& control, std::span<const Value> arguments, Result& result);

// ---- Making rows. Each deduces the kinds from the function that it is given. ----

namespace detail {

template <class A>
A argument_at(std::span<const Value> values, std::size_t index) {
    if constexpr (std::is_same_v<A, Values>)
        return values.subspan(index);
    else
        return Wire<A>::get(values[index]);
}

template <class... A, class Function, std::size_t... I>
decltype(auto) apply_values([[maybe_unused]] std::span<const Value> values, Function function,
                            std::index_sequence<I...>) {
    return function(argument_at<A>(values, I)...);
}

/// The pipeline of every command: record, run, show.
Result call_command(const Row& row, CPixvane& control, std::span<const Value> values);
/// The pipelines of every setting (setting_row.cpp).
Result get_setting(const Row& row, CPixvane& control, std::span<const Value> values);
Result put_setting(const Row& row, CPixvane& control, std::span<const Value> values);
void take_snapshot(const Row& row, CPixvane& control);

inline ImageStore& target_of(CPixvane& control, ImageStore*) { return control.store(); }
inline CPixvane& target_of(CPixvane& control, CPixvane*) { return control; }

/// `R` is bool if the function tells whether it ran, else void.
template <class Target, class R, class... A>
bool apply_run(const Row& row, CPixvane& control, std::span<const Value> values) {
    const auto function = reinterpret_cast<R (*)(Target&, A...)>(row.run);
    Target& target = target_of(control, static_cast<Target*>(nullptr));
    const auto run = [&](A... a) -> R { return function(target, a...); };
    if constexpr (std::is_same_v<R, bool>) {
        return apply_values<A...>(values, run, std::index_sequence_for<A...>());
    } else {
        apply_values<A...>(values, run, std::index_sequence_for<A...>());
        return true;
    }
}

template <class T>
Result read_setting(const Row& row, CPixvane& control, std::span<const Value>) {
    return Outgoing<T>::make(reinterpret_cast<T (*)(CPixvane&)>(row.read)(control));
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
    const Field fields[] = {Wire<A>::field..., Field::Int32};
    for (std::size_t i = 0; i < list.size() && i < sizeof...(A); ++i) {
        list[i].kind = kinds[i];
        list[i].field = fields[i];
    }
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
    row.callThunk = &detail::call_command;
    row.apply = &detail::apply_run<ImageStore, R, A...>;
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

/// A property that drawing uses: recorded, set by macros, put back after they have run. `get` gives the value
/// as a macro records it (a colour with its alpha on top, which hosts don't see); `set` takes any value of
/// the type. Rows stand in the order of the snapshot.
template <class T>
Row setting(const char* name, std::int32_t macroCode, T (*get)(CPixvane&), void (*set)(CPixvane&, T),
            const char* category, const char* help, Arg value, SettingRules rules = {}) {
    Row row{name, MemberType::Property, category, help};
    row.result = Outgoing<T>::kind;
    row.macroCode = macroCode;
    row.arguments = detail::with_kinds<T>({value});
    row.rules = rules;
    row.run = reinterpret_cast<Row::FreeFunction>(set);
    row.read = reinterpret_cast<Row::FreeFunction>(get);
    row.callThunk = &detail::get_setting;
    row.putThunk = &detail::put_setting;
    row.apply = &detail::apply_run<CPixvane, void, T>;
    row.currentThunk = &detail::read_setting<T>;
    row.snapshot = &detail::take_snapshot;
    return row;
}

/// A step that no member has; `run` takes the store or the control, then the step's arguments.
template <class Target, class R, class... A>
Row step(const char* name, std::int32_t macroCode, R (*run)(Target&, A...),
         std::initializer_list<Arg> arguments = {}) {
    Row row{name, MemberType::Step, "", ""};
    row.macroCode = macroCode;
    row.arguments = detail::with_kinds<A...>(arguments);
    row.run = reinterpret_cast<Row::FreeFunction>(run);
    row.apply = &detail::apply_run<Target, R, A...>;
    return row;
}
/// A step that does nothing here; `A` are the types of the arguments that are passed over.
template <class... A>
Row passed_over(const char* name, std::int32_t macroCode, std::initializer_list<Arg> arguments = {}) {
    Row row{name, MemberType::Step, "", ""};
    row.macroCode = macroCode;
    row.arguments = detail::with_kinds<A...>(arguments);
    return row;
}

/// The row of a member that is recorded under the code of another, which plays its steps.
Row recorded_only(Row row);

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
std::vector<Row> interaction_rows();
std::vector<Row> view_rows();
std::vector<Row> settings_rows();
std::vector<Row> macro_rows();
std::vector<Row> step_rows();

}  // namespace pixvane

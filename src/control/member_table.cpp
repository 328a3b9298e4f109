// The one table of everything a host can call, get, put or listen to.
// SPDX-License-Identifier: MIT
#include "control/member_table.h"

#include <algorithm>
#include <iterator>

namespace pixvane {
namespace {

/// Of all parts of the table either the members or the steps that no member has.
std::vector<Row> join_rows(bool steps) {
    std::vector<Row> all;
    for (auto part : {document_rows, adjust_rows, area_rows, effect_rows, geometry_rows, view_rows,
                      interaction_rows, settings_rows, macro_rows, step_rows})
        for (Row& row : part())
            if ((row.type == MemberType::Step) == steps) all.push_back(std::move(row));
    return all;
}

std::vector<const Row*> sorted_by_code() {
    std::vector<const Row*> index;
    for (const auto rows : {member_table(), step_table()})
        for (const Row& row : rows)
            if (row.macroCode >= 0 && row.plays) index.push_back(&row);
    std::ranges::sort(index, {}, &Row::macroCode);
    return index;
}

std::vector<const Row*> sorted_by_name() {
    std::vector<const Row*> index;
    for (const Row& row : member_table()) index.push_back(&row);
    std::ranges::sort(index, {}, [](const Row* row) { return std::string_view(row->name); });
    return index;
}

const Row* find(std::string_view name) {
    static const std::vector<const Row*> index = sorted_by_name();
    const auto found =
        std::ranges::lower_bound(index, name, {}, [](const Row* row) { return std::string_view(row->name); });
    return found != index.end() && (*found)->name == name ? *found : nullptr;
}

}  // namespace

std::span<const Row> member_table() {
    static const std::vector<Row> rows = join_rows(false);
    return rows;
}

std::span<const Row> setting_table() {
    static const auto first =
        std::ranges::find_if(member_table(), [](const Row& row) { return row.snapshot; });
    static const auto last =
        std::find_if(first, member_table().end(), [](const Row& row) { return !row.snapshot; });
    return {first, last};
}

std::span<const Row> step_table() {
    static const std::vector<Row> rows = join_rows(true);
    return rows;
}

const Row* find_step(std::int32_t code) {
    static const std::vector<const Row*> index = sorted_by_code();
    const auto found = std::ranges::lower_bound(index, code, {}, &Row::macroCode);
    return found != index.end() && (*found)->macroCode == code ? *found : nullptr;
}

const Row* find_member(std::string_view name) {
    const Row* row = find(name);
    return row != nullptr && row->type != MemberType::Event ? row : nullptr;
}

const Row* find_event(std::string_view name) {
    const Row* row = find(name);
    return row != nullptr && row->type == MemberType::Event ? row : nullptr;
}

Row recorded_only(Row row) {
    row.plays = false;
    return row;
}

Result detail::call_command(const Row& row, CPixvane& control, std::span<const Value> values) {
    control.end_preview();
    if (row.records == Records::Before) control.record(row, values);
    const bool ran = row.apply(row, control, values);
    if (ran && row.records == Records::IfRun) control.record(row, values);
    control.Repaint();
    return {};
}

Status check_arguments(const Row& row, std::span<const Value> arguments) {
    const bool isOpen = !row.arguments.empty() && row.arguments.back().kind == Kind::Values;
    const std::size_t wanted = row.arguments.size() - (isOpen ? 1 : 0);
    if (isOpen ? arguments.size() < wanted : arguments.size() != wanted) return Status::Count;
    for (std::size_t i = 0; i < wanted; ++i) {
        if (!fits(row.arguments[i].kind, arguments[i].kind)) return Status::Type;
        const bool isByte = arguments[i].i >= 0 && arguments[i].i <= 255;
        if (row.arguments[i].field == Field::Byte && !isByte) return Status::Type;
    }
    return row.check == nullptr ? Status::Ok : row.check(arguments);
}

Status invoke(const Row& row, CPixvane& control, std::span<const Value> arguments, Result& result) {
    const bool isProperty = row.type == MemberType::Property;
    const bool isGet = isProperty && arguments.empty();
    const Row::Thunk thunk = isProperty && !isGet ? row.putThunk : row.callThunk;
    if (thunk == nullptr) return Status::Count;
    const Status status = isGet ? Status::Ok : check_arguments(row, arguments);
    if (status == Status::Ok) result = thunk(row, control, arguments);
    return status;
}

}  // namespace pixvane

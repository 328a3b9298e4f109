// The one table of everything a host can call, get, put or listen to.
// SPDX-License-Identifier: MIT
#include "control/member_table.h"

#include <algorithm>
#include <iterator>

namespace pixvane {
namespace {

std::vector<Row> join_rows() {
    std::vector<Row> all;
    for (auto part : {document_rows, adjust_rows, area_rows, effect_rows, geometry_rows, view_rows})
        for (Row& row : part()) all.push_back(std::move(row));
    return all;
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
    static const std::vector<Row> rows = join_rows();
    return rows;
}

const Row* find_member(std::string_view name) {
    const Row* row = find(name);
    return row != nullptr && row->type != MemberType::Event ? row : nullptr;
}

const Row* find_event(std::string_view name) {
    const Row* row = find(name);
    return row != nullptr && row->type == MemberType::Event ? row : nullptr;
}

Status invoke(const Row& row, CPixvane& control, std::span<const Value> arguments, Result& result) {
    Row::Thunk thunk = row.callThunk;
    std::size_t wanted = row.arguments.size();
    if (row.type == MemberType::Property) {
        if (!arguments.empty())
            thunk = row.putThunk;
        else
            wanted = 0;
    }
    if (thunk == nullptr || arguments.size() != wanted) return Status::Count;
    for (std::size_t i = 0; i < wanted; ++i)
        if (!fits(row.arguments[i].kind, arguments[i].kind)) return Status::Type;
    result = thunk(row, control, arguments);
    return Status::Ok;
}

}  // namespace pixvane

// What every setting does when it is read, put, or recorded at the start of a macro.
// SPDX-License-Identifier: MIT
#include "control/member_table.h"
#include "core/color.h"

namespace pixvane {
namespace {

bool shows_anew(Repaints rule, CPixvane& control) {
    return rule == Repaints::Always || (rule == Repaints::WithTool && control.PaintStatus() >= 1);
}

}  // namespace

bool accepts_setting(const Row& row, CPixvane& control, const Value& value) {
    const Range& range = row.arguments.front().accepts;
    if (range.is_given() && (value.i < range.minimum || value.i > range.maximum)) return false;
    return row.rules.count == nullptr || value.i < row.rules.count(control);
}

Result detail::get_setting(const Row& row, CPixvane& control, std::span<const Value>) {
    Result result = row.currentThunk(row, control, {});
    // Hosts see colours without their alpha.
    if (result.value.kind == Kind::Color) result.value.i &= 0xFFFFFF;
    return result;
}

Result detail::put_setting(const Row& row, CPixvane& control, std::span<const Value> values) {
    if (accepts_setting(row, control, values.front())) {
        control.record(row, values);
        row.apply(row, control, values);
    } else {
        if (row.rules.refused == Refused::Nothing) return {};
        if (row.rules.refused == Refused::RecordsGiven) control.record(row, values);
        if (row.rules.refused == Refused::RecordsKept) row.snapshot(row, control);
    }
    if (shows_anew(row.rules.repaints, control)) control.Repaint();
    return {};
}

void detail::take_snapshot(const Row& row, CPixvane& control) {
    const Result now = row.currentThunk(row, control, {});
    control.record(row, {&now.value, 1});
}

}  // namespace pixvane

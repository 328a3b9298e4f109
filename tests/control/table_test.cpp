// The table of members keeps its promises, and refuses calls that don't fit.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "control/test_control.h"

namespace pixvane::test {
namespace {

TEST(Table, names_and_describes_every_member_once) {
    std::set<std::string> names;
    for (const Row& row : member_table()) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(names.insert(row.name).second);
        const std::string help = row.help;
        EXPECT_GT(help.size(), 10u);
        EXPECT_LE(help.size(), 100u);
        EXPECT_EQ(help.back(), '.');
        EXPECT_EQ(help.find('\n'), std::string::npos);
        EXPECT_NE(std::string(row.category), "");
        for (const Arg& argument : row.arguments) {
            EXPECT_NE(argument.kind, Kind::Null) << argument.name << ": more arguments than the function has";
            if (!argument.slider.is_given()) continue;
            EXPECT_LT(argument.slider.minimum, argument.slider.maximum);
            EXPECT_LE(argument.slider.minimum, argument.initial);
            EXPECT_GE(argument.slider.maximum, argument.initial);
            if (!argument.accepts.is_given()) continue;
            EXPECT_LE(argument.accepts.minimum, argument.slider.minimum);
            EXPECT_GE(argument.accepts.maximum, argument.slider.maximum);
        }
        const bool reaches =
            row.type == MemberType::Event ? row.callThunk == nullptr : row.callThunk != nullptr;
        EXPECT_TRUE(reaches);
    }
    EXPECT_EQ(find_member("OnDropFile"), nullptr);
    EXPECT_EQ(find_event("LoadImage"), nullptr);
    EXPECT_EQ(find_member("loadimage"), nullptr);
    EXPECT_EQ(find_member(""), nullptr);
}

TEST(Table, gives_each_macro_code_to_one_row_that_plays_it) {
    std::map<std::int32_t, const Row*> codes;
    const auto add = [&](const Row& row) {
        if (row.macroCode < 0) return;
        const Row* player = find_step(row.macroCode);
        ASSERT_NE(player, nullptr) << row.name;
        EXPECT_EQ(row.plays, player == &row) << row.name;
        EXPECT_TRUE(!row.plays || codes.emplace(row.macroCode, &row).second) << row.name;
    };
    for (const Row& row : member_table()) {
        EXPECT_EQ(row.edits || row.snapshot != nullptr, row.macroCode >= 0) << row.name;
        add(row);
    }
    for (const Row& row : step_table()) add(row);
    // SetNewSize is recorded under the code of ScaleImage, and played as such.
    EXPECT_EQ(find_step(63)->name, std::string("ScaleImage"));
    EXPECT_EQ(find_step(2), nullptr);
    EXPECT_EQ(find_step(-1), nullptr);
}

TEST(Table, refuses_wrong_numbers_and_kinds_of_arguments) {
    TestControl c;
    const auto status = [&](const char* member, std::initializer_list<Value> arguments) {
        Result result;
        return invoke(*find_member(member), c.control, {arguments.begin(), arguments.size()}, result);
    };
    EXPECT_EQ(status("Saturate", {}), Status::Count);
    EXPECT_EQ(status("Saturate", {integer(1), integer(2)}), Status::Count);
    EXPECT_EQ(status("Saturate", {real(1)}), Status::Type);
    EXPECT_EQ(status("Saturate", {truth(true)}), Status::Type);
    EXPECT_EQ(status("Gamma", {integer(1)}), Status::Ok);
    EXPECT_EQ(status("Gamma", {truth(true)}), Status::Type);
    EXPECT_EQ(status("Monochrome", {integer(1), integer(2), color(3)}), Status::Ok);
    EXPECT_EQ(status("LoadImage", {Value{}}), Status::Type);
    EXPECT_EQ(status("Picture", {Value{}}), Status::Ok);
    EXPECT_EQ(status("Picture", {integer(1)}), Status::Type);
    EXPECT_EQ(status("JpegQuality", {integer(1)}), Status::Ok);
    EXPECT_EQ(status("JpegQuality", {integer(1), integer(1)}), Status::Count);
    EXPECT_EQ(status("ImageWidth", {integer(1)}), Status::Count);
    EXPECT_EQ(status("AutoResize", {integer(1)}), Status::Type);
}

}  // namespace
}  // namespace pixvane::test

// A control over test doubles, called through the table as every host calls it.
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "control/cpixvane.h"
#include "control/member_table.h"
#include "support/doubles.h"

namespace pixvane::test {

inline Value integer(std::int32_t n) { return {Kind::Int32, n, 0, nullptr, 0}; }
inline Value real(double d) { return {Kind::Double, 0, d, nullptr, 0}; }
inline Value truth(bool b) { return {Kind::Bool, b ? -1 : 0, 0, nullptr, 0}; }
inline Value color(std::uint32_t bgr) { return {Kind::Color, static_cast<std::int32_t>(bgr), 0, nullptr, 0}; }
inline Value bytes(const void* data, std::size_t size) { return {Kind::Bytes, 0, 0, data, size}; }
inline Value bytes(const std::string& data) { return bytes(data.data(), data.size()); }

class TestControl {
public:
    Result call(std::string_view member, std::initializer_list<Value> arguments = {}) {
        Result result;
        const Row* row = find_member(member);
        EXPECT_NE(row, nullptr) << member;
        if (row == nullptr) return result;
        EXPECT_EQ(pixvane::invoke(*row, control, {arguments.begin(), arguments.size()}, result), Status::Ok)
            << member;
        return result;
    }
    std::int32_t number(std::string_view member, std::initializer_list<Value> arguments = {}) {
        return call(member, arguments).value.i;
    }
    bool is(std::string_view member, std::initializer_list<Value> arguments = {}) {
        const Result result = call(member, arguments);
        EXPECT_EQ(result.value.kind, Kind::Bool) << member;
        return result.value.i == -1;
    }
    /// Calls a row; every argument must fit.
    void invoke(const Row& row, const std::vector<Value>& arguments) {
        Result result;
        ASSERT_EQ(pixvane::invoke(row, control, arguments, result), Status::Ok) << row.name;
    }
    std::string text(std::string_view member, std::initializer_list<Value> arguments = {}) {
        const Result result = call(member, arguments);
        return {static_cast<const char*>(result.value.data), result.value.size};
    }
    void load(const Picture& picture) {
        ASSERT_TRUE(is("LoadFromImageArray", {bytes(picture.pixels.data(), picture.view().bytes()),
                                              integer(picture.width), integer(picture.height)}));
    }
    Picture picture() { return Picture(control.store().current()); }
    std::vector<std::int32_t> codes() {
        return {control.macro().codes().begin(), control.macro().codes().end()};
    }
    std::vector<std::uint8_t> recorded_bytes() {
        return {control.macro().arguments().begin(), control.macro().arguments().end()};
    }

    RawCodec codec;
    MemoryFiles files;
    CountingWindow window;
    NullRasterizer rasterizer;
    CPixvane control{{codec, files, window, rasterizer}};
};

}  // namespace pixvane::test

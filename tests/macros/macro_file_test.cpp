// Macros in memory and in files, to the byte.
// SPDX-License-Identifier: MIT
#include "macros/macro_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace pixvane {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Codes = std::vector<std::int32_t>;

Bytes encoded(const MacroScript& script) {
    const ByteBuffer file = encode_macro(script);
    return {file.data(), file.data() + file.size()};
}

Codes codes_of(const MacroScript& script) { return {script.codes().begin(), script.codes().end()}; }
Bytes arguments_of(const MacroScript& script) {
    return {script.arguments().begin(), script.arguments().end()};
}

MacroScript script_of(std::initializer_list<std::pair<std::int32_t, Bytes>> steps) {
    MacroScript script;
    for (const auto& [code, arguments] : steps) script.append(code, arguments);
    return script;
}

TEST(MacroFile, has_a_count_codes_a_length_and_arguments) {
    const MacroScript script = script_of({{0x01020304, {9, 8}}, {-2, {}}, {1, {7}}});
    const Bytes file = {3, 4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 3, 0, 0, 0, 9, 8, 7};
    EXPECT_EQ(encoded(script), file);
    MacroScript back = script_of({{5, {5}}});
    EXPECT_TRUE(decode_macro(file, back));
    EXPECT_EQ(codes_of(back), codes_of(script));
    EXPECT_EQ(arguments_of(back), arguments_of(script));

    // No arguments, no length: the smallest file there is.
    EXPECT_EQ(encoded(script_of({{12, {}}})), (Bytes{1, 12, 0, 0, 0}));
    EXPECT_TRUE(decode_macro(Bytes{1, 12, 0, 0, 0}, back));
    EXPECT_EQ(codes_of(back), Codes{12});
    EXPECT_TRUE(back.arguments().empty());
}

TEST(MacroFile, that_is_too_short_for_its_numbers_leaves_an_empty_macro) {
    const Bytes whole = {2, 1, 0, 0, 0, 5, 0, 0, 0, 8, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8};
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        MacroScript script = script_of({{5, {5}}});
        const bool isWhole = size == 9 || size == whole.size();
        EXPECT_EQ(decode_macro(file, script), isWhole) << size;
        EXPECT_EQ(script.codes().size(), isWhole ? 2u : 0u) << size;
        EXPECT_EQ(script.arguments().size(), size == whole.size() ? 8u : 0u) << size;
    }
    for (const Bytes& file : {Bytes{0, 0xFF, 0xFF, 0xFF, 0xFF}, Bytes{0, 1, 0, 0, 0},
                              Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0x80, 1, 2}, Bytes(1000, 0xFF)}) {
        MacroScript script = script_of({{5, {5}}});
        EXPECT_FALSE(decode_macro(file, script));
        EXPECT_TRUE(script.codes().empty() && script.arguments().empty());
    }
}

TEST(MacroFile, may_end_in_bytes_that_nobody_asked_for) {
    MacroScript script;
    EXPECT_TRUE(decode_macro(Bytes{1, 9, 0, 0, 0, 2, 0, 0, 0, 5, 6, 7, 8}, script));
    EXPECT_EQ(arguments_of(script), (Bytes{5, 6}));
    EXPECT_TRUE(decode_macro(Bytes{0, 1, 0, 0, 0, 5}, script));
    EXPECT_TRUE(script.codes().empty());
    EXPECT_EQ(arguments_of(script), Bytes{5});
}

TEST(MacroFile, of_256_steps_and_more_reads_back_as_another_macro) {
    MacroScript script;
    for (int i = 0; i < 300; ++i) script.append(i == 44 ? 3 : 12, Bytes{static_cast<std::uint8_t>(i)});
    const Bytes file = encoded(script);
    EXPECT_EQ(file.size(), 1u + 4 * 300 + 4 + 300);
    EXPECT_EQ(file[0], 44);
    MacroScript back;
    EXPECT_TRUE(decode_macro(file, back));
    EXPECT_EQ(codes_of(back), Codes(44, 12));
    // The next code became the length, the one after it the arguments.
    EXPECT_EQ(arguments_of(back), (Bytes{12, 0, 0}));
}

TEST(MacroScript, goes_on_over_the_start_of_loaded_arguments) {
    MacroScript script;
    ASSERT_TRUE(decode_macro(Bytes{1, 9, 0, 0, 0, 4, 0, 0, 0, 1, 2, 3, 4}, script));
    script.append(5, Bytes{10, 11, 12});
    EXPECT_EQ(codes_of(script), (Codes{9, 5}));
    EXPECT_EQ(arguments_of(script), (Bytes{10, 11, 12, 4}));
    script.append(6, Bytes{13});
    EXPECT_EQ(arguments_of(script), (Bytes{10, 11, 12, 13}));
    script.append(7, Bytes{14, 15});
    EXPECT_EQ(arguments_of(script), (Bytes{10, 11, 12, 13, 14, 15}));
}

TEST(MacroScript, tells_each_change) {
    MacroScript script;
    std::uint64_t last = script.revision();
    const auto changed = [&] { return std::exchange(last, script.revision()) != script.revision(); };
    script.append(1, {});
    EXPECT_TRUE(changed());
    script.clear();
    EXPECT_TRUE(changed());
    script.replace({1}, {});
    EXPECT_TRUE(changed());
    EXPECT_FALSE(changed());
}

}  // namespace
}  // namespace pixvane

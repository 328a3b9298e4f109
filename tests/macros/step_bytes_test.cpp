// The arguments of steps in bytes: the exact layout of each kind, whatever is cut off or claimed.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "macros/step_reader.h"
#include "macros/step_writer.h"

namespace pixvane {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// One value of each kind: how it is written, how it lies in the stream, and whether it comes back.
struct Sample {
    std::function<void(StepWriter&)> write;
    Bytes bytes;
    std::function<bool(StepReader&)> reads_back;
};

template <class T>
Sample sample(void (StepWriter::*write)(T), bool (StepReader::*read)(T&), T value, Bytes bytes) {
    return {[=](StepWriter& writer) { (writer.*write)(value); }, std::move(bytes),
            [=](StepReader& reader) {
                T back{};
                return (reader.*read)(back) && back == value;
            }};
}

Sample text_sample(std::string_view given, std::string expected, Bytes bytes) {
    return {[=](StepWriter& writer) { writer.text(given); }, std::move(bytes),
            [=](StepReader& reader) {
                std::string back = "something";
                return reader.text(back) && back == expected;
            }};
}

std::vector<Sample> samples() {
    const std::vector<std::int32_t> numbers = {1, -2};
    const std::vector<PixelPoint> points = {{-1, 256}, {INT32_MIN, INT32_MAX}};
    return {
        sample<std::uint8_t>(&StepWriter::byte, &StepReader::byte, 0xFE, {0xFE}),
        sample<std::int32_t>(&StepWriter::int32, &StepReader::int32, -2, {0xFE, 0xFF, 0xFF, 0xFF}),
        sample<double>(&StepWriter::float64, &StepReader::float64, -0.75, {0, 0, 0, 0, 0, 0, 0xE8, 0xBF}),
        {[=](StepWriter& writer) { writer.numbers(numbers); },
         {2, 0, 0, 0, 1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF},
         [=](StepReader& reader) {
             std::vector<std::int32_t> back = {7};
             return reader.numbers(back) && back == numbers;
         }},
        {[=](StepWriter& writer) { writer.points(points); },
         {2, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 1, 0, 0, 0, 0, 0, 0x80, 0xFF, 0xFF, 0xFF, 0x7F},
         [=](StepReader& reader) {
             std::vector<PixelPoint> back;
             return reader.points(back) && back == points;
         }},
        text_sample("", "", {0, 0, 0, 0}),
        text_sample("Aé€😀", "Aé€😀", {5, 0, 0, 0, 'A', 0, 0xE9, 0, 0xAC, 0x20, 0x3D, 0xD8, 0x00, 0xDE}),
        // No UTF-8: a lonely byte, an overlong form, half of a pair, beyond the last code point, a cut end.
        text_sample("\x80z", "\uFFFDz", {2, 0, 0, 0, 0xFD, 0xFF, 'z', 0}),
        text_sample("\xC0\xAF", "\uFFFD\uFFFD", {2, 0, 0, 0, 0xFD, 0xFF, 0xFD, 0xFF}),
        text_sample("\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD", {3, 0, 0, 0, 0xFD, 0xFF, 0xFD, 0xFF, 0xFD, 0xFF}),
        text_sample("\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD", {3, 0, 0, 0, 0xFD, 0xFF, 0xFD, 0xFF, 0xFD, 0xFF}),
        text_sample("\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD",
                    {4, 0, 0, 0, 0xFD, 0xFF, 0xFD, 0xFF, 0xFD, 0xFF, 0xFD, 0xFF}),
        text_sample("\xE2\x82", "\uFFFD\uFFFD", {2, 0, 0, 0, 0xFD, 0xFF, 0xFD, 0xFF}),
    };
}

TEST(StepBytes, lie_packed_and_come_back) {
    StepWriter all;
    Bytes expected;
    for (const Sample& s : samples()) {
        s.write(all);
        expected.insert(expected.end(), s.bytes.begin(), s.bytes.end());
    }
    EXPECT_EQ(Bytes(all.bytes().begin(), all.bytes().end()), expected);
    StepReader reader(expected);
    for (const Sample& s : samples()) EXPECT_TRUE(s.reads_back(reader)) << reader.offset();
    EXPECT_EQ(reader.left(), 0u);
}

TEST(StepBytes, that_are_cut_off_are_not_read) {
    for (const Sample& s : samples()) {
        for (std::size_t size = 0; size < s.bytes.size(); ++size) {
            // Memory of just this size, so that a sanitizer sees what is read beyond.
            const Bytes cut(s.bytes.begin(), s.bytes.begin() + static_cast<std::ptrdiff_t>(size));
            StepReader reader(cut);
            EXPECT_FALSE(s.reads_back(reader)) << size;
            EXPECT_EQ(reader.offset(), 0u);
        }
    }
}

TEST(StepBytes, counts_beyond_the_stream_are_not_believed) {
    const Bytes stream = {0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3, 4};
    StepReader reader(stream);
    std::vector<std::int32_t> numbers = {5};
    std::vector<PixelPoint> points;
    std::string text;
    ByteSpan raw;
    EXPECT_FALSE(reader.numbers(numbers) || reader.points(points) || reader.text(text));
    EXPECT_FALSE(reader.raw(UINT64_MAX, raw));
    EXPECT_EQ(reader.offset(), 0u);
    EXPECT_EQ(numbers, std::vector<std::int32_t>{5});
}

TEST(StepBytes, halves_of_pairs_become_replacements) {
    const Bytes stream = {4, 0, 0, 0, 0x3D, 0xD8, 'a', 0, 0x00, 0xDE, 0x3D, 0xD8};
    StepReader reader(stream);
    std::string text;
    ASSERT_TRUE(reader.text(text));
    EXPECT_EQ(text, "\uFFFDa\uFFFD\uFFFD");
}

}  // namespace
}  // namespace pixvane

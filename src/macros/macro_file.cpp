// Macro files: bytes to a macro and back.
// SPDX-License-Identifier: MIT
#include "macros/macro_file.h"

#include <cstring>
#include <utility>
#include <vector>

#include "macros/step_reader.h"
#include "macros/step_writer.h"

namespace pixvane {
namespace {

constexpr std::size_t kSmallestFile = 5;

}  // namespace

ByteBuffer encode_macro(const MacroScript& script) {
    StepWriter head;
    head.byte(static_cast<std::uint8_t>(script.codes().size()));
    for (const std::int32_t code : script.codes()) head.int32(code);
    const ByteSpan arguments = script.arguments();
    if (!arguments.empty()) head.int32(static_cast<std::int32_t>(arguments.size()));

    ByteBuffer file(head.bytes().size() + arguments.size());
    std::memcpy(file.data(), head.bytes().data(), head.bytes().size());
    if (!arguments.empty())
        std::memcpy(file.data() + head.bytes().size(), arguments.data(), arguments.size());
    return file;
}

bool decode_macro(ByteSpan file, MacroScript& script) {
    script.clear();
    StepReader reader(file);
    std::uint8_t count = 0;
    if (file.size() < kSmallestFile || !reader.byte(count) || reader.left() < std::size_t{count} * 4)
        return false;
    std::vector<std::int32_t> codes(count);
    for (std::int32_t& code : codes) reader.int32(code);
    ByteSpan arguments;
    if (reader.left() != 0) {
        std::int32_t size = 0;
        if (!reader.int32(size) || size < 0 || !reader.raw(static_cast<std::uint32_t>(size), arguments))
            return false;
    }
    script.replace(std::move(codes), {arguments.begin(), arguments.end()});
    return true;
}

}  // namespace pixvane

// Writes seeds for the fuzzer of macro files: a macro for each step that there is, and one of all of them.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "control/member_table.h"
#include "control/step_codec.h"
#include "macros/macro_file.h"

namespace {

using namespace pixvane;

/// Memory for arguments that refer to some.
constexpr std::int32_t kKernel[9] = {0, -1, 0, -1, 5, -1, 0, -1, 0};
constexpr PixelPoint kPoints[3] = {{3, 4}, {20, 5}, {9, 18}};
constexpr Pixel kPixels[4] = {0xFFFF0000, 0x8000FF00, 0xFF0000FF, 0};

Value example(const Arg& field) {
    Value value;
    value.kind = field.kind;
    const double number = std::isnan(field.initial) ? 2 : field.initial;
    switch (field.field) {
        case Field::Numbers:
            value.data = kKernel;
            value.size = std::size(kKernel);
            break;
        case Field::Points:
            value.data = kPoints;
            value.size = std::size(kPoints);
            break;
        case Field::Pixels:
            value.data = kPixels;
            value.size = sizeof kPixels;
            break;
        case Field::Text:
            return Value::string("Text");
        default:
            value.i = static_cast<std::int32_t>(number);
            value.d = number;
    }
    return value;
}

bool write_file(const std::string& path, const MacroScript& script) {
    const ByteBuffer bytes = encode_macro(script);
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && isWritten;
}

}  // namespace

int main(int count, char** words) {
    if (count != 2) {
        std::fprintf(stderr, "Usage: macro_seeds FOLDER\n");
        return 2;
    }
    const std::string folder = words[1];
    MacroScript all;
    for (const auto rows : {member_table(), step_table()}) {
        for (const Row& row : rows) {
            if (row.macroCode < 0) continue;
            std::vector<Value> values;
            for (const Arg& field : row.step_fields()) values.push_back(example(field));
            StepWriter writer;
            write_step(row, values, writer);
            MacroScript one;
            one.append(row.macroCode, writer.bytes());
            all.append(row.macroCode, writer.bytes());
            if (!write_file(folder + "/" + std::to_string(row.macroCode) + "-" + row.name, one)) {
                std::perror(folder.c_str());
                return 1;
            }
        }
    }
    return write_file(folder + "/all", all) ? 0 : 1;
}

// The arguments of a macro's step, from the fields that its row names, into bytes and back.
// SPDX-License-Identifier: MIT
#include "control/step_codec.h"

#include <array>

namespace pixvane {
namespace {

/// How one field travels to a macro and from it; the number of pixels follows from the values before them.
struct FieldCodec {
    void (*write)(const Value& value, StepWriter& writer);
    bool (*read)(StepReader& reader, StepArguments& step, Value& value);
};

bool read_int32(StepReader& reader, StepArguments&, Value& value) { return reader.int32(value.i); }

void write_int32(const Value& value, StepWriter& writer) { writer.int32(value.i); }

bool read_pixels(StepReader& reader, StepArguments& step, Value& value) {
    const std::size_t before = step.values.size();
    const std::uint64_t width = static_cast<std::uint32_t>(step.values[before - 2].i);
    const std::uint64_t height = static_cast<std::uint32_t>(step.values[before - 1].i);
    ByteSpan bytes;
    if (width * height > reader.left() / sizeof(Pixel)) return false;
    if (!reader.raw(width * height * sizeof(Pixel), bytes)) return false;
    value.data = bytes.data();
    value.size = bytes.size();
    return true;
}

// In the order of Field.
constexpr std::array<FieldCodec, 9> kCodecs = {{
    {write_int32, read_int32},
    {[](const Value& value, StepWriter& writer) { writer.byte(Wire<std::uint8_t>::get(value)); },
     [](StepReader& reader, StepArguments&, Value& value) {
         std::uint8_t byte = 0;
         if (!reader.byte(byte)) return false;
         value.i = byte;
         return true;
     }},
    {[](const Value& value, StepWriter& writer) { writer.byte(Wire<bool>::get(value) ? 1 : 0); },
     [](StepReader& reader, StepArguments&, Value& value) {
         std::uint8_t byte = 0;
         if (!reader.byte(byte)) return false;
         value.i = byte != 0 ? -1 : 0;
         return true;
     }},
    {[](const Value& value, StepWriter& writer) { writer.float64(Wire<double>::get(value)); },
     [](StepReader& reader, StepArguments&, Value& value) { return reader.float64(value.d); }},
    {write_int32, read_int32},
    {[](const Value& value, StepWriter& writer) {
         if (const MaybeNumbers numbers = Wire<MaybeNumbers>::get(value))
             writer.numbers(*numbers);
         else
             writer.numbers({});
     },
     [](StepReader& reader, StepArguments& step, Value& value) {
         if (!reader.numbers(step.numbers)) return false;
         value.data = step.numbers.data();
         value.size = step.numbers.size();
         return true;
     }},
    {[](const Value& value, StepWriter& writer) { writer.points(Wire<Points>::get(value)); },
     [](StepReader& reader, StepArguments& step, Value& value) {
         if (!reader.points(step.points)) return false;
         value.data = step.points.data();
         value.size = step.points.size();
         return true;
     }},
    {[](const Value& value, StepWriter& writer) { writer.text(Wire<std::string_view>::get(value)); },
     [](StepReader& reader, StepArguments& step, Value& value) {
         if (!reader.text(step.text)) return false;
         value = Value::string(step.text);
         return true;
     }},
    {[](const Value& value, StepWriter& writer) {
         if (const MaybeBytes bytes = Wire<MaybeBytes>::get(value)) writer.raw(*bytes);
     },
     read_pixels},
}};
static_assert(kCodecs.size() == static_cast<std::size_t>(Field::Pixels) + 1);

const FieldCodec& codec_of(const Arg& field) { return kCodecs[static_cast<std::size_t>(field.field)]; }

}  // namespace

void write_step(const Row& row, std::span<const Value> values, StepWriter& writer) {
    const std::vector<Arg>& fields = row.step_fields();
    for (std::size_t i = 0; i < fields.size() && i < values.size(); ++i)
        codec_of(fields[i]).write(values[i], writer);
}

bool read_step(const Row& row, StepReader& reader, StepArguments& step) {
    step.values.clear();
    for (const Arg& field : row.step_fields()) {
        Value value;
        value.kind = field.kind;
        if (!codec_of(field).read(reader, step, value)) return false;
        step.values.push_back(value);
    }
    return true;
}

}  // namespace pixvane

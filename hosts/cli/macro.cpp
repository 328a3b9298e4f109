// pixvane macro show FILE [--json], pixvane macro record OUT [STEP]...
// SPDX-License-Identifier: MIT
#include <cinttypes>
#include <cstdio>
#include <optional>

#include "commands.h"
#include "failure.h"
#include "picture_file.h"
#include "pixvane/pixvane.hpp"
#include "step.h"
#include "text.h"

namespace cli {
namespace {

// ---- Show ----

std::string color_text(std::int32_t color) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%06" PRIX32, static_cast<std::uint32_t>(color));
    return buffer;
}

/// Numbers one behind the other; of a long list the beginning and how many there are.
std::string list_text(const std::int32_t* numbers, std::size_t count, bool whole) {
    constexpr std::size_t kShown = 32;
    std::string text = "[";
    for (std::size_t i = 0; i < count && (whole || i < kShown); ++i)
        text += concat(i == 0 ? "" : ", ", std::to_string(numbers[i]));
    if (!whole && count > kShown) text += concat(", ... ", grouped_number(count), " numbers");
    return text + "]";
}

std::string value_text(const pixvane_value& value, bool json) {
    const auto* text = static_cast<const char*>(value.data);
    switch (value.kind) {
        case PIXVANE_INT32:
            return std::to_string(value.i);
        case PIXVANE_DOUBLE:
            return json ? json_number(value.d) : plain_number(value.d);
        case PIXVANE_BOOL:
            return value.i != 0 ? "true" : "false";
        case PIXVANE_COLOR:
            return json ? std::to_string(static_cast<std::uint32_t>(value.i)) : color_text(value.i);
        case PIXVANE_STRING:
            return json ? json_string({text, value.size}) : in_quotes({text, value.size});
        case PIXVANE_INT32_ARRAY:
            return list_text(static_cast<const std::int32_t*>(value.data), value.size, json);
        case PIXVANE_POINTS:
            return list_text(static_cast<const std::int32_t*>(value.data), 2 * value.size, json);
        case PIXVANE_BYTES:
            return json ? concat("{\"bytes\": ", std::to_string(value.size), "}")
                        : concat("(", grouped_number(value.size), " bytes)");
        default:
            return json ? "null" : "nothing";
    }
}

void print_line(std::size_t number, const pixvane_macro_step& step) {
    std::string text = step.member == nullptr ? "(unknown)" : step.member;
    for (std::int32_t i = 0; i < step.argument_count; ++i)
        text += concat(i == 0 ? "  " : ", ", step.names[i], "=", value_text(step.arguments[i], false));
    if (step.complete == 0) text += "  (its arguments are cut off)";
    std::printf("%5zu  %5" PRId32 "  %8zu  %s\n", number, step.code, step.offset, text.c_str());
}

void print_object(std::size_t number, const pixvane_macro_step& step) {
    std::string arguments;
    for (std::int32_t i = 0; i < step.argument_count; ++i)
        arguments +=
            concat(i == 0 ? "" : ", ", json_string(step.names[i]), ": ", value_text(step.arguments[i], true));
    std::printf("%s\n  {\"step\": %zu, \"code\": %" PRId32
                ", \"offset\": %zu, \"size\": %zu, \"complete\": %s, "
                "\"member\": %s, \"arguments\": {%s}}",
                number == 1 ? "" : ",", number, step.code, step.offset, step.size,
                step.complete != 0 ? "true" : "false",
                step.member == nullptr ? "null" : json_string(step.member).c_str(), arguments.c_str());
}

std::size_t step_count(pixvane::IPixvane& control) {
    std::size_t count = 0;
    const pixvane_status status = pixvane_macro_step_count(control.handle(), &count);
    if (status != PIXVANE_OK) throw pixvane::Error(status, "the macro");
    return count;
}

template <class Print>
void for_each_step(pixvane::IPixvane& control, Print print) {
    const std::size_t count = step_count(control);
    for (std::size_t i = 0; i < count; ++i) {
        pixvane_macro_step step;
        const pixvane_status status = pixvane_macro_step_at(control.handle(), i, &step);
        if (status != PIXVANE_OK) throw pixvane::Error(status, "the macro");
        print(i + 1, step);
    }
}

void show(const std::string& file, bool json) {
    check_readable(file);
    pixvane::IPixvane control;
    if (!control.LoadMacros(file)) throw FileFailure(concat(in_quotes(file), " is not a macro file"));
    if (json) {
        std::printf("[");
        for_each_step(control, print_object);
        std::printf("\n]\n");
    } else {
        std::printf("%5s  %5s  %8s  %s\n", "step", "code", "offset", "member");
        for_each_step(control, print_line);
    }
}

// ---- Record ----

void check_recordable(const Step& step) {
    if (step.member->macro_code < 0)
        throw UsageFailure(concat(step.member->name, " is not recorded in macros"));
}

/// A step is recorded as it is taken, so there is a picture to take it on: a small one, and no memory for
/// more.
void record_step(pixvane::IPixvane& control, const Step& step) {
    constexpr std::int32_t kSide = 4;
    control.NewImage(kSide, kSide);
    const std::size_t before = step_count(control);
    const pixvane_status status =
        pixvane_invoke(control.handle(), step.member->name, step.values.data(), step.values.size(), nullptr);
    if (status != PIXVANE_OK) throw pixvane::Error(status, step.text);
    if (step_count(control) == before)
        throw UsageFailure(concat("the step ", in_quotes(step.text), " is refused, so it is not recorded"));
    if (std::string_view(step.member->name) == "SetNewSize")
        std::fprintf(stderr,
                     "pixvane macro: SetNewSize shares its code with ScaleImage, and is played as that\n");
}

void record(const std::string& out, const std::vector<std::string>& texts) {
    constexpr std::size_t kMostSteps = 255;  // the file counts them in one byte
    constexpr std::uint64_t kMemory = 64u << 20;
    std::vector<Step> steps;
    for (const std::string& text : texts) {
        steps.push_back(parse_step(text));
        check_recordable(steps.back());
    }
    check_writable(out);
    pixvane_set_bitmap_limit(kMemory);
    pixvane::IPixvane control;
    control.BeginMacros();
    const std::size_t settings = step_count(control);
    if (settings + steps.size() > kMostSteps)
        throw UsageFailure(concat("a macro holds ", std::to_string(kMostSteps), " steps, ",
                                  std::to_string(settings), " of them for the settings; these are ",
                                  std::to_string(steps.size()), " more"));
    for (const Step& step : steps) record_step(control, step);
    control.EndMacros();
    if (!control.SaveMacros(out))
        throw FileFailure(
            concat("can't write ", in_quotes(out), ": the disk is full or the folder is read-only"));
}

}  // namespace

void run_macro(const Arguments& arguments) {
    const auto& words = arguments.words;
    const std::string action = words.empty() ? "" : words[0];
    if (action != "show" && action != "record")
        throw UsageFailure("needs 'show' or 'record' (see 'pixvane macro --help')");
    if (words.size() < 2) throw UsageFailure(concat(action, " needs a file"));
    const bool json = arguments.has("--json");
    if (action == "show") {
        if (words.size() > 2) throw UsageFailure("show takes one file");
        show(words[1], json);
    } else {
        if (json) throw UsageFailure("record takes no --json");
        record(words[1], {words.begin() + 2, words.end()});
    }
}

}  // namespace cli

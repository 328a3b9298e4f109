// pixvane edit IN OUT [STEP]...
// SPDX-License-Identifier: MIT
#include <cinttypes>
#include <cstdio>

#include "commands.h"
#include "failure.h"
#include "picture_file.h"
#include "pixvane/pixvane.hpp"
#include "step.h"
#include "text.h"

namespace cli {
namespace {

/// What a step gives, ready to be printed; empty if it gives nothing worth it.
std::string result_text(pixvane_control* control, const pixvane_value& result) {
    char buffer[16];
    switch (result.kind) {
        case PIXVANE_INT32:
            return std::to_string(result.i);
        case PIXVANE_DOUBLE:
            return plain_number(result.d);
        case PIXVANE_COLOR:
            std::snprintf(buffer, sizeof buffer, "0x%06" PRIX32, static_cast<std::uint32_t>(result.i));
            return buffer;
        case PIXVANE_STRING: {
            std::string text(result.size, '\0');
            pixvane_take_result(control, text.data(), text.size());
            return in_quotes(text);
        }
        case PIXVANE_INT32_ARRAY: {
            std::vector<std::int32_t> numbers(result.size);
            pixvane_take_result(control, numbers.data(), numbers.size() * sizeof(std::int32_t));
            std::string text;
            for (const std::int32_t number : numbers)
                text += concat(text.empty() ? "" : " ", std::to_string(number));
            return text;
        }
        default:
            return {};
    }
}

void take(pixvane::IPixvane& control, const Step& step) {
    pixvane_value result = pixvane_null();
    const pixvane_status status =
        pixvane_invoke(control.handle(), step.member->name, step.values.data(), step.values.size(), &result);
    if (status != PIXVANE_OK) throw pixvane::Error(status, step.text);
    if (result.kind == PIXVANE_BOOL && result.i == 0)
        throw FileFailure(concat("the step ", in_quotes(step.text), " failed"));
    const std::string text = result_text(control.handle(), result);
    if (!text.empty()) std::printf("%s: %s\n", step.text.c_str(), text.c_str());
}

}  // namespace

void run_edit(const Arguments& arguments) {
    if (arguments.words.size() < 2)
        throw UsageFailure("needs a picture to load and a name to save it under (see 'pixvane edit --help')");
    const std::string& in = arguments.words[0];
    const std::string& out = arguments.words[1];
    const std::int32_t type = save_type(out);
    std::vector<Step> steps;
    for (std::size_t i = 2; i < arguments.words.size(); ++i) steps.push_back(parse_step(arguments.words[i]));
    check_readable(in);
    check_writable(out);

    pixvane::IPixvane control;
    load(control, in);
    for (const Step& step : steps) take(control, step);
    if (control.IsEmpty()) throw FileFailure("the steps leave no picture to save");
    if (!control.SaveImage(out, type))
        throw FileFailure(concat("can't write ", in_quotes(out),
                                 ": the disk is full, the folder is read-only, or the picture is too large "
                                 "for this type of file"));
}

}  // namespace cli

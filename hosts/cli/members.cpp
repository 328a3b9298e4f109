// pixvane members [--json|--markdown]
// SPDX-License-Identifier: MIT
#include <cstdio>

#include "commands.h"
#include "failure.h"
#include "member_list.h"
#include "text.h"

namespace cli {
namespace {

template <class Print>
void for_each_in(std::string_view category, Print print) {
    for (const MemberInfo* member : all_members())
        if (category == member->category) print(*member);
}

std::string joined_names(const MemberInfo& member) {
    std::string text;
    for (const ArgumentInfo& argument : arguments_of(member))
        text += concat(text.empty() ? "" : ",", argument.name);
    return text;
}

// ---- For people ----

/// As it is written as a step, or as much like it as it can be.
std::string left_column(const MemberInfo& member) {
    const std::string names = joined_names(member);
    if (member.type == PIXVANE_EVENT) return concat(member.name, "(", names, ")");
    return names.empty() ? member.name : concat(member.name, "=", names);
}

std::string remark(const MemberInfo& member) {
    if (member.type == PIXVANE_EVENT) return " (event)";
    if (member.type == PIXVANE_PROPERTY && !member.writable)
        return concat(" (", kind_name(member.result), ", read only)");
    return {};
}

void print_member(const MemberInfo& member) {
    constexpr int kColumn = 32;
    const std::string left = left_column(member);
    std::printf("  %-*s", kColumn, left.c_str());
    if (left.size() >= kColumn) std::printf("\n  %*s", kColumn, "");
    std::printf("%s%s\n", member.help, remark(member).c_str());
    for (const ArgumentInfo& argument : arguments_of(member))
        std::printf("  %*s  %s: %s\n", kColumn, "", argument.name, argument_text(argument).c_str());
}

void print_text() {
    const char* gap = "";
    for (const std::string_view category : categories()) {
        std::printf("%s%.*s\n", gap, static_cast<int>(category.size()), category.data());
        for_each_in(category, print_member);
        gap = "\n";
    }
}

// ---- As a reference page ----

/// Fit for a cell of a table.
std::string cell(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '|') result += '\\';
        result += c;
    }
    return result;
}

std::string spaced(std::string names) {
    for (std::size_t i = 0; (i = names.find(',', i)) != names.npos; i += 2) names.replace(i, 1, ", ");
    return names;
}

void print_row(const MemberInfo& member) {
    const bool isProperty = member.type == PIXVANE_PROPERTY;
    const std::string names = isProperty ? "" : concat("(", spaced(joined_names(member)), ")");
    std::string arguments;
    for (const ArgumentInfo& argument : arguments_of(member)) {
        if (!arguments.empty()) arguments += "<br>";
        if (!isProperty) arguments += concat("`", argument.name, "` ");
        arguments += argument_text(argument);
    }
    const char* result = member.result == PIXVANE_NULL ? "" : kind_name(member.result);
    std::printf("| `%s%s` | %s | %s | %s | %s |\n", member.name, names.c_str(), type_name(member), result,
                cell(member.help).c_str(), cell(arguments).c_str());
}

void print_markdown() {
    std::printf(
        "# Members\n\n"
        "Everything that a host can call, get, put or listen to. Written by `pixvane members --markdown` "
        "from\n"
        "the table in the library; `tools/write_bindings.py` refreshes it.\n\n"
        "A command edits the picture by one step of the history, which `Undo` takes back. Where a range "
        "stands\n"
        "right behind the kind of an argument, the member does nothing for values outside; a slider's range "
        "is\n"
        "only what a dialog offers. Colours are numbers 0x00BBGGRR.\n");
    for (const std::string_view category : categories()) {
        std::printf("\n## %.*s\n\n", static_cast<int>(category.size()), category.data());
        std::printf("| Member | Kind | Gives | What it does | Arguments |\n|---|---|---|---|---|\n");
        for_each_in(category, print_row);
    }
}

// ---- For programs ----

std::string json_range(bool isGiven, double minimum, double maximum) {
    if (!isGiven) return "null";
    return concat("[", json_number(minimum), ", ", json_number(maximum), "]");
}

void print_json_argument(const ArgumentInfo& argument) {
    std::printf("{\"name\": %s, \"kind\": \"%s\", \"range\": %s, \"slider\": %s, \"default\": %s}",
                json_string(argument.name).c_str(), kind_name(argument.kind),
                json_range(argument.has_range, argument.minimum, argument.maximum).c_str(),
                json_range(argument.has_slider, argument.slider_minimum, argument.slider_maximum).c_str(),
                argument.has_default ? json_number(argument.default_value).c_str() : "null");
}

void print_json_member(const MemberInfo& member) {
    constexpr const char* kTypes[] = {"method", "property", "event"};
    const auto truth = [](std::int32_t value) { return value != 0 ? "true" : "false"; };
    std::printf("  {\"name\": %s, \"type\": \"%s\", \"category\": %s,\n", json_string(member.name).c_str(),
                kTypes[member.type], json_string(member.category).c_str());
    std::printf("   \"help\": %s,\n", json_string(member.help).c_str());
    std::printf("   \"result\": \"%s\", \"writable\": %s, \"edits\": %s, \"macro_code\": %d,\n",
                kind_name(member.result), truth(member.writable), truth(member.edits), member.macro_code);
    std::printf("   \"arguments\": [");
    const char* separator = "";
    for (const ArgumentInfo& argument : arguments_of(member)) {
        std::printf("%s", separator);
        print_json_argument(argument);
        separator = ",\n                 ";
    }
    std::printf("]}");
}

void print_json() {
    std::printf("[\n");
    const char* separator = "";
    for (const MemberInfo* member : all_members()) {
        std::printf("%s", separator);
        print_json_member(*member);
        separator = ",\n";
    }
    std::printf("\n]\n");
}

}  // namespace

void run_members(const Arguments& arguments) {
    if (!arguments.words.empty())
        throw UsageFailure(concat("takes options only, not ", in_quotes(arguments.words[0])));
    const bool json = arguments.has("--json"), markdown = arguments.has("--markdown");
    if (json && markdown) throw UsageFailure("takes --json or --markdown, not both");
    if (json)
        print_json();
    else if (markdown)
        print_markdown();
    else
        print_text();
}

}  // namespace cli

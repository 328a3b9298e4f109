// A step of an edit, as it stands on the command line: Member, or Member=a,b,...
// SPDX-License-Identifier: MIT
#include "step.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>

#include "failure.h"
#include "text.h"

namespace cli {
namespace {

std::string plural(std::size_t count, const char* noun) {
    return concat(std::to_string(count), " ", noun, count == 1 ? "" : "s");
}

/// Splits at commas; a backslash takes the meaning from a comma, a backslash.
std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escapes =
            text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == ',' || text[i + 1] == '\\');
        if (escapes)
            parts.back() += text[++i];
        else if (text[i] == ',')
            parts.emplace_back();
        else
            parts.back() += text[i];
    }
    return parts;
}

/// A whole number, decimal or 0x; nothing if `text` is none. What doesn't fit saturates.
std::optional<std::int64_t> whole_number(const std::string& text) {
    std::string_view digits = text;
    const bool negative = !digits.empty() && digits[0] == '-';
    if (!digits.empty() && (digits[0] == '-' || digits[0] == '+')) digits.remove_prefix(1);
    const bool isHex = digits.starts_with("0x") || digits.starts_with("0X");
    if (isHex) digits.remove_prefix(2);
    const char* allowed = isHex ? "0123456789abcdefABCDEF" : "0123456789";
    if (digits.empty() || digits.find_first_not_of(allowed) != digits.npos) return std::nullopt;
    const std::string sign = negative ? "-" : "";
    return std::strtoll((sign + std::string(digits)).c_str(), nullptr, isHex ? 16 : 10);
}

class ArgumentParser {
public:
    ArgumentParser(const MemberInfo& member, const ArgumentInfo& argument, const std::string& text)
        : member_(member), argument_(argument), text_(text) {}

    pixvane_value parse() const {
        switch (argument_.kind) {
            case PIXVANE_INT32:
                return integer();
            case PIXVANE_DOUBLE:
                return real();
            case PIXVANE_BOOL:
                return boolean();
            case PIXVANE_COLOR:
                return color();
            default:
                return pixvane_string_n(text_.data(), text_.size());
        }
    }

    pixvane_value integer() const {
        using Limits = std::numeric_limits<std::int32_t>;
        const std::int64_t number = within(Limits::min(), Limits::max(), "a whole number");
        check_range(static_cast<double>(number));
        return pixvane_int32(static_cast<std::int32_t>(number));
    }

private:
    [[noreturn]] void refuse(const std::string& why) const {
        std::string where = member_.name;
        if (member_.type != PIXVANE_PROPERTY) where += concat(": ", argument_.name);
        throw UsageFailure(concat(where, ": ", in_quotes(text_), " ", why));
    }

    std::int64_t within(std::int64_t low, std::int64_t high, const char* wanted) const {
        const std::optional<std::int64_t> number = whole_number(text_);
        if (!number) refuse(concat("is not ", wanted));
        if (*number < low || *number > high) refuse("is beyond 32 bits");
        return *number;
    }

    void check_range(double number) const {
        if (argument_.has_range && !(number >= argument_.minimum && number <= argument_.maximum))
            refuse(concat("is out of range (accepted: ", accepted_text(argument_), ")"));
    }

    pixvane_value real() const {
        // The language's own form only: no "inf", no "nan", no hexadecimal, no spaces.
        const bool plain = !text_.empty() && text_.find_first_not_of("0123456789+-.eE") == text_.npos;
        char* end = nullptr;
        const double number = plain ? std::strtod(text_.c_str(), &end) : 0.0;
        if (!plain || *end != '\0') refuse("is not a number");
        if (!std::isfinite(number)) refuse("is too large");
        check_range(number);
        return pixvane_double(number);
    }

    pixvane_value boolean() const {
        if (text_ == "true" || text_ == "1") return pixvane_bool(1);
        if (text_ == "false" || text_ == "0") return pixvane_bool(0);
        refuse("is not true or false");
    }

    pixvane_value color() const {
        if (text_.size() == 7 && text_[0] == '#') {
            const std::optional<std::int64_t> rgb = whole_number(concat("0x", text_.substr(1)));
            if (rgb) {
                const auto n = static_cast<std::uint32_t>(*rgb);
                return pixvane_color((n & 0xFF) << 16 | (n & 0xFF00) | n >> 16);
            }
        }
        const char* wanted = "a colour (#RRGGBB, or a number 0xBBGGRR)";
        return pixvane_color(static_cast<std::uint32_t>(within(0, 0xFFFFFFFF, wanted)));
    }

    const MemberInfo& member_;
    const ArgumentInfo& argument_;
    const std::string& text_;
};

const MemberInfo& member_of(std::string_view name) {
    if (const MemberInfo* member = find_member(name)) return *member;
    if (name.empty()) throw UsageFailure("a step must start with the name of a member");
    const std::string nearest = nearest_member(name);
    throw UsageFailure(
        concat("no member named ", in_quotes(name),
               nearest.empty() ? "; 'pixvane members' lists them" : concat("; did you mean ", nearest, "?")));
}

/// Refuses what can't be a step at all.
void check_usable(const MemberInfo& member, bool hasValue) {
    const char* name = member.name;
    if (member.type == PIXVANE_EVENT) throw UsageFailure(concat(name, " is an event, which can't be a step"));
    if (member.type == PIXVANE_PROPERTY && !member.writable)
        throw UsageFailure(concat(name, " can only be read, so it can't be a step"));
    if (std::string_view(member.category) == "Live preview")
        throw UsageFailure(
            concat(name, " shows a step before it is taken, which a command line has no use for"));
    for (const ArgumentInfo& argument : arguments_of(member))
        if (argument.kind == PIXVANE_BYTES || argument.kind == PIXVANE_POINTS)
            throw UsageFailure(concat(name, " takes ", kind_name(argument.kind),
                                      ", which can't be written on a command line"));
    if (member.type == PIXVANE_METHOD && member.result == PIXVANE_BYTES)
        throw UsageFailure(
            concat(name, " gives ", kind_name(member.result), ", which a step has no use for"));
    if (member.type == PIXVANE_PROPERTY && !hasValue)
        throw UsageFailure(concat(name, " is a property and needs a value: ", name, "=..."));
}

std::string signature(const MemberInfo& member) {
    std::string text = member.name;
    const char* separator = "=";
    for (const ArgumentInfo& argument : arguments_of(member)) {
        text += concat(separator, argument.name);
        separator = ",";
    }
    return text;
}

}  // namespace

Step parse_step(std::string_view text) {
    const std::size_t equals = text.find('=');
    const bool hasValue = equals != text.npos;
    Step step;
    step.text = text;
    step.member = &member_of(text.substr(0, equals));
    const MemberInfo& member = *step.member;
    check_usable(member, hasValue);

    const auto arguments = arguments_of(member);
    if (hasValue) {
        const std::string_view rest = text.substr(equals + 1);
        // A single string is taken as it stands, commas and all.
        const bool isText = arguments.size() == 1 && arguments[0].kind == PIXVANE_STRING;
        step.strings = isText ? std::vector<std::string>{std::string(rest)} : split(rest);
        if (arguments.empty()) throw UsageFailure(concat(member.name, " takes no arguments"));
    }
    // A single array takes the whole list.
    if (arguments.size() == 1 && arguments[0].kind == PIXVANE_INT32_ARRAY) {
        if (!hasValue)
            throw UsageFailure(concat(member.name, " takes a list of integers: ", member.name, "=a,b,..."));
        for (const std::string& number : step.strings)
            step.numbers.push_back(ArgumentParser(member, arguments[0], number).integer().i);
        step.values.push_back(pixvane_int32_array(step.numbers.data(), step.numbers.size()));
        return step;
    }
    if (step.strings.size() != arguments.size())
        throw UsageFailure(concat(member.name, " takes ", plural(arguments.size(), "argument"), " (",
                                  signature(member), "), not ", std::to_string(step.strings.size())));
    for (std::size_t i = 0; i < arguments.size(); ++i)
        step.values.push_back(ArgumentParser(member, arguments[i], step.strings[i]).parse());
    return step;
}

}  // namespace cli

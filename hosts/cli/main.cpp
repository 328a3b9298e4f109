// The command line program: sorts out its command and options.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string_view>

#include "commands.h"
#include "failure.h"
#include "pixvane/pixvane.h"
#include "text.h"

namespace cli {

const std::string* Arguments::value_of(const char* option) const {
    const auto last = std::find_if(options.rbegin(), options.rend(),
                                   [&](const Option& each) { return each.name == option; });
    return last == options.rend() ? nullptr : &last->value;
}

namespace {

struct Command {
    const char* name;
    void (*run)(const Arguments&);
    const char* help;
    std::vector<std::string_view> options;  ///< one that ends in '=' takes a value
};

const std::vector<Command>& commands() {
    static const std::vector<Command> list = {
        {"edit", run_edit, kEditHelp, {}},
        {"info", run_info, kInfoHelp, {"--json"}},
        {"macro", run_macro, kMacroHelp, {"--json"}},
        {"members", run_members, kMembersHelp, {"--json", "--markdown"}},
        {"play", run_play, kPlayHelp, {"--out=", "--format=", "--jobs=", "--overwrite"}},
    };
    return list;
}

/// Whether an option is followed by its value. Throws UsageFailure if the command has no such option.
bool takes_value(const Command& command, std::string_view name) {
    for (const std::string_view known : command.options) {
        if (known == name) return false;
        if (known.ends_with('=') && known.substr(0, known.size() - 1) == name) return true;
    }
    throw UsageFailure(concat("unknown option ", in_quotes(name)));
}

/// Sorts words from options; after "--" everything is a word.
Arguments sort_out(int count, char** texts, const Command& command) {
    Arguments arguments;
    bool optionsEnded = false;
    for (int i = 0; i < count; ++i) {
        const std::string text = texts[i];
        if (optionsEnded || text.size() < 2 || text[0] != '-') {
            arguments.words.push_back(text);
        } else if (text == "--") {
            optionsEnded = true;
        } else if (text == "--help" || text == "-h") {
            arguments.options.push_back({"--help", {}});
        } else {
            const std::size_t equals = text.find('=');
            Arguments::Option option{text.substr(0, equals), {}};
            if (!takes_value(command, option.name)) {
                if (equals != text.npos)
                    throw UsageFailure(concat("the option ", option.name, " takes no value"));
            } else if (equals != text.npos) {
                option.value = text.substr(equals + 1);
            } else if (++i < count) {
                option.value = texts[i];
            } else {
                throw UsageFailure(concat("the option ", option.name, " needs a value"));
            }
            arguments.options.push_back(std::move(option));
        }
    }
    return arguments;
}

void run(const Command& command, int count, char** texts) {
    const Arguments arguments = sort_out(count, texts, command);
    if (arguments.has("--help"))
        std::fputs(command.help, stdout);
    else
        command.run(arguments);
}

int complain(const std::string& where, const char* what, int status) {
    std::fprintf(stderr, "pixvane%s: %s\n", where.c_str(), what);
    return status;
}

int run_program(int count, char** texts) {
    if (count < 2) {
        std::fputs(kMainHelp, stderr);
        return 2;
    }
    const std::string_view name = texts[1];
    if (name == "--help" || name == "-h" || name == "help") return std::fputs(kMainHelp, stdout), 0;
    if (name == "--version") return std::printf("pixvane %s\n", pixvane_version()), 0;
    const auto command = std::find_if(commands().begin(), commands().end(),
                                      [&](const Command& each) { return name == each.name; });
    if (command == commands().end()) {
        const std::string what =
            concat("no command ", in_quotes(name),
                   "; there are edit, info, macro, members and play (see 'pixvane --help')");
        return complain("", what.c_str(), 2);
    }
    const std::string where = concat(" ", name);
    try {
        run(*command, count - 2, texts + 2);
    } catch (const UsageFailure& failure) {
        return complain(where, failure.what(), 2);
    } catch (const Interrupted& failure) {
        return complain(where, failure.what(), 128 + failure.signal());
    } catch (const std::exception& failure) {
        return complain(where, failure.what(), 1);
    }
    // A full disk behind a redirected output shows only here.
    if (std::fflush(stdout) != 0) return complain(where, "the output can't be written", 1);
    return 0;
}

}  // namespace
}  // namespace cli

int main(int count, char** texts) { return cli::run_program(count, texts); }

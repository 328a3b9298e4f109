// The command line program: pixvane edit, info, members.
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

bool Arguments::has(const char* option) const {
    return std::find(options.begin(), options.end(), option) != options.end();
}

namespace {

struct Command {
    const char* name;
    void (*run)(const Arguments&);
    const char* help;
    std::vector<std::string_view> options;
};

const std::vector<Command>& commands() {
    static const std::vector<Command> list = {
        {"edit", run_edit, kEditHelp, {}},
        {"info", run_info, kInfoHelp, {"--json"}},
        {"members", run_members, kMembersHelp, {"--json", "--markdown"}},
    };
    return list;
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
            arguments.options.push_back("--help");
        } else {
            const auto& known = command.options;
            if (std::find(known.begin(), known.end(), text) == known.end())
                throw UsageFailure(concat("unknown option ", in_quotes(text)));
            arguments.options.push_back(text);
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
        const std::string what = concat("no command ", in_quotes(name),
                                        "; there are edit, info and members (see 'pixvane --help')");
        return complain("", what.c_str(), 2);
    }
    const std::string where = concat(" ", name);
    try {
        run(*command, count - 2, texts + 2);
    } catch (const UsageFailure& failure) {
        return complain(where, failure.what(), 2);
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

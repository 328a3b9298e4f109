// The benchmark's command line.
// SPDX-License-Identifier: MIT
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "control.h"
#include "measure.h"
#include "report.h"
#include "rows.h"

namespace {

using namespace bench;

constexpr const char* kUsage =
    "Usage: pixvane-bench [OPTION]... [NAME]...\n"
    "Prints what each command costs as a multiple of a memcpy of 3840 x 2160 pixels, its history step\n"
    "included. NAMEs restrict it to the commands whose member or label begins like one of them.\n"
    "  --rounds N      measure N times, 9 if not given\n"
    "  --threads N     work with N threads, 1 if not given\n"
    "  --compare N     measure with N threads, too, and tell what part of the cost is left\n"
    "  --picture FILE  measure with this picture instead of a made-up photograph\n"
    "  --csv           print comma separated values\n"
    "  --list          list the commands\n";

struct Options {
    int rounds = 9;
    int threads = 1;
    int compared = 0;  // threads to compare with; none if 0
    std::string picture;
    bool csv = false;
    bool list = false;
    bool help = false;
    std::vector<std::string_view> names;
};

int number(const char* option, const char* text, int minimum, int maximum) {
    int value = 0;
    const char* end = text + std::strlen(text);
    const auto read = std::from_chars(text, end, value);
    if (read.ec != std::errc() || read.ptr != end || value < minimum || value > maximum)
        throw Error(std::string(option) + " takes a number from " + std::to_string(minimum) + " to " +
                    std::to_string(maximum));
    return value;
}

Options parse(int count, char** words) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        const auto value = [&] {
            if (i + 1 >= count) throw Error(std::string(word) + " wants a value");
            return words[++i];
        };
        if (word == "--rounds") {
            options.rounds = number("--rounds", value(), 1, 10000);
        } else if (word == "--threads") {
            options.threads = number("--threads", value(), 1, 64);
        } else if (word == "--compare") {
            options.compared = number("--compare", value(), 1, 64);
        } else if (word == "--picture") {
            options.picture = value();
        } else if (word == "--csv") {
            options.csv = true;
        } else if (word == "--list") {
            options.list = true;
        } else if (word == "--help") {
            options.help = true;
        } else if (word.substr(0, 1) == "-") {
            throw Error("there is no option " + std::string(word) + "; see --help");
        } else {
            options.names.push_back(word);
        }
    }
    return options;
}

std::vector<Row> chosen_rows(const std::vector<std::string_view>& names) {
    std::vector<Row> rows = all_rows();
    if (names.empty()) return rows;
    std::vector<bool> wanted(rows.size());
    for (const std::string_view name : names) {
        bool found = false;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i].member != name && std::string_view(rows[i].label).substr(0, name.size()) != name)
                continue;
            wanted[i] = found = true;
        }
        if (!found) throw Error("there is no command " + std::string(name) + "; see --list");
    }
    std::vector<Row> chosen;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (wanted[i]) chosen.push_back(rows[i]);
    return chosen;
}

void use_threads(int count) {
    if (pixvane_set_worker_threads(count) != PIXVANE_OK) throw Error("can't set the threads");
}

void run(const Options& options) {
    const std::vector<Row> rows = chosen_rows(options.names);
    Picture picture;
    if (!options.picture.empty()) {
        Control control;
        control.load_file(options.picture);
        picture = control.picture();
    }
    Workplace workplace(options.picture.empty() ? nullptr : &picture);
    std::vector<Task> tasks;
    const auto add_tasks = [&](int threads) {
        for (const Row& row : rows) {
            const auto prepare = [&workplace, &row, threads] {
                use_threads(threads);
                workplace.prepare(row);
            };
            tasks.push_back({prepare, [&] { workplace.run(row); }, [&] { workplace.finish(row); },
                             row.kind == Kind::Edit});
        }
    };
    add_tasks(options.threads);
    if (options.compared > 0) add_tasks(options.compared);
    CopyUnit unit(std::size_t{kWidth} * kHeight * 4);
    const Measurement measured = measure(tasks, options.rounds, unit);
    std::vector<Result> results;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Cost& cost = measured.costs[i];
        std::optional<double> rate;
        if (const auto frames = workplace.frames(rows[i]))
            rate = *frames / (cost.median * measured.unitSeconds);
        results.push_back({rows[i].label, cost, rows[i].goal, workplace.file_size(rows[i]), rate, {}});
        if (options.compared > 0) results.back().compared = measured.costs[rows.size() + i];
    }
    const Setting setting{options.rounds, options.threads, options.compared, measured.unitSeconds};
    if (options.csv)
        print_csv(results, setting);
    else
        print_table(results, setting);
}

}  // namespace

int main(int count, char** words) {
    try {
        const Options options = parse(count, words);
        if (options.help) {
            std::fputs(kUsage, stdout);
        } else if (options.list) {
            for (const Row& row : chosen_rows(options.names)) std::printf("%s\n", row.label);
        } else {
            run(options);
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pixvane-bench: %s\n", error.what());
        return 1;
    }
}

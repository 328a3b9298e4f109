// The benchmark's command line.
// SPDX-License-Identifier: MIT
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <thread>
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
    "  --group N       take turns among N commands at a time and print their rows together, 8 if not given\n"
    "  --picture FILE  measure with this picture instead of a made-up photograph\n"
    "  --csv           print comma separated values\n"
    "  --progress      tell on standard error what is being measured; done anyway if that is a terminal\n"
    "  --list          list the commands\n";

struct Options {
    int rounds = 9;
    int threads = 1;
    int compared = 0;  // threads to compare with; none if 0
    int group = 8;     // commands that take turns
    std::string picture;
    bool csv = false;
    bool progress = false;
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
        } else if (word == "--group") {
            options.group = number("--group", value(), 1, 10000);
        } else if (word == "--picture") {
            options.picture = value();
        } else if (word == "--csv") {
            options.csv = true;
        } else if (word == "--progress") {
            options.progress = true;
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

std::size_t longest_label(std::span<const Row> rows) {
    std::size_t longest = 0;
    for (const Row& row : rows) longest = std::max(longest, std::strlen(row.label));
    return longest;
}

void use_threads(int count) {
    if (pixvane_set_worker_threads(count) != PIXVANE_OK) throw Error("can't set the threads");
}

/// One line on standard error that says what is being measured, where somebody watches it.
class Progress {
public:
    Progress(bool asked, std::size_t rows, int rounds)
        : terminal_(::isatty(STDERR_FILENO) != 0), shown_(asked || terminal_), rows_(rows), rounds_(rounds) {}

    void show(const Row& row, std::size_t index, int round) {
        // Into a file each command is written once.
        if (!shown_ || (!terminal_ && index < next_)) return;
        next_ = index + 1;
        if (terminal_)
            std::fprintf(stderr, "\r\033[K%zu of %zu, round %d of %d: %s", index + 1, rows_, round, rounds_,
                         row.label);
        else
            std::fprintf(stderr, "%zu of %zu: %s\n", index + 1, rows_, row.label);
        std::fflush(stderr);
    }
    /// Before rows are printed, perhaps on the same screen.
    void clear() const {
        if (shown_ && terminal_) std::fputs("\r\033[K", stderr);
    }

private:
    bool terminal_;
    bool shown_;
    std::size_t rows_;
    std::size_t next_ = 0;
    int rounds_;
};

std::vector<Task> tasks_of(std::span<const Row> rows, int threads, bool comparing, Workplace& workplace) {
    std::vector<Task> tasks;
    for (const Row& row : rows) {
        const auto prepare = [&workplace, &row, threads] {
            use_threads(threads);
            workplace.prepare(row);
        };
        // Threads that were not wanted for a while are started, or woken, by the uncounted run.
        const bool warmUp = row.kind == Kind::Edit || comparing;
        tasks.push_back({prepare, [&workplace, &row] { workplace.run(row); },
                         [&workplace, &row] { workplace.finish(row); }, warmUp});
    }
    return tasks;
}

/// A loop in registers, in pieces that the threads take as they come: what no command can do better than.
void compute(int threads) {
    constexpr int kPieces = 200;
    std::atomic<int> taken{0};
    const auto work = [&] {
        while (taken++ < kPieces) {
            std::uint32_t state = 1;
            for (int i = 0; i < 20000; ++i) {
                state = state * 214013 + 2531011;
                asm volatile("" : "+r"(state));
            }
        }
    };
    std::vector<std::thread> helpers;
    for (int i = 1; i < threads; ++i) helpers.emplace_back(work);
    work();
    for (std::thread& helper : helpers) helper.join();
}

/// How much of the cost the machine itself leaves while nothing limits the threads.
void report_machine(const Options& options, CopyUnit& unit, Report& report) {
    const Task one{[] {}, [&] { compute(options.threads); }, [] {}, true};
    const Task other{[] {}, [&] { compute(options.compared); }, [] {}, true};
    const Measurement measured = measure({one, other}, options.rounds, unit, [](std::size_t, int) {});
    report.add({"(a loop in registers)", measured.costs[0], {}, {}, {}, measured.costs[1]},
               measured.unitSeconds);
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
    CopyUnit unit(std::size_t{kWidth} * kHeight * 4);
    Progress progress(options.progress, rows.size(), options.rounds);
    Report report({options.rounds, options.threads, options.compared}, options.csv, longest_label(rows));
    // Taking turns evens out how busy the machine is; among a few commands that is enough, and their rows
    // are known long before the last command's.
    const auto together = static_cast<std::size_t>(options.group);
    for (std::size_t start = 0; start < rows.size(); start += together) {
        const std::span group = std::span(rows).subspan(start, std::min(together, rows.size() - start));
        const bool comparing = options.compared > 0;
        std::vector<Task> tasks = tasks_of(group, options.threads, comparing, workplace);
        if (comparing) {
            const std::vector<Task> more = tasks_of(group, options.compared, comparing, workplace);
            tasks.insert(tasks.end(), more.begin(), more.end());
        }
        const Measurement measured = measure(tasks, options.rounds, unit, [&](std::size_t task, int round) {
            progress.show(group[task % group.size()], start + task % group.size(), round);
        });
        progress.clear();
        for (std::size_t i = 0; i < group.size(); ++i) {
            const Cost& cost = measured.costs[i];
            Result result{group[i].label, cost, group[i].goal, workplace.file_size(group[i]), {}, {}};
            if (const auto frames = workplace.frames(group[i]))
                result.framesPerSecond = *frames / (cost.median * measured.unitSeconds);
            if (comparing) result.compared = measured.costs[group.size() + i];
            report.add(result, measured.unitSeconds);
        }
        if (comparing) report_machine(options, unit, report);
    }
    report.finish();
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

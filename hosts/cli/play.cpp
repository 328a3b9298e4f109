// pixvane play MACRO IN... --out DIR [--format F] [--jobs N] [--overwrite]
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <atomic>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <memory>
#include <thread>

#include "commands.h"
#include "failure.h"
#include "picture_file.h"
#include "pixvane/pixvane.hpp"
#include "play_plan.h"
#include "progress.h"
#include "text.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kMostJobs = 64;

/// The signal that asked for an end, or 0.
volatile std::sig_atomic_t stopSignal = 0;

/// While it lives, the first interruption only asks for an end; a second one ends the program as ever.
class StopWatch {
public:
    StopWatch() {
        stopSignal = 0;
        for (const int signal : {SIGINT, SIGTERM})
            std::signal(signal, [](int number) {
                stopSignal = number;
                std::signal(number, SIG_DFL);
            });
    }
    ~StopWatch() {
        for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, SIG_DFL);
    }
    StopWatch(const StopWatch&) = delete;
    StopWatch& operator=(const StopWatch&) = delete;
};

struct Options {
    std::string macro;
    std::string folder;
    std::string format;
    unsigned jobs = 1;
    bool overwrite = false;
};

unsigned jobs_of(const Arguments& arguments) {
    const std::string* text = arguments.value_of("--jobs");
    if (text == nullptr) return std::clamp(std::thread::hardware_concurrency(), 1u, kMostJobs);
    unsigned jobs = 0;
    const char* end = text->data() + text->size();
    const auto read = std::from_chars(text->data(), end, jobs);
    if (read.ec != std::errc() || read.ptr != end || jobs < 1 || jobs > kMostJobs)
        throw UsageFailure(concat("--jobs: ", in_quotes(*text), " is not a number from 1 to 64"));
    return jobs;
}

Options options_of(const Arguments& arguments) {
    if (arguments.words.size() < 2)
        throw UsageFailure("needs a macro and the pictures to play it on (see 'pixvane play --help')");
    Options options;
    options.macro = arguments.words[0];
    const std::string* folder = arguments.value_of("--out");
    if (folder == nullptr || folder->empty())
        throw UsageFailure("needs --out DIR, the folder for the results");
    options.folder = *folder;
    if (const std::string* format = arguments.value_of("--format")) {
        if (!type_of_ending("x." + *format))
            throw UsageFailure(concat("--format: ", in_quotes(*format), " is not bmp, jpg, gif, tif or png"));
        options.format = *format;
    }
    options.jobs = jobs_of(arguments);
    options.overwrite = arguments.has("--overwrite");
    return options;
}

void make_folder(const std::string& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder))
        throw FileFailure(concat("can't make the folder ", in_quotes(folder),
                                 error ? concat(": ", error.message()) : std::string()));
}

/// A control that keeps no more than the picture and the state before it.
class Player {
public:
    explicit Player(const Options& options) : options_(options) {
        control_.put_HistoryStates(2);
        check_readable(options.macro);
        if (!control_.LoadMacros(options.macro))
            throw FileFailure(concat(in_quotes(options.macro), " is not a macro file"));
    }

    /// Throws FileFailure, or whatever the control throws.
    void play(const PlayTask& task) {
        refuse_existing(task);
        load(control_, task.in);
        pixvane_seed_random(1);
        control_.PlayMacros();
        // It may have come while we worked.
        refuse_existing(task);
        if (!control_.SaveImage(task.out, task.type))
            throw FileFailure(
                concat("can't write ", in_quotes(task.out),
                       ": the disk is full, the folder is read-only, or the picture is too large "
                       "for this type of file"));
    }

private:
    void refuse_existing(const PlayTask& task) const {
        std::error_code error;
        if (!options_.overwrite && fs::exists(fs::symlink_status(task.out, error)))
            throw FileFailure(concat(in_quotes(task.out), " is there already (--overwrite replaces it)"));
    }

    const Options& options_;
    pixvane::IPixvane control_;
};

/// Takes tasks until there are none left or an end was asked for.
void work(Player& player, const std::vector<PlayTask>& tasks, std::atomic<std::size_t>& next,
          Progress& progress) {
    while (stopSignal == 0) {
        const std::size_t i = next++;
        if (i >= tasks.size()) return;
        try {
            player.play(tasks[i]);
            progress.step();
        } catch (const FileFailure& failure) {
            progress.fail(concat("pixvane play: ", failure.what()));
        } catch (const std::exception& failure) {
            progress.fail(concat("pixvane play: ", in_quotes(tasks[i].in), ": ", failure.what()));
        }
    }
}

}  // namespace

void run_play(const Arguments& arguments) {
    const Options options = options_of(arguments);
    const std::vector<std::string> sources(arguments.words.begin() + 1, arguments.words.end());
    const std::vector<PlayTask> tasks = plan_play(sources, options.folder, options.format);
    const unsigned jobs = static_cast<unsigned>(std::min<std::size_t>(options.jobs, tasks.size()));
    std::vector<std::unique_ptr<Player>> players;
    for (unsigned job = 0; job < jobs; ++job) players.push_back(std::make_unique<Player>(options));
    make_folder(options.folder);
    // Pictures side by side keep the processors busy; threads inside of each would only be in their way.
    if (jobs > 1) pixvane_set_worker_threads(1);

    const StopWatch watch;
    std::size_t failures = 0;
    {
        Progress progress(tasks.size());
        std::atomic<std::size_t> next = 0;
        std::vector<std::thread> threads;
        for (unsigned job = 1; job < jobs; ++job)
            threads.emplace_back([&, job] { work(*players[job], tasks, next, progress); });
        work(*players[0], tasks, next, progress);
        if (stopSignal != 0) progress.remark("Finishing the pictures in work.");
        for (std::thread& thread : threads) thread.join();
        failures = progress.failures();
    }
    if (stopSignal != 0) throw Interrupted(stopSignal);
    if (failures != 0)
        throw FileFailure(concat(std::to_string(failures), " of ", std::to_string(tasks.size()),
                                 failures == 1 ? " picture failed" : " pictures failed"));
}

}  // namespace cli

// How far a run is, on a terminal; and what went wrong, anywhere.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <mutex>
#include <string>

namespace cli {

/// Any thread may tell it something. Without a terminal on standard error there is no bar, only the messages.
class Progress {
public:
    explicit Progress(std::size_t total);
    /// Clears the bar away.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// One more is done.
    void step();
    /// One more has failed: `message` is a line of its own.
    void fail(const std::string& message);
    /// A line for who watches; nothing without a terminal.
    void remark(const std::string& message);

    std::size_t failures() const { return failures_; }

private:
    void draw();
    void clear();

    std::mutex mutex_;
    std::size_t total_;
    std::size_t done_ = 0;
    std::size_t failures_ = 0;
    bool isTerminal_;
};

}  // namespace cli

// How far a run is, on a terminal; and what went wrong, anywhere.
// SPDX-License-Identifier: MIT
#include "progress.h"

#include <unistd.h>

#include <cstdio>

namespace cli {

Progress::Progress(std::size_t total) : total_(total), isTerminal_(::isatty(STDERR_FILENO) == 1) { draw(); }

Progress::~Progress() { clear(); }

void Progress::step() {
    const std::lock_guard lock(mutex_);
    ++done_;
    draw();
}

void Progress::fail(const std::string& message) {
    const std::lock_guard lock(mutex_);
    ++done_;
    ++failures_;
    clear();
    std::fprintf(stderr, "%s\n", message.c_str());
    draw();
}

void Progress::remark(const std::string& message) {
    if (!isTerminal_) return;
    const std::lock_guard lock(mutex_);
    clear();
    std::fprintf(stderr, "%s\n", message.c_str());
    draw();
}

void Progress::draw() {
    if (!isTerminal_) return;
    constexpr std::size_t kWidth = 40;
    const std::size_t filled = total_ == 0 ? kWidth : done_ * kWidth / total_;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    std::fprintf(stderr, "\r[%s] %zu of %zu", bar.c_str(), done_, total_);
    if (failures_ != 0) std::fprintf(stderr, ", %zu failed", failures_);
    std::fflush(stderr);
}

void Progress::clear() {
    if (isTerminal_) std::fputs("\r\x1B[K", stderr);
}

}  // namespace cli

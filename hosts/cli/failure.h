// Why the command line program gives up: one line on standard error, and the exit status.
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace cli {

/// A picture can't be read or written: exit status 1.
class FileFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The command line itself is wrong: exit status 2.
class UsageFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A signal asked for an end, which came in good order: exit status 128 and the signal's number.
class Interrupted : public std::runtime_error {
public:
    explicit Interrupted(int signal) : std::runtime_error("interrupted"), signal_(signal) {}
    int signal() const { return signal_; }

private:
    int signal_;
};

}  // namespace cli

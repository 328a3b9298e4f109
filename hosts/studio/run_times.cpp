// How long a command is expected to take, from how long it took.
// SPDX-License-Identifier: MIT
#include "run_times.h"

namespace studio {
namespace {

// Milliseconds for a megapixel: between a point filter (1) and a wide median (100).
constexpr double kGuess = 15;

}  // namespace

double RunTimes::expected(const Member& member, double megapixels) const {
    return perMegapixel_.value(QString::fromLatin1(member.name), kGuess) * megapixels;
}

void RunTimes::note(const Member& member, double megapixels, double milliseconds) {
    if (megapixels > 0) perMegapixel_[QString::fromLatin1(member.name)] = milliseconds / megapixels;
}

}  // namespace studio

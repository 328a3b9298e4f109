// Shows in the view what a command would do, while its arguments are being chosen.
// SPDX-License-Identifier: MIT
#include "live_preview.h"

#include <QElapsedTimer>
#include <algorithm>

namespace studio {
namespace {

// A preview that takes longer waits until the choice has rested for this long.
constexpr int kSlowMilliseconds = 60;
constexpr int kRestMilliseconds = 140;

}  // namespace

LivePreview::LivePreview(CommandRunner& runner, const Member& command, QObject* parent)
    : QObject(parent), runner_(runner), command_(command) {
    lastMilliseconds_ = runner.expected_milliseconds(command);
    delay_.setSingleShot(true);
    connect(&delay_, &QTimer::timeout, this, &LivePreview::show_now);
    begin();
}

LivePreview::~LivePreview() {
    if (isOpen_) end(false);
}

void LivePreview::request(const QVariantList& values) {
    values_ = values;
    isUpToDate_ = false;
    if (isBefore_) return;
    // A slow one starts its rest anew; a quick one only comes after the slider's other messages.
    if (lastMilliseconds_ > kSlowMilliseconds)
        delay_.start(kRestMilliseconds);
    else if (!delay_.isActive())
        delay_.start(0);
}

void LivePreview::show_before(bool on) {
    if (on == isBefore_) return;
    isBefore_ = on;
    if (on) {
        delay_.stop();
        end(false);
        begin();
        isUpToDate_ = false;
        emit shown();
    } else {
        show_now();
    }
}

void LivePreview::finish(bool apply) {
    delay_.stop();
    if (!apply) {
        end(false);
    } else if (isUpToDate_) {
        runner_.timed(command_, [this] { end(true); });
    } else {
        end(false);
        runner_.run(command_, values_);
        return;
    }
    runner_.picture().announce();
}

void LivePreview::begin() {
    runner_.picture().view().BeginPreview();
    isOpen_ = true;
}

void LivePreview::end(bool apply) {
    runner_.picture().view().EndPreview(apply);
    isOpen_ = false;
}

void LivePreview::show_now() {
    QElapsedTimer clock;
    clock.start();
    runner_.timed(command_,
                  [this] { runner_.picture().view().Preview(QString::fromLatin1(command_.name), values_); });
    lastMilliseconds_ = static_cast<double>(clock.elapsed());
    isUpToDate_ = true;
    emit shown();
}

}  // namespace studio

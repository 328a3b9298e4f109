// A window of the studio with a picture in it, for tests.
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <functional>

#include "main_window.h"
#include "support/widgets.h"

namespace studio {

/// Runs the event loop until it is so; a test that waits in vain fails.
inline void wait_until(const std::function<bool()>& isSo) {
    QElapsedTimer clock;
    clock.start();
    while (!isSo() && clock.elapsed() < 60000) QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    ASSERT_TRUE(isSo());
}

constexpr int kWidth = 72, kHeight = 52;

class StudioWindow : public testing::Test {
protected:
    void SetUp() override {
        window.show();
        ASSERT_TRUE(
            view().LoadFromImageArray(pixvane::test::patterned_pixels(kWidth, kHeight), kWidth, kHeight));
        window.refresh();
    }
    PixvaneWidget& view() { return window.view(); }
    CommandDialog* dialog() { return window.findChild<CommandDialog*>(); }

    MainWindow window;
};

}  // namespace studio

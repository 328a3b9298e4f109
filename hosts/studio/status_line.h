// The status bar: what is going on, and on the right the pixel under the pointer, the size and the zoom.
// SPDX-License-Identifier: MIT
#pragma once

#include <QStatusBar>

#include "picture.h"

class QLabel;

namespace studio {

class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(Picture& picture, QWidget* parent = nullptr);

    /// Size and zoom as they are now.
    void refresh();
    /// What a person waits for; empty: for nothing any more.
    void show_waiting(const QString& name);
    void show_pixel(int x, int y);
    void forget_pixel();

private:
    Picture& picture_;
    QLabel *pixel_, *swatch_, *size_, *zoom_;
};

}  // namespace studio

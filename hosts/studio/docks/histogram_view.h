// Draws how often each value of red, green, blue and luminance occurs in the picture.
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QTimer>
#include <QWidget>
#include <array>

#include "picture.h"

namespace studio {

/// Counts only while it is seen, and never takes more than a small part of the time.
class HistogramView : public QWidget {
    Q_OBJECT

public:
    explicit HistogramView(Picture& picture, QWidget* parent = nullptr);

    /// The picture may be another: counts soon.
    void refresh();
    QSize sizeHint() const override { return {260, 150}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void count();
    QPolygonF outline(const QList<int>& counts, double tallest, const QRectF& area) const;

    Picture& picture_;
    QTimer delay_;
    std::array<QList<int>, 4> counts_;  ///< red, green, blue, luminance
    int restMilliseconds_ = 0;
    bool isStale_ = true;
};

}  // namespace studio

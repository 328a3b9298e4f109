// Draws how often each value of red, green, blue and luminance occurs in the picture.
// SPDX-License-Identifier: MIT
#include "docks/histogram_view.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace studio {
namespace {

// Counting takes at most one part in so many of the time.
constexpr int kShare = 4;
constexpr int kLeastRest = 60;

/// The tallest count that is drawn whole: plain black and plain white, of which there may be any number,
/// aside.
double tallest_of(const QList<int>& counts) {
    return counts.size() < 3 ? 0 : *std::max_element(counts.begin() + 1, counts.end() - 1);
}

}  // namespace

HistogramView::HistogramView(Picture& picture, QWidget* parent) : QWidget(parent), picture_(picture) {
    setMinimumHeight(90);
    setAccessibleName(tr("Histogram"));
    setAccessibleDescription(tr("How often each value of red, green, blue and luminance occurs"));
    delay_.setSingleShot(true);
    connect(&delay_, &QTimer::timeout, this, &HistogramView::count);
}

void HistogramView::refresh() {
    isStale_ = true;
    if (isVisible() && !delay_.isActive()) delay_.start(std::max(kLeastRest, restMilliseconds_));
}

void HistogramView::showEvent(QShowEvent*) {
    if (isStale_) refresh();
}

void HistogramView::count() {
    if (!isVisible()) return;
    QElapsedTimer clock;
    clock.start();
    PixvaneWidget& view = picture_.view();
    if (picture_.is_empty())
        counts_ = {};
    else
        counts_ = {view.GetRHistogram(), view.GetGHistogram(), view.GetBHistogram(), view.GetLHistogram()};
    restMilliseconds_ = static_cast<int>(clock.elapsed()) * kShare;
    isStale_ = false;
    update();
}

QPolygonF HistogramView::outline(const QList<int>& counts, double tallest, const QRectF& area) const {
    QPolygonF line;
    const double step = area.width() / static_cast<double>(counts.size() - 1);
    for (qsizetype i = 0; i < counts.size(); ++i) {
        const double part = std::min(1.0, counts[i] / tallest);
        line.append({area.left() + static_cast<double>(i) * step, area.bottom() - part * area.height()});
    }
    return line;
}

void HistogramView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(10, 8, -10, -10);
    QPainterPath ground;
    ground.addRoundedRect(area.adjusted(-4, -4, 4, 4), 4, 4);
    painter.fillPath(ground, palette().color(QPalette::Base));
    QColor faint = palette().color(QPalette::Text);
    faint.setAlpha(28);
    painter.setPen(QPen(faint, 1));
    for (int i = 1; i < 4; ++i) {
        const double x = area.left() + i * area.width() / 4;
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    double tallest = 0;
    for (const QList<int>& counts : counts_) tallest = std::max(tallest, tallest_of(counts));
    if (tallest <= 0) return;

    const bool isDark = palette().color(QPalette::Base).lightness() < 128;
    const QColor channels[] = {isDark ? QColor(0xE05A5A) : QColor(0xD83A3A),
                               isDark ? QColor(0x55B862) : QColor(0x2E9E45),
                               isDark ? QColor(0x5C8DF0) : QColor(0x2F6FDE)};
    // Where channels meet, dark grounds get lighter and light ones darker.
    painter.setCompositionMode(isDark ? QPainter::CompositionMode_Screen
                                      : QPainter::CompositionMode_Multiply);
    for (std::size_t i = 0; i < 3; ++i) {
        QPolygonF shape = outline(counts_[i], tallest, area);
        shape << area.bottomRight() << area.bottomLeft();
        QPainterPath path;
        path.addPolygon(shape);
        QColor tone = channels[i];
        tone.setAlpha(150);
        painter.fillPath(path, tone);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    QColor ink = palette().color(QPalette::Text);
    ink.setAlpha(190);
    painter.setPen(QPen(ink, 1.2));
    painter.drawPolyline(outline(counts_[3], tallest, area));
}

}  // namespace studio

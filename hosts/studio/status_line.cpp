// The status bar: what is going on, and on the right the pixel under the pointer, the size and the zoom.
// SPDX-License-Identifier: MIT
#include "status_line.h"

#include <QLabel>
#include <QLocale>
#include <QPainter>

namespace studio {
namespace {

QPixmap swatch_of(const QColor& color, const QColor& line, double ratio) {
    QPixmap pixmap(QSize(14, 14) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(.5, .5, 13, 13), 3, 3);
    return pixmap;
}

}  // namespace

StatusLine::StatusLine(Picture& picture, QWidget* parent)
    : QStatusBar(parent),
      picture_(picture),
      pixel_(new QLabel),
      swatch_(new QLabel),
      size_(new QLabel),
      zoom_(new QLabel) {
    setContentsMargins(6, 0, 6, 0);
    pixel_->setObjectName(QStringLiteral("pixel"));
    size_->setObjectName(QStringLiteral("size"));
    zoom_->setObjectName(QStringLiteral("zoom"));
    pixel_->setAccessibleName(tr("Pixel under the pointer"));
    size_->setAccessibleName(tr("Size of the picture"));
    zoom_->setAccessibleName(tr("Zoom"));
    // Wide enough for what changes all the time, so that nothing jumps.
    pixel_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000, 00000   #DDDDDD")) + 4);
    pixel_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    swatch_->setFixedWidth(16);
    zoom_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("1000.0 %")) + 4);
    zoom_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel* label : {swatch_, pixel_, size_, zoom_}) {
        label->setContentsMargins(label == swatch_ ? 0 : 8, 0, 0, 0);
        addPermanentWidget(label);
    }
    refresh();
}

void StatusLine::refresh() {
    const bool isEmpty = picture_.is_empty();
    const QSize size = picture_.size();
    size_->setText(isEmpty ? QString() : QStringLiteral("%1 × %2").arg(size.width()).arg(size.height()));
    zoom_->setText(isEmpty ? QString()
                           : tr("%1 %").arg(QLocale().toString(picture_.view().Zoom() * 100, 'f', 1)));
    if (isEmpty) forget_pixel();
}

void StatusLine::show_waiting(const QString& name) {
    if (name.isEmpty())
        clearMessage();
    else
        showMessage(name + QStringLiteral("…"));
}

void StatusLine::show_pixel(int x, int y) {
    const QSize size = picture_.size();
    if (x < 0 || y < 0 || x >= size.width() || y >= size.height()) return forget_pixel();
    const QColor color = picture_.view().GetPixel(x, y);
    pixel_->setText(QStringLiteral("%1, %2   %3").arg(x).arg(y).arg(color.name().toUpper()));
    swatch_->setPixmap(swatch_of(color, palette().color(QPalette::Mid), devicePixelRatioF()));
}

void StatusLine::forget_pixel() {
    pixel_->clear();
    swatch_->clear();
}

}  // namespace studio

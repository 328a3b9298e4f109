// The icon of the program, drawn by code.
// SPDX-License-Identifier: MIT
#include "app_icon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace studio {
namespace {

/// A landscape in a square of 100, cut along the way into the tiles of its pixels.
void draw_scene(QPainter& painter) {
    QLinearGradient sky(0, 10, 0, 90);
    sky.setColorAt(0, QColor(0x2B4C9B));
    sky.setColorAt(0.55, QColor(0xF08A5D));
    sky.setColorAt(1, QColor(0xFFD58A));
    painter.fillRect(QRectF(0, 0, 100, 100), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xFFF1C9));
    painter.drawEllipse(QPointF(63, 40), 11, 11);
    QPainterPath far(QPointF(0, 72));
    far.lineTo(26, 44);
    far.lineTo(46, 66);
    far.lineTo(66, 52);
    far.lineTo(100, 78);
    far.lineTo(100, 100);
    far.lineTo(0, 100);
    painter.fillPath(far, QColor(0x5B3B73));
    QPainterPath near(QPointF(0, 90));
    near.cubicTo(30, 72, 55, 96, 100, 80);
    near.lineTo(100, 100);
    near.lineTo(0, 100);
    painter.fillPath(near, QColor(0x2A1E42));
}

}  // namespace

QImage app_icon(int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.scale(side / 100.0, side / 100.0);
    QPainterPath round;
    round.addRoundedRect(QRectF(4, 4, 92, 92), 20, 20);
    painter.setClipPath(round);
    draw_scene(painter);

    // The lower right of it as large pixels, each of the mean of what it covers.
    constexpr int kTiles = 8;
    QImage scene(10 * kTiles, 10 * kTiles, QImage::Format_ARGB32_Premultiplied);
    {
        QPainter whole(&scene);
        whole.setRenderHint(QPainter::Antialiasing);
        whole.scale(kTiles / 10.0, kTiles / 10.0);
        draw_scene(whole);
    }
    const QImage means = scene.scaled(kTiles, kTiles, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const double tile = 100.0 / kTiles;
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int y = 0; y < kTiles; ++y) {
        for (int x = 0; x < kTiles; ++x) {
            if (x + y < kTiles + 1) continue;
            const QColor mean = means.pixelColor(x, y);
            painter.fillRect(QRectF(tile * x, tile * y, tile, tile),
                             mean.lighter((x + y) % 2 == 0 ? 134 : 116));
        }
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipping(false);
    painter.setPen(QPen(QColor(0, 0, 0, 60), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(round);
    return image;
}

}  // namespace studio

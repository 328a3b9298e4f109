// The drawings of the icons, in a square of 24 x 24.
// SPDX-License-Identifier: MIT
#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "icons.h"

namespace studio {
namespace {

/// A painter with round lines of one colour, and the few shapes that icons are made of.
struct Ink {
    QPainter& painter;
    QColor color;

    void thin(double width) const {
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    void line(double x1, double y1, double x2, double y2) const {
        painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
    }
    void way(std::initializer_list<QPointF> points) const {
        painter.drawPolyline(QPolygonF(QList<QPointF>(points)));
    }
    void ring(double x, double y, double radius) const { painter.drawEllipse(QPointF(x, y), radius, radius); }
    void box(double x, double y, double width, double height, double round = 2) const {
        painter.drawRoundedRect(QRectF(x, y, width, height), round, round);
    }
    /// Full, in a lighter tone of the ink with `strength` below 1.
    void full(const QPainterPath& path, double strength = 1) const {
        QColor tone = color;
        tone.setAlphaF(static_cast<float>(color.alphaF() * strength));
        painter.fillPath(path, tone);
    }
    void dot(double x, double y, double radius, double strength = 1) const {
        QPainterPath path;
        path.addEllipse(QPointF(x, y), radius, radius);
        full(path, strength);
    }
    void block(double x, double y, double width, double height, double strength = 1) const {
        QPainterPath path;
        path.addRoundedRect(QRectF(x, y, width, height), 1, 1);
        full(path, strength);
    }
};

/// An arrow that bends back to the left.
void bent_arrow(const Ink& ink) {
    QPainterPath path(QPointF(5, 10));
    path.lineTo(14, 10);
    path.cubicTo(21.5, 10, 21.5, 19, 14, 19);
    path.lineTo(9, 19);
    ink.painter.drawPath(path);
    ink.way({{9, 5.5}, {4.5, 10}, {9, 14.5}});
}

void mirrored(const Ink& ink, void (*draw)(const Ink&)) {
    ink.painter.translate(24, 0);
    ink.painter.scale(-1, 1);
    draw(ink);
}

void magnifier(const Ink& ink) {
    ink.ring(10.5, 10.5, 6.5);
    ink.line(15.4, 15.4, 20, 20);
}

void frame_corners(const Ink& ink) {
    ink.way({{4, 9}, {4, 4}, {9, 4}});
    ink.way({{15, 4}, {20, 4}, {20, 9}});
    ink.way({{20, 15}, {20, 20}, {15, 20}});
    ink.way({{9, 20}, {4, 20}, {4, 15}});
}

void drop(const Ink& ink) {
    QPainterPath path(QPointF(12, 3.5));
    path.cubicTo(14.5, 8, 18, 10.5, 18, 14.5);
    path.cubicTo(18, 18, 15.3, 20.5, 12, 20.5);
    path.cubicTo(8.7, 20.5, 6, 18, 6, 14.5);
    path.cubicTo(6, 10.5, 9.5, 8, 12, 3.5);
    ink.painter.drawPath(path);
}

void pen(const Ink& ink) {
    ink.way({{4, 20}, {5, 15.5}, {16.5, 4}, {20, 7.5}, {8.5, 19}, {4, 20}});
    ink.line(13.8, 6.7, 17.3, 10.2);
}

void folder(const Ink& ink) {
    ink.way({{3.5, 18.5}, {3.5, 5.5}, {9, 5.5}, {11, 8}, {18.5, 8}, {18.5, 11}});
    ink.way({{3.5, 18.5}, {6.5, 11}, {21.5, 11}, {18.5, 18.5}, {3.5, 18.5}});
}

void save(const Ink& ink) {
    ink.way({{12, 4}, {12, 14}});
    ink.way({{7.5, 10}, {12, 14.5}, {16.5, 10}});
    ink.way({{4, 15.5}, {4, 20}, {20, 20}, {20, 15.5}});
}

void compare(const Ink& ink) {
    ink.box(3.5, 5, 17, 14);
    ink.line(12, 3, 12, 21);
    ink.block(12, 5.6, 8, 12.8, 0.45);
}

void reset(const Ink& ink) {
    ink.painter.drawArc(QRectF(4.5, 4.5, 15, 15), 100 * 16, -320 * 16);
    ink.way({{6.5, 2.5}, {10.6, 4.6}, {8.4, 8.6}});
}

void colours(const Ink& ink) {
    ink.ring(12, 8.6, 5);
    ink.ring(8.4, 14.8, 5);
    ink.ring(15.6, 14.8, 5);
}

void noise(const Ink& ink) {
    static const double kGrains[][3] = {{6, 6, 1.7},   {12.5, 5, 1.1},    {18, 7, 1.6},
                                        {9, 11, 1.2},  {15, 11.5, 1.8},   {5.5, 15, 1.3},
                                        {11, 17, 1.7}, {17.5, 17.5, 1.2}, {20, 12.5, .9}};
    for (const auto& grain : kGrains) ink.dot(grain[0], grain[1], grain[2]);
}

void surface(const Ink& ink) {
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            ink.block(4 + 5.6 * column, 4 + 5.6 * row, 4.8, 4.8, (row + column) % 2 == 0 ? 1 : 0.4);
    }
}

void edges(const Ink& ink) {
    ink.way({{3.5, 19}, {9, 9.5}, {13, 15.5}, {16, 11.5}, {20.5, 19}});
    ink.ring(16.3, 6.3, 2.3);
}

void canvas(const Ink& ink) {
    ink.way({{7, 2.5}, {7, 17}, {21.5, 17}});
    ink.way({{2.5, 7}, {17, 7}, {17, 21.5}});
}

void adjust(const Ink& ink) {
    const double knobs[] = {15.5, 8.5, 13};
    for (int i = 0; i < 3; ++i) {
        const double y = 6 + 6 * i;
        ink.line(4, y, 20, y);
        ink.dot(knobs[i], y, 2.7);
    }
}

void histogram(const Ink& ink) {
    const double heights[] = {4, 9, 14, 11, 6};
    for (int i = 0; i < 5; ++i) ink.block(4 + 3.4 * i, 19.5 - heights[i], 2.6, heights[i]);
}

void log(const Ink& ink) {
    for (int i = 0; i < 4; ++i) {
        const double y = 5.5 + 4.4 * i;
        ink.dot(5, y, 1.2);
        ink.line(9, y, i % 2 == 0 ? 20 : 16.5, y);
    }
}

void macro(const Ink& ink) {
    ink.box(3.5, 4.5, 17, 15);
    QPainterPath play(QPointF(10, 8.3));
    play.lineTo(15.6, 12);
    play.lineTo(10, 15.7);
    play.closeSubpath();
    ink.full(play);
}

void play(const Ink& ink) {
    QPainterPath path(QPointF(7.5, 4.8));
    path.lineTo(19, 12);
    path.lineTo(7.5, 19.2);
    path.closeSubpath();
    ink.full(path);
    ink.painter.drawPath(path);
}

void record(const Ink& ink) {
    const Ink red{ink.painter, ink.color.alpha() < 255 || ink.color.saturation() > 40
                                   ? ink.color
                                   : QColor(0xD9, 0x3B, 0x3B)};
    red.dot(12, 12, 6.5);
}

}  // namespace

void draw_icon(Icon which, QPainter& painter, const QColor& color) {
    const Ink ink{painter, color};
    ink.thin(1.6);
    painter.setBrush(Qt::NoBrush);
    switch (which) {
        case Icon::Open:
            return folder(ink);
        case Icon::Save:
            return save(ink);
        case Icon::Undo:
            return bent_arrow(ink);
        case Icon::Redo:
            return mirrored(ink, bent_arrow);
        case Icon::ZoomIn:
            ink.line(10.5, 7.7, 10.5, 13.3);
            [[fallthrough]];
        case Icon::ZoomOut:
            ink.line(7.7, 10.5, 13.3, 10.5);
            return magnifier(ink);
        case Icon::ActualSize:
            ink.way({{5, 8}, {7.5, 6}, {7.5, 18}});
            ink.way({{15, 8}, {17.5, 6}, {17.5, 18}});
            ink.dot(12, 9.5, 1.2);
            return ink.dot(12, 15, 1.2);
        case Icon::Fit:
            ink.block(8, 8.5, 8, 7, 0.5);
            return frame_corners(ink);
        case Icon::Overview:
            ink.box(3.5, 4.5, 17, 15);
            return ink.block(12, 12, 7, 6, 0.7);
        case Icon::Compare:
            return compare(ink);
        case Icon::Reset:
            return reset(ink);
        case Icon::Record:
            return record(ink);
        case Icon::Stop:
            return ink.block(6.5, 6.5, 11, 11);
        case Icon::Play:
            return play(ink);
        case Icon::Clear:
            ink.line(6, 6, 18, 18);
            return ink.line(18, 6, 6, 18);
        case Icon::Colours:
            return colours(ink);
        case Icon::Blur:
            return drop(ink);
        case Icon::Edges:
            return edges(ink);
        case Icon::Surface:
            return surface(ink);
        case Icon::Noise:
            return noise(ink);
        case Icon::Focus:
            ink.ring(12, 12, 4);
            ink.dot(12, 12, 1.3);
            return frame_corners(ink);
        case Icon::Canvas:
            return canvas(ink);
        case Icon::Pen:
            return pen(ink);
        case Icon::Adjust:
            return adjust(ink);
        case Icon::Histogram:
            return histogram(ink);
        case Icon::Macro:
            return macro(ink);
        case Icon::Log:
            return log(ink);
    }
}

}  // namespace studio

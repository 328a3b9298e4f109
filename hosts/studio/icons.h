// The icons of the studio, drawn by code in the colours of the palette.
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

class QPainter;

namespace studio {

enum class Icon {
    Open,
    Save,
    Undo,
    Redo,
    ZoomIn,
    ZoomOut,
    ActualSize,
    Fit,
    Overview,
    Compare,
    Reset,
    Record,
    Stop,
    Play,
    Clear,
    Colours,
    Blur,
    Edges,
    Surface,
    Noise,
    Focus,
    Canvas,
    Adjust,
    Histogram,
    Pen,
    Macro,
    Log
};

/// Follows the palette of the moment when it is painted, at any size.
QIcon icon(Icon which);
/// What suits a category of commands.
QIcon icon_of_category(const QString& category);

/// Draws the icon's lines in a square of 24 x 24, with the painter's pen and brush colours set by the caller.
void draw_icon(Icon which, QPainter& painter, const QColor& ink);

}  // namespace studio

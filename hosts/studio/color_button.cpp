// A button that shows a colour and lets choose another.
// SPDX-License-Identifier: MIT
#include "color_button.h"

#include <QColorDialog>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOptionToolButton>

namespace studio {

ColorButton::ColorButton(QWidget* parent) : QToolButton(parent) {
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    set_color(color_);
    connect(this, &QToolButton::clicked, this, &ColorButton::choose);
}

void ColorButton::set_color(const QColor& color) {
    color_ = color;
    setText(color.name().toUpper());
    setAccessibleDescription(text());
    update();
}

QSize ColorButton::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(QStringLiteral("#DDDDDD")) + 2 * metrics.height() + 24,
            metrics.height() + 9};
}

void ColorButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    style()->drawComplexControl(QStyle::CC_ToolButton, &option, &painter, this);

    painter.setRenderHint(QPainter::Antialiasing);
    const int inset = 5;
    const QRectF swatch(inset, inset, 1.6 * (height() - 2 * inset), height() - 2 * inset);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlpha(90);
    painter.setPen(QPen(line, 1));
    painter.setBrush(isEnabled() ? QBrush(color_) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(swatch.adjusted(.5, .5, -.5, -.5), 3, 3);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(QRectF(swatch.right() + 8, 0, width() - swatch.right() - 8, height()),
                     Qt::AlignVCenter | Qt::AlignLeft, text());
}

void ColorButton::choose() {
    const QColor color = QColorDialog::getColor(color_, window(), accessibleName());
    if (!color.isValid() || color == color_) return;
    set_color(color);
    emit chosen(color);
}

}  // namespace studio

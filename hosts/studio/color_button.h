// A button that shows a colour and lets choose another.
// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QToolButton>

namespace studio {

class ColorButton : public QToolButton {
    Q_OBJECT

public:
    explicit ColorButton(QWidget* parent = nullptr);

    QColor color() const { return color_; }
    void set_color(const QColor& color);
    QSize sizeHint() const override;

signals:
    /// By the user.
    void chosen(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void choose();

    QColor color_ = Qt::white;
};

}  // namespace studio

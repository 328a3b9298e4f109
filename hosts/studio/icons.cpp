// The icons of the studio: how they follow the palette, and which one a category has.
// SPDX-License-Identifier: MIT
#include "icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <iterator>

namespace studio {
namespace {

class DrawnIcon final : public QIconEngine {
public:
    explicit DrawnIcon(Icon which) : which_(which) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette palette = QApplication::palette();
        QColor ink =
            palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
                          mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        const int side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center().x() + 0.5 - side / 2.0, rect.center().y() + 0.5 - side / 2.0);
        painter->scale(side / 24.0, side / 24.0);
        draw_icon(which_, *painter, ink);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new DrawnIcon(which_); }

private:
    Icon which_;
};

}  // namespace

QIcon icon(Icon which) { return QIcon(new DrawnIcon(which)); }

QIcon icon_of_category(const QString& category) {
    // By a word of the category's name; a new category has the icon of adjustments.
    static const struct {
        const char* word;
        Icon which;
    } kByWord[] = {{"olour", Icon::Colours},   {"Blur", Icon::Blur},   {"Edge", Icon::Edges},
                   {"Surface", Icon::Surface}, {"Noise", Icon::Noise}, {"Focus", Icon::Focus},
                   {"Canvas", Icon::Canvas},   {"raw", Icon::Pen},     {"hape", Icon::Pen}};
    const auto found = std::find_if(std::begin(kByWord), std::end(kByWord), [&](const auto& entry) {
        return category.contains(QLatin1String(entry.word));
    });
    return icon(found == std::end(kByWord) ? Icon::Adjust : found->which);
}

}  // namespace studio

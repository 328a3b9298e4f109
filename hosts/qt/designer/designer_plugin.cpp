// The widget in Qt Designer's box, and for forms that are loaded at run time.
// SPDX-License-Identifier: MIT
#include "designer_plugin.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include "pixvane_widget.h"

QString PixvaneDesignerPlugin::name() const { return QStringLiteral("PixvaneWidget"); }

QString PixvaneDesignerPlugin::group() const { return QStringLiteral("Pixvane"); }

QString PixvaneDesignerPlugin::toolTip() const { return tr("A picture that is shown and edited"); }

QString PixvaneDesignerPlugin::whatsThis() const {
    return tr("Shows a picture, and edits it: by its slots, by the mouse, by macros.");
}

QString PixvaneDesignerPlugin::includeFile() const { return QStringLiteral("pixvane_widget.h"); }

QIcon PixvaneDesignerPlugin::icon() const {
    // A landscape in a frame.
    QPixmap pixmap(48, 48);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x40, 0x48, 0x54), 3));
    painter.setBrush(QColor(0xA8, 0xD4, 0xF0));
    painter.drawRoundedRect(QRectF(4.5, 8.5, 39, 31), 4, 4);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xF8, 0xC8, 0x48));
    painter.drawEllipse(QPointF(33, 18), 4.5, 4.5);
    painter.setBrush(QColor(0x48, 0x90, 0x58));
    painter.drawPolygon(QPolygonF({{6, 38}, {18, 20}, {26, 30}, {31, 25}, {42, 38}}));
    return QIcon(pixmap);
}

QWidget* PixvaneDesignerPlugin::createWidget(QWidget* parent) { return new PixvaneWidget(parent); }

QString PixvaneDesignerPlugin::domXml() const {
    return QStringLiteral(R"(<ui language="c++">
  <widget class="PixvaneWidget" name="picture">
    <property name="geometry"><rect><x>0</x><y>0</y><width>320</width><height>240</height></rect></property>
  </widget>
</ui>)");
}

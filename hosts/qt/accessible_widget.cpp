// What the widget tells people who can't see it.
// SPDX-License-Identifier: MIT
#include "accessible_widget.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "pixvane_widget.h"

namespace {

/// Asked for only when somebody listens, so what it tells is always what is shown now.
class AccessiblePicture final : public QAccessibleWidget {
public:
    explicit AccessiblePicture(PixvaneWidget* widget) : QAccessibleWidget(widget, QAccessible::Graphic) {}

    QString text(QAccessible::Text kind) const override {
        QString given = QAccessibleWidget::text(kind);  // by the form
        if (!given.isEmpty()) return given;
        const auto& picture = *static_cast<const PixvaneWidget*>(widget());
        if (kind == QAccessible::Name) return PixvaneWidget::tr("Picture");
        if (kind != QAccessible::Description) return {};
        if (picture.IsEmpty()) return PixvaneWidget::tr("No picture");
        return PixvaneWidget::tr("%1 by %2 pixels, shown at %3 %")
            .arg(picture.ImageWidth())
            .arg(picture.ImageHeight())
            .arg(qRound(picture.Zoom() * 100));
    }
};

QAccessibleInterface* make_accessible(const QString& name, QObject* object) {
    if (name != QLatin1String("PixvaneWidget")) return nullptr;
    auto* widget = qobject_cast<PixvaneWidget*>(object);
    return widget == nullptr ? nullptr : new AccessiblePicture(widget);
}

}  // namespace

void install_accessible_pixvane_widget() { QAccessible::installFactory(make_accessible); }

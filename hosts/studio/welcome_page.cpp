// What stands where the picture will be, as long as there is none.
// SPDX-License-Identifier: MIT
#include "welcome_page.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app_icon.h"

namespace studio {
namespace {

constexpr int kMostShown = 4;

}  // namespace

WelcomePage::WelcomePage(QAction& open, QWidget* parent) : QWidget(parent), recent_(new QVBoxLayout) {
    auto* picture = new QLabel;
    QImage image = app_icon(static_cast<int>(72 * devicePixelRatioF()));
    image.setDevicePixelRatio(devicePixelRatioF());
    picture->setPixmap(QPixmap::fromImage(image));
    auto* title = new QLabel(tr("Drop a picture here"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    title->setFont(large);
    auto* button = new QPushButton(tr("Open a picture…"));
    button->setMinimumWidth(180);
    connect(button, &QPushButton::clicked, &open, &QAction::trigger);

    auto* column = new QVBoxLayout(this);
    column->setSpacing(14);
    column->addStretch(2);
    for (QWidget* part :
         {static_cast<QWidget*>(picture), static_cast<QWidget*>(title), static_cast<QWidget*>(button)})
        column->addWidget(part, 0, Qt::AlignHCenter);
    column->addSpacing(10);
    recent_->setSpacing(2);
    column->addLayout(recent_);
    column->addStretch(3);
}

void WelcomePage::set_recent(const QStringList& paths) {
    while (QLayoutItem* item = recent_->takeAt(0)) {
        if (item->widget() != nullptr) item->widget()->deleteLater();
        delete item;
    }
    for (const QString& path : paths.mid(0, kMostShown)) {
        auto* link =
            new QPushButton(QFileInfo(path).fileName().replace(QLatin1Char('&'), QLatin1String("&&")));
        link->setFlat(true);
        link->setCursor(Qt::PointingHandCursor);
        link->setToolTip(path);
        QPalette palette = link->palette();
        palette.setColor(QPalette::ButtonText, palette.color(QPalette::Link));
        link->setPalette(palette);
        connect(link, &QPushButton::clicked, this, [this, path] { emit chosen(path); });
        recent_->addWidget(link, 0, Qt::AlignHCenter);
    }
}

}  // namespace studio

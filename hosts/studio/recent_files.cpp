// The menu of the pictures that were opened last.
// SPDX-License-Identifier: MIT
#include "recent_files.h"

#include <QFileInfo>
#include <QSettings>

namespace studio {
namespace {

constexpr int kMost = 10;
const QString kKey = QStringLiteral("recentFiles");

}  // namespace

RecentFiles::RecentFiles(QWidget* parent) : QMenu(tr("Open &recent"), parent) {
    setToolTipsVisible(true);
    rebuild();
}

QStringList RecentFiles::paths() { return QSettings().value(kKey).toStringList(); }

void RecentFiles::add(const QString& path) {
    const QString whole = QFileInfo(path).absoluteFilePath();
    QStringList all = paths();
    all.removeAll(whole);
    all.prepend(whole);
    keep(all.mid(0, kMost));
}

void RecentFiles::forget(const QString& path) {
    QStringList all = paths();
    all.removeAll(QFileInfo(path).absoluteFilePath());
    keep(all);
}

void RecentFiles::keep(const QStringList& paths) {
    QSettings().setValue(kKey, paths);
    rebuild();
}

void RecentFiles::rebuild() {
    clear();
    const QStringList all = paths();
    for (qsizetype i = 0; i < all.size(); ++i) {
        const QFileInfo file(all[i]);
        // An ampersand in a name is no shortcut.
        const QString name = file.fileName().replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction* action = addAction(i < 9 ? QStringLiteral("&%1  %2").arg(i + 1).arg(name) : name);
        action->setToolTip(file.filePath());
        connect(action, &QAction::triggered, this, [this, path = all[i]] { emit chosen(path); });
    }
    if (!all.isEmpty()) {
        addSeparator();
        connect(addAction(tr("&Clear the list")), &QAction::triggered, this, [this] { keep({}); });
    }
    setEnabled(!all.isEmpty());
}

}  // namespace studio

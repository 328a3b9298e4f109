// The menu of the pictures that were opened last.
// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QStringList>

namespace studio {

/// Kept in the settings of the application.
class RecentFiles : public QMenu {
    Q_OBJECT

public:
    explicit RecentFiles(QWidget* parent = nullptr);

    static QStringList paths();
    void add(const QString& path);
    void forget(const QString& path);

signals:
    void chosen(const QString& path);

private:
    void keep(const QStringList& paths);
    void rebuild();
};

}  // namespace studio

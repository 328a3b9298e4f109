// What stands where the picture will be, as long as there is none.
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QAction;
class QVBoxLayout;

namespace studio {

class WelcomePage : public QWidget {
    Q_OBJECT

public:
    explicit WelcomePage(QAction& open, QWidget* parent = nullptr);

    /// Files that were open before, the last one first.
    void set_recent(const QStringList& paths);

signals:
    void chosen(const QString& path);

private:
    QVBoxLayout* recent_;
};

}  // namespace studio

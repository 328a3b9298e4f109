// Light and dark: the palettes of the studio.
// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QObject>

class QDBusVariant;

namespace studio {

enum class Theme { System, Light, Dark };

/// Applies a theme to the application, and follows the desktop's wish where that is what it says.
class ThemeKeeper : public QObject {
    Q_OBJECT

public:
    explicit ThemeKeeper(QObject* parent = nullptr);

    Theme theme() const { return theme_; }
    void set_theme(Theme theme);
    bool is_dark() const;

    /// What surrounds the picture, and the line around it: neutral, so that they don't colour what is seen.
    QColor surround() const;
    QColor frame_line() const;

signals:
    void changed();

private slots:
    /// The desktop's settings, by its portal.
    void take_setting(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask_desktop();
    void apply();

    Theme theme_ = Theme::System;
    bool desktopIsDark_ = false;
};

}  // namespace studio

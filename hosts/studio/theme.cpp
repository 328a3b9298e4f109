// Light and dark: the palettes of the studio.
// SPDX-License-Identifier: MIT
#include "theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QMainWindow>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>

namespace studio {
namespace {

struct Tones {
    QRgb window, base, raised, button, text, soft, accent, onAccent, edge, light;
};
constexpr Tones kLight = {0xFFF3F4F6, 0xFFFFFFFF, 0xFFF7F8FA, 0xFFFBFBFC, 0xFF1E2227,
                          0xFF686F79, 0xFF2F6FDE, 0xFFFFFFFF, 0xFFC4C8CE, 0xFFFFFFFF};
constexpr Tones kDark = {0xFF2A2C30, 0xFF1F2124, 0xFF26282C, 0xFF383B41, 0xFFE4E6EA,
                         0xFF9AA1AC, 0xFF4C8DF6, 0xFFFFFFFF, 0xFF16171A, 0xFF3C3F45};

/// Fusion with plain bars: its own have a bright line that stands out on dark windows.
class StudioStyle final : public QProxyStyle {
public:
    StudioStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const QRect lowestLine(option->rect.bottomLeft(), QSize(option->rect.width(), 1));
        if (element == CE_MenuBarItem) {
            QProxyStyle::drawControl(element, option, painter, widget);
            if (!(option->state & State_Selected)) painter->fillRect(lowestLine, option->palette.window());
            return;
        }
        if (element != CE_ToolBar && element != CE_MenuBarEmptyArea)
            return QProxyStyle::drawControl(element, option, painter, widget);
        painter->fillRect(option->rect, option->palette.window());
        if (element == CE_ToolBar && qobject_cast<const QMainWindow*>(widget->parentWidget()) != nullptr)
            painter->fillRect(lowestLine, option->palette.mid());
    }
};

QPalette palette_of(const Tones& tones) {
    QPalette palette{QColor(tones.button), QColor(tones.window)};
    const auto set = [&](QPalette::ColorRole role, QRgb color) { palette.setColor(role, QColor(color)); };
    set(QPalette::Window, tones.window);
    set(QPalette::WindowText, tones.text);
    set(QPalette::Base, tones.base);
    set(QPalette::AlternateBase, tones.raised);
    set(QPalette::Text, tones.text);
    set(QPalette::Button, tones.button);
    set(QPalette::ButtonText, tones.text);
    set(QPalette::ToolTipBase, tones.raised);
    set(QPalette::ToolTipText, tones.text);
    set(QPalette::PlaceholderText, tones.soft);
    set(QPalette::Highlight, tones.accent);
    set(QPalette::HighlightedText, tones.onAccent);
    set(QPalette::Link, tones.accent);
    set(QPalette::Mid, tones.edge);
    set(QPalette::Light, tones.light);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        QColor faint(tones.soft);
        faint.setAlpha(130);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(tones.edge));
    return palette;
}

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");

}  // namespace

ThemeKeeper::ThemeKeeper(QObject* parent) : QObject(parent) {
    QApplication::setStyle(new StudioStyle);
    // What the platform has chosen for itself, where it does.
    desktopIsDark_ = QApplication::palette().color(QPalette::Window).lightness() < 128;
    apply();
}

void ThemeKeeper::set_theme(Theme theme) {
    theme_ = theme;
    apply();
    if (theme == Theme::System) ask_desktop();
}

bool ThemeKeeper::is_dark() const {
    return theme_ == Theme::Dark || (theme_ == Theme::System && desktopIsDark_);
}

QColor ThemeKeeper::surround() const { return is_dark() ? QColor(0x1B1C1F) : QColor(0xDCDEE1); }
QColor ThemeKeeper::frame_line() const { return is_dark() ? QColor(0x45484E) : QColor(0xB4B8BE); }

/// Asks without waiting; a desktop without a portal never answers.
void ThemeKeeper::ask_desktop() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                SLOT(take_setting(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    question << kGroup << kKey;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        if (!reply.isError()) take_setting(kGroup, kKey, reply.value());
        finished->deleteLater();
    });
}

void ThemeKeeper::take_setting(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group != kGroup || key != kKey) return;
    QVariant scheme = value.variant();
    // The portal wraps the answer twice.
    if (scheme.canConvert<QDBusVariant>()) scheme = scheme.value<QDBusVariant>().variant();
    desktopIsDark_ = scheme.toUInt() == 1;
    if (theme_ == Theme::System) apply();
}

void ThemeKeeper::apply() {
    const QPalette palette = palette_of(is_dark() ? kDark : kLight);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    emit changed();
}

}  // namespace studio

// Tests of widgets: a program with an application object, on no screen unless the environment names one, with
// settings of its own.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QApplication application(count, arguments);
    QApplication::setOrganizationName(QStringLiteral("PixvaneTest"));
    QApplication::setApplicationName(QStringLiteral("widgets"));
    return RUN_ALL_TESTS();
}

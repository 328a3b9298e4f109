// Tests of widgets: a program with an application object, on no screen unless the environment names one.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}

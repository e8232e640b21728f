// The tests of the desktop window need an application, and no screen unless one is asked for.

#include <gtest/gtest.h>

#include <QApplication>

int main(int Count, char** Arguments) {
    testing::InitGoogleTest(&Count, Arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication Application(Count, Arguments);
    return RUN_ALL_TESTS();
}

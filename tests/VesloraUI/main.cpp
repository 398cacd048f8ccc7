// SPDX-License-Identifier: MIT
// Runs the tests of models and views. Views are drawn into memory: no display is asked for.
#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

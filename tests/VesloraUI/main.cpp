// SPDX-License-Identifier: MIT
// Runs the tests of models and views. Views are drawn into memory: no display is asked for. Whatever Qt or a
// view complains of is a failure.
#include "VesloraUI/Support/Translations.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

namespace {

void failOnComplaint(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.contains(QLatin1String("does not support raise"))) {
        return; // there is nothing above a window in memory
    }
    if (message.contains(QLatin1String("does not support propagateSizeHints"))) {
        return; // nor anybody who would keep it to its bounds
    }
    if (message.contains(QLatin1String("OpenType support missing for"))) {
        return; // of each font that lacks a script, while one is looked for that has it
    }
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg) {
        ADD_FAILURE() << (context.category ? context.category : "") << ": " << message.toStdString();
    }
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Screens of several scales; see `Scene::scale`.
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" VESLORA_TEST_DATA "/screens.json");
    qputenv("QT_SCREEN_SCALE_FACTORS", "1=1;1.25=1.25;1.5=1.5;1.75=1.75;2=2");
    qputenv("QT_QUICK_BACKEND", "software");
    // Whether a letter can be seen must not depend on what else is installed.
    if (!qEnvironmentVariableIsSet("FONTCONFIG_FILE")) {
        qputenv("FONTCONFIG_FILE", VESLORA_TEST_FONTS);
    }
    // Qt complains of a machine without one, though nothing is put there.
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    }
    qInstallMessageHandler(failOnComplaint);
    const QGuiApplication application(argc, argv);
    // The views speak English, in any locale that the tests are run in.
    veslora::Translations english({QStringLiteral("en")});
    english.install();
    return RUN_ALL_TESTS();
}

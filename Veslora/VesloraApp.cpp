// SPDX-License-Identifier: MIT
#include "Veslora/VesloraApp.h"

#include "Veslora/AppDelegate.h"
#include "VesloraLinux/DBus/SessionBus.h"
#include "VesloraLinux/DBus/SingleInstance.h"
#include "VesloraLinux/LinuxPlatform.h"
#include "VesloraLinux/System/Signals.h"
#include "VesloraUI/Settings/Defaults.h"
#include "VesloraUI/Settings/SettingsKeys.h"

#include <QGuiApplication>

#include <cstdio>

namespace veslora::VesloraApp {

namespace {

int runDelegate(LinuxPlatform& platform, SingleInstance& instance) {
    Defaults settings(platform.files(), platform.directoryWatcher(), platform.directories().configuration);
    SettingsKeys::registerDefaults(settings);
    AppDelegate delegate(platform, settings);
    if (!instance.claim([&delegate] { delegate.openSettings(); })) {
        return 0;
    }
    const Signals signalWatch([] { QCoreApplication::quit(); });
    delegate.applicationDidFinishLaunching();
    const int status = QCoreApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}

int refuseWithoutDisplay() {
    std::fputs("Veslora needs an X server, or a Wayland desktop with XWayland.\n", stderr);
    return 1;
}

} // namespace

int run(int argc, char** argv) {
    LinuxPlatform::prepareEnvironment();
    LinuxPlatform::giveBackLargeBlocks();
    if (!LinuxPlatform::hasDisplay()) {
        return refuseWithoutDisplay();
    }
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Veslora"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VESLORA_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.veslora.Veslora"));
    // Closing the settings window is no reason to go.
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const auto platform = LinuxPlatform::make();
    if (!platform) {
        return refuseWithoutDisplay();
    }
    SingleInstance instance(platform->files(), platform->directories().support, SessionBus::connection());
    return runDelegate(*platform, instance);
}

} // namespace veslora::VesloraApp

// SPDX-License-Identifier: MIT
#include "VesloraLinux/LinuxPlatform.h"
#include "VesloraLinux/X11/X11WindowSystem.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/SoundServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QQuickWindow>

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(LinuxPlatformTests, OffersEverySeamOnX) {
    const testing::SoundEnvironment quiet;
    testing::Desktop desktop;
    const auto platform = LinuxPlatform::make();
    ASSERT_TRUE(platform);
    EXPECT_TRUE(platform->seams().directories.support.ends_with("/.local/share/Veslora"));
    EXPECT_EQ(platform->seams().screens.list().size(), 1U);
    EXPECT_TRUE(platform->seams().pointer.positionOn(platform->seams().screens.list().front()));
    EXPECT_NE(platform->seams().panel.window(), nullptr);
    EXPECT_EQ(platform->seams().hostApplications.hostAppOf(1), std::nullopt);
    EXPECT_EQ(platform->seams().processes.ownId(), getpid());
    EXPECT_TRUE(platform->seams().systemReadings.ticks());
    EXPECT_TRUE(QObject::connect(&platform->seams().suspension, &Suspension::didWake, [] {}));
    EXPECT_TRUE(platform->seams().files.stat("/", Links::refuse)->isDirectory);
    EXPECT_EQ(platform->seams().directoryWatcher.watch("/nowhere", DirectoryChanges::any, [] {}), nullptr);
    platform->seams().sounds.play("Glass");
    platform->seams().haptics.perform(HapticPattern::generic);
    platform->seams().statusMenu.show(QStringLiteral("Veslora"), QStringLiteral("none"), {});
    platform->seams().power.apply(std::nullopt);
    platform->seams().timerNotifier.timerFinished(60);
    bool isDone = false;
    const Task task = platform->seams().scheduler.after(0, [&] { isDone = true; });
    EXPECT_TRUE(testing::waitUntil([&] { return isDone; }));
}

TEST(LinuxPlatformTests, FindsNoWindowSystemWhereThereIsNone) {
    int count = 3;
    char name[] = "veslora";
    char option[] = "-platform";
    char platform[] = "offscreen";
    char* arguments[] = {name, option, platform, nullptr};
    const QGuiApplication application(count, arguments);
    EXPECT_EQ(LinuxPlatform::make(), nullptr);
}

TEST(LinuxPlatformTests, KnowsBeforehandWhetherThereIsADisplay) {
    {
        const testing::Desktop desktop;
        EXPECT_TRUE(LinuxPlatform::hasDisplay());
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DISPLAY", ":4711");
    EXPECT_FALSE(LinuxPlatform::hasDisplay());
    qunsetenv("DISPLAY");
    EXPECT_FALSE(LinuxPlatform::hasDisplay());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    EXPECT_TRUE(LinuxPlatform::hasDisplay());
    qunsetenv("QT_QPA_PLATFORM");
}

TEST(LinuxPlatformTests, ShrinksThePanelOnAWaylandDesktopOnly) {
    const auto formWith = [](const char* display, const char* type) {
        qputenv("WAYLAND_DISPLAY", display);
        qputenv("XDG_SESSION_TYPE", type);
        const PanelForm form = X11WindowSystem::formOfSession();
        qunsetenv("WAYLAND_DISPLAY");
        qunsetenv("XDG_SESSION_TYPE");
        return form;
    };
    EXPECT_EQ(formWith("", "x11"), PanelForm::shaped);
    EXPECT_EQ(formWith("", ""), PanelForm::shaped);
    EXPECT_EQ(formWith("wayland-0", ""), PanelForm::shrinking);
    EXPECT_EQ(formWith("", "wayland"), PanelForm::shrinking);
}

TEST(LinuxPlatformTests, StartsWhereTheSessionTellsToolkitsToUseWayland) {
    for (const char* const wish :
         {"wayland", "wayland-egl", "wayland;xcb", "xcb;wayland", "wayland:decoration=none"}) {
        qputenv("QT_QPA_PLATFORM", wish);
        LinuxPlatform::prepareEnvironment();
        EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "xcb") << wish;
    }
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("QT_QUICK_BACKEND");
}

TEST(LinuxPlatformTests, PreparesTheEnvironmentButLeavesTheUsersWishes) {
    const std::vector<const char*> variables{"QT_QPA_PLATFORM", "QT_QUICK_BACKEND",
                                             "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"};
    for (const char* const variable : variables) {
        qunsetenv(variable);
    }
    LinuxPlatform::prepareEnvironment();
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "xcb");
    EXPECT_EQ(qgetenv("QT_QUICK_BACKEND"), "software");
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "rhi");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/somewhere");
    LinuxPlatform::prepareEnvironment();
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "offscreen");
    EXPECT_EQ(qgetenv("QT_QUICK_BACKEND"), "rhi");
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/somewhere");
    for (const char* const variable : variables) {
        qunsetenv(variable);
    }
}

} // namespace
} // namespace veslora

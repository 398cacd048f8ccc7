// SPDX-License-Identifier: MIT
// Real windows under real window managers. What is known is taken over only when a change is told of, so that
// each test sees too that it is told of.
#include "VesloraLinux/X11/X11ScreenWindows.h"
#include "VesloraLinux/X11/X11WindowSystem.h"
#include "tests/VesloraLinux/Support/Bystander.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/LogRecorder.h"

#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Bystander;
using testing::DesktopOptions;
using testing::handleEventsFor;
using testing::Program;
using testing::waitUntil;

constexpr QRect everything(0, 0, 1600, 900);
constexpr QRect somewhere(300, 200, 500, 400);
const testing::BystanderOptions dock{.frame = {0, 0, 1600, 30},
                                     .type = "_NET_WM_WINDOW_TYPE_DOCK",
                                     .strut = {0, 0, 30, 0, 0, 0, 0, 0, 0, 1599, 0, 0}};

class WatchedDesktop {
  public:
    explicit WatchedDesktop(const DesktopOptions& options = {}, std::size_t screen = 0)
        : desktop(options), m_screen(screen) {
        QObject::connect(&windows, &ScreenWindows::changed, &windows, [this] {
            ++changes;
            update();
        });
        windows.setWatching(true);
        update();
    }

    [[nodiscard]] bool becomes(bool isFilled) {
        return waitUntil([&] { return m_isFilled == isFilled; }, 3000);
    }
    /// Also once everything has come to rest.
    [[nodiscard]] bool stays(bool isFilled) {
        handleEventsFor(250);
        return m_isFilled == isFilled && look() == isFilled;
    }
    [[nodiscard]] bool look() {
        const ScreenInfo screen = screens.list().at(m_screen);
        return FullscreenDetector::isFullscreen(windows.windowsOn(screen), screen.metrics.frame,
                                                std::max(screen.metrics.menuBarHeight, 24.0), false);
    }

    void update() { m_isFilled = look(); }

    testing::Desktop desktop;
    X11Screens screens{desktop.connection()};
    X11ScreenWindows windows{desktop.connection(), screens};
    int changes = 0;

  private:
    std::size_t m_screen;
    bool m_isFilled = false;
};

TEST(X11ScreenWindowsTests, AWindowFillsTheScreenByItsState) {
    WatchedDesktop x;
    EXPECT_TRUE(x.stays(false));
    {
        Bystander window({.frame = somewhere});
        EXPECT_TRUE(x.stays(false));
        window.setState("FULLSCREEN", true);
        EXPECT_TRUE(x.becomes(true));
        window.setState("FULLSCREEN", false);
        EXPECT_TRUE(x.becomes(false));
        window.setState("FULLSCREEN", true);
        EXPECT_TRUE(x.becomes(true));
    }
    EXPECT_TRUE(x.becomes(false)) << "it has been closed";
}

TEST(X11ScreenWindowsTests, ABorderlessWindowFillsItBySize) {
    WatchedDesktop x;
    Bystander window({.frame = everything, .isBorderless = true});
    EXPECT_TRUE(x.becomes(true));
    window.place(somewhere);
    EXPECT_TRUE(x.becomes(false));
    window.place(everything);
    EXPECT_TRUE(x.becomes(true));
    window.place(everything.adjusted(0, 0, 0, -2));
    EXPECT_TRUE(x.becomes(false));
}

TEST(X11ScreenWindowsTests, AFramedWindowOfThatSizeDoesNot) {
    WatchedDesktop x;
    Bystander window({.frame = everything});
    EXPECT_TRUE(x.stays(false));
}

TEST(X11ScreenWindowsTests, AMaximisedWindowNeverDoes) {
    for (const bool isBorderless : {false, true}) {
        WatchedDesktop x;
        Bystander window({.frame = somewhere, .isBorderless = isBorderless});
        window.setState("MAXIMIZED", true);
        EXPECT_TRUE(x.stays(false)) << isBorderless;
        // Without a frame nothing but its state changes.
        window.setState("FULLSCREEN", true);
        EXPECT_TRUE(x.becomes(true)) << isBorderless;
        window.setState("FULLSCREEN", false);
        EXPECT_TRUE(x.becomes(false)) << isBorderless;
        const Bystander bar(dock);
        EXPECT_TRUE(x.stays(false)) << isBorderless;
    }
}

TEST(X11ScreenWindowsTests, AMinimisedWindowDoesNot) {
    WatchedDesktop x;
    Bystander window({.frame = everything, .isFullscreen = true});
    EXPECT_TRUE(x.becomes(true));
    window.iconify();
    EXPECT_TRUE(x.becomes(false));
    window.map();
    EXPECT_TRUE(x.becomes(true));
}

TEST(X11ScreenWindowsTests, AWindowOnAnotherDesktopDoesNotAndOneOnAllDoes) {
    WatchedDesktop x;
    Bystander window({.frame = everything, .isFullscreen = true});
    EXPECT_TRUE(x.becomes(true));
    x.desktop.switchToDesktop(1);
    EXPECT_TRUE(x.becomes(false));
    window.moveToDesktop(1);
    EXPECT_TRUE(x.becomes(true));
    window.moveToDesktop(0);
    EXPECT_TRUE(x.becomes(false));
    window.moveToDesktop(Bystander::allDesktops);
    EXPECT_TRUE(x.becomes(true));
    x.desktop.switchToDesktop(0);
    EXPECT_TRUE(x.stays(true));
}

TEST(X11ScreenWindowsTests, ABarCountsOnlyWhereItLiesAboveTheWindow) {
    WatchedDesktop x;
    const Bystander bar(dock);
    Bystander window({.frame = everything, .isFullscreen = true});
    EXPECT_TRUE(x.becomes(true)) << "the bar lies beneath";
    {
        // Out of the focus a fullscreen window goes down to the others, and the bar comes up.
        Bystander other({.frame = somewhere});
        EXPECT_TRUE(x.becomes(false));
    }
    EXPECT_TRUE(x.becomes(true));
}

TEST(X11ScreenWindowsTests, ASmallWindowInFrontChangesNothingWithoutABar) {
    WatchedDesktop x;
    Bystander window({.frame = everything, .isFullscreen = true});
    EXPECT_TRUE(x.becomes(true));
    Bystander other({.frame = somewhere});
    EXPECT_TRUE(x.stays(true));
    other.setState("MAXIMIZED", true);
    EXPECT_TRUE(x.becomes(false)) << "a maximised one is what the user looks at";
}

TEST(X11ScreenWindowsTests, AWallpaperDoesNot) {
    WatchedDesktop x;
    const Bystander wallpaper({.frame = everything, .type = "_NET_WM_WINDOW_TYPE_DESKTOP"});
    EXPECT_TRUE(x.stays(false));
    const Bystander window({.frame = everything, .isFullscreen = true});
    EXPECT_TRUE(x.becomes(true));
}

TEST(X11ScreenWindowsTests, EachScreenIsJudgedByItself) {
    for (const std::size_t screen : {0U, 1U}) {
        WatchedDesktop x({.monitors = {"HDMI-1 800/200x900/225+0+0", "eDP-1 800/200x900/225+800+0"}}, screen);
        Bystander video({.frame = {100, 100, 300, 300}});
        video.setState("FULLSCREEN", true);
        EXPECT_TRUE(screen == 0 ? x.becomes(true) : x.stays(false));
        Bystander game({.frame = {800, 0, 800, 900}, .isBorderless = true});
        EXPECT_TRUE(x.stays(true));
        video.setState("FULLSCREEN", false);
        EXPECT_TRUE(screen == 0 ? x.becomes(false) : x.stays(true));
    }
}

TEST(X11ScreenWindowsTests, CountsInPoints) {
    for (const char* const scale : {"1.5", "2"}) {
        WatchedDesktop x({.scale = scale});
        Bystander window({.frame = somewhere});
        window.setState("FULLSCREEN", true);
        EXPECT_TRUE(x.becomes(true)) << scale;
    }
}

TEST(X11ScreenWindowsTests, OwnWindowsNeverCount) {
    WatchedDesktop x;
    QWindow own;
    own.showFullScreen();
    ASSERT_TRUE(waitUntil([&] { return !x.windows.windowsOn(x.screens.list().front()).empty(); }));
    const auto found = x.windows.windowsOn(x.screens.list().front());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found.front().ownerIsSelf);
    EXPECT_TRUE(x.stays(false));
}

TEST(X11ScreenWindowsTests, WithoutAWindowManagerAllWindowsAreLookedAt) {
    WatchedDesktop x({.hasWindowManager = false});
    {
        Bystander window({.frame = everything});
        EXPECT_TRUE(x.becomes(true));
        window.place(somewhere);
        EXPECT_TRUE(x.becomes(false));
    }
    const Bystander menu({.frame = everything, .isOverrideRedirect = true});
    EXPECT_TRUE(x.stays(false)) << "the panel goes beneath that by itself";
}

/// Without a window manager, so that nothing else of the window changes: some keep hidden windows mapped.
TEST(X11ScreenWindowsTests, HearsWhatIsOnlyWrittenOnTheWindow) {
    WatchedDesktop x({.hasWindowManager = false});
    x.desktop.writeCurrentDesktop(0);
    Bystander window({.frame = everything});
    EXPECT_TRUE(x.becomes(true));
    window.writeStates({"MAXIMIZED_VERT", "MAXIMIZED_HORZ"});
    EXPECT_TRUE(x.becomes(false));
    window.writeStates({"MAXIMIZED_VERT", "MAXIMIZED_HORZ", "FULLSCREEN"});
    EXPECT_TRUE(x.becomes(true));
    window.writeStates({"FULLSCREEN", "HIDDEN"});
    EXPECT_TRUE(x.becomes(false));
    window.writeStates({"FULLSCREEN"});
    EXPECT_TRUE(x.becomes(true));
    window.writeDesktop(1);
    EXPECT_TRUE(x.becomes(false));
    window.writeDesktop(Bystander::allDesktops);
    EXPECT_TRUE(x.becomes(true));
    window.writeDesktop(0);
    EXPECT_TRUE(x.stays(true));
    x.desktop.writeCurrentDesktop(1);
    EXPECT_TRUE(x.becomes(false));
}

TEST(X11ScreenWindowsTests, WindowsThatVanishAreNoTrouble) {
    const testing::LogRecorder recorder;
    WatchedDesktop x;
    // Too fast for the window manager: the server gives each of them the same number.
    for (int time = 0; time < 20; ++time) {
        const Bystander window({.frame = everything, .isFullscreen = true});
        handleEventsFor(time % 5);
    }
    ASSERT_TRUE(waitUntil([&] { return x.desktop.rootValues("_NET_CLIENT_LIST").empty(); }));
    EXPECT_TRUE(x.stays(false));
    const Bystander window({.frame = everything, .isFullscreen = true});
    EXPECT_TRUE(x.becomes(true));
    EXPECT_THAT(recorder.warnings(), ::testing::IsEmpty());
}

TEST(X11ScreenWindowsTests, WhatFillsNothingCostsNothing) {
    WatchedDesktop x;
    Bystander large({.frame = {0, 0, 1500, 800}});
    Bystander small({.frame = somewhere});
    handleEventsFor(250);
    const int before = x.changes;
    for (int step = 0; step < 20; ++step) {
        small.place(somewhere.translated(step, step));
        large.setTitle(std::to_string(step));
        handleEventsFor(20);
    }
    EXPECT_EQ(x.changes, before);
}

TEST(X11ScreenWindowsTests, IsSilentUnlessWatched) {
    WatchedDesktop x;
    Bystander window({.frame = somewhere});
    window.setState("MAXIMIZED", true);
    handleEventsFor(250);
    x.windows.setWatching(false);
    const int before = x.changes;
    window.setState("FULLSCREEN", true);
    handleEventsFor(250);
    EXPECT_EQ(x.changes, before);
    x.windows.setWatching(true);
    EXPECT_TRUE(x.look());
    window.setState("FULLSCREEN", false);
    EXPECT_TRUE(x.becomes(false));
}

TEST(X11ScreenWindowsTests, ASurfaceBelowWaylandSeesNone) {
    testing::Desktop desktop;
    const auto system = X11WindowSystem::make(desktop.scheduler(), PanelForm::shrinking);
    system->screenWindows().setWatching(true);
    int changes = 0;
    QObject::connect(&system->screenWindows(), &ScreenWindows::changed, [&changes] { ++changes; });
    const Bystander window({.frame = everything, .isFullscreen = true});
    handleEventsFor(250);
    EXPECT_TRUE(system->screenWindows().windowsOn(system->screens().list().front()).empty());
    EXPECT_EQ(changes, 0);
}

/// Under i3, which tiles windows, hides none by minimising them, and takes desktops away with their last
/// window.
TEST(X11ScreenWindowsTests, AmongTilesOnlyAFullscreenWindowFillsTheScreen) {
    WatchedDesktop x({.windowManager = "i3"});
    Bystander window({.frame = somewhere});
    EXPECT_TRUE(x.stays(false)) << "a single tile, with its frame";
    window.setState("FULLSCREEN", true);
    EXPECT_TRUE(x.becomes(true));
    window.setState("FULLSCREEN", false);
    EXPECT_TRUE(x.becomes(false));
    window.setState("FULLSCREEN", true);
    EXPECT_TRUE(x.becomes(true));
    EXPECT_EQ(Program({"i3-msg", "workspace 2"}).wait(), 0);
    EXPECT_TRUE(x.becomes(false));
    EXPECT_EQ(Program({"i3-msg", "workspace 1"}).wait(), 0);
    EXPECT_TRUE(x.becomes(true));
}

TEST(X11ScreenWindowsTests, ADesktopForEachScreenStaysInSightWithoutTheFocus) {
    WatchedDesktop x(
        {.monitors = {"HDMI-1 800/200x900/225+0+0", "eDP-1 800/200x900/225+800+0"}, .windowManager = "i3"});
    EXPECT_EQ(Program({"i3-msg", "focus output left"}).wait(), 0);
    Bystander window({.frame = somewhere});
    window.setState("FULLSCREEN", true);
    ASSERT_TRUE(x.becomes(true));
    const auto before = x.desktop.rootValues("_NET_CURRENT_DESKTOP");
    EXPECT_EQ(Program({"i3-msg", "focus output right"}).wait(), 0);
    ASSERT_TRUE(waitUntil([&] { return x.desktop.rootValues("_NET_CURRENT_DESKTOP") != before; }));
    EXPECT_TRUE(x.stays(true));
    const Bystander other({.frame = {900, 100, 300, 300}});
    EXPECT_TRUE(x.stays(true));
}

TEST(X11ScreenWindowsTests, AmongTilesABarLiesBeneathAFullscreenWindow) {
    WatchedDesktop x({.windowManager = "i3"});
    const Bystander bar(dock);
    Bystander window({.frame = somewhere});
    EXPECT_TRUE(x.stays(false));
    window.setState("FULLSCREEN", true);
    EXPECT_TRUE(x.becomes(true));
}

} // namespace
} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Stacking.h"
#include "tests/VesloraLinux/Support/PanelDesktop.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veslora {
namespace {

using testing::Bystander;
using testing::handleEventsFor;
using testing::PanelDesktop;
using testing::waitUntil;

constexpr QRect everything(0, 0, 1600, 900);
constexpr QRect underThePanel(600, 0, 400, 300);

class X11StackingTests : public ::testing::Test {
  protected:
    [[nodiscard]] bool goesOnTop() {
        return waitUntil([this] { return x.isOnTop(); });
    }
    /// Whether the one window lies above the other.
    [[nodiscard]] bool isAbove(xcb_window_t upper, xcb_window_t lower) {
        const auto stack = testing::stackOf(x.desktop.connection().xcb(), x.desktop.connection().root());
        return std::ranges::find(stack, upper) > std::ranges::find(stack, lower);
    }
    PanelDesktop x;
};

TEST_F(X11StackingTests, StaysAboveWindowsThatOpenAndRise) {
    x.show();
    Bystander first({.frame = underThePanel});
    EXPECT_TRUE(goesOnTop());
    Bystander second({.frame = underThePanel});
    EXPECT_TRUE(goesOnTop());
    first.raise();
    handleEventsFor(50);
    EXPECT_TRUE(goesOnTop());
}

TEST_F(X11StackingTests, StaysAboveFullscreenWindows) {
    x.show();
    Bystander window({.frame = everything, .isFullscreen = true});
    EXPECT_TRUE(goesOnTop());
    window.raise();
    handleEventsFor(50);
    EXPECT_TRUE(goesOnTop());
}

TEST_F(X11StackingTests, GoesAboveMenusThatWouldCoverIt) {
    x.show();
    Bystander menu({.frame = underThePanel, .isOverrideRedirect = true});
    EXPECT_TRUE(goesOnTop());
    menu.raise();
    handleEventsFor(50);
    EXPECT_TRUE(goesOnTop());
}

TEST_F(X11StackingTests, LeavesWindowsAloneThatDoNotTouchIt) {
    x.show();
    const int before = x.panel.stacking().raises();
    const Bystander menu({.frame = {0, 500, 300, 300}, .isOverrideRedirect = true});
    handleEventsFor(100);
    EXPECT_EQ(x.panel.stacking().raises(), before);
    EXPECT_TRUE(isAbove(menu.window(), x.panel.nativeWindow()));
}

TEST_F(X11StackingTests, NeverGoesAboveALockedScreen) {
    x.show();
    const Bystander locker({.frame = everything, .color = Qt::black, .isOverrideRedirect = true});
    handleEventsFor(200);
    EXPECT_TRUE(isAbove(locker.window(), x.panel.nativeWindow()));
    // Nor when something else moves above or below it.
    const Bystander menu({.frame = underThePanel, .isOverrideRedirect = true});
    const Bystander window({.frame = underThePanel});
    handleEventsFor(200);
    EXPECT_TRUE(isAbove(locker.window(), x.panel.nativeWindow()));
}

TEST_F(X11StackingTests, StaysUnderALockedScreenWhenItIsShownAgain) {
    const Bystander locker({.frame = everything, .color = Qt::black, .isOverrideRedirect = true});
    x.show();
    handleEventsFor(100);
    EXPECT_TRUE(isAbove(locker.window(), x.panel.nativeWindow()));
}

TEST_F(X11StackingTests, ComesBackOnTopAfterTheLock) {
    x.show();
    {
        Bystander locker({.frame = everything, .color = Qt::black, .isOverrideRedirect = true});
        handleEventsFor(100);
    }
    Bystander window({.frame = underThePanel});
    EXPECT_TRUE(goesOnTop());
}

TEST_F(X11StackingTests, GivesInToAWindowThatWantsToBeOnTopJustAsMuch) {
    x.show();
    Bystander rival({.frame = underThePanel, .isOverrideRedirect = true});
    rival.fight();
    const int before = x.panel.stacking().raises();
    const QDeadlineTimer end(1000);
    while (!end.hasExpired()) {
        rival.pump();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    const int raises = x.panel.stacking().raises() - before;
    EXPECT_GE(raises, 1);
    EXPECT_LE(raises, 5);
}

TEST_F(X11StackingTests, DoesNothingWhileItIsHidden) {
    x.show();
    x.panel.orderOut();
    const int before = x.panel.stacking().raises();
    const Bystander window({.frame = underThePanel});
    handleEventsFor(100);
    EXPECT_EQ(x.panel.stacking().raises(), before);
}

} // namespace
} // namespace veslora

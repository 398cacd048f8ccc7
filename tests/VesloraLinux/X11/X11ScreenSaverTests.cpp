// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11ScreenSaver.h"
#include "VesloraLinux/X11/X11WindowSystem.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>
#include <xcb/screensaver.h>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

class X11ScreenSaverTests : public ::testing::Test {
  protected:
    /// Blanks the screen after a second without input.
    void blankSoon() {
        xcb_set_screen_saver(xcb(), 1, 0, XCB_BLANKING_PREFERRED, XCB_EXPOSURES_ALLOWED);
        xcb_force_screen_saver(xcb(), XCB_SCREEN_SAVER_RESET);
        xcb_flush(xcb());
    }
    [[nodiscard]] bool isBlank() {
        const auto cookie = xcb_screensaver_query_info(xcb(), desktop.connection().root());
        const X11Reply<xcb_screensaver_query_info_reply_t> info(
            xcb_screensaver_query_info_reply(xcb(), cookie, nullptr));
        return info && info->state == XCB_SCREENSAVER_STATE_ON;
    }
    [[nodiscard]] std::unique_ptr<Inhibition> inhibit() {
        std::unique_ptr<Inhibition> result;
        saver.inhibit(saver.covers(), QStringLiteral("a test"),
                      [&](std::unique_ptr<Inhibition> granted) { result = std::move(granted); });
        return result;
    }
    [[nodiscard]] xcb_connection_t* xcb() { return desktop.connection().xcb(); }

    testing::Desktop desktop;
    X11ScreenSaver saver{desktop.connection()};
};

TEST_F(X11ScreenSaverTests, TheScreenStaysOnForAsLongAsItIsHeld) {
    auto held = inhibit();
    ASSERT_TRUE(held);
    blankSoon();
    handleEventsFor(2000);
    EXPECT_FALSE(isBlank());
    // One that begins before the other ends leaves no gap.
    auto next = inhibit();
    held.reset();
    handleEventsFor(2000);
    EXPECT_FALSE(isBlank());
    next.reset();
    EXPECT_TRUE(waitUntil([this] { return isBlank(); }));
}

TEST_F(X11ScreenSaverTests, ServesTheDisplayAlone) {
    EXPECT_EQ(saver.covers(), (AwakeNeeds{.system = false, .display = true}));
}

TEST_F(X11ScreenSaverTests, IsNoWayOnAWaylandDesktop) {
    const auto onX = X11WindowSystem::make(desktop.scheduler(), PanelForm::shaped);
    EXPECT_TRUE(onX->makeDisplayInhibitor());
    const auto onWayland = X11WindowSystem::make(desktop.scheduler(), PanelForm::shrinking);
    EXPECT_FALSE(onWayland->makeDisplayInhibitor());
}

} // namespace
} // namespace veslora

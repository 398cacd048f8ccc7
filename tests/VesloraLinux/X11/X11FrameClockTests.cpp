// SPDX-License-Identifier: MIT
// When a frame is on the screen of a private server, by its clock, and whether it can be seen there.
#include "VesloraLinux/X11/X11FrameClock.h"
#include "tests/VesloraLinux/Support/PanelDesktop.h"

#include <gtest/gtest.h>

#include <cstring>

namespace veslora {
namespace {

using testing::Bystander;
using testing::PanelDesktop;
using testing::waitUntil;

class X11FrameClockTests : public ::testing::Test {
  protected:
    void show(const testing::DesktopOptions& options = {}) {
        x = std::make_unique<PanelDesktop>(options);
        clock = std::make_unique<X11FrameClock>(x->desktop.connection(), x->panel);
        x->show();
        x->panel.setZones({.clicks = {x->islandZone()}, .hover = {}});
        x->desktop.settle();
    }
    void TearDown() override {
        clock.reset();
        x.reset();
    }
    /// Asks behind the next frame, and waits for the answer.
    std::optional<std::uint32_t> timeOfAFrame() {
        std::optional<std::uint32_t> time;
        Task mark;
        const auto connection = QObject::connect(x->panel.window(), &QQuickWindow::frameSwapped, [&] {
            if (!mark.isActive() && !time) {
                mark = clock->afterFrame([&](std::uint32_t eventTime) { time = eventTime; });
            }
        });
        x->panel.window()->update();
        waitUntil([&] { return time.has_value(); });
        QObject::disconnect(connection);
        return time;
    }
    std::uint32_t timeOfAPress() {
        const int presses = x->island.presses;
        x->desktop.movePointerTo(800, 15);
        x->desktop.click();
        EXPECT_TRUE(waitUntil([&] { return x->island.presses > presses; }));
        return x->island.lastPressTime;
    }
    /// Around the island's mark, which has two colours.
    [[nodiscard]] QRectF markedArea() const { return {x->island.width() / 2 - 30, 2, 60, 26}; }
    /// Looks again until the screen has followed: a compositor needs a moment.
    [[nodiscard]] bool comesToShow(ScreenLook look) {
        return waitUntil([&] { return clock->look(markedArea()) == look; });
    }

    std::unique_ptr<PanelDesktop> x;
    std::unique_ptr<X11FrameClock> clock;
};

TEST_F(X11FrameClockTests, StampsAFrameByTheClockOfThePointersEvents) {
    show();
    const auto before = timeOfAPress();
    const auto frame = timeOfAFrame();
    ASSERT_TRUE(frame);
    const auto after = timeOfAPress();
    EXPECT_GE(static_cast<std::int32_t>(*frame - before), 0);
    EXPECT_GE(static_cast<std::int32_t>(after - *frame), 0);
}

TEST_F(X11FrameClockTests, AFrameWithoutAnyChangeIsStampedToo) {
    show();
    const auto first = timeOfAFrame();
    const auto second = timeOfAFrame();
    ASSERT_TRUE(first && second);
    EXPECT_GE(static_cast<std::int32_t>(*second - *first), 0);
}

TEST_F(X11FrameClockTests, ACancelledMarkIsNeverTold) {
    show();
    bool isTold = false;
    clock->afterFrame([&](std::uint32_t) { isTold = true; }).cancel();
    ASSERT_TRUE(timeOfAFrame()) << "a later one is";
    EXPECT_FALSE(isTold);
}

TEST_F(X11FrameClockTests, AnotherProgramsChangeOfThePropertyIsNoFrame) {
    show();
    xcb_connection_t* const other = x->desktop.connection().xcb();
    const auto before = timeOfAPress();
    std::optional<std::uint32_t> time;
    const Task mark = clock->afterFrame([&](std::uint32_t eventTime) { time = eventTime; });
    const xcb_atom_t property = x->desktop.connection().atom("_VESLORA_FRAME");
    // A forged notice of the change that is waited for, with a time of long ago.
    xcb_property_notify_event_t forged{};
    forged.response_type = XCB_PROPERTY_NOTIFY;
    forged.window = x->panel.nativeWindow();
    forged.atom = property;
    forged.time = 1;
    xcb_send_event(other, 0, x->panel.nativeWindow(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                   reinterpret_cast<const char*>(&forged));
    xcb_change_property(other, XCB_PROP_MODE_APPEND, x->panel.nativeWindow(), property, XCB_ATOM_INTEGER, 32,
                        0, nullptr);
    xcb_flush(other);
    ASSERT_TRUE(waitUntil([&] { return time.has_value(); }));
    EXPECT_GE(static_cast<std::int32_t>(*time - before), 0);
}

TEST_F(X11FrameClockTests, APressThatAnotherProgramMadeUpNeverArrives) {
    show();
    x->desktop.movePointerTo(800, 15);
    xcb_connection_t* const other = x->desktop.connection().xcb();
    xcb_button_press_event_t forged{};
    forged.response_type = XCB_BUTTON_PRESS;
    forged.detail = 1;
    forged.time = 4294967290U;
    forged.root = x->desktop.connection().root();
    forged.event = x->panel.nativeWindow();
    forged.root_x = 800;
    forged.root_y = 15;
    forged.event_x = 300;
    forged.event_y = 15;
    forged.same_screen = 1;
    for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE}) {
        forged.response_type = static_cast<std::uint8_t>(type);
        xcb_send_event(other, 0, x->panel.nativeWindow(), XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&forged));
    }
    xcb_flush(other);
    x->desktop.settle();
    // A real press goes the same way and comes after it.
    timeOfAPress();
    EXPECT_EQ(x->island.presses, 1);
}

TEST_F(X11FrameClockTests, SeesItsOwnPixelsOnAPlainScreen) {
    show();
    ASSERT_TRUE(timeOfAFrame());
    EXPECT_EQ(clock->look(markedArea()), ScreenLook::asDrawn);
}

TEST_F(X11FrameClockTests, OneColourAloneProvesNothing) {
    show();
    ASSERT_TRUE(timeOfAFrame());
    const QRectF plain{x->island.width() / 2 - 90, 2, 60, 26};
    EXPECT_EQ(clock->look(plain), ScreenLook::unknown);
    EXPECT_EQ(clock->look(markedArea()), ScreenLook::asDrawn);
    EXPECT_EQ(clock->look(plain), ScreenLook::asDrawn) << "now it is known that the screen can be read";
}

TEST_F(X11FrameClockTests, WhatCannotBeReadIsUnknown) {
    show();
    ASSERT_TRUE(timeOfAFrame());
    EXPECT_EQ(clock->look({}), ScreenLook::unknown);
    EXPECT_EQ(clock->look({-5000, -5000, 10, 10}), ScreenLook::unknown);
    EXPECT_EQ(clock->look({0, 0, 30000, 30000}), ScreenLook::unknown);
}

TEST_F(X11FrameClockTests, SeesAWindowThatCoversIt) {
    show();
    ASSERT_TRUE(timeOfAFrame());
    ASSERT_EQ(clock->look(markedArea()), ScreenLook::asDrawn);
    {
        Bystander cover({.frame = {780, 10, 20, 10}, .isOverrideRedirect = true});
        // The panel goes up again where it can; this one fights for its place.
        cover.fight();
        EXPECT_TRUE(waitUntil([&] {
            cover.pump();
            cover.raise();
            x->desktop.settle();
            return clock->look(markedArea()) == ScreenLook::otherwise;
        }));
    }
    x->desktop.settle();
    EXPECT_TRUE(comesToShow(ScreenLook::asDrawn));
}

TEST_F(X11FrameClockTests, SeesItsOwnPixelsThroughACompositor) {
    show({.hasCompositor = true});
    ASSERT_TRUE(timeOfAFrame());
    EXPECT_TRUE(comesToShow(ScreenLook::asDrawn));
}

TEST_F(X11FrameClockTests, WorksAtAFractionalScale) {
    show({.scale = "1.5"});
    ASSERT_TRUE(timeOfAFrame());
    EXPECT_EQ(clock->look({x->island.width() / 2 - 30, 2, 60, 26}), ScreenLook::asDrawn);
}

} // namespace
} // namespace veslora

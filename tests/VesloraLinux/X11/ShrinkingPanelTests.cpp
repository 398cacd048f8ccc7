// SPDX-License-Identifier: MIT
// The panel on a Wayland desktop's X server: a window no larger than the island, and the pointer by its own
// events.
#include "VesloraLinux/X11/PanelPlacement.h"
#include "VesloraLinux/X11/PanelPointer.h"
#include "tests/VesloraLinux/Support/PanelDesktop.h"

#include <QSignalSpy>

#include <gtest/gtest.h>
#include <xcb/shape.h>

namespace veslora {
namespace {

using testing::Bystander;
using testing::handleEventsFor;
using testing::PanelDesktop;
using testing::waitUntil;

/// A panel in the middle of whose top edge the island is closed, and hovered over within eight points of it.
class ShrinkingPanel : public PanelDesktop {
  public:
    explicit ShrinkingPanel(const testing::DesktopOptions& options = {})
        : PanelDesktop(options, PanelForm::shrinking) {
        close();
    }

    void close() {
        island.setIsland({200, 32});
        panel.setZones({.clicks = {}, .hover = {closedZone()}});
    }
    void open() {
        island.setIsland({400, 160});
        panel.setZones({.clicks = {openZone()}, .hover = {}});
    }
    [[nodiscard]] Rect closedZone() const { return {frame.midX() - 108, frame.maxY() - 40, 216, 40}; }
    [[nodiscard]] Rect openZone() const { return {frame.midX() - 200, frame.maxY() - 160, 400, 160}; }
    [[nodiscard]] bool becomes(const QRect& native) {
        return waitUntil([&] { return nativeFrame() == native; });
    }

    /// Whether the pointer comes to be over that pixel of the screen.
    [[nodiscard]] bool isAt(QPoint pixel) {
        const ScreenInfo screen = screens.list().front();
        return waitUntil(
            [&] { return pointer.positionOn(screen) == PanelPlacement::placeOfPixel(screen, pixel); });
    }

    PanelPointer pointer{panel, desktop.scheduler()};
};

TEST(ShrinkingPanelTests, IsNoLargerThanTheHotZoneWhileClosed) {
    ShrinkingPanel x;
    x.show();
    EXPECT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
    EXPECT_EQ(x.shape(XCB_SHAPE_SK_INPUT), std::vector<QRect>{QRect(0, 0, 216, 40)});
}

TEST(ShrinkingPanelTests, GrowsWithItsShadowWhileOpenAndShrinksWhenThePictureHasFollowed) {
    ShrinkingPanel x;
    x.show();
    ASSERT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
    x.open();
    EXPECT_TRUE(x.becomes(QRect(576, 0, 448, 184)));
    EXPECT_EQ(x.shape(XCB_SHAPE_SK_INPUT), std::vector<QRect>{QRect(24, 0, 400, 160)});
    // Closed already, but still drawn large: nothing may be cut off yet.
    x.panel.setZones({.clicks = {}, .hover = {x.closedZone()}});
    handleEventsFor(300);
    EXPECT_GE(x.nativeFrame().height(), 160);
    x.island.setIsland({200, 32});
    EXPECT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
}

TEST(ShrinkingPanelTests, KeepsItsContentWhereItIsOnScreen) {
    ShrinkingPanel x({.scale = "1", .hasWindowManager = true, .hasCompositor = true, .monitors = {}});
    const Bystander window({.frame = {0, 0, 1600, 900}, .color = Qt::green, .isFullscreen = true});
    x.show();
    const auto looksRight = [&] {
        return x.desktop.pixelAt(701, 5) == QColor(Qt::red) &&
               x.desktop.pixelAt(898, 30) == QColor(Qt::red) &&
               x.desktop.pixelAt(697, 5) == QColor(Qt::green) &&
               x.desktop.pixelAt(903, 5) == QColor(Qt::green);
    };
    ASSERT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
    EXPECT_TRUE(waitUntil(looksRight));
    x.panel.setZones({.clicks = {x.openZone()}, .hover = {}});
    ASSERT_TRUE(x.becomes(QRect(576, 0, 448, 184)));
    EXPECT_TRUE(waitUntil(looksRight));
    EXPECT_EQ(x.island.size(), QSizeF(600, 200));
    x.desktop.movePointerTo(800, 10);
    x.desktop.click();
    EXPECT_TRUE(waitUntil([&] { return x.island.presses == 1; }));
    EXPECT_EQ(x.island.lastPress, QPointF(300, 10));
}

TEST(ShrinkingPanelTests, CoversWholePixelsAtAFraction) {
    ShrinkingPanel x({.scale = "1.5", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    x.show();
    EXPECT_TRUE(waitUntil([&] {
        const QRect frame = x.nativeFrame();
        return frame.left() <= 638 && frame.right() >= 961 && frame.top() == 0 && frame.height() == 60 &&
               frame.width() < 340;
    }));
}

TEST(ShrinkingPanelTests, KnowsThePointerOverItsOwnWindowOnly) {
    ShrinkingPanel x;
    QSignalSpy moved(&x.pointer, &Pointer::moved);
    const ScreenInfo screen = x.screens.list().front();
    x.pointer.setTracking(true);
    x.desktop.movePointerTo(100, 500);
    x.show();
    ASSERT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
    EXPECT_EQ(x.pointer.positionOn(screen), std::nullopt);
    x.desktop.movePointerTo(800, 10);
    EXPECT_TRUE(x.isAt(QPoint(800, 10)));
    EXPECT_TRUE(waitUntil([&] { return moved.count() >= 1; }));
    x.desktop.movePointerTo(800, 0);
    EXPECT_TRUE(x.isAt(QPoint(800, 0)));
    x.desktop.movePointerTo(100, 500);
    EXPECT_TRUE(waitUntil([&] { return x.pointer.positionOn(screen) == std::nullopt; }));
}

TEST(ShrinkingPanelTests, HearsOfNoPressElsewhereAndSaysSo) {
    ShrinkingPanel x;
    EXPECT_FALSE(x.pointer.hearsPressesOutside());
    QSignalSpy pressed(&x.pointer, &Pointer::pressedOutside);
    x.pointer.setWatchingPresses(true);
    x.show();
    x.desktop.movePointerTo(100, 500);
    x.desktop.click();
    handleEventsFor(100);
    EXPECT_EQ(pressed.count(), 0);
}

TEST(ShrinkingPanelTests, FollowsADragThatLeavesTheWindow) {
    ShrinkingPanel x;
    const ScreenInfo screen = x.screens.list().front();
    x.pointer.setTracking(true);
    x.show();
    ASSERT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
    x.desktop.movePointerTo(800, 10);
    x.desktop.press();
    EXPECT_TRUE(waitUntil([&] { return x.pointer.isButtonDown(); }));
    x.desktop.movePointerBy(300, 300);
    EXPECT_TRUE(x.isAt(QPoint(1100, 310)));
    x.desktop.release();
    EXPECT_TRUE(waitUntil([&] { return !x.pointer.isButtonDown(); }));
    EXPECT_TRUE(waitUntil([&] { return x.pointer.positionOn(screen) == std::nullopt; }));
}

TEST(ShrinkingPanelTests, HearsOfThePointerInAllOfItsZoneNotOnlyWhereItDraws) {
    ShrinkingPanel x;
    const ScreenInfo screen = x.screens.list().front();
    x.show();
    ASSERT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
    x.desktop.movePointerTo(694, 38);
    EXPECT_TRUE(x.isAt(QPoint(694, 38)));
}

TEST(ShrinkingPanelTests, TellsOfAReleaseOnceTheContentHasDealtWithIt) {
    ShrinkingPanel x;
    QSignalSpy released(&x.pointer, &Pointer::released);
    x.panel.setZones({.clicks = {x.closedZone()}, .hover = {}});
    x.show();
    x.desktop.movePointerTo(800, 10);
    x.desktop.press();
    ASSERT_TRUE(waitUntil([&] { return x.island.presses == 1; }));
    EXPECT_EQ(released.count(), 0);
    x.desktop.release();
    EXPECT_TRUE(waitUntil([&] { return released.count() == 1; }));
    EXPECT_FALSE(x.pointer.isButtonDown());
}

TEST(ShrinkingPanelTests, CountsAHiddenPanelAsLeft) {
    ShrinkingPanel x;
    const ScreenInfo screen = x.screens.list().front();
    x.show();
    ASSERT_TRUE(x.becomes(QRect(692, 0, 216, 40)));
    x.desktop.movePointerTo(800, 10);
    ASSERT_TRUE(waitUntil([&] { return x.pointer.positionOn(screen).has_value(); }));
    x.panel.orderOut();
    EXPECT_EQ(x.pointer.positionOn(screen), std::nullopt);
}

} // namespace
} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Panel.h"
#include "tests/VesloraLinux/Support/PanelDesktop.h"

#include <gtest/gtest.h>
#include <xcb/shape.h>

namespace veslora {
namespace {

using testing::Bystander;
using testing::handleEventsFor;
using testing::PanelDesktop;
using testing::waitUntil;

const std::vector<std::string> twoMonitors{"HDMI-1 800/200x900/225+0+0", "eDP-1 800/200x600/150+800+0"};

TEST(X11PanelTests, NeverTakesTheFocus) {
    PanelDesktop x;
    Bystander window({.frame = {0, 0, 1600, 900}});
    ASSERT_TRUE(waitUntil([&] { return window.hasFocus(); }));
    const int losses = window.focusLosses();
    x.show();
    EXPECT_TRUE(window.hasFocus());
    x.panel.setZones({.clicks = {x.islandZone()}, .hover = {}});
    x.desktop.movePointerTo(800, 10);
    x.desktop.click();
    EXPECT_TRUE(waitUntil([&] { return x.island.presses == 1; }));
    EXPECT_TRUE(window.hasFocus());
    x.panel.setZones({});
    x.panel.orderOut();
    handleEventsFor(50);
    x.show();
    handleEventsFor(50);
    x.panel.orderOut();
    handleEventsFor(50);
    EXPECT_TRUE(window.hasFocus());
    EXPECT_EQ(window.focusLosses(), losses);
    EXPECT_EQ(x.desktop.rootValues("_NET_ACTIVE_WINDOW"), std::vector<std::uint32_t>{window.window()});
    EXPECT_EQ(x.desktop.rootValues("_NET_CLIENT_LIST"), std::vector<std::uint32_t>{window.window()});
}

TEST(X11PanelTests, TakesClicksInItsZonesAndLetsAllOthersThrough) {
    PanelDesktop x;
    Bystander window({.frame = {0, 0, 1600, 900}, .isFullscreen = true});
    x.show();
    // Closed: the island takes nothing at all.
    x.desktop.movePointerTo(800, 10);
    x.desktop.click();
    EXPECT_TRUE(waitUntil([&] { return window.presses() == 1; }));
    x.panel.setZones({.clicks = {x.islandZone()}, .hover = {}});
    x.desktop.click();
    EXPECT_TRUE(waitUntil([&] { return x.island.presses == 1; }));
    EXPECT_EQ(x.island.lastPress, QPointF(300, 10));
    // Beside and below the zone, but inside the window; then the zone's own outermost pixels.
    int presses = 1;
    for (const QPoint outside : {QPoint(699, 0), QPoint(900, 0), QPoint(800, 32), QPoint(501, 150)}) {
        x.desktop.movePointerTo(outside.x(), outside.y());
        x.desktop.click();
        ++presses;
        EXPECT_TRUE(waitUntil([&] { return window.presses() == presses; }))
            << outside.x() << " " << outside.y();
    }
    EXPECT_EQ(x.island.presses, 1);
    presses = 1;
    for (const QPoint inside : {QPoint(700, 0), QPoint(899, 31)}) {
        x.desktop.movePointerTo(inside.x(), inside.y());
        x.desktop.click();
        ++presses;
        EXPECT_TRUE(waitUntil([&] { return x.island.presses == presses; }))
            << inside.x() << " " << inside.y();
    }
    x.panel.setZones({});
    x.desktop.click();
    EXPECT_TRUE(waitUntil([&] { return window.presses() == 6; }));
}

TEST(X11PanelTests, HoverZonesLetClicksThrough) {
    PanelDesktop x;
    x.show();
    x.panel.setZones({.clicks = {}, .hover = {x.islandZone()}});
    EXPECT_TRUE(x.shape(XCB_SHAPE_SK_INPUT).empty());
    x.panel.setZones({.clicks = {x.islandZone()}, .hover = {{0, 0, 1600, 900}}});
    EXPECT_EQ(x.shape(XCB_SHAPE_SK_INPUT), std::vector<QRect>{QRect(200, 0, 200, 32)});
}

TEST(X11PanelTests, LiesWhereItIsPlacedAtEveryScale) {
    for (const auto& [scale, ratio] : {std::pair("1", 1.0), std::pair("1.5", 1.5), std::pair("2", 2.0)}) {
        PanelDesktop x({.scale = scale, .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
        x.show();
        const QRect window = x.nativeFrame();
        EXPECT_EQ(window.top(), 0);
        EXPECT_LE(window.left(), x.frame.minX() * ratio);
        EXPECT_GE(window.left() + window.width(), x.frame.maxX() * ratio);
        EXPECT_GE(window.height(), 200 * ratio);
        x.panel.setZones({.clicks = {x.islandZone()}, .hover = {}});
        const auto shape = x.shape(XCB_SHAPE_SK_INPUT);
        ASSERT_EQ(shape.size(), 1U);
        const int left = static_cast<int>(std::floor(800 - 100 * ratio + 1e-6));
        const int right = static_cast<int>(std::ceil(800 + 100 * ratio - 1e-6));
        EXPECT_EQ(shape.front().translated(window.topLeft()),
                  QRect(left, 0, right - left, static_cast<int>(32 * ratio)))
            << scale;
        // What is drawn lies under what takes the clicks.
        EXPECT_TRUE(waitUntil([&] { return x.desktop.pixelAt(left + 2, 5) == QColor(Qt::red); })) << scale;
        EXPECT_NE(x.desktop.pixelAt(left - 3, 5), QColor(Qt::red));
        EXPECT_EQ(x.desktop.pixelAt(right - 3, 5), QColor(Qt::red));
    }
}

TEST(X11PanelTests, MovesToAnotherScreen) {
    PanelDesktop x(
        {.scale = "1.5", .hasWindowManager = false, .hasCompositor = false, .monitors = twoMonitors});
    x.show();
    x.panel.setZones({.clicks = {x.islandZone()}, .hover = {}});
    EXPECT_LT(x.nativeFrame().left(), 0);
    x.placeOn(x.screens.list()[1]);
    x.panel.setZones({.clicks = {x.islandZone()}, .hover = {}});
    const QRect window = x.nativeFrame();
    EXPECT_EQ(window.top(), 0);
    const auto shape = x.shape(XCB_SHAPE_SK_INPUT);
    ASSERT_EQ(shape.size(), 1U);
    EXPECT_EQ(shape.front().translated(window.topLeft()), QRect(1050, 0, 300, 48));
    x.desktop.movePointerTo(1200, 10);
    x.desktop.click();
    EXPECT_TRUE(waitUntil([&] { return x.island.presses == 1; }));
    EXPECT_NEAR(x.island.lastPress.x(), 300, 0.7);
}

TEST(X11PanelTests, LiesRightOnScreensOfDifferentScale) {
    testing::DesktopOptions options;
    options.hasWindowManager = false;
    options.monitors = twoMonitors;
    options.screenScales = "HDMI-1=1;eDP-1=1.5";
    PanelDesktop x(options);
    x.show();
    for (const auto& [index, left] : {std::pair(0U, 300), std::pair(1U, 1050)}) {
        const ScreenInfo screen = x.screens.list()[index];
        const int width = static_cast<int>(200 * screen.scale);
        const int height = static_cast<int>(32 * screen.scale);
        x.placeOn(screen);
        x.panel.setZones({.clicks = {x.islandZone()}, .hover = {}});
        const auto shape = x.shape(XCB_SHAPE_SK_INPUT);
        ASSERT_EQ(shape.size(), 1U);
        EXPECT_EQ(shape.front().translated(x.nativeFrame().topLeft()), QRect(left, 0, width, height));
        const int leftEdge = left;
        EXPECT_TRUE(
            waitUntil([&] { return x.desktop.pixelAt(leftEdge + 2, height - 2) == QColor(Qt::red); }));
        EXPECT_NE(x.desktop.pixelAt(left - 2, 5), QColor(Qt::red));
        EXPECT_NE(x.desktop.pixelAt(left + 5, height + 1), QColor(Qt::red));
    }
}

TEST(X11PanelTests, StaysOnAScreenThatChangesItsSize) {
    PanelDesktop x({.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    x.show();
    QObject::connect(&x.screens, &Screens::changed, [&] { x.placeOn(x.screens.list().front()); });
    x.desktop.xrandr({"--newmode", "small", "0", "1200", "0", "0", "1200", "700", "0", "0", "700"});
    x.desktop.xrandr({"--addmode", "screen", "small"});
    x.desktop.xrandr({"--output", "screen", "--mode", "small"});
    EXPECT_TRUE(waitUntil([&] { return x.nativeFrame() == QRect(300, 0, 600, 200); }));
}

TEST(X11PanelTests, IsCutToTheIslandWhereNothingBlendsWindows) {
    PanelDesktop x;
    const Bystander window({.frame = {0, 0, 1600, 900}, .color = Qt::green, .isFullscreen = true});
    x.show();
    EXPECT_EQ(x.shape(XCB_SHAPE_SK_BOUNDING), std::vector<QRect>{QRect(200, 0, 200, 32)});
    EXPECT_TRUE(waitUntil([&] { return x.desktop.pixelAt(800, 10) == QColor(Qt::red); }));
    EXPECT_EQ(x.desktop.pixelAt(690, 10), QColor(Qt::green));
    EXPECT_EQ(x.desktop.pixelAt(800, 40), QColor(Qt::green));
    // It follows the picture, frame by frame.
    x.island.setIsland({400, 120});
    EXPECT_TRUE(waitUntil([&] { return x.desktop.pixelAt(610, 110) == QColor(Qt::red); }));
    EXPECT_EQ(x.desktop.pixelAt(590, 110), QColor(Qt::green));
    x.island.setIsland({200, 32});
    EXPECT_TRUE(waitUntil([&] { return x.desktop.pixelAt(610, 110) == QColor(Qt::green); }));
    EXPECT_EQ(x.desktop.pixelAt(800, 10), QColor(Qt::red));
}

TEST(X11PanelTests, ShowsNoBlackWhenACompositorComesDiesAndComesBack) {
    PanelDesktop x;
    const Bystander window({.frame = {0, 0, 1600, 900}, .color = Qt::green, .isFullscreen = true});
    x.show();
    const auto looksRight = [&] {
        return x.desktop.pixelAt(800, 10) == QColor(Qt::red) &&
               x.desktop.pixelAt(690, 10) == QColor(Qt::green) &&
               x.desktop.pixelAt(800, 100) == QColor(Qt::green);
    };
    const auto isCut = [&] {
        return x.shape(XCB_SHAPE_SK_BOUNDING) == std::vector<QRect>{QRect(200, 0, 200, 32)};
    };
    EXPECT_TRUE(waitUntil(looksRight));
    for (int round = 0; round < 2; ++round) {
        x.desktop.startCompositor();
        EXPECT_TRUE(waitUntil([&] { return !isCut(); }));
        EXPECT_TRUE(waitUntil(looksRight));
        x.desktop.killCompositor();
        EXPECT_TRUE(waitUntil(isCut));
        EXPECT_TRUE(waitUntil(looksRight));
    }
}

TEST(X11PanelTests, BlendsFromTheStartWhereACompositorRuns) {
    PanelDesktop x({.scale = "1", .hasWindowManager = true, .hasCompositor = true, .monitors = {}});
    const Bystander window({.frame = {0, 0, 1600, 900}, .color = Qt::green, .isFullscreen = true});
    x.show();
    EXPECT_TRUE(waitUntil([&] {
        return x.desktop.pixelAt(800, 10) == QColor(Qt::red) &&
               x.desktop.pixelAt(800, 100) == QColor(Qt::green);
    }));
    EXPECT_EQ(x.shape(XCB_SHAPE_SK_BOUNDING), std::vector<QRect>{QRect(0, 0, 600, 200)});
}

TEST(X11PanelTests, DrawsNothingWhileNothingMoves) {
    PanelDesktop x;
    x.show();
    handleEventsFor(100);
    const int frames = x.island.frames;
    int drawn = 0;
    QObject::connect(x.panel.window(), &QQuickWindow::afterRendering, [&] { ++drawn; });
    x.panel.setZones({.clicks = {x.islandZone()}, .hover = {}});
    x.panel.setZones({});
    x.desktop.movePointerTo(800, 10);
    x.desktop.movePointerBy(300, 300);
    handleEventsFor(200);
    EXPECT_EQ(x.island.frames, frames);
    EXPECT_EQ(drawn, 0);
}

TEST(X11PanelTests, SwapsItsContentAndLetsTheOldOneGo) {
    PanelDesktop x;
    x.show();
    {
        testing::TestIsland other;
        x.panel.setContent(&other);
        EXPECT_EQ(x.island.parentItem(), nullptr);
        EXPECT_EQ(other.parentItem(), x.panel.window()->contentItem());
        EXPECT_EQ(other.size(), QSizeF(600, 200));
        EXPECT_TRUE(waitUntil([&] { return other.frames > 0; }));
    }
    // Gone by itself meanwhile.
    x.panel.setContent(&x.island);
    EXPECT_EQ(x.island.parentItem(), x.panel.window()->contentItem());
    x.panel.setContent(nullptr);
    EXPECT_EQ(x.island.parentItem(), nullptr);
    x.panel.setContent(&x.island);
}

TEST(X11PanelTests, IgnoresAScreenThatHasGone) {
    PanelDesktop x({.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    x.show();
    ScreenInfo gone = x.screens.list().front();
    gone.name = "none";
    x.panel.place(gone, {0, 0, 100, 100});
    EXPECT_EQ(x.nativeFrame(), QRect(500, 0, 600, 200));
}

} // namespace
} // namespace veslora

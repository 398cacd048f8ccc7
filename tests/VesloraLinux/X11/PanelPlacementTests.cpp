// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/PanelPlacement.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

ScreenInfo screenOf(double width, double height, double scale) {
    ScreenInfo screen;
    screen.metrics.frame = {0, 0, width, height};
    screen.scale = scale;
    return screen;
}

TEST(PanelPlacementTests, TurnsTheScreensSpaceUpsideDown) {
    const ScreenInfo screen = screenOf(1600, 900, 1);
    const QRect window = PanelPlacement::windowFor(screen, {233, 650, 1134, 250});
    EXPECT_EQ(window, QRect(233, 0, 1134, 250));
    EXPECT_EQ(PanelPlacement::contentPlace(screen, {233, 650, 1134, 250}, window), QPointF(0, 0));
}

TEST(PanelPlacementTests, HoldsAnAreaThatLiesBetweenPoints) {
    const ScreenInfo screen = screenOf(911, 512, 1);
    const Rect area{10.5, 400.25, 100, 111.75};
    const QRect window = PanelPlacement::windowFor(screen, area);
    EXPECT_EQ(window, QRect(10, 0, 101, 112));
    EXPECT_EQ(PanelPlacement::contentPlace(screen, area, window), QPointF(0.5, 0));
}

TEST(PanelPlacementTests, BeginsOnAWholeNativePixel) {
    for (const double scale : {1.25, 1.5, 1.75, 2.0, 1.125}) {
        const ScreenInfo screen = screenOf(1600 / scale, 900 / scale, scale);
        const double width = 533;
        const Rect area{screen.metrics.frame.midX() - width / 2, screen.metrics.frame.maxY() - 200, width,
                        200};
        const QRect window = PanelPlacement::windowFor(screen, area);
        EXPECT_NEAR(std::remainder(window.x() * scale, 1), 0, 1e-9) << scale;
        EXPECT_LE(window.x(), area.minX());
        EXPECT_GE(window.x() + window.width(), area.maxX());
        const QPointF content = PanelPlacement::contentPlace(screen, area, window);
        EXPECT_NEAR(window.x() + content.x(), area.minX(), 1e-9);
        EXPECT_EQ(content.y(), 0);
    }
}

TEST(PanelPlacementTests, RoundsZonesToTheNativePixelsOfWhichTheyHoldTheMiddle) {
    const ScreenInfo screen = screenOf(800, 450, 1.5);
    const QRect window(100, 0, 600, 200);
    const QRegion region = PanelPlacement::nativeRegion(screen, {{300.3, 400.5, 100, 49.5}}, window);
    // 200.3 to 300.3 points from the window's left and 0 to 49.5 from its top, times 1.5.
    EXPECT_EQ(region, QRegion(QRect(300, 0, 150, 74)));
}

TEST(PanelPlacementTests, APixelTakesPressesExactlyWhereThePointerOnItIsInTheZone) {
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 2.75}) {
        // Odd sizes put the zone's sides on halves and thirds of a pixel.
        for (const int width : {1365, 1366, 1600, 1601, 1919, 2561}) {
            const ScreenInfo screen = screenOf(width / scale, 901 / scale, scale);
            const Rect zone{width / scale / 2 - 108, 901 / scale - 33.3, 216, 41.3};
            const QRect window(0, 0, width, 901);
            const QRegion region = PanelPlacement::nativeRegion(screen, {zone}, window);
            ASSERT_FALSE(region.isEmpty());
            for (int x = 0; x < width; ++x) {
                const Point place = PanelPlacement::placeOfPixel(screen, {x, 4});
                ASSERT_EQ(region.contains(QPoint(x, 4)), zone.contains(place))
                    << scale << " " << width << " " << x;
            }
            for (int y = 0; y < 200; ++y) {
                const Point place = PanelPlacement::placeOfPixel(screen, {width / 2, y});
                ASSERT_EQ(region.contains(QPoint(width / 2, y)), zone.contains(place)) << scale << " " << y;
            }
        }
    }
}

TEST(PanelPlacementTests, CutsZonesToTheWindowAndKeepsThemApart) {
    const ScreenInfo screen = screenOf(800, 450, 1);
    const QRect window(100, 0, 600, 200);
    const QRegion region =
        PanelPlacement::nativeRegion(screen, {{0, 0, 800, 450}, {120, 400, 10, 10}}, window);
    EXPECT_EQ(region, QRegion(QRect(0, 0, 600, 200)));
    EXPECT_TRUE(PanelPlacement::nativeRegion(screen, {}, window).isEmpty());
    EXPECT_TRUE(PanelPlacement::nativeRegion(screen, {{0, 0, 50, 50}}, window).isEmpty());
    EXPECT_EQ(
        PanelPlacement::nativeRegion(screen, {{110, 440, 5, 10}, {130, 440, 5, 10}}, window).rectCount(), 2);
}

TEST(PanelPlacementTests, FollowsAnOutlineInNativePixels) {
    QPainterPath outline;
    outline.addRect(10, 0, 100, 30);
    EXPECT_EQ(PanelPlacement::nativeOutline(outline, QPointF(0.5, 0), 2), QRegion(QRect(21, 0, 200, 60)));
    EXPECT_TRUE(PanelPlacement::nativeOutline(QPainterPath(), {}, 2).isEmpty());
}

TEST(PanelPlacementTests, PutsAnOutlineBackIntoTheScreensSpace) {
    QPainterPath outline;
    outline.addRect(10, 0, 100, 30);
    EXPECT_EQ(PanelPlacement::outlineBounds(outline, {200, 650, 400, 250}), (Rect{210, 870, 100, 30}));
}

TEST(PanelPlacementTests, JoinsAndCutsRectangles) {
    EXPECT_EQ(PanelPlacement::boundsOf({{0, 0, 10, 10}, {20, -5, 5, 5}}), (Rect{0, -5, 25, 15}));
    EXPECT_EQ(PanelPlacement::boundsOf({}), Rect{});
    EXPECT_EQ(PanelPlacement::intersection({0, 0, 10, 10}, {5, 5, 10, 10}), (Rect{5, 5, 5, 5}));
    EXPECT_EQ(PanelPlacement::intersection({0, 0, 10, 10}, {20, 20, 10, 10}).size(), (Size{0, 0}));
}

} // namespace
} // namespace veslora

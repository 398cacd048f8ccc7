// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/StyleImages.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/AnimationTime.h"
#include "tests/VesloraUI/Scene.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(AccentColors, AnUnknownTextCountsAsLime) {
    EXPECT_EQ(AccentColors::fromStored(std::nullopt), Accent::lime);
    EXPECT_EQ(AccentColors::fromStored("Lime"), Accent::lime);
    EXPECT_EQ(AccentColors::fromStored("pink"), Accent::lime);
    for (const Accent accent : AccentColors::allCases) {
        EXPECT_EQ(AccentColors::fromStored(AccentColors::rawValue(accent)), accent);
    }
}

TEST(AccentColors, HaveNamesAndColors) {
    EXPECT_EQ(AccentColors::displayName(Accent::cyan), "Cyan");
    EXPECT_EQ(AccentColors::color(Accent::lime), QColor(200, 255, 61));
    EXPECT_EQ(AccentColors::color(Accent::cyan), QColor(61, 224, 255));
    EXPECT_EQ(AccentColors::color(Accent::amber), QColor(255, 176, 32));
    EXPECT_EQ(AccentColors::color(Accent::white), QColor(242, 242, 242));
    EXPECT_EQ(AccentColors::urgentColor(Accent::lime), QColor(255, 77, 46));
    EXPECT_EQ(AccentColors::urgentColor(Accent::cyan), QColor(255, 77, 106));
    EXPECT_EQ(AccentColors::urgentColor(Accent::amber), QColor(255, 61, 61));
    EXPECT_EQ(AccentColors::urgentColor(Accent::white), QColor(255, 77, 46));
}

TEST(VesloraStyle, LevelColorsAreHeldToTheirRange) {
    EXPECT_EQ(VesloraStyle::levelColor(-3), VesloraStyle::levelColor(0));
    EXPECT_EQ(VesloraStyle::levelColor(7), VesloraStyle::levelColor(1));
    EXPECT_EQ(VesloraStyle::levelColor(0).rgb(), VesloraStyle::levelLow().rgb());
    EXPECT_EQ(VesloraStyle::levelColor(0.5).rgb(), VesloraStyle::levelMid().rgb());
    EXPECT_EQ(VesloraStyle::levelColor(1).rgb(), VesloraStyle::levelHigh().rgb());
}

TEST(VesloraStyle, AnyReadingAboveNothingLightsATick) {
    EXPECT_EQ(VesloraStyle::litSegments(0.01, 10), 1);
    EXPECT_EQ(VesloraStyle::litSegments(0, 10), 0);
    EXPECT_EQ(VesloraStyle::litSegments(1, 10), 10);
    EXPECT_EQ(VesloraStyle::litSegments(-1, 10), 0);
    EXPECT_EQ(VesloraStyle::litSegments(2, 10), 10);
    EXPECT_EQ(VesloraStyle::litSegments(std::numeric_limits<double>::quiet_NaN(), 10), 0);
}

TEST(VesloraStyle, ATicksColorBelongsToItsPlace) {
    EXPECT_EQ(VesloraStyle::segmentColor(0, 1, false), VesloraStyle::levelColor(0));
    EXPECT_EQ(VesloraStyle::segmentColor(0, 1, true), VesloraStyle::levelColor(1));
    EXPECT_EQ(VesloraStyle::segmentColor(0, 20, true), VesloraStyle::levelColor(1));
    EXPECT_EQ(VesloraStyle::segmentColor(19, 20, false), VesloraStyle::levelColor(1));
}

TEST(StyleImages, TheShadowIsHalfOpaqueInTheMiddleAndGoneAtItsEdge) {
    StyleImages images;
    QSize size;
    const QImage shadow = images.requestImage("shadow", &size, {});
    ASSERT_FALSE(shadow.isNull());
    EXPECT_GT(size.width(), 2 * StyleImages::shadowBorder);
    const QPoint middle(shadow.width() / 2, shadow.height() / 2);
    EXPECT_NEAR(qAlpha(shadow.pixel(middle)), 128, 2);
    EXPECT_LE(qAlpha(shadow.pixel(middle.x(), 0)), 4);
    EXPECT_NEAR(qAlpha(shadow.pixel(middle.x(), StyleImages::shadowMargin)), 64, 6)
        << "half of it at the shape's edge";
}

TEST(StyleImages, EverySymbolOfTheSetCanBeDrawnInAnyColor) {
    StyleImages images;
    for (const char* name : {"gearshape", "sparkle", "rectangle.topthird.inset.filled"}) {
        const QImage image = images.requestImage(QStringLiteral("symbol/%1/ff0000").arg(QLatin1String(name)),
                                                 nullptr, {48, 48});
        int red = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                red += image.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
            }
        }
        EXPECT_GT(red, 50) << name;
    }
}

TEST(StyleImages, AnUnknownNameGivesNothing) {
    StyleImages images;
    EXPECT_TRUE(images.requestImage("nonsense", nullptr, {}).isNull());
    EXPECT_TRUE(images.requestImage("glow/8", nullptr, {}).isNull());
}

TEST(KeyButton, HasTheSizeOfItsTextButAtLeastItsLeast) {
    Scene scene;
    scene.show("Style/KeyButton.qml", {{"text", "x"}});
    const auto* key = qobject_cast<QQuickItem*>(&scene.view());
    EXPECT_EQ(key->implicitHeight(), 26);
    EXPECT_EQ(key->implicitWidth(), 34);
    scene.view().setProperty("text", "A longer text");
    EXPECT_GT(key->implicitWidth(), 80);
}

TEST(Fuse, DrawsNothingForANegativeFraction) {
    Scene scene;
    scene.show("Style/Fuse.qml", {{"fraction", -0.5}}, {100, 4});
    const auto* bar = qobject_cast<QQuickItem*>(&scene.view())->childItems().at(0);
    EXPECT_EQ(bar->width(), 0);
}

/// A fuse of 128 points, three quarters of which are left, and its bar.
class FuseTest : public ::testing::Test {
  protected:
    FuseTest() {
        time.install();
        scene.show("Style/Fuse.qml", {{"fraction", 0.75}, {"width", 128}}, {128, 4});
        bar = qobject_cast<QQuickItem*>(&scene.view())->childItems().at(0);
    }
    void burnTo(double width) { scene.view().setProperty("fraction", width / 128); }

    testing::AnimationTime time;
    Scene scene;
    const QQuickItem* bar = nullptr;
};

TEST_F(FuseTest, IsThereAtOnceWhenItAppears) {
    EXPECT_EQ(bar->width(), 96);
}

TEST_F(FuseTest, BurnsDownEvenlyInAQuarterOfASecond) {
    burnTo(46);
    EXPECT_EQ(bar->width(), 96);
    time.advance(50);
    EXPECT_DOUBLE_EQ(bar->width(), 86);
    time.advance(150);
    EXPECT_DOUBLE_EQ(bar->width(), 56);
    time.advance(50);
    EXPECT_EQ(bar->width(), 46);
}

TEST_F(FuseTest, WhatWouldNotBeSeenToMoveIsTakenAtOnce) {
    for (const double width : {95.5, 94.5, 94.0, 95.0}) {
        burnTo(width);
        EXPECT_EQ(bar->width(), width);
    }
    burnTo(93.5);
    EXPECT_EQ(bar->width(), 95);
}

TEST_F(FuseTest, ATargetThatMovesOnIsFollowedFromWhereItIs) {
    burnTo(46);
    time.advance(125);
    EXPECT_DOUBLE_EQ(bar->width(), 71);
    burnTo(70.5);
    EXPECT_DOUBLE_EQ(bar->width(), 71) << "while it moves, a small step makes it no jump either";
    time.advance(125);
    EXPECT_DOUBLE_EQ(bar->width(), 70.75);
    time.advance(125);
    EXPECT_EQ(bar->width(), 70.5);
}

TEST(SegmentedMeter, LightsItsTicksFromTheLeft) {
    Scene scene;
    scene.show("Style/SegmentedMeter.qml", {{"fraction", 0.25}, {"segments", 8}}, {100, 7});
    int lit = 0;
    for (const QQuickItem* tick : qobject_cast<QQuickItem*>(&scene.view())->childItems()) {
        lit += tick->property("color").value<QColor>() == AccentColors::color(Accent::lime) ? 1 : 0;
    }
    EXPECT_EQ(lit, 2);
}

} // namespace
} // namespace veslora

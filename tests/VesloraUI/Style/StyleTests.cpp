// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/SegmentRow.h"
#include "VesloraUI/Style/StyleImages.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

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

/// Views that get their size, and with it their value, after they were made: as in the island.
class FirstFrameTest : public ::testing::Test {
  protected:
    FirstFrameTest() { time.install(); }
    void TearDown() override { scene.close(); }

    /// How much of a row of pixels is as bright as that.
    [[nodiscard]] int brightPixels(int y, int brightness) const {
        const QImage picture = scene.picture();
        int bright = 0;
        for (int x = 0; x < picture.width(); ++x) {
            bright += qGreen(picture.pixel(x, y)) >= brightness ? 1 : 0;
        }
        return bright;
    }

    testing::AnimationTime time;
    Scene scene;
};

TEST_F(FirstFrameTest, AFuseThatComesIntoViewDoesNotGrow) {
    scene.showText("Item { id: view; Fuse { tint: 'white'; fraction: 0.5; height: 4; width: view.width } }",
                   {200, 20});
    EXPECT_NEAR(brightPixels(2, 250), 100, 2);
}

TEST_F(FirstFrameTest, AMeterThatComesIntoViewDoesNotFadeIn) {
    scene.showText(
        "Item { id: view; SegmentedMeter { tint: 'white'; fraction: view.width > 0 ? 0.5 : 0; segments: 10;"
        " height: 6; width: view.width } }",
        {200, 20});
    EXPECT_NEAR(brightPixels(3, 250), 91, 8);
    scene.view().setProperty("width", 0);
    scene.advance(0);
    EXPECT_EQ(brightPixels(3, 250), 0) << "it has no width";
}

TEST_F(FirstFrameTest, AMeterChangesItsColorsInAMomentOnceItWasSeen) {
    scene.showText("SegmentedMeter { tint: 'white'; fraction: 1; segments: 2; height: 6; width: 100 }",
                   {100, 20});
    EXPECT_GT(brightPixels(3, 250), 90);
    scene.view().setProperty("fraction", 0);
    EXPECT_GT(brightPixels(3, 250), 90);
    time.advance(75);
    EXPECT_EQ(brightPixels(3, 250), 0);
    EXPECT_GT(brightPixels(3, 60), 90);
    time.advance(75);
    EXPECT_EQ(brightPixels(3, 60), 0);
}

TEST_F(FirstFrameTest, DigitsThatComeIntoViewDoNotRoll) {
    scene.showText("Item { id: view; RollingTime { remaining: view.width > 0 ? 671 : 0; size: 30 } }",
                   {200, 60});
    EXPECT_EQ(scene.texts(), QStringList({"1", "1", ":", "1", "1"}));
    EXPECT_EQ(scene.itemWith("text", "1")->y(), 0);
}

TEST_F(FirstFrameTest, AUsageBarThatComesIntoViewDoesNotFadeIn) {
    scene.showText(
        "Item { id: view; ClaudeUsageMeter { width: view.width; height: 14; labelWidth: 34; figureWidth: 36;"
        " segments: 20; meterHeight: 7; reading: ({label: '', percent: '', fraction: view.width > 0 ? 1 : "
        "0}) } }",
        {230, 20});
    EXPECT_GT(brightPixels(7, 76), 100) << "the least green of a lit tick is 77";
}

TEST_F(FirstFrameTest, ALampThatComesIntoViewDoesNotFadeOut) {
    scene.showText("Item { id: view; StatusLight { tint: 'white'; isOn: view.width <= 0; x: 20; y: 7 } }",
                   {60, 20});
    EXPECT_EQ(brightPixels(10, 52), 0);
    EXPECT_EQ(brightPixels(10, 45), 6);
}

/// WCAG's contrast of two opaque colours.
double contrast(const QColor& first, const QColor& second) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double channel) {
            return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(first), luminance(second)});
    return (light + 0.05) / (dark + 0.05);
}

TEST(KeyButton, ADimmedKeysTextCanStillBeRead) {
    Scene scene;
    // A letter of full ink in the middle of the face.
    scene.showText("Item { KeyButton { width: 60; text: '█'; isPrimary: true; isDimmed: true } }", {60, 26});
    const QImage picture = scene.picture();
    const QColor face = picture.pixelColor(10, 13);
    const QColor letter = picture.pixelColor(30, 13);
    EXPECT_EQ(face.rgb(), VesloraStyle::dimmed(AccentColors::color(Accent::lime)).rgb());
    EXPECT_GE(contrast(face, letter), 3.25)
        << face.name().toStdString() << " " << letter.name().toStdString();
}

TEST(SegmentedMeter, LightsItsTicksFromTheLeft) {
    Scene scene;
    scene.show("Style/SegmentedMeter.qml", {{"fraction", 0.25}, {"segments", 8}}, {100, 7});
    const auto lit = std::ranges::count(qobject_cast<SegmentRow*>(&scene.view())->colors(),
                                        AccentColors::color(Accent::lime));
    EXPECT_EQ(lit, 2);
}

TEST(SegmentRow, TicksFillTheWidthWithEqualGaps) {
    using Tick = SegmentRow::Tick;
    EXPECT_THAT(SegmentRow::ticks(16, 3, 2), ::testing::ElementsAre(Tick{0, 4}, Tick{6, 4}, Tick{12, 4}));
    EXPECT_THAT(SegmentRow::ticks(15, 3, 2), ::testing::ElementsAre(Tick{0, 3}, Tick{5, 4}, Tick{11, 4}));
    EXPECT_THAT(SegmentRow::ticks(9, 1, 2), ::testing::ElementsAre(Tick{0, 9}));
    EXPECT_THAT(SegmentRow::ticks(5, 3, 2), ::testing::ElementsAre(Tick{0, 1}, Tick{2, 1}, Tick{4, 1}))
        << "a tick needs a pixel";
    EXPECT_TRUE(SegmentRow::ticks(0, 3, 2).empty());
    EXPECT_TRUE(SegmentRow::ticks(9, 0, 2).empty());
}

TEST(PixelItem, RoundsToTheNearestPixelAlsoWhereARoundingErrorHidesTheHalf) {
    EXPECT_EQ(PixelItem::nearestPixel(2.49), 2);
    EXPECT_EQ(PixelItem::nearestPixel(2.5), 3);
    EXPECT_EQ(PixelItem::nearestPixel(2.4999), 3);
    EXPECT_EQ(PixelItem::nearestPixel(-0.2), 0);
}

} // namespace
} // namespace veslora

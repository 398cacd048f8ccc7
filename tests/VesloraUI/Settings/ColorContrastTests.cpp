// SPDX-License-Identifier: MIT
// The measure of contrast, and colours that are made to reach it.
#include "VesloraUI/Settings/ColorContrast.h"
#include "VesloraUI/Style/Accent.h"

#include <gtest/gtest.h>

namespace veslora::ColorContrast {
namespace {

TEST(ColorContrastTests, MeasuresAsTheGuidelinesDo) {
    EXPECT_DOUBLE_EQ(luminance(Qt::black), 0);
    EXPECT_NEAR(luminance(Qt::white), 1, 1e-9);
    EXPECT_NEAR(luminance(QColor(255, 0, 0)), 0.2126, 1e-4);
    EXPECT_NEAR(ratio(Qt::black, Qt::white), 21, 1e-6);
    EXPECT_NEAR(ratio(Qt::white, Qt::black), 21, 1e-6);
    EXPECT_NEAR(ratio(Qt::red, Qt::red), 1, 1e-9);
    // The well-known greys that just reach, and just miss, the usual demand on white.
    EXPECT_GE(ratio(QColor("#767676"), Qt::white), 4.5);
    EXPECT_LT(ratio(QColor("#777777"), Qt::white), 4.5);
}

TEST(ColorContrastTests, AColourThatIsReadableStaysAsItIs) {
    EXPECT_EQ(readable(QColor("#767676"), {Qt::white}, 4.5), QColor("#767676"));
    EXPECT_EQ(readable(QColor("#ffb020"), {}, 21), QColor("#ffb020"));
}

TEST(ColorContrastTests, EveryAccentIsMadeReadableOnEveryGround) {
    for (const Accent accent : {Accent::lime, Accent::cyan, Accent::amber, Accent::white}) {
        const QColor color = AccentColors::color(accent);
        for (const QList<QColor>& grounds :
             {QList<QColor>{Qt::white, QColor("#f2f2f4")}, QList<QColor>{Qt::black, QColor("#48484a")}}) {
            for (const double wanted : {3.0, 4.5, 7.0}) {
                const QColor found = readable(color, grounds, wanted);
                for (const QColor& ground : grounds) {
                    EXPECT_GE(ratio(found, ground), wanted)
                        << color.name().toStdString() << " on " << ground.name().toStdString();
                }
            }
        }
    }
}

TEST(ColorContrastTests, ChangesAColourNoMoreThanItMust) {
    const QColor lime = AccentColors::color(Accent::lime);
    const QColor found = readable(lime, {Qt::white}, 3);
    EXPECT_LT(ratio(found, Qt::white), 3.3);
    EXPECT_NEAR(found.hueF(), lime.hueF(), 0.02) << "still a lime";
}

TEST(ColorContrastTests, WhereNothingDoesItIsBlackOrWhite) {
    EXPECT_EQ(readable(Qt::red, {Qt::white}, 22), QColor(Qt::black));
    EXPECT_EQ(readable(Qt::red, {Qt::black}, 22), QColor(Qt::white));
}

} // namespace
} // namespace veslora::ColorContrast

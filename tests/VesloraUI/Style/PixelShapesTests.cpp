// SPDX-License-Identifier: MIT
// Small shapes as they come out on screens of every scale, wherever on them they are: looked at pixel by
// pixel.
#include "VesloraUI/Style/PixelItem.h"
#include "tests/VesloraUI/Fixtures/Pixels.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace veslora {
namespace {

/// A screen's scale, and where the view is on it, in points.
class PixelShapes : public testing::TestWithParam<std::tuple<double, double>> {
  protected:
    PixelShapes() {
        scene.scale = std::get<0>(GetParam());
        scene.settings.set("accent", std::string("white"));
    }
    void TearDown() override { scene.close(); }

    [[nodiscard]] Pixels drawn(const QString& view) {
        const double offset = std::get<1>(GetParam());
        scene.showText(QStringLiteral("Item { Item { x: %1; y: %2; %3 } }")
                           .arg(QString::number(7 + offset), QString::number(5 + offset), view),
                       {200, 60});
        const QImage picture = scene.picture();
        EXPECT_EQ(picture.width(), std::lround(200 * scene.scale));
        return Pixels(picture);
    }
    [[nodiscard]] int pixels(double points) const {
        return static_cast<int>(std::lround(points * scene.scale));
    }
    /// How many pixels at a side belong to a rounded corner.
    [[nodiscard]] int corner(double radius) const {
        return static_cast<int>(std::ceil(radius * scene.scale));
    }

    Scene scene;
    static constexpr int accent = 242;
};

TEST_P(PixelShapes, AMetersSegmentsAreAllOfOneForm) {
    for (const auto& [width, segments, height] : {std::tuple(100.0, 10, 7.0), std::tuple(126.0, 20, 7.0),
                                                  std::tuple(25.0, 5, 8.0), std::tuple(150.0, 28, 5.0)}) {
        const Pixels seen =
            drawn(QStringLiteral(
                      "SegmentedMeter { tint: '#f2f2f2'; fraction: 1; segments: %1; width: %2; height: %3 }")
                      .arg(segments)
                      .arg(width)
                      .arg(height));
        const QRect box = seen.box();
        EXPECT_EQ(box.height(), pixels(height));
        const auto runs = seen.runs(box);
        ASSERT_EQ(runs.size(), static_cast<std::size_t>(segments));
        const auto [narrowest, widest] = std::ranges::minmax(runs, {}, &Run::length);
        EXPECT_LE(widest.length - narrowest.length, 1);
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const QRect segment(runs[i].start, box.top(), runs[i].length, box.height());
            EXPECT_TRUE(seen.hasSharpSides(segment, corner(1), accent)) << "segment " << i;
            EXPECT_TRUE(seen.isSymmetric(segment)) << "segment " << i;
            EXPECT_TRUE(seen.hasSameCorner(segment.topLeft(), QPoint(runs[0].start, box.top()), corner(1)));
            if (i > 0) {
                EXPECT_EQ(runs[i].start - runs[i - 1].end(), pixels(2)) << "before segment " << i;
            }
        }
    }
}

TEST_P(PixelShapes, ALampIsSquareWithFourCornersAlike) {
    const Pixels seen = drawn("StatusLight { tint: 'white'; isOn: false }");
    const QRect box = seen.box();
    EXPECT_EQ(box.size(), QSize(pixels(6), pixels(6)));
    EXPECT_TRUE(seen.hasSharpSides(box, corner(1.5), 51));
    EXPECT_TRUE(seen.isSymmetric(box));
}

TEST_P(PixelShapes, AFuseHasTwoEndsAlikeAndOneHeight) {
    for (const auto& [height, fraction] :
         {std::tuple(2.0, 1.0), std::tuple(3.0, 0.61), std::tuple(4.0, 0.333)}) {
        const Pixels seen =
            drawn(QStringLiteral("Fuse { width: 90; height: %1; fraction: %2 }").arg(height).arg(fraction));
        const QRect box = seen.box();
        EXPECT_EQ(box.size(), QSize(pixels(90 * fraction), pixels(height)));
        EXPECT_TRUE(seen.isSymmetric(box));
        EXPECT_TRUE(seen.hasSharpSides(box, corner(height / 2), accent));
    }
}

TEST_P(PixelShapes, KeysHaveSharpSidesAndStandEquallyFarApart) {
    for (const double spacing : {6.0, 4.0}) {
        const Pixels seen =
            drawn(QStringLiteral("Row { spacing: %1; KeyButton { width: 41.3; gap: parent.spacing }"
                                 " KeyButton { width: 34; gap: parent.spacing } KeyButton { width: 50.7; "
                                 "gap: parent.spacing } }")
                      .arg(spacing));
        const QRect box = seen.box();
        EXPECT_EQ(box.height(), pixels(26));
        const auto runs = seen.runs(box);
        ASSERT_EQ(runs.size(), 3u);
        // White at 0.06 over the face's 0.1.
        constexpr int border = 39;
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const QRect key(runs[i].start, box.top(), runs[i].length, box.height());
            EXPECT_TRUE(seen.hasSharpSides(key, corner(6), border));
            EXPECT_TRUE(seen.isSymmetric(key));
            if (i > 0) {
                EXPECT_EQ(runs[i].start - runs[i - 1].end(), pixels(spacing));
            }
        }
    }
}

TEST_P(PixelShapes, DotsOfPagesAreRoundAndAllAlike) {
    const Pixels seen = drawn("PageDots { count: 3; current: 0 }");
    const QRect box = seen.box();
    const int size = PixelItem::nearestPixel(5 * scene.scale);
    EXPECT_EQ(box.height(), size);
    const auto runs = seen.runs(box);
    ASSERT_EQ(runs.size(), 3u);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const QRect dot(runs[i].start, box.top(), runs[i].length, box.height());
        EXPECT_EQ(dot.width(), size) << "dot " << i;
        EXPECT_TRUE(seen.isSymmetric(dot)) << "dot " << i;
        EXPECT_NEAR(dot.left() - box.left(), 10 * scene.scale * static_cast<double>(i), 1) << "dot " << i;
        EXPECT_NEAR(seen.at(dot.center().x(), dot.center().y()), i == 0 ? accent : 26, 1);
    }
    EXPECT_TRUE(seen.hasSameCorner({runs[1].start, box.top()}, {runs[2].start, box.top()}, size));
}

TEST_P(PixelShapes, AnAccentAndItsRingAreRoundAndHaveOneMiddle) {
    for (const bool isSelected : {false, true}) {
        const Pixels seen = drawn(QStringLiteral("AccentSwatch { color: 'white'; isSelected: %1 }")
                                      .arg(isSelected ? "true" : "false"));
        const QRect box = seen.box();
        const int disc = PixelItem::nearestPixel(14 * scene.scale);
        const int gap = PixelItem::nearestPixel(3 * scene.scale);
        const int line = PixelItem::nearestPixel(1.5 * scene.scale);
        const int size = isSelected ? disc + 2 * (gap + line) : disc;
        EXPECT_EQ(box.size(), QSize(size, size));
        EXPECT_TRUE(seen.isSymmetric(box));
        EXPECT_NEAR(box.left() + size / 2.0, (7 + std::get<1>(GetParam()) + 12) * scene.scale, 1);
        if (isSelected) {
            const int middle = box.center().y();
            EXPECT_GT(seen.at(box.left(), middle), 230);
            EXPECT_GT(seen.at(box.left() + line - 1, middle), 230);
            EXPECT_LT(seen.at(box.left() + line, middle), 25);
            EXPECT_LT(seen.at(box.left() + line + gap - 1, middle), 25);
            EXPECT_GT(seen.at(box.left() + line + gap, middle), 230);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AtEveryScale, PixelShapes,
                         testing::Combine(testing::ValuesIn(Scene::screenScales),
                                          testing::Values(0.0, 0.3, 0.5, 0.8)));

} // namespace
} // namespace veslora

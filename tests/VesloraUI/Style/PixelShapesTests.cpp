// SPDX-License-Identifier: MIT
// Small shapes as they come out on screens of every scale, wherever on them they are: looked at pixel by
// pixel.
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace veslora {
namespace {

/// From the left, device pixels.
struct Run {
    int start = 0;
    int length = 0;
    [[nodiscard]] int end() const { return start + length; }
};

/// A picture on black as brightness alone.
class Pixels {
  public:
    explicit Pixels(const QImage& picture) : m_picture(picture.convertToFormat(QImage::Format_RGB32)) {}

    [[nodiscard]] int at(int x, int y) const {
        const QRgb pixel = m_picture.pixel(x, y);
        return std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)});
    }
    /// The smallest rectangle that holds all that is not black.
    [[nodiscard]] QRect box() const {
        QRect box;
        for (int y = 0; y < m_picture.height(); ++y) {
            for (int x = 0; x < m_picture.width(); ++x) {
                box = at(x, y) > 0 ? box.united(QRect(x, y, 1, 1)) : box;
            }
        }
        return box;
    }
    /// What is not black in the middle row of a rectangle.
    [[nodiscard]] std::vector<Run> runs(const QRect& box) const {
        std::vector<Run> runs;
        for (int x = box.left(); x <= box.right(); ++x) {
            if (at(x, box.center().y()) == 0) {
                continue;
            }
            if (runs.empty() || runs.back().end() != x) {
                runs.push_back({x, 0});
            }
            ++runs.back().length;
        }
        return runs;
    }
    /// Whether each pixel of a rectangle is as bright as those opposite, at the left and at the top, or
    /// nearly.
    [[nodiscard]] testing::AssertionResult isSymmetric(const QRect& box) const {
        for (int y = box.top(); y <= box.bottom(); ++y) {
            for (int x = box.left(); x <= box.right(); ++x) {
                const int across = at(box.left() + box.right() - x, y);
                const int above = at(x, box.top() + box.bottom() - y);
                if (std::abs(at(x, y) - across) > tolerance || std::abs(at(x, y) - above) > tolerance) {
                    return testing::AssertionFailure() << "at " << x << ", " << y << ":\n" << shown(box);
                }
            }
        }
        return testing::AssertionSuccess();
    }
    /// Whether the sides of a shape that fills a rectangle are fully lit, but for corners of that many
    /// pixels.
    [[nodiscard]] testing::AssertionResult hasSharpSides(const QRect& box, int corner, int lit) const {
        bool isSharp = true;
        for (int x = box.left() + corner; x <= box.right() - corner; ++x) {
            isSharp = isSharp && isLit(x, box.top(), lit) && isLit(x, box.bottom(), lit);
        }
        for (int y = box.top() + corner; y <= box.bottom() - corner; ++y) {
            isSharp = isSharp && isLit(box.left(), y, lit) && isLit(box.right(), y, lit);
        }
        return isSharp ? testing::AssertionSuccess() : testing::AssertionFailure() << "\n" << shown(box);
    }
    /// Whether the top left corners of two shapes are the same.
    [[nodiscard]] testing::AssertionResult hasSameCorner(QPoint first, QPoint second, int size) const {
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                if (std::abs(at(first.x() + x, first.y() + y) - at(second.x() + x, second.y() + y)) >
                    tolerance) {
                    return testing::AssertionFailure() << shown({first, QSize(size, size)}) << "beside\n"
                                                       << shown({second, QSize(size, size)});
                }
            }
        }
        return testing::AssertionSuccess();
    }

  private:
    static constexpr int tolerance = 4;

    [[nodiscard]] bool isLit(int x, int y, int lit) const { return std::abs(at(x, y) - lit) <= tolerance; }
    [[nodiscard]] std::string shown(const QRect& box) const {
        QString text;
        for (int y = box.top(); y <= box.bottom(); ++y) {
            for (int x = box.left(); x <= box.right(); ++x) {
                text += QStringLiteral("%1").arg(at(x, y), 4);
            }
            text += QLatin1Char('\n');
        }
        return text.toStdString();
    }

    QImage m_picture;
};

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

INSTANTIATE_TEST_SUITE_P(AtEveryScale, PixelShapes,
                         testing::Combine(testing::ValuesIn(Scene::screenScales),
                                          testing::Values(0.0, 0.3, 0.5, 0.8)));

} // namespace
} // namespace veslora

// SPDX-License-Identifier: MIT
// The soft pictures behind shadows and glows, held against a blur that adds up every weight for every point.
#include "VesloraUI/Style/StyleImages.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ostream>
#include <vector>

namespace veslora {
namespace {

struct Shape {
    double width;
    double height;
    double radius;
    double sigma;
    int margin;
    double scale;
};

void PrintTo(const Shape& shape, std::ostream* out) {
    *out << shape.width << " by " << shape.height << ", sigma " << shape.sigma << " at " << shape.scale;
}

/// One row after another of alphas, 0 to 255, not rounded between the passes.
struct Plane {
    int width;
    int height;
    std::vector<double> values;

    [[nodiscard]] double at(int x, int y) const {
        const bool isInside = x >= 0 && x < width && y >= 0 && y < height;
        return isInside ? values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                 static_cast<std::size_t>(x)]
                        : 0;
    }
};

Plane drawn(const Shape& shape) {
    const double border = std::max<double>(shape.margin, 3 * shape.sigma) * shape.scale;
    QImage image(static_cast<int>(std::ceil(shape.width * shape.scale + 2 * border)),
                 static_cast<int>(std::ceil(shape.height * shape.scale + 2 * border)), QImage::Format_Alpha8);
    image.fill(0);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(border, border, shape.width * shape.scale, shape.height * shape.scale),
                            shape.radius * shape.scale, shape.radius * shape.scale);
    painter.end();
    Plane plane{image.width(), image.height(), {}};
    for (int y = 0; y < plane.height; ++y) {
        const uchar* row = image.constScanLine(y);
        plane.values.insert(plane.values.end(), row, row + plane.width);
    }
    return plane;
}

Plane blurred(const Plane& plane, double sigma, int dx, int dy) {
    const int reach = static_cast<int>(std::ceil(3 * sigma));
    double whole = 0;
    for (int i = -reach; i <= reach; ++i) {
        whole += std::exp(-i * i / (2 * sigma * sigma));
    }
    Plane result{plane.width, plane.height, {}};
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            double sum = 0;
            for (int i = -reach; i <= reach; ++i) {
                sum += plane.at(x + i * dx, y + i * dy) * std::exp(-i * i / (2 * sigma * sigma)) / whole;
            }
            result.values.push_back(sum);
        }
    }
    return result;
}

class SoftRectangle : public ::testing::TestWithParam<Shape> {};

TEST_P(SoftRectangle, IsTheSumOfAllWeightsAtEveryPoint) {
    const Shape& shape = GetParam();
    const QImage image = StyleImages::softRectangle(shape.width, shape.height, shape.radius, shape.sigma,
                                                    shape.margin, shape.scale, QColor(0, 0, 0));
    const double sigma = shape.sigma * shape.scale;
    const Plane plane = blurred(blurred(drawn(shape), sigma, 1, 0), sigma, 0, 1);
    const int cutX = (plane.width - image.width()) / 2;
    const int cutY = (plane.height - image.height()) / 2;
    ASSERT_GE(cutX, 0);
    ASSERT_GE(cutY, 0);
    double worst = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            worst = std::max(worst, std::abs(qAlpha(image.pixel(x, y)) - plane.at(x + cutX, y + cutY)));
        }
    }
    EXPECT_LE(worst, 1.1) << "each pass may round by half";
    EXPECT_GT(plane.at(plane.width / 2, plane.height / 2), 20) << "there is something to compare";
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, SoftRectangle,
    ::testing::Values(Shape{.width = 64, .height = 64, .radius = 16, .sigma = 10, .margin = 20, .scale = 1},
                      Shape{.width = 60, .height = 60, .radius = 6, .sigma = 8, .margin = 20, .scale = 1},
                      Shape{.width = 4, .height = 4, .radius = 1.5, .sigma = 3, .margin = 9, .scale = 2},
                      Shape{
                          .width = 90.5, .height = 11.25, .radius = 3, .sigma = 2, .margin = 4, .scale = 1.5},
                      Shape{.width = 5, .height = 40, .radius = 0, .sigma = 12, .margin = 50, .scale = 1}));

TEST(SoftRectangleColor, KeepsTheColorAndItsAlpha) {
    const QImage image = StyleImages::softRectangle(80, 80, 4, 3, 9, 1, QColor(200, 100, 0, 128));
    const QColor middle = image.pixelColor(image.width() / 2, image.height() / 2);
    EXPECT_EQ(middle.alpha(), 128);
    EXPECT_NEAR(middle.red(), 200, 2);
    EXPECT_NEAR(middle.green(), 100, 2);
    EXPECT_EQ(middle.blue(), 0);
    EXPECT_LE(image.pixelColor(0, 0).alpha(), 1);
}

} // namespace
} // namespace veslora

// SPDX-License-Identifier: MIT
// What a view drew, looked at pixel by pixel: where it is, and whether its shapes are sharp and even.
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace veslora {

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
    [[nodiscard]] ::testing::AssertionResult isSymmetric(const QRect& box) const {
        for (int y = box.top(); y <= box.bottom(); ++y) {
            for (int x = box.left(); x <= box.right(); ++x) {
                const int across = at(box.left() + box.right() - x, y);
                const int above = at(x, box.top() + box.bottom() - y);
                if (std::abs(at(x, y) - across) > tolerance || std::abs(at(x, y) - above) > tolerance) {
                    return ::testing::AssertionFailure() << "at " << x << ", " << y << ":\n" << shown(box);
                }
            }
        }
        return ::testing::AssertionSuccess();
    }
    /// Whether the sides of a shape that fills a rectangle are fully lit, but for corners of that many
    /// pixels.
    [[nodiscard]] ::testing::AssertionResult hasSharpSides(const QRect& box, int corner, int lit) const {
        bool isSharp = true;
        for (int x = box.left() + corner; x <= box.right() - corner; ++x) {
            isSharp = isSharp && isLit(x, box.top(), lit) && isLit(x, box.bottom(), lit);
        }
        for (int y = box.top() + corner; y <= box.bottom() - corner; ++y) {
            isSharp = isSharp && isLit(box.left(), y, lit) && isLit(box.right(), y, lit);
        }
        return isSharp ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "\n" << shown(box);
    }
    /// Whether the top left corners of two shapes are the same.
    [[nodiscard]] ::testing::AssertionResult hasSameCorner(QPoint first, QPoint second, int size) const {
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                if (std::abs(at(first.x() + x, first.y() + y) - at(second.x() + x, second.y() + y)) >
                    tolerance) {
                    return ::testing::AssertionFailure() << shown({first, QSize(size, size)}) << "beside\n"
                                                         << shown({second, QSize(size, size)});
                }
            }
        }
        return ::testing::AssertionSuccess();
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

} // namespace veslora

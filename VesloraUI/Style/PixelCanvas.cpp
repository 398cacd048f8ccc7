// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/PixelCanvas.h"

#include <algorithm>
#include <cmath>

namespace veslora {

PixelCanvas::PixelCanvas(QSize size) : m_image(size, QImage::Format_ARGB32_Premultiplied) {
    m_image.fill(Qt::transparent);
}

PixelCanvas::Shape::Shape(const QRect& shapeFrame, double cornerRadius)
    : frame(shapeFrame),
      radius(std::clamp(cornerRadius, 0.0, std::max(0, std::min(frame.width(), frame.height())) / 2.0)) {}

double PixelCanvas::Shape::coverage(int x, int y) const {
    if (!frame.contains(x, y)) {
        return 0;
    }
    // From the centre of the corner's circle to the middle of the pixel, outwards.
    const double across = radius - 0.5 - std::min(x - frame.left(), frame.right() - x);
    const double along = radius - 0.5 - std::min(y - frame.top(), frame.bottom() - y);
    if (across <= 0 || along <= 0) {
        return 1;
    }
    return std::clamp(radius + 0.5 - std::hypot(across, along), 0.0, 1.0);
}

void PixelCanvas::fill(const QRect& frame, double radius, const QColor& color) {
    const Shape shape(frame, radius);
    for (int y = frame.top(); y <= frame.bottom(); ++y) {
        for (int x = frame.left(); x <= frame.right(); ++x) {
            blend(x, y, color, shape.coverage(x, y));
        }
    }
}

void PixelCanvas::outline(const QRect& frame, double radius, int width, const QColor& color) {
    const Shape outer(frame, radius);
    const Shape inner(frame.adjusted(width, width, -width, -width), radius - width);
    for (int y = frame.top(); y <= frame.bottom(); ++y) {
        for (int x = frame.left(); x <= frame.right(); ++x) {
            blend(x, y, color, std::max(0.0, outer.coverage(x, y) - inner.coverage(x, y)));
        }
    }
}

void PixelCanvas::blend(int x, int y, const QColor& color, double coverage) {
    if (coverage <= 0) {
        return;
    }
    QRgb& pixel = reinterpret_cast<QRgb*>(m_image.scanLine(y))[x];
    const double opacity = static_cast<double>(color.alphaF()) * coverage;
    const auto over = [opacity](float channel, int below) {
        return static_cast<int>(
            std::lround(255 * static_cast<double>(channel) * opacity + below * (1 - opacity)));
    };
    pixel = qRgba(over(color.redF(), qRed(pixel)), over(color.greenF(), qGreen(pixel)),
                  over(color.blueF(), qBlue(pixel)), over(1, qAlpha(pixel)));
}

} // namespace veslora

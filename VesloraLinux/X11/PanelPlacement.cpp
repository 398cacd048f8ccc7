// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/PanelPlacement.h"

#include <QPolygon>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace veslora::PanelPlacement {
namespace {

// Sums of fractions miss whole numbers by less than this.
constexpr double tolerance = 1e-6;

int floorOf(double value) {
    return static_cast<int>(std::floor(value + tolerance));
}

int ceilingOf(double value) {
    return static_cast<int>(std::ceil(value - tolerance));
}

/// Where in a native pixel its place is, as a share of it. Zones end at whole pixels, halves and thirds of
/// one, but never just here.
constexpr double placeInPixel = 0.5 + 1.0 / 1024;

/// The first pixel at or behind `edge`, in native pixels, whose place lies behind it.
int firstPixelBehind(double edge) {
    return static_cast<int>(std::ceil(edge - placeInPixel));
}

/// The largest whole point at or before `value` that is a whole native pixel too. Scales come in eighths at
/// most, so one is found within eight steps; for an odder scale the nearest point has to do.
int wholePixelBefore(double value, double scale) {
    constexpr int mostSteps = 8;
    const int nearest = floorOf(value);
    for (int point = nearest; point > nearest - mostSteps; --point) {
        const double native = point * scale;
        if (std::abs(native - std::round(native)) < tolerance) {
            return point;
        }
    }
    return nearest;
}

} // namespace

QRect windowFor(const ScreenInfo& screen, const Rect& area) {
    const double height = screen.metrics.frame.height;
    const QPoint first(wholePixelBefore(area.minX(), screen.scale),
                       wholePixelBefore(height - area.maxY(), screen.scale));
    const QPoint end(ceilingOf(area.maxX()), ceilingOf(height - area.minY()));
    return {first, QSize(std::max(end.x() - first.x(), 1), std::max(end.y() - first.y(), 1))};
}

Point placeOfPixel(const ScreenInfo& screen, QPoint pixel) {
    return {(pixel.x() + placeInPixel) / screen.scale,
            screen.metrics.frame.height - (pixel.y() + placeInPixel) / screen.scale};
}

QPointF contentPlace(const ScreenInfo& screen, const Rect& frame, const QRect& window) {
    return QPointF(frame.minX(), screen.metrics.frame.height - frame.maxY()) - window.topLeft();
}

QRegion nativeRegion(const ScreenInfo& screen, const std::vector<Rect>& zones, const QRect& window) {
    const double height = screen.metrics.frame.height;
    const QRect all(0, 0, ceilingOf(window.width() * screen.scale),
                    ceilingOf(window.height() * screen.scale));
    QRegion region;
    for (const Rect& zone : zones) {
        const QPoint first(firstPixelBehind((zone.minX() - window.x()) * screen.scale),
                           firstPixelBehind((height - zone.maxY() - window.y()) * screen.scale));
        const QPoint end(firstPixelBehind((zone.maxX() - window.x()) * screen.scale),
                         firstPixelBehind((height - zone.minY() - window.y()) * screen.scale));
        region += QRect(first, QSize(end.x() - first.x(), end.y() - first.y())) & all;
    }
    return region;
}

QRegion nativeOutline(const QPainterPath& outline, QPointF contentPlace, double scale) {
    const QTransform toNative = QTransform::fromScale(scale, scale) *
                                QTransform::fromTranslate(contentPlace.x() * scale, contentPlace.y() * scale);
    QRegion region;
    for (const QPolygonF& polygon : outline.toFillPolygons(toNative)) {
        region += QRegion(polygon.toPolygon());
    }
    return region;
}

Rect outlineBounds(const QPainterPath& outline, const Rect& frame) {
    const QRectF bounds = outline.boundingRect();
    return {frame.minX() + bounds.left(), frame.maxY() - bounds.bottom(), bounds.width(), bounds.height()};
}

Rect boundsOf(const std::vector<Rect>& rects) {
    if (rects.empty()) {
        return {};
    }
    Rect bounds = rects.front();
    for (const Rect& rect : rects) {
        const double right = std::max(bounds.maxX(), rect.maxX());
        const double top = std::max(bounds.maxY(), rect.maxY());
        bounds.x = std::min(bounds.x, rect.x);
        bounds.y = std::min(bounds.y, rect.y);
        bounds.width = right - bounds.x;
        bounds.height = top - bounds.y;
    }
    return bounds;
}

Rect intersection(const Rect& first, const Rect& second) {
    const double left = std::max(first.minX(), second.minX());
    const double bottom = std::max(first.minY(), second.minY());
    const double width = std::min(first.maxX(), second.maxX()) - left;
    const double height = std::min(first.maxY(), second.maxY()) - bottom;
    return {left, bottom, std::max(width, 0.0), std::max(height, 0.0)};
}

} // namespace veslora::PanelPlacement

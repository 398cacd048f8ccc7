// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/AccentSwatch.h"

#include "VesloraUI/Style/PixelCanvas.h"

namespace veslora {

namespace {

QRect squareInMiddle(const QRect& frame, int side) {
    return {frame.x() + (frame.width() - side) / 2, frame.y() + (frame.height() - side) / 2, side, side};
}

} // namespace

AccentSwatch::AccentSwatch(QQuickItem* parent) : PixelItem(parent) {
    setImplicitSize(24, 24);
    connect(this, &AccentSwatch::changed, this, &AccentSwatch::redraw);
}

PixelItem::Drawing AccentSwatch::drawing() const {
    return
        [color = m_color, isSelected = m_isSelected](PixelCanvas& canvas, const QRect& frame, double scale) {
            const QRect disc = squareInMiddle(frame, nearestPixel(discSize * scale));
            canvas.fill(disc, disc.width() / 2.0, color);
            if (isSelected) {
                // From the disc outwards, so that both have one middle.
                const int line = nearestPixel(ringWidth * scale);
                const int reach = nearestPixel(ringGap * scale) + line;
                const QRect ring = disc.adjusted(-reach, -reach, reach, reach);
                canvas.outline(ring, ring.width() / 2.0, line, color);
            }
        };
}

} // namespace veslora

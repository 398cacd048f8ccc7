// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/PixelRectangle.h"

#include "VesloraUI/Style/PixelCanvas.h"

#include <algorithm>

namespace veslora {

PixelRectangle::PixelRectangle(QQuickItem* parent) : PixelItem(parent) {
    connect(this, &PixelRectangle::changed, this, &PixelRectangle::redraw);
}

PixelItem::Drawing PixelRectangle::drawing() const {
    return [color = m_color, border = m_borderColor, radius = m_radius](PixelCanvas& canvas,
                                                                        const QRect& frame, double scale) {
        canvas.fill(frame, radius * scale, color);
        if (border.alpha() > 0) {
            canvas.outline(frame, radius * scale, std::max(1, nearestPixel(scale)), border);
        }
    };
}

} // namespace veslora

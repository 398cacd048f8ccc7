// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/PixelPicture.h"

#include "VesloraUI/Style/PixelCanvas.h"

namespace veslora {

PixelPicture::PixelPicture(QQuickItem* parent) : PixelItem(parent) {
    connect(this, &PixelPicture::changed, this, &PixelPicture::redraw);
}

PixelItem::Drawing PixelPicture::drawing() const {
    return [picture = m_picture, radius = m_radius](PixelCanvas& canvas, const QRect& frame, double scale) {
        canvas.picture(frame, radius * scale, picture);
    };
}

} // namespace veslora

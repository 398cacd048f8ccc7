// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/NotchOutline.h"

#include "VesloraUI/Island/NotchPath.h"
#include "VesloraUI/Style/VesloraStyle.h"

#include <QPainter>

namespace veslora {

NotchOutline::NotchOutline(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &NotchOutline::changed, this, [this] { update(); });
    connect(this, &NotchOutline::changed, this, &NotchOutline::contentRectChanged);
    connect(this, &QQuickItem::widthChanged, this, &NotchOutline::contentRectChanged);
    connect(this, &QQuickItem::heightChanged, this, &NotchOutline::contentRectChanged);
}

QPainterPath NotchOutline::path() const {
    return painterPath({m_topRadius, m_bottomRadius}, {0, 0, width(), height()});
}

QRectF NotchOutline::contentRect() const {
    const Rect rect = NotchShape{m_topRadius, m_bottomRadius}.contentRectIn({0, 0, width(), height()});
    return {rect.x, rect.y, rect.width, rect.height};
}

void NotchOutline::paint(QPainter* painter) {
    const QPainterPath outline = path();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(outline, Qt::black);
    if (m_strokeOpacity > 0) {
        QColor hairline = VesloraStyle::hairline();
        hairline.setAlphaF(hairline.alphaF() * static_cast<float>(m_strokeOpacity));
        painter->strokePath(outline, QPen(hairline, 1));
    }
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/PixelItem.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/PixelNode.h"

#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace veslora {

PixelItem::PixelItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void PixelItem::setGap(double gap) {
    if (assign(this, m_gap, gap, &PixelItem::gapChanged)) {
        update();
    }
}

int PixelItem::nearestPixel(double length) {
    // What the views add up and the scene graph keeps in single precision is off by less.
    constexpr double roundingError = 1e-3;
    return static_cast<int>(std::floor(length + 0.5 + roundingError));
}

int PixelItem::pixelWidth(double start, double width, double gap) {
    if (gap <= 0) {
        return std::max(0, nearestPixel(width));
    }
    return std::max(0, nearestPixel(start + width + gap) - nearestPixel(gap) - nearestPixel(start));
}

void PixelItem::redraw() {
    m_isChanged = true;
    update();
}

void PixelItem::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

void PixelItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        update();
    }
}

QSGNode* PixelItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    auto* pixels = static_cast<PixelNode*>(node);
    if (!pixels) {
        pixels = new PixelNode(*window());
        m_isChanged = true;
    }
    pixels->setContent({drawing(), size(), m_gap, window()->effectiveDevicePixelRatio()}, m_isChanged);
    m_isChanged = false;
    return pixels;
}

} // namespace veslora

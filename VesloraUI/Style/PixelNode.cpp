// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/PixelNode.h"

#include "VesloraUI/Style/PixelCanvas.h"

#include <QQuickWindow>

namespace veslora {

namespace {
/// Clear pixels round each picture: Qt rounds the part of the window that it renders to points, and may cut
/// off one pixel at a side.
constexpr int margin = 2;
} // namespace

PixelNode::PixelNode(QQuickWindow& window) : m_window(window), m_image(window.createImageNode()) {
    setFlag(UsePreprocess);
    m_image->setFlag(OwnedByParent);
    m_image->setFiltering(QSGTexture::Nearest);
    m_image->setOwnsTexture(true);
    appendChildNode(m_image);
    paint({0, 0});
}

void PixelNode::setContent(Content content, bool isChanged) {
    if (isChanged || content.scale != m_content.scale) {
        m_painted = {-1, -1};
    }
    m_content = std::move(content);
}

void PixelNode::preprocess() {
    const double scale = m_content.scale;
    const QPointF start = origin() * scale;
    const QPoint place(PixelItem::nearestPixel(start.x()), PixelItem::nearestPixel(start.y()));
    const QSize size(PixelItem::pixelWidth(start.x(), m_content.size.width() * scale, m_content.gap * scale),
                     PixelItem::nearestPixel(m_content.size.height() * scale));
    if (size != m_painted) {
        paint(size);
    }
    QMatrix4x4 toPlace;
    toPlace.translate(static_cast<float>((place.x() - start.x()) / scale),
                      static_cast<float>((place.y() - start.y()) / scale));
    if (toPlace != matrix()) {
        setMatrix(toPlace);
    }
}

/// Points in the window. Nothing that holds such items is turned or scaled.
QPointF PixelNode::origin() const {
    double x = 0;
    double y = 0;
    for (const QSGNode* node = parent(); node; node = node->parent()) {
        if (node->type() == TransformNodeType) {
            const QMatrix4x4& matrix = static_cast<const QSGTransformNode*>(node)->matrix();
            x += static_cast<double>(matrix(0, 3));
            y += static_cast<double>(matrix(1, 3));
        }
    }
    return {x, y};
}

void PixelNode::paint(QSize size) {
    m_painted = size;
    const double scale = m_content.scale;
    PixelCanvas canvas({size.width() + 2 * margin, size.height() + 2 * margin});
    if (!size.isEmpty()) {
        m_content.drawing(canvas, {{margin, margin}, size}, scale);
    }
    const QImage& picture = canvas.image();
    m_image->setTexture(m_window.createTextureFromImage(picture));
    m_image->setSourceRect(picture.rect());
    m_image->setRect(-margin / scale, -margin / scale, picture.width() / scale, picture.height() / scale);
}

} // namespace veslora

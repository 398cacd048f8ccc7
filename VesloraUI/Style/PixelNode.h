// SPDX-License-Identifier: MIT
// What a pixel item puts into the scene graph. Before each frame it looks where its parents have put it and
// moves its picture from there to the nearest device pixel; the picture itself is painted again only when it
// shows something else or has another size. On the thread that renders.
#pragma once

#include "VesloraUI/Style/PixelItem.h"

#include <QSGImageNode>
#include <QSGTransformNode>

#include <memory>

class QQuickWindow;

namespace veslora {

class PixelNode : public QSGTransformNode {
  public:
    explicit PixelNode(QQuickWindow& window);

    struct Content {
        PixelItem::Drawing drawing;
        QSizeF size; ///< points
        double gap = 0;
        double scale = 1;
    };
    /// `isChanged`: the same size would show another picture now.
    void setContent(Content content, bool isChanged);

    void preprocess() override;

  private:
    [[nodiscard]] QPointF origin() const;
    void paint(QSize size);

    QQuickWindow& m_window;
    QSGImageNode* m_image; ///< a child, which goes with its parent
    Content m_content;
    QSize m_painted{-1, -1}; ///< device pixels
};

} // namespace veslora

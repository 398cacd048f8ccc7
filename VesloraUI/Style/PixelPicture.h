// SPDX-License-Identifier: MIT
// A picture with rounded corners, sharp at every scale: a cover.
#pragma once

#include "VesloraUI/Style/PixelItem.h"

#include <QImage>

namespace veslora {

/// Makes pictures known to views, which hand them from a model to what draws them.
struct ImageValue {
    Q_GADGET
    QML_FOREIGN(QImage)
    QML_VALUE_TYPE(image)
};

class PixelPicture : public veslora::PixelItem {
    Q_OBJECT
    QML_ELEMENT
    /// Fills the item; nothing is drawn without one.
    Q_PROPERTY(QImage picture MEMBER m_picture NOTIFY changed FINAL)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY changed FINAL)
    /// Of the corners, points; at most half of the shorter side is used.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed FINAL)

  public:
    explicit PixelPicture(QQuickItem* parent = nullptr);

    [[nodiscard]] bool hasPicture() const { return !m_picture.isNull(); }

  signals:
    void changed();

  protected:
    [[nodiscard]] Drawing drawing() const override;

  private:
    QImage m_picture;
    double m_radius = 0;
};

} // namespace veslora

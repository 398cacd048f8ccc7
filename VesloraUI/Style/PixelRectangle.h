// SPDX-License-Identifier: MIT
// A small rectangle with rounded corners and sharp sides at every scale: lamps, fuses, the faces of keys.
#pragma once

#include "VesloraUI/Style/PixelItem.h"

#include <QColor>

namespace veslora {

// Qt tells qmllint of a base only by the name that is written here, so it has to be the whole one.
class PixelRectangle : public veslora::PixelItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed FINAL)
    /// Of a line of one point round the inside, over the colour; none where it is transparent.
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY changed FINAL)
    /// Of the corners, points; at most half of the shorter side is used.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed FINAL)

  public:
    explicit PixelRectangle(QQuickItem* parent = nullptr);

  signals:
    void changed();

  protected:
    [[nodiscard]] Drawing drawing() const override;

  private:
    QColor m_color = Qt::transparent;
    QColor m_borderColor = Qt::transparent;
    double m_radius = 0;
};

} // namespace veslora

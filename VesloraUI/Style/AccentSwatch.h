// SPDX-License-Identifier: MIT
// An accent's colour as a disc, in a ring of the same colour while the accent is in use. Both have one middle
// and sharp edges at every scale.
#pragma once

#include "VesloraUI/Style/PixelItem.h"

#include <QColor>

namespace veslora {

// Qt tells qmllint of a base only by the name that is written here, so it has to be the whole one.
class AccentSwatch : public veslora::PixelItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed FINAL)
    Q_PROPERTY(bool isSelected MEMBER m_isSelected NOTIFY changed FINAL)

  public:
    static constexpr double discSize = 14;   ///< points
    static constexpr double ringGap = 3;     ///< points between disc and ring
    static constexpr double ringWidth = 1.5; ///< points

    /// Large enough for the ring, also where its parts are rounded up to whole pixels.
    explicit AccentSwatch(QQuickItem* parent = nullptr);

  signals:
    void changed();

  protected:
    [[nodiscard]] Drawing drawing() const override;

  private:
    QColor m_color = Qt::transparent;
    bool m_isSelected = false;
};

} // namespace veslora

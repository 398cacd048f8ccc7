// SPDX-License-Identifier: MIT
// The island's outline as one painted item: two flared corners at the screen's edge, two rounded ones below.
#pragma once

#include <QPainterPath>
#include <QQuickPaintedItem>

namespace veslora {

class NotchOutline : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double topRadius MEMBER m_topRadius NOTIFY changed FINAL)
    Q_PROPERTY(double bottomRadius MEMBER m_bottomRadius NOTIFY changed FINAL)
    /// Share of the hairline round the shape that shows, from 0 to 1.
    Q_PROPERTY(double strokeOpacity MEMBER m_strokeOpacity NOTIFY changed FINAL)

    /// Where content may be drawn, in the item's own coordinates: inside the outline everywhere.
    Q_PROPERTY(QRectF contentRect READ contentRect NOTIFY contentRectChanged FINAL)

  public:
    explicit NotchOutline(QQuickItem* parent = nullptr);

    /// The outline in the item's own coordinates.
    [[nodiscard]] QPainterPath path() const;

    [[nodiscard]] QRectF contentRect() const;

    void paint(QPainter* painter) override;

  signals:
    void changed();
    void contentRectChanged();

  private:
    double m_topRadius = 6;
    double m_bottomRadius = 8;
    double m_strokeOpacity = 0;
};

} // namespace veslora

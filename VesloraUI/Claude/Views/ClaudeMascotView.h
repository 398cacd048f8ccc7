// SPDX-License-Identifier: MIT
// The mark of Claude Code: a little figure of cells, each twice as tall as wide, drawn in one pass.
#pragma once

#include <QQuickPaintedItem>

namespace veslora {

class ClaudeMascotView : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Width of a cell in points. The figure is 17 cells wide and as high as 10 of that width.
    Q_PROPERTY(double cell READ cell WRITE setCell NOTIFY cellChanged FINAL)

  public:
    explicit ClaudeMascotView(QQuickItem* parent = nullptr);

    [[nodiscard]] double cell() const { return m_cell; }
    void setCell(double cell);

    void paint(QPainter* painter) override;

  signals:
    void cellChanged();

  private:
    double m_cell = 0;
};

} // namespace veslora

// SPDX-License-Identifier: MIT
// The base of small shapes whose edges must be sharp whatever the screen's scale: a picture of whole device
// pixels that is laid on whole device pixels of the screen. Qt's own rectangles get both wrong at fractional
// scales, and lose corners there.
#pragma once

#include <QQuickItem>

#include <functional>

namespace veslora {

class PixelCanvas;

class PixelItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("what the small shapes have in common")
    /// Points to the item that follows in a row, at its right. Where this is given the space in between comes
    /// out as equally many pixels throughout the row, and the item's width takes up the rest. Where it is 0
    /// the width is equally many pixels wherever the item is.
    Q_PROPERTY(double gap READ gap WRITE setGap NOTIFY gapChanged FINAL)

  public:
    /// Draws into a rectangle in device pixels. `scale` is device pixels to a point.
    using Drawing = std::function<void(PixelCanvas& canvas, const QRect& frame, double scale)>;

    explicit PixelItem(QQuickItem* parent = nullptr);

    [[nodiscard]] double gap() const { return m_gap; }
    void setGap(double gap);

    /// The device pixel, or the number of them, nearest to a length; the next one where two are equally near,
    /// also where a rounding error hides that.
    [[nodiscard]] static int nearestPixel(double length);

    /// Device pixels from `start` on that an item is wide. All are device pixels, and those given may be
    /// parts.
    [[nodiscard]] static int pixelWidth(double start, double width, double gap);

  signals:
    void gapChanged();

  protected:
    /// What to draw, by value: it is kept and called for each size that comes up.
    [[nodiscard]] virtual Drawing drawing() const = 0;

    /// To be called when `drawing` would give another picture.
    void redraw();

    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

  private:
    double m_gap = 0;
    bool m_isChanged = true; ///< since the last frame
};

} // namespace veslora

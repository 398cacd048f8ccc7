// SPDX-License-Identifier: MIT
// A picture that takes rounded rectangles of whole device pixels. Unlike a painter's, all four corners of one
// are exactly alike, and so are those of all others of its radius.
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

namespace veslora {

class PixelCanvas {
  public:
    /// Transparent at first.
    explicit PixelCanvas(QSize size);

    [[nodiscard]] const QImage& image() const { return m_image; }

    /// Lays a rounded rectangle over what is there. It must lie inside the picture. `radius` is in pixels; at
    /// most half of the shorter side is used.
    void fill(const QRect& frame, double radius, const QColor& color);

    /// The same for a line inside its edge, `width` pixels wide.
    void outline(const QRect& frame, double radius, int width, const QColor& color);

    /// The same for a picture, which fills the rectangle from edge to edge; what does not fit its shape is
    /// cut off evenly.
    void picture(const QRect& frame, double radius, const QImage& picture);

  private:
    /// A rounded rectangle, and how much of a pixel lies inside it, from 0 to 1.
    struct Shape {
        Shape(const QRect& frame, double radius);
        [[nodiscard]] double coverage(int x, int y) const;
        QRect frame;
        double radius;
    };

    /// Lays a colour over a rectangle, as much of it on each pixel as `coverage` says for its place.
    template <class Coverage>
    void lay(const QRect& frame, const QColor& color, const Coverage& coverage);
    /// A picture as large as `size`, without transparency.
    [[nodiscard]] static QImage fitted(const QImage& picture, QSize size);
    /// A colour laid over a premultiplied one. `alpha` is from 0 to 255.
    [[nodiscard]] static QRgb blended(QRgb color, int alpha, QRgb below);

    QImage m_image;
};

} // namespace veslora

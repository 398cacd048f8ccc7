// SPDX-License-Identifier: MIT
// The pictures that the views draw with and that no file holds: the island's shadow, a lamp's glow, tinted
// symbols. Called on Qt Quick's image thread; keeps no state.
#pragma once

#include <QQuickImageProvider>

namespace veslora {

/// Serves "image://veslora/…":
/// - "shadow": the island's shadow as a nine-patch, sigma 10, at half opacity; see `shadowMargin`.
/// - "ghost-shadow": that of a module that is dragged, sigma 8, at 0.6; see `ghostShadowMargin`.
/// - "glow/<size>/<rrggbb>": the glow of a lamp of that many points, sigma 3, at 0.6; 9 points wider on each
/// side.
/// - "symbol/<name>/<rrggbb>": one of our symbols in one colour, as large as it is asked for.
class StyleImages : public QQuickImageProvider {
  public:
    StyleImages();

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

    /// How far the shadow's picture reaches beyond the shape that casts it: four points lower than twice its
    /// sigma.
    static constexpr int shadowMargin = 20;
    /// From the picture's edge to the middle that may be stretched.
    static constexpr int shadowBorder = 48;

    /// The same of a dragged module's shadow, which reaches as far as can be seen.
    static constexpr int ghostShadowMargin = 20;
    static constexpr int ghostShadowBorder = 46;

    /// A soft copy of a filled rounded rectangle: `margin` wider on each side than `width` by `height`, in
    /// one colour whose alpha it keeps. A Gaussian of deviation `sigma`, cut at the picture's edge.
    static QImage softRectangle(double width, double height, double radius, double sigma, int margin,
                                double scale, const QColor& color);
};

} // namespace veslora

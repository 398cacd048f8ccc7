// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/NotchShape.h"

#include <algorithm>

namespace veslora {

NotchShape::Radii NotchShape::fitting(const Rect& rect) const {
    const double flare = std::min(rect.width * 0.25, topRadius);
    return {flare, std::min(rect.height - flare, std::min((rect.width - 2 * flare) * 0.5, bottomRadius))};
}

Rect NotchShape::contentRectIn(const Rect& rect) const {
    const auto [flare, corner] = fitting(rect);
    // A corner is the curve on which the square roots of both distances from its tip, in radii, add up to 1.
    // Here they add up to a little more, as what is drawn may be off by part of a pixel.
    const double side = flare + std::max(0.0, corner) / 9;
    const double foot = std::max(0.0, corner) / 2;
    return {rect.x + side, rect.y, std::max(0.0, rect.width - 2 * side), std::max(0.0, rect.height - foot)};
}

std::vector<PathCommand> NotchShape::pathIn(const Rect& rect) const {
    const auto [flare, corner] = fitting(rect);
    const double left = rect.minX() + flare;
    const double right = rect.maxX() - flare;
    const double top = rect.minY();
    const double bottom = rect.maxY();
    return {
        MoveTo{{rect.minX(), top}},
        CurveTo{{left, top + flare}, {left, top}},
        LineTo{{left, bottom - corner}},
        CurveTo{{left + corner, bottom}, {left, bottom}},
        LineTo{{right - corner, bottom}},
        CurveTo{{right, bottom - corner}, {right, bottom}},
        LineTo{{right, top + flare}},
        CurveTo{{rect.maxX(), top}, {right, top}},
        ClosePath{},
    };
}

} // namespace veslora

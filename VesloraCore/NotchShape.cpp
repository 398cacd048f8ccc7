// SPDX-License-Identifier: MIT
#include "VesloraCore/NotchShape.h"

#include <algorithm>

namespace veslora {

std::vector<PathCommand> NotchShape::pathIn(const Rect& rect) const {
    const double flare = std::min(rect.width * 0.25, topRadius);
    const double corner =
        std::min(rect.height - flare, std::min((rect.width - 2 * flare) * 0.5, bottomRadius));
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

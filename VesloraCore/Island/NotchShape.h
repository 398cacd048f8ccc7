// SPDX-License-Identifier: MIT
// The island's outline: two flared corners that meet the screen's top edge without a seam, and two rounded
// ones below. Coordinates have their origin at the top left.
#pragma once

#include "VesloraCore/Island/Geometry.h"

#include <variant>
#include <vector>

namespace veslora {

struct MoveTo {
    Point to;
    bool operator==(const MoveTo&) const = default;
};
struct LineTo {
    Point to;
    bool operator==(const LineTo&) const = default;
};
/// A quadratic curve.
struct CurveTo {
    Point to;
    Point control;
    bool operator==(const CurveTo&) const = default;
};
struct ClosePath {
    bool operator==(const ClosePath&) const = default;
};
using PathCommand = std::variant<MoveTo, LineTo, CurveTo, ClosePath>;

struct NotchShape {
    double topRadius = 0;    ///< of the flare, which makes the body twice this narrower than the frame
    double bottomRadius = 0; ///< of the rounded corners

    /// The outline that fills `rect`. A frame too narrow or too low for the radii gets smaller ones: a flare
    /// of at most a quarter of the width, and below it rounded corners as large as there is room for.
    [[nodiscard]] std::vector<PathCommand> pathIn(const Rect& rect) const;

    /// Where content may be drawn: a rectangle that lies inside the outline everywhere. It leaves out the
    /// flare at both sides, and of the rounded corners a ninth of their radius at the sides and half of it at
    /// the foot.
    [[nodiscard]] Rect contentRectIn(const Rect& rect) const;

    bool operator==(const NotchShape&) const = default;

  private:
    struct Radii {
        double flare = 0;
        double corner = 0;
    };
    /// The radii that there is room for.
    [[nodiscard]] Radii fitting(const Rect& rect) const;
};

} // namespace veslora

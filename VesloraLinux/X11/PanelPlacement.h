// SPDX-License-Identifier: MIT
// The arithmetic between the island's space (points, origin at the screen's bottom left) and that of a window
// (native pixels, origin at its top left). Pure.
#pragma once

#include "VesloraUI/Platform/Screens.h"

#include <QPainterPath>
#include <QRect>
#include <QRegion>

#include <vector>

namespace veslora::PanelPlacement {

/// The window that shows `area` of `screen`, in points from the screen's top left corner: whole points that
/// hold all of it and that begin on a whole native pixel, so that nothing in it is drawn between two pixels.
[[nodiscard]] QRect windowFor(const ScreenInfo& screen, const Rect& area);

/// Where the top left corner of `frame` lies in `window`, which `windowFor` gave for all or a part of it.
[[nodiscard]] QPointF contentPlace(const ScreenInfo& screen, const Rect& frame, const QRect& window);

/// The place on `screen` for which a native pixel stands, counted from the screen's top left corner: a little
/// past its middle, so that no edge of the island's ever runs through it. Whether the pointer is inside a
/// zone and whether the window takes a press there is decided by this one place.
[[nodiscard]] Point placeOfPixel(const ScreenInfo& screen, QPoint pixel);

/// The native pixels of `window` whose place lies in one of `zones`; cut to the window.
[[nodiscard]] QRegion nativeRegion(const ScreenInfo& screen, const std::vector<Rect>& zones,
                                   const QRect& window);

/// The native pixels inside `outline`, which is in points from the content's own top left corner.
[[nodiscard]] QRegion nativeOutline(const QPainterPath& outline, QPointF contentPlace, double scale);

/// The part of `screen` that `outline` covers, in the screen's space, for content that fills `frame`.
[[nodiscard]] Rect outlineBounds(const QPainterPath& outline, const Rect& frame);

/// The smallest rectangle around all of `rects`; empty for none.
[[nodiscard]] Rect boundsOf(const std::vector<Rect>& rects);

/// What the two have in common; of no width or height where they lie apart.
[[nodiscard]] Rect intersection(const Rect& first, const Rect& second);

} // namespace veslora::PanelPlacement

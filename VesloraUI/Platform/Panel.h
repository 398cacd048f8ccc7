// SPDX-License-Identifier: MIT
// The seam for the island's window: borderless, above everything, never focused, and open to clicks only
// where the island says. Main thread only.
#pragma once

#include "VesloraCore/Island/Geometry.h"
#include "VesloraUI/Platform/Screens.h"

#include <QPainterPath>

#include <functional>
#include <vector>

class QQuickItem;
class QQuickWindow;

namespace veslora {

/// Which parts of the panel's screen react to the pointer, in the screen's own space.
struct PanelZones {
    std::vector<Rect> clicks; ///< the island takes presses here and nowhere else; empty while it is closed
    std::vector<Rect>
        hover; ///< a pointer here matters to the island although its clicks are not the island's
    bool operator==(const PanelZones&) const = default;
};

class Panel {
  public:
    virtual ~Panel() = default;

    /// Places the panel on `screen`; `frame` is in that screen's space.
    virtual void place(const ScreenInfo& screen, const Rect& frame) = 0;

    /// Shows `content`, which fills the panel, in place of whatever was there. The caller keeps it alive.
    virtual void setContent(QQuickItem* content) = 0;

    /// The island as drawn right now, in points from the content's own top left corner, wherever in the
    /// window the content lies. Where no compositor blends windows the panel is cut to it, at every frame;
    /// nothing outside is then drawn.
    virtual void setOutline(std::function<QPainterPath()> outline) = 0;

    virtual void setZones(const PanelZones& zones) = 0;

    /// Shows the panel above everything else, without giving it or taking from anyone the focus.
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;

    [[nodiscard]] virtual QQuickWindow* window() const = 0;
};

} // namespace veslora

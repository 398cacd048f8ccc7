// SPDX-License-Identifier: MIT
// The seam for the displays. Each screen has a coordinate space of its own: points, origin at its bottom left
// corner, y growing upwards, so that a screen's `metrics.frame` begins at (0, 0).
#pragma once

#include "VesloraCore/Island/NotchGeometry.h"

#include <QObject>

#include <string>
#include <vector>

namespace veslora {

struct ScreenInfo {
    std::string name;      ///< the connector's name, as in "eDP-1"; tells screens apart
    ScreenMetrics metrics; ///< in the screen's own space
    bool isBuiltIn = false;
    double scale = 1; ///< native pixels of one point
    bool operator==(const ScreenInfo&) const = default;
};

class Screens : public QObject {
    Q_OBJECT

  public:
    /// The primary screen first; empty while no display is connected.
    [[nodiscard]] virtual std::vector<ScreenInfo> list() const = 0;

  signals:
    /// A screen came, went, or changed its size, place, scale or work area.
    void changed();
};

} // namespace veslora

// SPDX-License-Identifier: MIT
// The seam that tells when what was drawn is on screen, on the clock by which pointer events are stamped.
// Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <QRectF>

#include <cstdint>
#include <functional>

namespace veslora {

/// What a look at the screen itself found, where the panel has drawn.
enum class ScreenLook {
    asDrawn,   ///< it shows what the panel drew
    otherwise, ///< something else shows: another window above, or a compositor that hangs
    unknown,   ///< this screen can't be looked at
};

class FrameClock {
  public:
    virtual ~FrameClock() = default;

    /// To be called when a frame of the panel was handed to the window system (`QQuickWindow::frameSwapped`).
    /// Calls `shown` once it is drawn, with the moment at which it was, in milliseconds modulo 2^32 on the
    /// clock of `QPointerEvent::timestamp`. Never within this call; never at all if the panel vanishes.
    [[nodiscard]] virtual Task afterFrame(std::function<void(std::uint32_t eventTime)> shown) = 0;

    /// Compares the screen with what the panel drew in `area`, in points from the panel's top left corner.
    /// The area must lie in an opaque part of the panel that does not change from frame to frame.
    [[nodiscard]] virtual ScreenLook look(const QRectF& area) = 0;
};

} // namespace veslora

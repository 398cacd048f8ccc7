// SPDX-License-Identifier: MIT
// The pointer as the panel's own window sees it: where a Wayland compositor tells nobody else. Away from the
// window it counts as outside everything. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Panel.h"
#include "VesloraUI/Platform/Pointer.h"

namespace veslora {

class PanelPointer final : public Pointer {
    Q_OBJECT

  public:
    PanelPointer(X11Panel& panel, Scheduler& scheduler);

    [[nodiscard]] std::optional<Point> positionOn(const ScreenInfo& screen) const override;
    [[nodiscard]] bool isButtonDown() const override;
    void setTracking(bool isTracking) override;
    /// Presses elsewhere are not told of: nobody tells us.
    [[nodiscard]] bool hearsPressesOutside() const override { return false; }
    void setWatchingPresses(bool isWatching) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] QPoint pixelAt(QPointF place) const;
    void pointerMoved(std::optional<QPoint> place);

    X11Panel& m_panel;
    Scheduler& m_scheduler;
    std::optional<QPoint> m_place; ///< the native pixel, from the screen's top left corner
    bool m_isTracking = false;
    bool m_hasMoved = false;
    Task m_frame;
};

} // namespace veslora

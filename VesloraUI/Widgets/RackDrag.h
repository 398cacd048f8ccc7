// SPDX-License-Identifier: MIT
// A module of the rack that is dragged to another place: where it would land, and the page that turns while
// the pointer waits at the rack's edge. Places are points from the middle of the rack, which stays where it
// is on the screen while the island grows or shrinks. Main thread only.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Widgets/RackModel.h"

#include <functional>
#include <optional>

namespace veslora {

class RackDrag {
  public:
    /// Seconds for which the pointer has to wait at an edge until the page turns.
    static constexpr double edgeFlipDelay = 0.5;

    /// `changed` is called whenever `ghostCenter` may have changed without a call from outside.
    RackDrag(RackModel& model, Scheduler& scheduler, std::function<void()> changed)
        : m_model(model), m_scheduler(scheduler), m_changed(std::move(changed)) {}
    ~RackDrag() { dragEnded(); }
    RackDrag(const RackDrag&) = delete;
    RackDrag& operator=(const RackDrag&) = delete;

    /// The pointer, which went down on `id` at `from`, is at `to` now. Nothing for a widget that is not on
    /// the page when its drag begins.
    void dragChanged(WidgetID id, double from, double to);
    /// The pointer came up, or the gesture was cancelled: the widget stays where it last showed.
    void dragEnded();

    /// The middle of what is drawn under the pointer; absent without a drag.
    [[nodiscard]] std::optional<double> ghostCenter() const { return m_ghostCenter; }

  private:
    /// The page as it was when the widget was taken up, or when the page turned.
    struct Start {
        std::vector<ModuleFrame> frames; ///< in points from the rack's left edge
        double width = 0;                ///< of the rack
    };
    void place(WidgetID id);
    void flipAtEdge(WidgetID id, double pointer);

    RackModel& m_model;
    Scheduler& m_scheduler;
    std::function<void()> m_changed;
    std::optional<WidgetID> m_id;
    double m_grip = 0; ///< the widget's middle when it was taken up
    std::optional<Start> m_start;
    std::optional<double> m_ghostCenter;
    Task m_edgeFlipTask;
};

} // namespace veslora

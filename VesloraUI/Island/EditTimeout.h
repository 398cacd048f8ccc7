// SPDX-License-Identifier: MIT
// Ends edit mode by itself where nobody hears of the press outside that ends it elsewhere, as below a Wayland
// compositor: once the pointer has been away from the island for a while. Main thread only.
#pragma once

#include "VesloraUI/Platform/Panel.h"
#include "VesloraUI/Platform/Pointer.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <functional>
#include <optional>

namespace veslora {

class EditTimeout {
  public:
    /// Steady seconds without the pointer.
    static constexpr double patience = 10;

    EditTimeout(const Pointer& pointer, Scheduler& scheduler, std::function<void()> end)
        : m_pointer(pointer), m_scheduler(scheduler), m_end(std::move(end)) {}

    /// To be called whenever one of these has changed, the pointer has moved or a button went up. `zones` are
    /// what belongs to the island on `screen`. The count begins again each time that the pointer comes back
    /// or a button goes down.
    void update(bool isEditing, const std::optional<ScreenInfo>& screen, const PanelZones& zones);

  private:
    [[nodiscard]] bool isAway(const std::optional<ScreenInfo>& screen, const PanelZones& zones) const;

    const Pointer& m_pointer;
    Scheduler& m_scheduler;
    std::function<void()> m_end;
    Task m_task; ///< runs while the pointer is away
};

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/EditTimeout.h"

#include <algorithm>

namespace veslora {

void EditTimeout::update(bool isEditing, const std::optional<ScreenInfo>& screen, const PanelZones& zones) {
    // Asked in this order, as the place of the pointer may cost a question to the window system.
    if (!isEditing || m_pointer.hearsPressesOutside() || !isAway(screen, zones)) {
        m_task.cancel();
    } else if (!m_task.isActive()) {
        m_task = m_scheduler.after(patience, m_end);
    }
}

bool EditTimeout::isAway(const std::optional<ScreenInfo>& screen, const PanelZones& zones) const {
    // What is dragged may leave the island for a while.
    if (m_pointer.isButtonDown()) {
        return false;
    }
    const auto place = screen ? m_pointer.positionOn(*screen) : std::nullopt;
    const auto isOver = [&place](const Rect& zone) { return place && zone.contains(*place); };
    return std::ranges::none_of(zones.clicks, isOver) && std::ranges::none_of(zones.hover, isOver);
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/RackDrag.h"

#include <algorithm>

namespace veslora {

void RackDrag::dragChanged(WidgetID id, double from, double to) {
    if (m_id != id || m_model.draggingID() != id) {
        const auto frames = m_model.frames();
        const auto own = std::ranges::find(frames, id, &ModuleFrame::id);
        if (own == frames.end()) {
            return;
        }
        m_id = id;
        m_grip = own->midX() - m_model.width() / 2;
        m_start.reset();
        m_model.beginDrag(id);
    }
    m_ghostCenter = m_grip + to - from;
    place(id);
    flipAtEdge(id, to);
}

void RackDrag::place(WidgetID id) {
    if (!m_start) {
        m_start = {m_model.frames(), m_model.width()};
    }
    auto others = m_model.layout().ids();
    std::erase(others, id);
    m_model.drag(id, RackFrames::dropIndex(others, m_start->frames, *m_ghostCenter + m_start->width / 2));
}

/// A flip that waits already keeps its deadline while the pointer stays in the band.
void RackDrag::flipAtEdge(WidgetID id, double pointer) {
    const double width = m_model.width();
    const int direction = RackFrames::edgeDirection(pointer + width / 2, width);
    if (direction == 0) {
        m_edgeFlipTask.cancel();
    } else if (!m_edgeFlipTask.isActive()) {
        m_edgeFlipTask = m_scheduler.after(edgeFlipDelay, [this, id, direction] {
            if (m_model.draggingID() != id) {
                return; // edit mode was left meanwhile
            }
            m_model.flipPage(direction);
            m_start.reset();
            // Or a pointer that does not move any more would drop the widget on a page that is out of sight.
            place(id);
            m_changed();
        });
    }
}

void RackDrag::dragEnded() {
    m_edgeFlipTask.cancel();
    if (m_id && m_model.draggingID() == m_id) {
        m_model.endDrag();
    }
    m_id.reset();
    m_start.reset();
    m_ghostCenter.reset();
}

} // namespace veslora

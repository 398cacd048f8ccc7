// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeMascotView.h"

#include "VesloraCore/Agents/AgentMarks.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/VesloraStyle.h"

#include <QPainter>
#include <QPainterPath>

namespace veslora {

ClaudeMascotView::ClaudeMascotView(QQuickItem* parent) : QQuickPaintedItem(parent) {}

void ClaudeMascotView::setCell(double cell) {
    if (assign(this, m_cell, cell, &ClaudeMascotView::cellChanged)) {
        setImplicitSize(cell * static_cast<double>(ClaudeMascot::rows.front().size()),
                        cell * 2 * static_cast<double>(ClaudeMascot::rows.size()));
        update();
    }
}

void ClaudeMascotView::paint(QPainter* painter) {
    QPainterPath path;
    for (std::size_t r = 0; r < ClaudeMascot::rows.size(); ++r) {
        for (std::size_t c = 0; c < ClaudeMascot::rows[r].size(); ++c) {
            if (ClaudeMascot::rows[r][c] == '#') {
                path.addRect(static_cast<double>(c) * m_cell, static_cast<double>(r) * 2 * m_cell, m_cell,
                             2 * m_cell);
            }
        }
    }
    // Cells touch: smoothed edges would leave seams between them.
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillPath(path, VesloraStyle::claudeOrange());
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/RackPresenter.h"

#include "VesloraCore/Widgets/WidgetLayout.h"

namespace veslora {

void RackPresenter::start() {
    follow(m_rack, &RackModel::changed);
}

void RackPresenter::setAvailableWidth(double width) {
    m_availableWidth = width;
    emit changed();
}

void RackPresenter::read() {
    std::vector<RackEntry> entries;
    for (const WidgetEntry& entry : m_rack->shownPage()) {
        entries.push_back({QString::fromUtf8(rawValue(entry.id)), QString::fromUtf8(title(entry.id)),
                           entry.width(), entry.size == WidgetSize::wide});
    }
    m_modules.assign(std::move(entries));
    emit changed();
}

double RackPresenter::spacing() const {
    if (!m_rack) {
        return RackRoom::automaticSpacing;
    }
    return RackFrames::spacing(m_rack->shownPage(),
                               {m_availableWidth, m_rack->limits().width, m_rack->customSpacing()});
}

bool RackPresenter::isEmpty() const {
    return m_rack && !m_rack->isEditing() && m_modules.rows().empty();
}

} // namespace veslora

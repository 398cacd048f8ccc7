// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/RackPresenter.h"

#include <algorithm>

namespace veslora {

namespace {

/// One that was on no page yet.
RackEntry newcomer(WidgetID id) {
    RackEntry entry;
    entry.id = QString::fromUtf8(rawValue(id));
    entry.title = QString::fromUtf8(title(id));
    return entry;
}

} // namespace

void RackPresenter::start() {
    follow(m_rack, &RackModel::changed);
}

/// The rows as they would be with nothing on the page, each where it was last.
std::vector<RackEntry> RackPresenter::absentees() const {
    std::vector<RackEntry> entries = m_modules.rows();
    if (entries.empty()) {
        std::ranges::transform(allWidgetIDs, std::back_inserter(entries), newcomer);
    }
    for (RackEntry& entry : entries) {
        entry.isShown = false;
        entry.isDragged = false;
    }
    return entries;
}

void RackPresenter::read() {
    auto entries = absentees();
    const auto page = m_rack->shownPage();
    const auto frames = m_rack->frames();
    for (std::size_t index = 0; index < page.size(); ++index) {
        RackEntry& entry = entries[static_cast<std::size_t>(page[index].id)];
        entry.offset = frames[index].x - m_rack->width() / 2;
        entry.width = frames[index].width;
        entry.isWide = page[index].size == WidgetSize::wide;
        entry.isShown = true;
        entry.isDragged = m_rack->draggingID() == page[index].id;
    }
    m_modules.assign(std::move(entries));
    m_isEmpty = page.empty() && !m_rack->isEditing();
    emit changed();
}

} // namespace veslora

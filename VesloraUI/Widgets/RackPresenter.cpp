// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/RackPresenter.h"

#include "VesloraCore/WidgetLayout.h"

#include <algorithm>
#include <numeric>

namespace veslora {

namespace {

constexpr double leastSpacing = 20;
} // namespace

void RackPresenter::componentComplete() {
    connect(m_rack, &RackModel::changed, this, &RackPresenter::readRack);
    readRack();
}

void RackPresenter::setAvailableWidth(double width) {
    m_availableWidth = width;
    emit changed();
}

std::vector<WidgetEntry> RackPresenter::page() const {
    const auto pages = m_rack->previewLayout().pages();
    const int last = static_cast<int>(pages.size()) - 1;
    return pages.empty() ? std::vector<WidgetEntry>()
                         : pages[static_cast<std::size_t>(std::min(m_rack->page(), last))];
}

void RackPresenter::readRack() {
    std::vector<RackEntry> entries;
    for (const WidgetEntry& entry : page()) {
        entries.push_back({QString::fromUtf8(rawValue(entry.id)), QString::fromUtf8(title(entry.id)),
                           entry.width(), entry.size == WidgetSize::wide});
    }
    m_modules.assign(std::move(entries));
    emit changed();
}

double RackPresenter::spacing() const {
    const auto& rows = m_modules.rows();
    if (!m_rack || m_rack->customSpacing() || rows.size() < 2) {
        return m_rack ? m_rack->spacing() : leastSpacing;
    }
    const double used = std::accumulate(rows.begin(), rows.end(), 0.0,
                                        [](double sum, const RackEntry& entry) { return sum + entry.width; });
    return std::max(leastSpacing, (m_availableWidth - used) / (static_cast<double>(rows.size()) - 1));
}

bool RackPresenter::isEmpty() const {
    return m_rack && !m_rack->isEditing() && m_modules.rows().empty();
}

} // namespace veslora

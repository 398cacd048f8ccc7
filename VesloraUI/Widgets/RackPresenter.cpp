// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/RackPresenter.h"

#include "VesloraCore/Widgets/WidgetLayout.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>
#include <numeric>

namespace veslora {

namespace {

/// The gap gives way to a narrow screen as far as the user could have set it.
constexpr double leastSpacing = SettingsKeys::widgetSpacingRange.lower;

double widthOf(const std::vector<RackEntry>& entries) {
    return std::accumulate(entries.begin(), entries.end(), 0.0,
                           [](double sum, const RackEntry& entry) { return sum + entry.width; });
}

/// How many gaps there are between that many modules.
double gapsOf(std::size_t modules) {
    return modules > 1 ? static_cast<double>(modules - 1) : 0;
}

} // namespace

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

/// Points that the modules leave to the gaps in the widest island that the screen has room for.
double RackPresenter::spare(const std::vector<RackEntry>& entries) const {
    return m_rack->widthLimit() - 2 * RackModel::sidePadding - widthOf(entries);
}

double RackPresenter::spacing() const {
    const auto& rows = m_modules.rows();
    const double wanted = m_rack ? m_rack->spacing() : RackRoom::automaticSpacing;
    if (!m_rack || rows.size() < 2) {
        return wanted;
    }
    const double gaps = gapsOf(rows.size());
    const double limited = std::min(wanted, std::max(spare(rows) / gaps, leastSpacing));
    return m_rack->customSpacing() ? limited : std::max(limited, (m_availableWidth - widthOf(rows)) / gaps);
}

bool RackPresenter::isEmpty() const {
    return m_rack && !m_rack->isEditing() && m_modules.rows().empty();
}

} // namespace veslora

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

// The island's width was made of these very sums.
constexpr double tolerance = 1e-6;

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

std::vector<WidgetEntry> RackPresenter::page() const {
    const auto pages = m_rack->previewLayout().pages();
    const int last = static_cast<int>(pages.size()) - 1;
    return pages.empty() ? std::vector<WidgetEntry>()
                         : pages[static_cast<std::size_t>(std::min(m_rack->page(), last))];
}

void RackPresenter::read() {
    std::vector<RackEntry> entries;
    for (const WidgetEntry& entry : page()) {
        entries.push_back({QString::fromUtf8(rawValue(entry.id)), QString::fromUtf8(title(entry.id)),
                           entry.width(), entry.size == WidgetSize::wide});
    }
    // What does not fit even with the least gaps is left out, rather than cut in two by the island's side.
    while (entries.size() > 1 && spare(entries) < leastSpacing * gapsOf(entries.size()) - tolerance) {
        entries.pop_back();
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
    const double wanted = m_rack ? m_rack->spacing() : RackModel::automaticSpacing;
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

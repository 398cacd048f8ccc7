// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/RackFrames.h"

#include <algorithm>
#include <numeric>

namespace veslora::RackFrames {

namespace {

double widthOf(const std::vector<WidgetEntry>& page) {
    return std::accumulate(page.begin(), page.end(), 0.0,
                           [](double sum, const WidgetEntry& entry) { return sum + entry.width(); });
}

/// The gaps between that many modules.
double gapsOf(const std::vector<WidgetEntry>& page) {
    return page.size() > 1 ? static_cast<double>(page.size() - 1) : 0;
}

} // namespace

double spacing(const std::vector<WidgetEntry>& page, const RackRoom& room) {
    const double wanted = room.customSpacing.value_or(RackRoom::automaticSpacing);
    const double gaps = gapsOf(page);
    if (gaps == 0) {
        return wanted;
    }
    const double modules = widthOf(page);
    const double limited = std::min(wanted, std::max((room.limit - modules) / gaps, RackRoom::leastSpacing));
    return room.customSpacing ? limited : std::max(limited, (room.width - modules) / gaps);
}

std::vector<ModuleFrame> frames(const std::vector<WidgetEntry>& page, const RackRoom& room) {
    const double gap = spacing(page, room);
    double x = (room.width - widthOf(page) - gap * gapsOf(page)) / 2;
    std::vector<ModuleFrame> result;
    result.reserve(page.size());
    for (const WidgetEntry& entry : page) {
        result.push_back({entry.id, x, entry.width()});
        x += entry.width() + gap;
    }
    return result;
}

int dropIndex(const std::vector<WidgetID>& others, const std::vector<ModuleFrame>& atStart, double x) {
    const auto frameOf = [&](WidgetID id) { return std::ranges::find(atStart, id, &ModuleFrame::id); };
    const auto isOnPage = [&](WidgetID id) { return frameOf(id) != atStart.end(); };
    const auto isPassed = [&](WidgetID id) { return isOnPage(id) && frameOf(id)->midX() < x; };
    const auto base = std::ranges::find_if(others, isOnPage) - others.begin();
    return static_cast<int>(base + std::ranges::count_if(others, isPassed));
}

int edgeDirection(double x, double rackWidth) {
    if (x < edgeBand) {
        return -1;
    }
    return rackWidth - edgeBand < x ? 1 : 0;
}

} // namespace veslora::RackFrames

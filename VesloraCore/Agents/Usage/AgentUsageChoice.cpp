// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/AgentUsageChoice.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace veslora::AgentUsageChoice {

std::vector<AgentKind> pick(std::vector<Activity> activities) {
    std::erase_if(activities, [](const Activity& activity) { return !activity.last; });
    std::ranges::stable_sort(activities, std::ranges::greater(), &Activity::last);
    std::vector<AgentKind> agents;
    std::ranges::transform(activities, std::back_inserter(agents), &Activity::agent);
    return agents;
}

std::vector<AgentUsage> shown(const std::vector<AgentUsage>& usages) {
    std::vector<Activity> activities;
    for (const AgentUsage& usage : usages) {
        activities.push_back({usage.agent, usage.lastActivity()});
    }
    std::vector<AgentUsage> ordered;
    for (const AgentKind agent : pick(std::move(activities))) {
        ordered.push_back(*std::ranges::find(usages, agent, &AgentUsage::agent));
    }
    return ordered;
}

std::int64_t today(const std::vector<AgentUsage>& usages) {
    TokenSum sum;
    for (const AgentUsage& usage : usages) {
        sum.add({.input = usage.today});
    }
    return sum.totals().input;
}

} // namespace veslora::AgentUsageChoice

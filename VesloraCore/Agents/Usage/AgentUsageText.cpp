// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/AgentUsageText.h"

#include <algorithm>
#include <cmath>

namespace veslora::AgentUsageText {

namespace {

constexpr double secondsPerDay = 86'400;
constexpr Timestamp firstShown = -62'135'596'800; // the year 1
constexpr Timestamp lastShown = 253'402'300'799;  // the end of the year 9999

} // namespace

std::string percent(std::optional<double> percent) {
    if (!percent) {
        return "—";
    }
    // Written so that a value that is no number counts as none used.
    const double held = *percent > 0 ? std::fmin(*percent, 100) : 0;
    return std::to_string(std::lround(held)) + "%";
}

UsageDetailLine detail(const std::optional<ClaudeLimit>& limit, bool stale, std::optional<Timestamp> at,
                       Timestamp now) {
    if (stale && at) {
        return UsageDetail::AsOf{*at};
    }
    if (!limit) {
        return UsageDetail::Unknown{};
    }
    const auto reset = limit->resetsAt;
    if (!reset || !(*reset >= firstShown && *reset <= lastShown)) {
        return UsageDetail::Plain{};
    }
    if (*reset - now < secondsPerDay) {
        return UsageDetail::ResetsAt{*reset};
    }
    return UsageDetail::ResetsOn{*reset};
}

UsageDetailLine limitDetail(const AgentUsage& usage, const std::optional<ClaudeLimit>& limit, Timestamp now) {
    if (!usage.limitsAvailable) {
        return UsageDetail::NoPlanLimits{};
    }
    return detail(limit, usage.limitsStale, usage.limitsAt, now);
}

UsageDetailLine contextDetail(const AgentUsage& usage) {
    if (!usage.contextAt) {
        return UsageDetail::Unknown{};
    }
    if (usage.contextStale) {
        return UsageDetail::AsOf{*usage.contextAt};
    }
    return UsageDetail::Plain{usage.contextDetail};
}

} // namespace veslora::AgentUsageText

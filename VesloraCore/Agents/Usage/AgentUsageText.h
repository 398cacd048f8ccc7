// SPDX-License-Identifier: MIT
// What is shown beside and below the meters of the usage widget. Times are handed on as they are: only the
// view knows how its reader writes them. Pure functions, any thread.
#pragma once

#include "VesloraCore/Agents/Usage/AgentUsage.h"

#include <string>
#include <variant>

namespace veslora {

namespace UsageDetail {

/// There is no reading.
struct Unknown {
    bool operator==(const Unknown&) const = default;
};
/// The agent's plan knows no limits.
struct NoPlanLimits {
    bool operator==(const NoPlanLimits&) const = default;
};
/// The reading is old; shown as a time of day.
struct AsOf {
    Timestamp at = 0;
    bool operator==(const AsOf&) const = default;
};
/// The window begins again within a day; shown as a time of day.
struct ResetsAt {
    Timestamp at = 0;
    bool operator==(const ResetsAt&) const = default;
};
/// The window begins again later than that; shown as a weekday.
struct ResetsOn {
    Timestamp at = 0;
    bool operator==(const ResetsOn&) const = default;
};
/// This text, possibly empty.
struct Plain {
    std::string text;
    bool operator==(const Plain&) const = default;
};

} // namespace UsageDetail

using UsageDetailLine = std::variant<UsageDetail::Unknown, UsageDetail::NoPlanLimits, UsageDetail::AsOf,
                                     UsageDetail::ResetsAt, UsageDetail::ResetsOn, UsageDetail::Plain>;

namespace AgentUsageText {

/// "42%", or "—" without a figure.
[[nodiscard]] std::string percent(std::optional<double> percent);

/// The line below the meter of a limit. `at` is when the reading came. A reset beyond the year 9999 counts as
/// unknown, since no calendar shows it.
[[nodiscard]] UsageDetailLine detail(const std::optional<ClaudeLimit>& limit, bool stale,
                                     std::optional<Timestamp> at, Timestamp now);

/// The same for one of an agent's limits, also where its plan has none.
[[nodiscard]] UsageDetailLine limitDetail(const AgentUsage& usage, const std::optional<ClaudeLimit>& limit,
                                          Timestamp now);

/// The line below the meter of the context.
[[nodiscard]] UsageDetailLine contextDetail(const AgentUsage& usage);

} // namespace AgentUsageText

} // namespace veslora

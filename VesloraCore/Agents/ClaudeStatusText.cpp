// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudeStatusText.h"

#include "VesloraCore/Agents/AgentMarks.h"

#include <algorithm>

namespace veslora::ClaudeStatusText {

namespace {

constexpr double longestMinutes = 60.0 * 100'000;

std::string workingLabel(double seconds, const Words& words) {
    // Written so that a span that is no number counts as none.
    const int minutes = seconds > 0 ? static_cast<int>(std::min(seconds / 60, longestMinutes)) : 0;
    if (minutes < 1) {
        return words.translate("AgentStatus", "<1M");
    }
    if (minutes < 60) {
        return Words::filled(words.translate("AgentStatus", "%1M"), {std::to_string(minutes)});
    }
    const int rest = minutes % 60;
    return Words::filled(words.translate("AgentStatus", "%1H%2"),
                         {std::to_string(minutes / 60), (rest < 10 ? "0" : "") + std::to_string(rest)});
}

} // namespace

std::string label(const ClaudeSessionStatus& status, Timestamp now, const Words& words) {
    if (std::holds_alternative<ClaudeStatus::NeedsApproval>(status)) {
        return words.translate("AgentStatus", "APPROVE");
    }
    if (std::holds_alternative<ClaudeStatus::Finished>(status)) {
        return words.translate("AgentStatus", "DONE");
    }
    if (const auto* working = std::get_if<ClaudeStatus::Working>(&status)) {
        return workingLabel(now - working->since, words);
    }
    return words.translate("AgentStatus", "IDLE");
}

bool isLit(const ClaudeSessionStatus& status, Timestamp now) {
    if (std::holds_alternative<ClaudeStatus::Working>(status)) {
        return StatusBlink::isLit(now);
    }
    return !std::holds_alternative<ClaudeStatus::Idle>(status);
}

} // namespace veslora::ClaudeStatusText

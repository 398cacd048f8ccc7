// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/AgentUsage.h"

#include "VesloraCore/Agents/Usage/ClaudeUsageText.h"

#include <algorithm>

namespace veslora {

namespace {

bool isStale(Timestamp receivedAt, Timestamp now) {
    return now - receivedAt > AgentUsage::staleAfter;
}

std::string windowText(std::int64_t tokens, const Words& words) {
    return Words::filled(words.translate("Usage", "of %1"), {ClaudeUsageText::tokens(tokens, words)});
}

std::string detailOf(const ClaudeStatusSnapshot& context, const Words& words) {
    std::string detail = context.model.value_or("");
    if (context.contextSize) {
        detail += (context.model ? " · " : "") + windowText(*context.contextSize, words);
    }
    return detail;
}

template <class Limits>
void readLimits(const Limits& limits, Timestamp now, AgentUsage& usage) {
    usage.fiveHour = limits.fiveHour;
    usage.week = limits.week;
    usage.limitsAt = limits.receivedAt;
    usage.limitsStale = isStale(limits.receivedAt, now);
}

} // namespace

std::optional<Timestamp> AgentUsage::lastActivity() const {
    // An absent one is less than any other.
    return std::max(limitsAt, contextAt);
}

AgentUsage claudeUsage(const std::optional<ClaudeStatusSnapshot>& limits,
                       const std::optional<ClaudeStatusSnapshot>& context, const ClaudeTokenTotals& today,
                       Timestamp now, const Words& words) {
    AgentUsage usage;
    usage.agent = AgentKind::claude;
    if (limits) {
        readLimits(*limits, now, usage);
        usage.limitsAvailable = limits->limitsAvailable;
    }
    if (context) {
        usage.contextPercent = context->contextPercent;
        usage.contextDetail = detailOf(*context, words);
        usage.contextAt = context->receivedAt;
        usage.contextStale = isStale(context->receivedAt, now);
    }
    usage.today = today.total();
    return usage;
}

AgentUsage codexUsage(const std::optional<CodexLimits>& limits, const std::optional<CodexContext>& context,
                      const ClaudeTokenTotals& today, Timestamp now, const Words& words) {
    AgentUsage usage;
    usage.agent = AgentKind::codex;
    if (limits) {
        readLimits(*limits, now, usage);
    }
    if (context) {
        usage.contextPercent = context->percent;
        usage.contextDetail = windowText(context->window, words);
        usage.contextAt = context->receivedAt;
        usage.contextStale = isStale(context->receivedAt, now);
    }
    usage.today = today.total();
    return usage;
}

} // namespace veslora

// SPDX-License-Identifier: MIT
// The input of a status line, as another program's file holds it.
// Seeds: agents/claude/statusline/*.json
#include "VesloraCore/Agents/Usage/AgentUsageText.h"
#include "VesloraCore/Agents/Usage/ClaudeStatusSnapshot.h"
#include "fuzz/Fuzzing.h"

#include <cmath>

using namespace veslora;
using fuzz::require;

namespace {

void checkPercent(double percent) {
    require(percent >= 0 && percent <= 100);
}

void checkLimit(const std::optional<ClaudeLimit>& limit) {
    if (limit) {
        checkPercent(limit->percent);
        require(!limit->resetsAt || std::isfinite(*limit->resetsAt));
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto snapshot = ClaudeStatusSnapshot::parse(fuzz::textOf(data, size), 1'000'000);
    if (snapshot) {
        require(!snapshot->sessionId.empty() && snapshot->receivedAt == 1'000'000);
        checkLimit(snapshot->fiveHour);
        checkLimit(snapshot->week);
        checkPercent(snapshot->contextPercent.value_or(0));
        const AgentUsage usage = claudeUsage(snapshot, snapshot, {}, 1'000'900);
        require(!usage.limitsStale && !usage.contextStale);
        require(AgentUsageText::percent(usage.contextPercent).size() <= 4);
        (void)AgentUsageText::limitDetail(usage, usage.week, 1'000'900);
    }
    return 0;
}

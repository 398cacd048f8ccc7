// SPDX-License-Identifier: MIT
// Payloads of Codex's hooks, and what sessions make of them.
// Seeds: agents/codex/hooks/*.json
#include "VesloraCore/Agents/CodexSessions.h"
#include "VesloraCore/Agents/Hooks/CodexHookEvent.h"
#include "VesloraCore/Text/IdentifierText.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr Timestamp time = 1'800'000'000;
    constexpr std::int32_t pid = 42;
    const auto event = CodexHookEvent::parse(fuzz::textOf(data, size), time, pid);
    if (!event) {
        return 0;
    }
    require(IdentifierText::isPlain(event->sessionId));
    require(event->time == time && event->pid == pid);
    CodexSessions sessions;
    sessions.apply(*event);
    const auto summaries = sessions.summaries(time);
    const bool isEnd = std::holds_alternative<CodexHookEvent::End>(event->kind);
    require(summaries.size() == (isEnd ? 0 : 1));
    require(isEnd || (summaries.front().id == event->sessionId && !summaries.front().name.empty()));
    sessions.reconcile({}, time + 10'000);
    require(sessions.isEmpty());
    return 0;
}

// SPDX-License-Identifier: MIT
// Payloads of hooks, and the recorded lines that hold them.
// Seeds: agents/claude/hooks/*.json
#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    constexpr Timestamp time = 1'800'000'000;
    if (const auto event = ClaudeHookEvent::parse(text, time)) {
        require(!event->sessionId.empty());
        require(event->time == time);
        require(!event->tool || std::holds_alternative<ClaudeHookEvent::ToolDone>(event->kind));
        const auto line = "{\"t\": 5, \"e\": " + std::string(text) + "}";
        const auto recorded = ClaudeHookEvent::parse(line);
        // Wrapped it lies one level deeper, and a byte order mark is in the middle.
        require(!recorded || (recorded->sessionId == event->sessionId && recorded->kind == event->kind));
    }
    if (const auto recorded = ClaudeHookEvent::parse(text)) {
        require(!recorded->sessionId.empty());
        require(recorded->time == recorded->time);
    }
    return 0;
}

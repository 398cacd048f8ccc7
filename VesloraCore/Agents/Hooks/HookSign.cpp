// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/HookSign.h"

#include "VesloraCore/Overloaded.h"

#include <variant>

namespace veslora {

HookSign HookSign::of(const ClaudeHookEvent& event) {
    const Kind kind =
        std::visit(Overloaded{
                       [](const ClaudeHookEvent::ToolStart& /*kind*/) { return Kind::toolStart; },
                       [](const ClaudeHookEvent::NeedsYou& /*kind*/) { return Kind::needsYou; },
                       [](const ClaudeHookEvent::Prompt& /*kind*/) { return Kind::prompt; },
                       [](const ClaudeHookEvent::Stop& /*kind*/) { return Kind::turnEnd; },
                       [](const ClaudeHookEvent::ToolDone& /*kind*/) { return Kind::toolDone; },
                       [](const ClaudeHookEvent::Ignored& /*kind*/) { return Kind::other; },
                   },
                   event.kind);
    return {kind, event.time};
}

HookSign HookSign::of(const CodexHookEvent& event) {
    const Kind kind =
        std::visit(Overloaded{
                       [](const CodexHookEvent::ToolStart& /*kind*/) { return Kind::toolStart; },
                       [](const CodexHookEvent::Start& /*kind*/) { return Kind::sessionStart; },
                       [](const CodexHookEvent::Prompt& /*kind*/) { return Kind::prompt; },
                       [](const CodexHookEvent::ToolDone& /*kind*/) { return Kind::toolDone; },
                       [](const CodexHookEvent::Stop& /*kind*/) { return Kind::turnEnd; },
                       [](const CodexHookEvent::Interrupt& /*kind*/) { return Kind::turnEnd; },
                       [](const CodexHookEvent::End& /*kind*/) { return Kind::sessionEnd; },
                       [](const CodexHookEvent::Ignored& /*kind*/) { return Kind::other; },
                   },
                   event.kind);
    return {kind, event.time};
}

} // namespace veslora

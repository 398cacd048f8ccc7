// SPDX-License-Identifier: MIT
// One use of a tool, as far as it takes to know it again: the same request comes by in a permission prompt
// and, once it has run, in an event. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/HookPayload.h"

#include <string>

namespace veslora {

struct ToolUse {
    std::string name;
    /// What the tool was given, as `inputText` writes it. Empty, and so like no request's, where it was
    /// longer than HookPayload::longestInput.
    std::string input;
    bool operator==(const ToolUse&) const = default;

    /// Compact JSON with sorted keys, the same text for the same input. One longer than 1,024 bytes is kept
    /// as its length and a 64-bit hash only, since an agent's input may be a whole file.
    [[nodiscard]] static std::string inputText(const Json& input);
    /// The use that a hook's payload tells of. A missing "tool_name" counts as empty.
    [[nodiscard]] static ToolUse of(const HookPayload& payload);
};

} // namespace veslora

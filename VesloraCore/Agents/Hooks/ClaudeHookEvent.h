// SPDX-License-Identifier: MIT
// One event of a Claude Code session, from the payload that its hook was given. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/ToolUse.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraCore/Timestamp.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace veslora {

struct ClaudeHookEvent {
    /// A tool is about to run; `text` is its line of activity.
    struct ToolStart {
        std::string text;
        bool operator==(const ToolStart&) const = default;
    };
    /// The agent wants the user; `message` may be empty, and is cut after HookPayload::longestText bytes.
    struct NeedsYou {
        std::string message;
        bool operator==(const NeedsYou&) const = default;
    };
    /// The user submitted a prompt.
    struct Prompt {
        bool operator==(const Prompt&) const = default;
    };
    /// The turn ended.
    struct Stop {
        bool operator==(const Stop&) const = default;
    };
    /// A tool finished.
    struct ToolDone {
        bool operator==(const ToolDone&) const = default;
    };
    /// Nothing of interest, but a sign of life.
    struct Ignored {
        bool operator==(const Ignored&) const = default;
    };
    using Kind = std::variant<ToolStart, NeedsYou, Prompt, Stop, ToolDone, Ignored>;

    std::string sessionId; ///< never empty
    Timestamp time = 0;    ///< when it happened; the caller's, never the payload's
    Kind kind = Ignored{};
    std::optional<ToolUse> tool; ///< what ran; with `ToolDone` only
    bool operator==(const ClaudeHookEvent&) const = default;

    /// The event of a hook's payload, as bytes. Nothing for anything but a JSON object that names its session
    /// and its event. A line of activity is in the reader's words.
    [[nodiscard]] static std::optional<ClaudeHookEvent> parse(std::string_view payload, Timestamp time,
                                                              const Words& words = {});
    /// The event of a recorded line: an object of "t", seconds since 1970, and "e", the payload.
    [[nodiscard]] static std::optional<ClaudeHookEvent> parse(std::string_view line);
};

} // namespace veslora

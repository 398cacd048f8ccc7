// SPDX-License-Identifier: MIT
// One event of a Codex session, from the payload that its hook was given. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/HookPayload.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace veslora {

struct CodexHookEvent {
    /// A tool is about to run; `text` is its line of activity.
    struct ToolStart {
        std::string text;
        bool operator==(const ToolStart&) const = default;
    };
    /// The session begins. Codex tells so with its first prompt, not when it starts.
    struct Start {
        bool operator==(const Start&) const = default;
    };
    /// The user submitted a prompt.
    struct Prompt {
        bool operator==(const Prompt&) const = default;
    };
    /// A tool finished.
    struct ToolDone {
        bool operator==(const ToolDone&) const = default;
    };
    /// The turn ended by itself.
    struct Stop {
        bool operator==(const Stop&) const = default;
    };
    /// The user broke the turn off.
    struct Interrupt {
        bool operator==(const Interrupt&) const = default;
    };
    /// The session is over.
    struct End {
        bool operator==(const End&) const = default;
    };
    /// Nothing of interest, but a sign of life; a permission request is one too.
    struct Ignored {
        bool operator==(const Ignored&) const = default;
    };
    using Kind = std::variant<ToolStart, Start, Prompt, ToolDone, Stop, Interrupt, End, Ignored>;

    std::string sessionId; ///< ASCII letters, ASCII digits and "-", never empty
    Timestamp time = 0;    ///< when it happened; the caller's, never the payload's
    /// The session's own process; absent where it is not known. The caller's: see CodexProcess.
    std::optional<std::int32_t> pid;
    std::string cwd; ///< working directory, possibly empty
    Kind kind = Ignored{};
    bool operator==(const CodexHookEvent&) const = default;

    /// Nothing for a payload that names no event, or whose session has no identifier of that form.
    /// A line of activity is in the reader's words.
    [[nodiscard]] static std::optional<CodexHookEvent>
    of(const HookPayload& payload, Timestamp time, std::optional<std::int32_t> pid, const Words& words = {});
    /// The same of bytes; nothing for those that are no JSON object.
    [[nodiscard]] static std::optional<CodexHookEvent>
    parse(std::string_view payload, Timestamp time, std::optional<std::int32_t> pid, const Words& words = {});
};

} // namespace veslora

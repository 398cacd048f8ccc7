// SPDX-License-Identifier: MIT
// What Claude Code writes about one of its sessions while it runs. Plain values, any thread.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

struct ClaudeSessionFile {
    std::string sessionId; ///< never empty
    std::int32_t pid = 0;  ///< the agent's process
    std::string cwd;       ///< working directory, possibly empty
    std::string name;      ///< the session's own name, possibly empty
    bool isBusy = false;   ///< it works, or has a dialog of its own open
    /// What it waits for the user to do, possibly empty; absent while it does not wait.
    std::optional<std::string> waitingFor;
    std::optional<Timestamp> statusSince; ///< when the status last changed
    std::optional<std::string> tmux;      ///< the tmux pane it runs in, such as "main:@0.%0"
    std::string version;                  ///< the agent's own, possibly empty
    bool operator==(const ClaudeSessionFile&) const = default;

    /// Nothing for bytes that are no JSON object, or that lack a session identifier or a 32-bit process id.
    [[nodiscard]] static std::optional<ClaudeSessionFile> parse(std::string_view bytes);
};

} // namespace veslora

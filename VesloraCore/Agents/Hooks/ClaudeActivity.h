// SPDX-License-Identifier: MIT
// The one line that says what a session's running tool does. Pure functions for both agents, any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/HookPayload.h"
#include "VesloraCore/Text/Words.h"

#include <optional>
#include <string>
#include <string_view>

namespace veslora::ClaudeActivity {

/// At most 60 characters; a longer line is cut and ends in an ellipsis. `input` may be anything: what is
/// missing just makes the line shorter.
[[nodiscard]] std::string describe(std::string_view tool, const Json& input, const Words& words = {});
/// The line of a hook's payload, however long the tool's input is.
[[nodiscard]] std::string describe(const HookPayload& payload, const Words& words = {});

/// The readable form of a tool's name that comes from an MCP server: "git_hub: open pull request" of
/// "mcp__git_hub__open_pull_request". Nothing for any other name.
[[nodiscard]] std::optional<std::string> mcpName(std::string_view tool);

} // namespace veslora::ClaudeActivity

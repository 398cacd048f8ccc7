// SPDX-License-Identifier: MIT
// Whether Codex was told to trust hooks. It runs a hook only after that, and keeps in its own config.toml for
// which places of a hooks.json it was told so: "<path>:<event>:<group>:<hook>", the event in words joined by
// underscores. Text to text, no files, any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veslora::CodexHookTrust {

/// The places of those hooks in the text of a hooks.json that run one of the commands, as in
/// "pre_tool_use:0:0". None for text that can't be read.
[[nodiscard]] std::vector<std::string> placesOf(std::string_view hooks,
                                                const std::vector<std::string>& commands);

/// Whether the text of a config.toml names each of those places of the hooks.json of that path. What it was
/// that the user trusted there, only Codex can tell.
[[nodiscard]] bool namesAll(std::string_view configuration, const std::string& path,
                            const std::vector<std::string>& places);

} // namespace veslora::CodexHookTrust

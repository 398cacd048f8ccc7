// SPDX-License-Identifier: MIT
// Makes our script Claude Code's status line, and gives the user's own back. Text to text, no files, any
// thread.
#pragma once

#include "VesloraCore/Agents/Hooks/InstallError.h"

#include <optional>
#include <string>
#include <string_view>

namespace veslora::ClaudeStatusLineInstaller {

struct Installed {
    std::string text;
    /// The status line that was there and was not ours, as compact JSON of any type; absent where there was
    /// none.
    std::optional<std::string> previous;
    bool operator==(const Installed&) const = default;
};

/// The text with `command` as its status line; an absent `text` is a file that is not there. Of an object
/// that is there all but "type" and "command" stays. Throws ClaudeHooksInstaller::InstallError.
[[nodiscard]] Installed installing(std::optional<std::string_view> text, const std::string& command);

/// The text with our status line replaced by `previous`, or taken out where that is absent or no JSON. One
/// that is not ours stays. Throws ClaudeHooksInstaller::InstallError.
[[nodiscard]] std::string removing(std::string_view text, const std::string& command,
                                   std::optional<std::string_view> previous);

/// Whether the status line is ours. False for text that can't be read.
[[nodiscard]] bool isInstalled(std::optional<std::string_view> text, const std::string& command);

/// The command of a saved status line, where it is an object that has one as text.
[[nodiscard]] std::optional<std::string> commandOf(std::string_view previous);

} // namespace veslora::ClaudeStatusLineInstaller

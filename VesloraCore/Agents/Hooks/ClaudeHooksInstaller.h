// SPDX-License-Identifier: MIT
// Puts our hooks into an agent's own configuration text and takes them out again, leaving everything else as
// it is. It serves Claude Code's settings.json and Codex's hooks.json. Text to text, no files, any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/InstallError.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora::ClaudeHooksInstaller {

/// The event in which an agent asks for permission.
inline constexpr std::string_view permissionEvent = "PermissionRequest";

/// What is registered with an agent.
struct HookSet {
    std::vector<std::string> events;        ///< those that the event script is registered for
    std::optional<std::string> toolMatcher; ///< for tool events and the permission event
    std::optional<int> timeout;             ///< of the event script, in seconds
    bool operator==(const HookSet&) const = default;

    [[nodiscard]] static const HookSet& claude();
    [[nodiscard]] static const HookSet& codex();
};

/// The commands of our scripts, as they stand in the configuration.
struct Commands {
    std::string event;
    std::optional<std::string> permission;
    /// Forms in which earlier versions registered the event script.
    std::vector<std::string> legacy = {};
};

/// The text with our hooks in it; an absent `text` is a file that is not there. A second run changes nothing.
/// Throws InstallError.
[[nodiscard]] std::string installing(std::optional<std::string_view> text, const Commands& commands,
                                     const HookSet& set);

/// The text without our hooks. A group goes as a whole, also where the user added to it. Throws InstallError.
[[nodiscard]] std::string removing(std::string_view text, const Commands& commands);

/// Whether every hook of the set is there. False for text that can't be read.
[[nodiscard]] bool isInstalled(std::optional<std::string_view> text, const Commands& commands,
                               const HookSet& set);

/// Whether some of our hooks are there, in whatever event, but not all.
[[nodiscard]] bool isPartlyInstalled(std::optional<std::string_view> text, const Commands& commands,
                                     const HookSet& set);

/// Whether anything of ours is there, in whatever event and in whatever form an earlier version gave it.
[[nodiscard]] bool holdsAny(std::optional<std::string_view> text, const Commands& commands);

} // namespace veslora::ClaudeHooksInstaller

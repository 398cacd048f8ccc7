// SPDX-License-Identifier: MIT
// What lies in the support directory, the one place where the agents' hooks and the program meet. The scripts
// find everything beside themselves by these names.
#pragma once

#include <string_view>

namespace veslora::SupportNames {

inline constexpr std::string_view heartbeat = "heartbeat"; ///< the clock in seconds since 1970, digits alone
/// The program's process id, digits alone, and on the next line the space in which it counts.
inline constexpr std::string_view processId = "pid";
inline constexpr std::string_view startedBefore = "started"; ///< exists from the first start on
inline constexpr std::string_view jsonValue = "json-value";  ///< the helper that the status-line script asks

inline constexpr std::string_view claudeHook = "claude-hook.sh";
inline constexpr std::string_view claudePermission = "claude-permission.sh";
inline constexpr std::string_view claudeStatusLine = "claude-statusline.sh";
inline constexpr std::string_view codexHook = "codex-hook.sh";
inline constexpr std::string_view codexPermission = "codex-permission.sh";

inline constexpr std::string_view claudeSpool = "claude-spool"; ///< a JSON file for each event or request
inline constexpr std::string_view claudeAnswers = "answers"; ///< a file for each answer, named by the request
inline constexpr std::string_view codexSpool = "codex-spool";
inline constexpr std::string_view codexAnswers = "codex-answers";

inline constexpr std::string_view statusLineSnapshots = "statusline"; ///< the newest status of each session
inline constexpr std::string_view statusLineOriginal = "statusline-original.json"; ///< the user's own setting
inline constexpr std::string_view statusLineWrapped = "statusline-wrapped";        ///< its command

// Each exists while the agent's configuration is a file which we made, and holds that file's path.
inline constexpr std::string_view claudeSettingsMade = "claude-settings-made";
inline constexpr std::string_view codexHooksMade = "codex-hooks-made";

} // namespace veslora::SupportNames

// SPDX-License-Identifier: MIT
// By which names an agent's scripts and the program find each other in the support directory. Plain values,
// any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/SupportNames.h"

#include <array>
#include <string_view>

namespace veslora {

struct AgentHookNames {
    std::string_view agent;      ///< for readers of its scripts
    std::string_view spool;      ///< folder: a JSON file for each event or request
    std::string_view answers;    ///< folder: a file for each answer, named by the request
    std::string_view event;      ///< script
    std::string_view permission; ///< script
    std::string_view madeMarker; ///< exists while the agent's configuration is a file which we made
    /// The names of the spool's files tell the process that the hook was started by, as the payload does not.
    bool tellsParent = false;
};

inline constexpr AgentHookNames claudeHookNames{
    .agent = "Claude Code",
    .spool = SupportNames::claudeSpool,
    .answers = SupportNames::claudeAnswers,
    .event = SupportNames::claudeHook,
    .permission = SupportNames::claudePermission,
    .madeMarker = SupportNames::claudeSettingsMade,
};

inline constexpr AgentHookNames codexHookNames{
    .agent = "Codex",
    .spool = SupportNames::codexSpool,
    .answers = SupportNames::codexAnswers,
    .event = SupportNames::codexHook,
    .permission = SupportNames::codexPermission,
    .madeMarker = SupportNames::codexHooksMade,
    .tellsParent = true,
};

/// Those of every agent that has hooks.
inline constexpr std::array agentHookNames{claudeHookNames, codexHookNames};

} // namespace veslora

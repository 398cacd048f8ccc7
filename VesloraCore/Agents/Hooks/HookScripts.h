// SPDX-License-Identifier: MIT
// The shell scripts that the agents run: POSIX sh, the same under dash, bash and busybox. A script must never
// hurt its agent, so each ends with status 0 whatever happens, prints nothing but a decision or the status
// line, and says nothing on standard error. Plain texts, any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veslora::HookScripts {

struct Script {
    std::string_view fileName; ///< in the support directory
    std::string text;
};

/// An event script files nothing more while its spool holds this many entries, so that hooks left behind by a
/// program that is gone can't fill the disk.
inline constexpr int spoolLimit = 4096;

/// Seconds for which a permission script waits for an answer, before its agent asks in the terminal itself.
inline constexpr int permissionWait = 20;

/// The event and the permission script of each agent, in the order of AgentHookNames, and then the script of
/// the status line.
[[nodiscard]] const std::vector<Script>& all();

/// The text of the script of a name in SupportNames; empty for any other name.
[[nodiscard]] std::string_view text(std::string_view fileName);

} // namespace veslora::HookScripts

// SPDX-License-Identifier: MIT
// The folder in which an agent's permission scripts look for answers: one file for each request, named by its
// id and holding one word. Like all folders of ours it is reached through a handle, never through a link that
// somebody put in its place. Main thread only.
#pragma once

#include "VesloraCore/Agents/ClaudeDecision.h"
#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Platform/Trouble.h"

#include <string>
#include <string_view>
#include <system_error>

namespace veslora {

class SupportDirectory;

class AgentAnswers {
  public:
    /// Seconds after which no script can come for an answer any more.
    static constexpr double lifetime = 60;

    AgentAnswers(SupportDirectory& support, std::string_view name);

    /// Ids that a script can have made: ASCII letters, digits and "-". Nothing else ever names a file.
    [[nodiscard]] static bool isId(const std::string& id);
    /// As a line of the log may hold it: an id that no script made may be any text at all. Valid as long as
    /// `id`.
    [[nodiscard]] static const char* named(const std::string& id);

    /// Where there is an error nothing was answered, and the script runs out its wait. An odd id gives
    /// `invalid_argument`.
    std::error_code write(ClaudeDecision decision, const std::string& id);

    /// Whether the answer of that id lies there no longer, as a script removes it when it takes it. False
    /// where the folder itself is gone, since no script can have found it there.
    [[nodiscard]] bool hasBeenTaken(const std::string& id) const;

    void removeStale(Timestamp now);

  private:
    SupportDirectory& m_support;
    std::string m_name;
    Trouble m_sweepTrouble;
};

} // namespace veslora

// SPDX-License-Identifier: MIT
// The folder in which an agent's permission scripts look for answers: one file for each request, named by its
// id and holding one word. Main thread only.
#pragma once

#include "VesloraCore/ClaudeDecision.h"
#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Platform/Files.h"

#include <string>
#include <string_view>
#include <system_error>

namespace veslora {

class SupportDirectory;

class AgentAnswers {
  public:
    /// Seconds after which no script can come for an answer any more.
    static constexpr double lifetime = 60;

    AgentAnswers(Files& files, SupportDirectory& support, std::string_view name);

    /// Ids that a script can have made: ASCII letters, digits and "-". Nothing else ever names a file.
    [[nodiscard]] static bool isId(const std::string& id);

    /// An odd id is not answered. A failure is ignored: the script then runs out its wait.
    void write(ClaudeDecision decision, const std::string& id);

    void removeStale(Timestamp now);

  private:
    Files& m_files;
    SupportDirectory& m_support;
    std::string m_name;
};

} // namespace veslora

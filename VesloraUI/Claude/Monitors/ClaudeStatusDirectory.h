// SPDX-License-Identifier: MIT
// The folder in which the status-line script leaves the newest status of each session. Main thread only.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeStatusSnapshot.h"
#include "VesloraUI/Claude/Monitors/SettledStat.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Trouble.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veslora {

class SupportDirectory;

class ClaudeStatusDirectory {
  public:
    /// Seconds for which the file of a session that is gone is kept.
    static constexpr double lifetime = 300;

    explicit ClaudeStatusDirectory(const SupportDirectory& support) : m_support(support) {}

    /// Every readable status, newest first. The files of sessions that are not among `liveSessionIds` are
    /// removed once they are old enough; none is while it is absent.
    [[nodiscard]] std::vector<ClaudeStatusSnapshot>
    read(Timestamp now, const std::optional<std::set<std::string>>& liveSessionIds);

  private:
    struct Known {
        SettledStat stat;
        std::optional<ClaudeStatusSnapshot> snapshot;
    };
    [[nodiscard]] Known look(Folder& folder, const std::string& name, const FileStat& stat, Timestamp now);

    const SupportDirectory& m_support;
    std::map<std::string, Known> m_known; ///< by name
    Troubles m_troubles;                  ///< of files that can't be read
};

} // namespace veslora

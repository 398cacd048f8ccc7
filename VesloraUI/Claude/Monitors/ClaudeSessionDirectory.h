// SPDX-License-Identifier: MIT
// Reads the folder in which Claude Code keeps one file for each running session. Main thread only.
#pragma once

#include "VesloraCore/Agents/ClaudeSessionFile.h"
#include "VesloraUI/Claude/Monitors/SettledStat.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Trouble.h"

#include <map>
#include <string>
#include <vector>

namespace veslora {

class ClaudeSessionDirectory {
  public:
    /// Real files are under a kilobyte.
    static constexpr std::size_t cap = std::size_t{256} << 10;

    ClaudeSessionDirectory(Files& files, std::string path) : m_files(files), m_path(std::move(path)) {}

    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] bool exists() const;

    /// Every session that has a file, in the order of the files' names. Claude Code rewrites its files in
    /// place, so one that can't be understood right now counts as what was last read from it; one that is
    /// gone, or is no plain file of our own user any more, counts for nothing.
    [[nodiscard]] std::vector<ClaudeSessionFile> read(Timestamp now);

  private:
    struct Known {
        SettledStat stat;
        std::optional<ClaudeSessionFile> session; ///< the last good record
    };
    void look(Known& known, const std::string& path, const FileStat& stat, Timestamp now);

    Files& m_files;
    std::string m_path;
    std::map<std::string, Known> m_known;
    Troubles m_troubles; ///< of files that can't be read
};

} // namespace veslora

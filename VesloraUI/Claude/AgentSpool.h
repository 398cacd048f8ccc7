// SPDX-License-Identifier: MIT
// The folder into which an agent's hook scripts drop one file for each event and request. Main thread only.
#pragma once

#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Platform/Files.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace veslora {

class SupportDirectory;

/// One file that was taken out of the spool.
struct SpoolFile {
    std::string name;
    Timestamp time = 0; ///< its modification date
    ReadResult content; ///< an error for whatever is not a plain file of our own user, or is too large
};

class AgentSpool {
  public:
    /// An event older than this was left by a hook long ago and is not worth hearing of.
    static constexpr double eventLifetime = 86400;
    /// No real payload comes near this; one that does is not read.
    static constexpr std::size_t payloadCap = std::size_t{16} << 20;

    AgentSpool(Files& files, SupportDirectory& support, std::string_view name);

    [[nodiscard]] const std::string& path() const { return m_path; }
    void create();

    /// Hands every complete file to `each`, oldest first and those of one moment by name, and deletes it
    /// then, whatever `each` made of it.
    void take(Timestamp now, const std::function<void(const SpoolFile&)>& each);

  private:
    struct Entry;
    void sweepLeftovers(const std::vector<std::string>& names, Timestamp now);

    Files& m_files;
    SupportDirectory& m_support;
    std::string m_name;
    std::string m_path;
    /// Files that could not be deleted, by name, so that they are not taken again and again.
    std::map<std::string, std::int64_t> m_stuck;
    Timestamp m_lastSweep = distantPast;
};

} // namespace veslora

// SPDX-License-Identifier: MIT
// The folder in which the program and the hook scripts meet, and the signs by which the scripts know that the
// program is there to answer. Main thread only.
#pragma once

#include "VesloraUI/Platform/Files.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veslora {

class SupportDirectory {
  public:
    static constexpr std::uint32_t directoryMode = 0700;
    static constexpr std::uint32_t fileMode = 0600;
    static constexpr std::uint32_t scriptMode = 0755;

    /// `runtime` is a folder that costs no disk write and ends with the login session; equal to `path` where
    /// there is none.
    SupportDirectory(Files& files, std::string path, std::string runtime);

    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] std::string pathOf(std::string_view name) const { return m_path + "/" + std::string(name); }

    /// Makes the folder, for our user alone. A failure is the caller's to show or to try again.
    std::error_code create();
    /// Makes a folder in it, for our user alone.
    std::error_code createFolder(std::string_view name);

    /// Writes the clock, in whole seconds, into "heartbeat". The file lies in the runtime folder and a link
    /// points to it, so that a beat every two seconds never reaches the disk. A failure is ignored: the
    /// scripts then leave the agent alone.
    void writeHeartbeat(Timestamp now);

    /// Writes the program's process id into "pid", by which a waiting script sees that the program was
    /// killed.
    void writeProcess(std::int32_t pid);

    /// Removes both. Scripts that wait go on at once.
    void removeSigns();

  private:
    [[nodiscard]] bool hasRuntime() const { return m_runtime != m_path; }

    Files& m_files;
    std::string m_path;
    std::string m_runtime;
};

} // namespace veslora

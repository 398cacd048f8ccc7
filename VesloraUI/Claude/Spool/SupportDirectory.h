// SPDX-License-Identifier: MIT
// The folder in which the program and the hook scripts meet, and the signs by which the scripts know that the
// program is there to answer. It must be our user's own; a link in its place counts as no folder, so that
// nothing is ever read, written or deleted elsewhere. Main thread only.
#pragma once

#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Trouble.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class Processes;

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
    /// Makes a folder in it, for our user alone, and opens it.
    OpenedFolder createFolder(std::string_view name);

    /// The folder as it is now. Whatever the program or a script keeps in it is reached through this, since a
    /// path could lead through a link into a folder of somebody else's.
    [[nodiscard]] OpenedFolder open() const { return m_files.openFolder(m_path); }
    /// A folder in it, as it is now.
    [[nodiscard]] OpenedFolder openFolder(std::string_view name) const;

    /// The signs of life, which remain as long as anybody holds this.
    class Presence {
      public:
        explicit Presence(SupportDirectory& directory) : m_directory(directory) {}
        Presence(const Presence&) = delete;
        Presence& operator=(const Presence&) = delete;
        ~Presence() { m_directory.removeSigns(); }

      private:
        SupportDirectory& m_directory;
    };

    /// Shows the scripts that the program is there: "pid" holds its process id and behind it the space in
    /// which that counts, by which a script sees that the program was killed, and "heartbeat" the clock. Once
    /// the last one who was given this lets go of it, or the program ends by `exit`, they are removed and the
    /// scripts that wait go on at once. The directory must live longer.
    [[nodiscard]] std::shared_ptr<Presence> show(const Processes& processes, Timestamp now);

    /// Writes the clock, in whole seconds, into "heartbeat". The file lies in the runtime folder and a link
    /// points to it, so that a beat every two seconds never reaches the disk. All monitors beat at one tick;
    /// only the first of them writes. A failure is ignored: the scripts then leave the agent alone.
    void writeHeartbeat(Timestamp now);

  private:
    [[nodiscard]] bool hasRuntime() const { return m_runtime != m_path; }

    std::error_code writeBeat(const std::string& beat);
    /// Lets the support folder's heartbeat be a link to the file at that path.
    std::error_code linkTo(const std::string& beat);
    void writeProcess(const Processes& processes);
    void removeSigns();
    /// Lets the signs go also where nothing of this is destroyed.
    void arrangeExit();

    Files& m_files;
    std::string m_path;
    std::string m_runtime;
    std::weak_ptr<Presence> m_presence;
    std::vector<std::unique_ptr<RemovalAtExit>> m_atExit;
    std::optional<Timestamp> m_lastBeat; ///< absent when the last one could not be written
    Trouble m_beatTrouble;
};

} // namespace veslora

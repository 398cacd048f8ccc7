// SPDX-License-Identifier: MIT
// Notices that an upgrade has put another version in the place of the program that runs, and says when that
// can take over without anybody losing anything. Main thread only.
#pragma once

#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Task.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace veslora {

class DirectoryWatch;
class DirectoryWatcher;
class ProgramRunning;
class Scheduler;

class UpgradeWatch {
  public:
    static constexpr double settling = 30;   ///< seconds from an upgrade to the first try, and between tries
    static constexpr double patience = 300;  ///< seconds until a program that did not start is tried again
    static constexpr double answerTime = 10; ///< seconds that the new program has to tell its version

    struct Seams {
        Scheduler& scheduler;
        Files& files;
        DirectoryWatcher& watcher;
        ProgramRunning& programs;
    };
    struct Client {
        /// Whether the program could end now without anybody noticing.
        std::function<bool()> isAtRest;
        /// The new program can take over. Called at most once, while the old one is at rest.
        std::function<void()> takeOver;
    };

    /// `program` is the absolute path of the executable that runs.
    UpgradeWatch(const Seams& seams, std::string program, Client client);
    ~UpgradeWatch();
    UpgradeWatch(const UpgradeWatch&) = delete;
    UpgradeWatch& operator=(const UpgradeWatch&) = delete;

    /// Begins. A program that belongs to our own user is left alone: it was built here, and who builds it
    /// starts it too. Nothing happens either where its folder can't be watched.
    void follow();

  private:
    [[nodiscard]] std::optional<FileStat> present() const;
    [[nodiscard]] bool isReplaced() const;
    void folderChanged();
    void tryLater(double seconds);
    void tryNow();
    void finish(const FileStat& tried, bool isSound);

    const Seams m_seams;
    const std::string m_program;
    const Client m_client;
    std::optional<FileStat> m_running; ///< the file that runs; absent while nothing is followed
    std::unique_ptr<DirectoryWatch> m_watch;
    Task m_wait;
    Task m_trial;
};

} // namespace veslora

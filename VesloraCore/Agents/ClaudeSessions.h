// SPDX-License-Identifier: MIT
// Merges two unreliable sources, the files that Claude Code keeps and the events of its hooks, into one
// summary for each live session. Status is derived again at each call from stored times, so nothing has to be
// cleared by a timer. A plain value without a clock; its owner keeps it on one thread.
#pragma once

#include "VesloraCore/Agents/ClaudeSessionFile.h"
#include "VesloraCore/Agents/ClaudeSessionStatus.h"
#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class ClaudeSessions {
  public:
    /// How long a finish shows, in seconds.
    static constexpr double finishedExpiry = 5.0;
    /// A busy session without a sign of life for longer than this many seconds counts as idle.
    static constexpr double staleAfter = 600.0;

    /// Takes the files of all sessions that live now. A session without one drops out but keeps its history.
    void update(const std::vector<ClaudeSessionFile>& files, Timestamp now);
    /// Takes one event. A session that is not known yet shows once its file arrives.
    void apply(const ClaudeHookEvent& event);
    /// The user has seen that the session finished. An unknown identifier does nothing.
    void markSeen(const std::string& id);
    /// Hides the current wait of a session until it waits again. An unknown identifier does nothing.
    void dismissApproval(const std::string& id);

    /// What a session waits for the user with, to tell one wait from a later one. Empty while it does not
    /// wait.
    struct Wait {
        std::optional<Timestamp> fileStamp;  ///< of the file that says so
        std::optional<Timestamp> notifiedAt; ///< of the notification
        bool operator==(const Wait&) const = default;
    };
    /// The current wait, dismissed or not. Empty for an unknown identifier.
    [[nodiscard]] Wait waitOf(const std::string& id) const;
    /// Shows again what `dismissApproval` hid, as far as the session still waits with just that.
    void raiseApproval(const std::string& id, const Wait& wait);

    /// One summary for each session that has a file, as `ordered` sorts them.
    [[nodiscard]] std::vector<ClaudeSessionSummary> summaries(Timestamp now) const;
    /// Those that wait, the longest wait first.
    [[nodiscard]] std::vector<ClaudeSessionSummary> waitingForApproval(Timestamp now) const;
    /// The newest finish, where there is one.
    [[nodiscard]] std::optional<ClaudeSessionSummary> latestFinished(Timestamp now) const;
    /// The stamp of the last file in which the session waited for the user; absent where none was seen.
    [[nodiscard]] std::optional<Timestamp> lastWaitOf(const std::string& id) const;

    /// Waits first (the longest first), then finishes (the newest first), then work (the longest first), then
    /// the idle; by name where that is equal, and else in the given order.
    [[nodiscard]] static std::vector<ClaudeSessionSummary>
    ordered(std::vector<ClaudeSessionSummary> summaries);

    bool operator==(const ClaudeSessions&) const = default;

  private:
    struct Approval {
        std::string message;
        Timestamp since = 0;
        bool operator==(const Approval&) const = default;
    };
    struct Record {
        std::optional<ClaudeSessionFile> file; ///< absent once it is gone
        bool wasBusy = false;                  ///< busy or waiting at the last update
        std::optional<Timestamp> lastPromptAt;
        std::optional<Approval> approval; ///< an open notification
        bool approvalDismissed = false;
        std::optional<Timestamp> dismissedWait; ///< stamp of the file's wait that the user dismissed
        std::optional<Timestamp> lastWait;      ///< stamp of the last wait seen in the file
        /// When the file was first seen in the wait that it is in without a stamp.
        std::optional<Timestamp> unstampedWaitSeenAt;
        std::optional<Timestamp> finishedAt;
        bool seen = false; ///< the user has seen that finish
        std::optional<std::string> activity;
        std::optional<Timestamp> lastEventAt; ///< never moves back
        bool operator==(const Record&) const = default;
    };

    static Wait waitOf(const Record& record);
    static void take(Record& record, const ClaudeSessionFile& file, Timestamp now);
    static ClaudeSessionStatus status(const Record& record, const ClaudeSessionFile& file, Timestamp now);
    static std::optional<ClaudeSessionStatus> wait(const Record& record, const ClaudeSessionFile& file,
                                                   Timestamp now);
    static ClaudeSessionStatus work(const Record& record, const ClaudeSessionFile& file, Timestamp now);

    std::map<std::string, Record> m_records; ///< by session identifier; never taken out
};

} // namespace veslora

// SPDX-License-Identifier: MIT
// What is known of Codex's sessions, built from the events of its hooks alone and held against the processes
// that run. It gives the same summaries as ClaudeSessions. A plain value without a clock; its owner keeps it
// on one thread.
#pragma once

#include "VesloraCore/Agents/ClaudeSessions.h"
#include "VesloraCore/Agents/Hooks/CodexHookEvent.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

class CodexSessions {
  public:
    /// For so many seconds after its last event a session that rests is kept although its process is not
    /// found.
    static constexpr double clientGrace = 60.0;

    /// A process in which the user runs Codex.
    struct Client {
        std::int32_t pid = 0;
        std::string cwd; ///< its working directory
        bool operator==(const Client&) const = default;
    };

    /// Takes one event. The first of a session makes the session, and its end removes it.
    void apply(const CodexHookEvent& event);
    /// The session asks for permission, `at` that moment. Makes a session that is not known yet.
    void needsApproval(const std::string& id, const std::string& message, Timestamp at);
    /// The session's request was answered, so that it no longer waits. When it had asked; nothing where it
    /// did not wait.
    std::optional<Timestamp> approvalAnswered(const std::string& id);
    /// The answer to what the session asked at `since` never reached it: it waits as before, unless it has
    /// gone on or asked again meanwhile.
    void raiseApproval(const std::string& id, Timestamp since);

    /// Holds the sessions against the processes that run now. One whose process is not among them gets the
    /// first client of its working directory that no other session has, or else the first one there; without
    /// any it goes once it rests and the grace is over.
    void reconcile(const std::vector<Client>& clients, Timestamp now);
    /// The processes in which the session may run: its own, where that is known, or else every client of its
    /// working directory at the last `reconcile`, as which of them it is was a guess.
    [[nodiscard]] std::vector<std::int32_t> processesOf(const std::string& id) const;
    /// Removes every session whose process is known and fails `isAlive`.
    void removeDead(const std::function<bool(std::int32_t)>& isAlive);

    /// The user has seen that the session finished. An unknown identifier does nothing.
    void markSeen(const std::string& id);
    /// Hides the current wait of a session until it asks again. An unknown identifier does nothing.
    void dismissApproval(const std::string& id);

    /// One summary for each session, as ClaudeSessions::ordered sorts them.
    [[nodiscard]] std::vector<ClaudeSessionSummary> summaries(Timestamp now) const;
    [[nodiscard]] bool isEmpty() const { return m_records.empty(); }

    bool operator==(const CodexSessions&) const = default;

  private:
    struct Approval {
        std::string message;
        Timestamp since = 0;
        bool operator==(const Approval&) const = default;
    };
    struct Record {
        std::optional<std::int32_t> pid; ///< once it is known
        bool isPidGuessed = false;       ///< by the working directory
        /// All clients of the working directory where the process was guessed.
        std::vector<std::int32_t> neighbours;
        std::string cwd;
        std::optional<Timestamp> workingSince; ///< start of the current turn
        std::optional<Approval> approval;      ///< an open request
        bool approvalDismissed = false;
        bool isAnswered = false;             ///< that request was, though the session has not gone on yet
        std::optional<Timestamp> finishedAt; ///< end of the last turn
        bool seen = false;                   ///< the user has seen that finish
        std::optional<std::string> activity;
        Timestamp lastEventAt = distantPast; ///< never moves back
        bool operator==(const Record&) const = default;
    };
    using Clients = std::vector<Client>;

    static ClaudeSessionStatus status(const Record& record, Timestamp now);
    static bool mayGo(const Record& record, Timestamp now);
    [[nodiscard]] std::vector<Record*> recordsWithoutClient(const Clients& clients);

    std::map<std::string, Record> m_records; ///< by session identifier
};

} // namespace veslora

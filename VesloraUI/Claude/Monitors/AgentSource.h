// SPDX-License-Identifier: MIT
// What is particular to one agent: how it tells of its sessions, and what proves that a request of its is
// over. All else, from the spool to the answers, is its monitor's. Main thread only, but for what `reader`
// gives.
#pragma once

#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraCore/Agents/ClaudeSessionStatus.h"
#include "VesloraCore/Agents/Hooks/HookSign.h"
#include "VesloraUI/Claude/Monitors/FrontTerminal.h"
#include "VesloraUI/Claude/Spool/SpoolRound.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

class AgentAnswers;

/// A request that its session is past, and what becomes of the script that may still wait with it.
struct RequestEnd {
    enum class Script {
        runsOut, ///< nothing is written: the agent would ignore it
        isLetGo, ///< "pass", since the agent shows no prompt of its own before its script ends
    };
    std::string id;
    Script script = Script::runsOut;
};

class AgentSource {
  public:
    using Requests = std::vector<ClaudePermissionRequest>;

    AgentSource() = default;
    AgentSource(const AgentSource&) = delete;
    AgentSource& operator=(const AgentSource&) = delete;
    virtual ~AgentSource() = default;

    /// What understands the files of the agent's spool. It is asked for once. It may be called on any thread
    /// and also after this is gone; the news that it gives are heard while this and `answers` live. News of a
    /// request that can't be understood, or that the island can't show, write "pass".
    [[nodiscard]] virtual UnderstandSpoolFile reader(AgentAnswers& answers) = 0;

    /// Reads what else than the spool tells of sessions, and gives the requests that the spool has brought
    /// since the last call, in its order.
    [[nodiscard]] virtual Requests readSessions() = 0;
    /// Which requests are over by what was heard and read since the last call, which comes after each
    /// `readSessions`. `open` are all that can still be answered, those that it has just given among them.
    [[nodiscard]] virtual std::vector<RequestEnd> endedByNews(const Requests& open) = 0;
    /// Which of them are over by what their sessions are doing now. Asked before each publishing.
    [[nodiscard]] virtual std::vector<RequestEnd> overtaken(const Requests& open) const = 0;

    /// The sessions as of now, as `ClaudeSessions::ordered` sorts them.
    [[nodiscard]] virtual std::vector<ClaudeSessionSummary> sessions() const = 0;
    /// Where the session runs, with its pane as the agent names it.
    [[nodiscard]] virtual SessionPlace placeOf(const ClaudeSessionSummary& session) const = 0;

    /// The session's request was decided on from the island, though its agent may not have heard of it yet,
    /// so its wait no longer shows. What shows it again, should the agent never hear of it; it does nothing
    /// if the session has gone on from that wait by then.
    [[nodiscard]] virtual std::function<void()> answered(const std::string& sessionId) = 0;
    /// The last thing that the agent's hooks have told of a real session; absent before the first.
    [[nodiscard]] const std::optional<HookSign>& lastSign() const { return m_lastSign; }
    virtual void markSeen(const std::string& sessionId) = 0;
    virtual void dismissApproval(const std::string& sessionId) = 0;

  protected:
    /// Takes in a sign unless a later one is known, or it is of a session that nobody has.
    void note(const std::string& sessionId, const HookSign& sign);

  private:
    std::optional<HookSign> m_lastSign;
};

} // namespace veslora

// SPDX-License-Identifier: MIT
// See CodexSessions.h.
#include "VesloraCore/Agents/CodexSessions.h"

#include "VesloraCore/Overloaded.h"
#include "VesloraCore/Text/PathText.h"

#include <algorithm>
#include <set>

namespace veslora {

namespace {

using Clients = std::vector<CodexSessions::Client>;

// The first client of a working directory that is not in `taken`; where all are, the first of them all.
const CodexSessions::Client* clientIn(const std::string& cwd, const Clients& clients,
                                      const std::set<std::int32_t>& taken) {
    const CodexSessions::Client* shared = nullptr;
    for (const CodexSessions::Client& client : clients) {
        if (client.cwd != cwd) {
            continue;
        }
        if (!taken.contains(client.pid)) {
            return &client;
        }
        shared = shared ? shared : &client;
    }
    return shared;
}

std::vector<std::int32_t> clientsIn(const std::string& cwd, const Clients& clients) {
    std::vector<std::int32_t> found;
    for (const CodexSessions::Client& client : clients) {
        if (client.cwd == cwd) {
            found.push_back(client.pid);
        }
    }
    return found;
}

} // namespace

void CodexSessions::apply(const CodexHookEvent& event) {
    if (std::holds_alternative<CodexHookEvent::End>(event.kind)) {
        m_records.erase(event.sessionId);
        return;
    }
    Record& record = m_records[event.sessionId];
    if (event.pid) {
        record.pid = event.pid;
        record.isPidGuessed = false;
        record.neighbours.clear();
    }
    if (!event.cwd.empty()) {
        record.cwd = event.cwd;
    }
    record.lastEventAt = std::max(record.lastEventAt, event.time);
    std::visit(Overloaded{
                   [&](const CodexHookEvent::ToolStart& start) {
                       record.activity = start.text;
                       record.workingSince = record.workingSince.value_or(event.time);
                   },
                   [&](const CodexHookEvent::Prompt&) {
                       record.workingSince = event.time;
                       record.approval.reset();
                       record.finishedAt.reset();
                       record.activity.reset();
                   },
                   [&](const CodexHookEvent::ToolDone&) { record.approval.reset(); },
                   [&](const CodexHookEvent::Stop&) {
                       record.workingSince.reset();
                       record.finishedAt = event.time;
                       record.seen = false;
                       record.approval.reset();
                       record.activity.reset();
                   },
                   [&](const CodexHookEvent::Interrupt&) {
                       record.workingSince.reset();
                       record.approval.reset();
                       record.activity.reset();
                   },
                   [](const CodexHookEvent::Start&) {},
                   [](const CodexHookEvent::End&) {},
                   [](const CodexHookEvent::Ignored&) {},
               },
               event.kind);
}

void CodexSessions::needsApproval(const std::string& id, const std::string& message, Timestamp at) {
    Record& record = m_records[id];
    record.approval = Approval{message, at};
    record.approvalDismissed = false;
    record.isAnswered = false;
    record.lastEventAt = std::max(record.lastEventAt, at);
}

std::optional<Timestamp> CodexSessions::approvalAnswered(const std::string& id) {
    const auto found = m_records.find(id);
    if (found == m_records.end() || !found->second.approval) {
        return std::nullopt;
    }
    found->second.isAnswered = true;
    return found->second.approval->since;
}

void CodexSessions::raiseApproval(const std::string& id, Timestamp since) {
    const auto found = m_records.find(id);
    if (found != m_records.end() && found->second.approval && found->second.approval->since == since) {
        found->second.isAnswered = false;
    }
}

void CodexSessions::markSeen(const std::string& id) {
    const auto found = m_records.find(id);
    if (found != m_records.end()) {
        found->second.seen = true;
    }
}

void CodexSessions::dismissApproval(const std::string& id) {
    const auto found = m_records.find(id);
    if (found != m_records.end()) {
        found->second.approvalDismissed = true;
    }
}

void CodexSessions::reconcile(const Clients& clients, Timestamp now) {
    std::vector<Record*> seekers = recordsWithoutClient(clients);
    std::set<std::int32_t> taken;
    for (const auto& [id, record] : m_records) {
        if (record.pid) {
            taken.insert(*record.pid);
        }
    }
    std::set<const Record*> lost;
    for (Record* record : seekers) {
        if (const Client* client = clientIn(record->cwd, clients, taken)) {
            record->pid = client->pid;
            record->isPidGuessed = true;
            taken.insert(client->pid);
        } else if (mayGo(*record, now)) {
            lost.insert(record);
        }
    }
    std::erase_if(m_records, [&](const auto& entry) { return lost.contains(&entry.second); });
    for (auto& [id, record] : m_records) {
        if (record.isPidGuessed) {
            record.neighbours = clientsIn(record.cwd, clients);
        }
    }
}

std::vector<std::int32_t> CodexSessions::processesOf(const std::string& id) const {
    const auto found = m_records.find(id);
    if (found == m_records.end() || !found->second.pid) {
        return {};
    }
    const Record& record = found->second;
    return record.neighbours.empty() ? std::vector(1, *record.pid) : record.neighbours;
}

// Those whose process is not known or not among the clients; the ones heard of last come first, since what is
// long silent may be over.
std::vector<CodexSessions::Record*> CodexSessions::recordsWithoutClient(const Clients& clients) {
    std::set<std::int32_t> running;
    for (const Client& client : clients) {
        running.insert(client.pid);
    }
    std::vector<Record*> found;
    for (auto& [id, record] : m_records) {
        if (!record.pid || !running.contains(*record.pid)) {
            found.push_back(&record);
        }
    }
    std::ranges::stable_sort(
        found, [](const Record* a, const Record* b) { return a->lastEventAt > b->lastEventAt; });
    return found;
}

// A session with something going on does not go merely because its process was not found.
bool CodexSessions::mayGo(const Record& record, Timestamp now) {
    const ClaudeSessionStatus current = status(record, now);
    const bool rests = std::holds_alternative<ClaudeStatus::Finished>(current) ||
                       std::holds_alternative<ClaudeStatus::Idle>(current);
    return rests && now - record.lastEventAt > clientGrace;
}

void CodexSessions::removeDead(const std::function<bool(std::int32_t)>& isAlive) {
    std::erase_if(m_records,
                  [&](const auto& entry) { return entry.second.pid && !isAlive(*entry.second.pid); });
}

std::vector<ClaudeSessionSummary> CodexSessions::summaries(Timestamp now) const {
    std::vector<ClaudeSessionSummary> found;
    for (const auto& [id, record] : m_records) {
        const std::string_view source = record.cwd.empty() ? id : record.cwd;
        found.push_back({id, std::string(PathText::lastComponent(source)), record.pid.value_or(0),
                         status(record, now), record.activity, AgentKind::codex});
    }
    return ClaudeSessions::ordered(std::move(found));
}

ClaudeSessionStatus CodexSessions::status(const Record& record, Timestamp now) {
    if (record.approval && !record.approvalDismissed && !record.isAnswered) {
        return ClaudeStatus::NeedsApproval{record.approval->message, record.approval->since};
    }
    if (record.finishedAt && !record.seen && now - *record.finishedAt < ClaudeSessions::finishedExpiry) {
        return ClaudeStatus::Finished{*record.finishedAt};
    }
    if (!record.workingSince || now - record.lastEventAt > ClaudeSessions::staleAfter) {
        return ClaudeStatus::Idle{};
    }
    return ClaudeStatus::Working{*record.workingSince};
}

} // namespace veslora

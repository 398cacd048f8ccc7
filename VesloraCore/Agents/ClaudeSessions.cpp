// SPDX-License-Identifier: MIT
// See ClaudeSessions.h.
#include "VesloraCore/Agents/ClaudeSessions.h"

#include "VesloraCore/Agents/ApprovalAlert.h"
#include "VesloraCore/Overloaded.h"
#include "VesloraCore/Text/PathText.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace veslora {

namespace {

// Rank and time of a status in the order of lists.
std::pair<int, double> place(const ClaudeSessionStatus& status) {
    return std::visit(Overloaded{
                          [](const ClaudeStatus::NeedsApproval& wait) { return std::pair(0, wait.since); },
                          [](const ClaudeStatus::Finished& finish) { return std::pair(1, -finish.at); },
                          [](const ClaudeStatus::Working& work) { return std::pair(2, work.since); },
                          [](const ClaudeStatus::Idle&) { return std::pair(3, 0.0); },
                      },
                      status);
}

} // namespace

void ClaudeSessions::update(const std::vector<ClaudeSessionFile>& files, Timestamp now) {
    std::set<std::string_view> present;
    for (const ClaudeSessionFile& file : files) {
        present.insert(file.sessionId);
    }
    for (auto& [id, record] : m_records) {
        if (!present.contains(id)) {
            record.file.reset();
            record.unstampedWaitSeenAt.reset();
        }
    }
    for (const ClaudeSessionFile& file : files) {
        take(m_records[file.sessionId], file, now);
    }
}

void ClaudeSessions::take(Record& record, const ClaudeSessionFile& file, Timestamp now) {
    const Timestamp stamp = file.statusSince.value_or(now);
    const bool isActive = file.isBusy || file.waitingFor;
    const bool hasMovedOn =
        record.approval && !file.waitingFor && file.statusSince && *file.statusSince > record.approval->since;
    if (hasMovedOn) {
        record.approval.reset();
    }
    if (isActive && record.finishedAt && stamp > *record.finishedAt) {
        record.finishedAt.reset();
    }
    // The finish as the file tells it, for turns that end while no hook is installed.
    if (!isActive && record.wasBusy && (!record.finishedAt || *record.finishedAt < stamp)) {
        record.finishedAt = stamp;
        record.seen = false;
    }
    if (file.waitingFor && file.statusSince) {
        record.lastWait = file.statusSince;
    }
    if (!file.waitingFor || file.statusSince) {
        record.unstampedWaitSeenAt.reset();
    } else if (!record.unstampedWaitSeenAt) {
        record.unstampedWaitSeenAt = now;
    }
    record.wasBusy = isActive;
    record.file = file;
}

void ClaudeSessions::apply(const ClaudeHookEvent& event) {
    Record& record = m_records[event.sessionId];
    record.lastEventAt = std::max(record.lastEventAt.value_or(distantPast), event.time);
    std::visit(Overloaded{
                   [&](const ClaudeHookEvent::ToolStart& start) { record.activity = start.text; },
                   [&](const ClaudeHookEvent::NeedsYou& call) {
                       record.approval = Approval{call.message, event.time};
                       record.approvalDismissed = false;
                   },
                   [&](const ClaudeHookEvent::Prompt&) {
                       record.lastPromptAt = event.time;
                       record.approval.reset();
                       record.finishedAt.reset();
                       record.activity.reset();
                   },
                   [&](const ClaudeHookEvent::Stop&) {
                       record.finishedAt = event.time;
                       record.seen = false;
                       record.approval.reset();
                       record.activity.reset();
                   },
                   [&](const ClaudeHookEvent::ToolDone&) { record.approval.reset(); },
                   [](const ClaudeHookEvent::Ignored&) {},
               },
               event.kind);
}

void ClaudeSessions::markSeen(const std::string& id) {
    const auto found = m_records.find(id);
    if (found != m_records.end()) {
        found->second.seen = true;
    }
}

void ClaudeSessions::dismissApproval(const std::string& id) {
    const auto found = m_records.find(id);
    if (found == m_records.end()) {
        return;
    }
    Record& record = found->second;
    record.approvalDismissed = true;
    if (const std::optional<Timestamp> stamp = waitOf(record).fileStamp) {
        record.dismissedWait = stamp;
    }
}

ClaudeSessions::Wait ClaudeSessions::waitOf(const Record& record) {
    Wait found;
    if (record.file && record.file->waitingFor) {
        found.fileStamp = record.file->statusSince.value_or(distantPast);
    }
    if (record.approval) {
        found.notifiedAt = record.approval->since;
    }
    return found;
}

ClaudeSessions::Wait ClaudeSessions::waitOf(const std::string& id) const {
    const auto found = m_records.find(id);
    return found != m_records.end() ? waitOf(found->second) : Wait();
}

// The file and the notification each for itself: either may have come or gone since.
void ClaudeSessions::raiseApproval(const std::string& id, const Wait& wait) {
    const auto found = m_records.find(id);
    if (found == m_records.end()) {
        return;
    }
    Record& record = found->second;
    if (wait.fileStamp && record.dismissedWait == wait.fileStamp) {
        record.dismissedWait.reset();
    }
    if (wait.notifiedAt && waitOf(record).notifiedAt == wait.notifiedAt) {
        record.approvalDismissed = false;
    }
}

std::vector<ClaudeSessionSummary> ClaudeSessions::summaries(Timestamp now) const {
    std::vector<ClaudeSessionSummary> found;
    for (const auto& [id, record] : m_records) {
        if (!record.file) {
            continue;
        }
        const ClaudeSessionFile& file = *record.file;
        const std::string name =
            file.name.empty() ? std::string(PathText::lastComponent(file.cwd)) : file.name;
        found.push_back({id, name, file.pid, status(record, file, now), record.activity, AgentKind::claude});
    }
    return ordered(std::move(found));
}

std::vector<ClaudeSessionSummary> ClaudeSessions::waitingForApproval(Timestamp now) const {
    std::vector<ClaudeSessionSummary> found = summaries(now);
    std::erase_if(found, [](const ClaudeSessionSummary& summary) {
        return !std::holds_alternative<ClaudeStatus::NeedsApproval>(summary.status);
    });
    return found;
}

std::optional<ClaudeSessionSummary> ClaudeSessions::latestFinished(Timestamp now) const {
    for (const ClaudeSessionSummary& summary : summaries(now)) {
        if (std::holds_alternative<ClaudeStatus::Finished>(summary.status)) {
            return summary;
        }
    }
    return std::nullopt;
}

std::optional<Timestamp> ClaudeSessions::lastWaitOf(const std::string& id) const {
    const auto found = m_records.find(id);
    return found != m_records.end() ? found->second.lastWait : std::nullopt;
}

ClaudeSessionStatus ClaudeSessions::status(const Record& record, const ClaudeSessionFile& file,
                                           Timestamp now) {
    if (const std::optional<ClaudeSessionStatus> waiting = wait(record, file, now)) {
        return *waiting;
    }
    if (record.finishedAt && !record.seen && now - *record.finishedAt < finishedExpiry) {
        return ClaudeStatus::Finished{*record.finishedAt};
    }
    if (file.isBusy) {
        return work(record, file, now);
    }
    return ClaudeStatus::Idle{};
}

// The file's own wait, or else an open notification; nothing when the user dismissed it.
std::optional<ClaudeSessionStatus> ClaudeSessions::wait(const Record& record, const ClaudeSessionFile& file,
                                                        Timestamp now) {
    const std::optional<Approval>& approval = record.approval;
    if (!file.waitingFor) {
        if (!approval || record.approvalDismissed) {
            return std::nullopt;
        }
        return ClaudeStatus::NeedsApproval{approval->message, approval->since};
    }
    if (record.dismissedWait == file.statusSince.value_or(distantPast)) {
        return std::nullopt;
    }
    const std::string fallback = file.waitingFor->empty() ? AlertNotice::waitingForYou : *file.waitingFor;
    // Without a stamp, since it was first heard of: a wait that began again at each look would sound each
    // time.
    const Timestamp seen = record.unstampedWaitSeenAt.value_or(now);
    const Timestamp since = file.statusSince.value_or(approval ? std::min(approval->since, seen) : seen);
    return ClaudeStatus::NeedsApproval{approval ? approval->message : fallback, since};
}

ClaudeSessionStatus ClaudeSessions::work(const Record& record, const ClaudeSessionFile& file, Timestamp now) {
    const Timestamp latest =
        std::max(file.statusSince.value_or(distantPast), record.lastEventAt.value_or(distantPast));
    if (latest != distantPast && now - latest > staleAfter) {
        return ClaudeStatus::Idle{};
    }
    return ClaudeStatus::Working{file.statusSince.value_or(record.lastPromptAt.value_or(now))};
}

std::vector<ClaudeSessionSummary> ClaudeSessions::ordered(std::vector<ClaudeSessionSummary> summaries) {
    std::ranges::stable_sort(summaries, [](const ClaudeSessionSummary& a, const ClaudeSessionSummary& b) {
        return std::tuple(place(a.status), std::string_view(a.name)) <
               std::tuple(place(b.status), std::string_view(b.name));
    });
    return summaries;
}

} // namespace veslora

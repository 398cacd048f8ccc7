// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/ClaudeMonitor.h"

#include "VesloraCore/SupportNames.h"
#include "VesloraUI/Settings/Defaults.h"
#include "VesloraUI/Settings/SettingsKeys.h"

#include <algorithm>
#include <string_view>

namespace veslora {

namespace {

constexpr std::string_view requestPrefix = "perm-";
constexpr std::string_view suffix = ".json";

/// The id in the name of a request's file; absent for an event's.
std::optional<std::string> requestIdOf(const std::string& fileName) {
    if (!fileName.starts_with(requestPrefix)) {
        return std::nullopt;
    }
    return fileName.substr(requestPrefix.size(), fileName.size() - requestPrefix.size() - suffix.size());
}

} // namespace

ClaudeMonitor::ClaudeMonitor(const AgentMonitorSeams& seams, SupportDirectory& support, Defaults& settings)
    : m_seams(seams), m_support(support), m_settings(settings),
      m_spool(seams.files, support, SupportNames::claudeSpool),
      m_answers(seams.files, support, SupportNames::claudeAnswers),
      m_sessionDirectory(seams.files, seams.directories.claude + "/sessions"),
      m_hooks(seams.files, support, seams.directories.claude + "/settings.json",
              seams.directories.executables) {}

void ClaudeMonitor::start() {
    m_spool.create();
    m_hooks.updateScripts();
    m_support.writeProcess(m_seams.processes.ownId());
    m_support.writeHeartbeat(m_seams.scheduler.now());
    refresh();
    ensureWatches();
    m_refreshTask = m_seams.scheduler.every(period, Precision::coarse, [this] { tick(); });
}

void ClaudeMonitor::stop() {
    m_support.removeSigns();
    m_refreshTask.cancel();
    m_spoolWatch.reset();
    m_sessionsWatch.reset();
}

void ClaudeMonitor::tick() {
    m_support.writeHeartbeat(m_seams.scheduler.now());
    ensureWatches();
    refresh();
}

/// A folder that is not there yet, or that somebody replaced, is watched once it can be.
void ClaudeMonitor::ensureWatches() {
    const auto ensure = [this](std::unique_ptr<DirectoryWatch>& watch, const std::string& path,
                               DirectoryChanges changes) {
        if (!watch || !watch->isActive()) {
            watch = m_seams.watcher.watch(path, changes, [this] { refresh(); });
        }
    };
    ensure(m_sessionsWatch, m_sessionDirectory.path(), DirectoryChanges::any);
    ensure(m_spoolWatch, m_spool.path(), DirectoryChanges::movedInto);
}

void ClaudeMonitor::refresh() {
    const Batch batch = readSpool();
    readSessionFiles();
    m_state.update(m_sessionFiles, m_seams.scheduler.now());
    handle(batch.requests);
    dropAnsweredElsewhere(batch.events);
    m_answers.removeStale(m_seams.scheduler.now());
    const ClaudeHooks::State hooks = m_hooks.state();
    setHooks(hooks.areInstalled, hooks.areOutdated);
    publishState();
}

ClaudeMonitor::Batch ClaudeMonitor::readSpool() {
    Batch batch;
    const Timestamp now = m_seams.scheduler.now();
    m_spool.take(now, [&](const SpoolFile& file) {
        if (const auto id = requestIdOf(file.name)) {
            auto request = file.content && AgentAnswers::isId(*id)
                               ? ClaudePermissionRequest::parse(file.content.bytes, *id, file.time,
                                                                m_seams.directories.home)
                               : std::nullopt;
            if (request) {
                batch.requests.push_back(std::move(*request));
            } else {
                m_answers.write(ClaudeDecision::pass, *id);
            }
            return;
        }
        const bool isRecent = file.time >= now - AgentSpool::eventLifetime;
        auto event =
            file.content && isRecent ? ClaudeHookEvent::parse(file.content.bytes, file.time) : std::nullopt;
        if (event) {
            m_state.apply(*event);
            batch.events.push_back(std::move(*event));
        }
    });
    return batch;
}

void ClaudeMonitor::readSessionFiles() {
    m_sessionFiles = m_sessionDirectory.read(m_seams.scheduler.now());
    std::erase_if(m_sessionFiles, [this](const auto& file) { return !m_seams.processes.isAlive(file.pid); });
    m_liveSessionIds.reset();
    if (!m_sessionFiles.empty() || m_sessionDirectory.exists()) {
        m_liveSessionIds.emplace();
        for (const ClaudeSessionFile& file : m_sessionFiles) {
            m_liveSessionIds->insert(file.sessionId);
        }
    }
}

void ClaudeMonitor::handle(const std::vector<ClaudePermissionRequest>& requests) {
    if (requests.empty()) {
        return;
    }
    const auto sessions = m_state.summaries(m_seams.scheduler.now());
    for (const ClaudePermissionRequest& request : requests) {
        if (canAnswer(request, sessions)) {
            m_permissions.add(request);
        } else {
            m_answers.write(ClaudeDecision::pass, request.id);
        }
    }
}

/// Not when the user wants no alerts, already looks at the session's terminal, or could not answer it from
/// outside.
bool ClaudeMonitor::canAnswer(const ClaudePermissionRequest& request,
                              const std::vector<ClaudeSessionSummary>& sessions) const {
    if (!m_settings.boolValue(SettingsKeys::claudeAnswerFromIsland) ||
        !m_settings.boolValue(SettingsKeys::claudeApprovalAlerts) ||
        !ClaudePermissions::canBeAnsweredOutside(request.tool)) {
        return false;
    }
    const auto session = std::ranges::find(sessions, request.sessionId, &ClaudeSessionSummary::id);
    return session == sessions.end() || !m_seams.hostApplications.isFrontmost(session->pid);
}

/// The user answered in the terminal while the island still asked. No answer is written: the agent would
/// ignore it.
void ClaudeMonitor::dropAnsweredElsewhere(const std::vector<ClaudeHookEvent>& events) {
    for (const ClaudePermissionRequest& request : m_permissions.pending(m_seams.scheduler.now())) {
        const ClaudeSessionFile* file = fileOf(request.sessionId);
        const bool byEvent = std::ranges::any_of(events, [&](const auto& event) {
            return ClaudePermissions::isAnsweredElsewhere(request, event);
        });
        if (byEvent || (file && ClaudePermissions::isAnsweredElsewhere(
                                    request, m_state.lastWaitOf(request.sessionId), *file))) {
            m_permissions.remove(request.id);
        }
    }
}

/// A session that neither works nor waits any more, since after the request, is past that prompt.
void ClaudeMonitor::dropOvertaken() {
    for (const ClaudePermissionRequest& request : m_permissions.pending(m_seams.scheduler.now())) {
        const ClaudeSessionFile* file = fileOf(request.sessionId);
        if (file && !file->isBusy && !file->waitingFor && file->statusSince &&
            *file->statusSince > request.receivedAt) {
            m_permissions.remove(request.id);
        }
    }
}

void ClaudeMonitor::publishState() {
    m_permissions.removeExpired(m_seams.scheduler.now());
    dropOvertaken();
    const Timestamp now = m_seams.scheduler.now();
    publish(m_state.summaries(now), m_permissions.pending(now));
}

const ClaudeSessionFile* ClaudeMonitor::fileOf(const std::string& sessionId) const {
    const auto found = std::ranges::find(m_sessionFiles, sessionId, &ClaudeSessionFile::sessionId);
    return found == m_sessionFiles.end() ? nullptr : &*found;
}

const ClaudeSessionSummary* ClaudeMonitor::summaryOf(const std::string& sessionId) const {
    const auto found = std::ranges::find(summaries(), sessionId, &ClaudeSessionSummary::id);
    return found == summaries().end() ? nullptr : &*found;
}

void ClaudeMonitor::answer(const std::string& requestId, ClaudeDecision decision) {
    m_answers.write(decision, requestId);
    const auto request = std::ranges::find(pendingRequests(), requestId, &ClaudePermissionRequest::id);
    if (decision != ClaudeDecision::pass && request != pendingRequests().end()) {
        // The session's file still says that it waits until the script has come for the answer. Without this
        // the notice of that wait would flash up behind the request.
        m_state.dismissApproval(request->sessionId);
    }
    // A copy, as publishing replaces the list that the caller's text may lie in.
    const std::string id = requestId; // NOLINT(performance-unnecessary-copy-initialization)
    m_permissions.remove(id);
    publishState();
}

void ClaudeMonitor::jump(const std::string& sessionId) {
    // A copy, for the same reason.
    const std::string id = sessionId; // NOLINT(performance-unnecessary-copy-initialization)
    const ClaudeSessionSummary* summary = summaryOf(id);
    const auto app = summary ? m_seams.hostApplications.hostAppOf(summary->pid) : std::nullopt;
    if (app) {
        m_seams.hostApplications.activate(*app);
    }
    m_state.markSeen(id);
    m_state.dismissApproval(id);
    publishState();
}

void ClaudeMonitor::dismissApproval(const std::string& sessionId) {
    m_state.dismissApproval(std::string(sessionId));
    publishState();
}

void ClaudeMonitor::installHooks() {
    m_hooks.install();
    refresh();
}

void ClaudeMonitor::removeHooks() {
    if (m_hooks.remove()) {
        refresh();
    }
}

} // namespace veslora

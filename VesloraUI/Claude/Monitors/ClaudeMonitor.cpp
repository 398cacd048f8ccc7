// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/ClaudeMonitor.h"

#include <algorithm>
#include <string_view>
#include <utility>

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
    : HookedAgentMonitor(traitsOf(AgentKind::claude), seams, support, settings,
                         [this, home = seams.directories.home](const SpoolFile& file) {
                             return understand(this, home, file);
                         }),
      m_sessionDirectory(seams.files, seams.directories.claude + "/sessions"),
      m_hooks(seams.files, support, seams.directories.claude + "/settings.json",
              seams.directories.executables),
      m_usage({seams.scheduler, seams.files, seams.watcher}, support, seams.directories.claude + "/projects",
              seams.calendar, [this] { return m_liveSessionIds; }) {}

void ClaudeMonitor::stop() {
    HookedAgentMonitor::stop();
    m_sessionsWatch.reset();
}

void ClaudeMonitor::ensureWatches() {
    HookedAgentMonitor::ensureWatches();
    ensureWatch(m_sessionsWatch, m_sessionDirectory.path(), DirectoryChanges::any);
}

void ClaudeMonitor::readSessions() {
    const Batch batch = std::exchange(m_batch, {});
    readSessionFiles();
    m_state.update(m_sessionFiles, now());
    handle(batch.requests);
    dropAnsweredElsewhere(batch.events);
    dropGone();
}

SpoolNews ClaudeMonitor::understand(ClaudeMonitor* monitor, const std::string& home, const SpoolFile& file) {
    if (const auto id = requestIdOf(file.name)) {
        auto request = file.content && AgentAnswers::isId(*id)
                           ? ClaudePermissionRequest::parse(file.content.bytes, *id, file.time, home)
                           : std::nullopt;
        if (!request) {
            return [monitor, id = *id] { monitor->m_answers.write(ClaudeDecision::pass, id); };
        }
        return [monitor, request = std::move(*request)] { monitor->m_batch.requests.push_back(request); };
    }
    auto event = file.content ? ClaudeHookEvent::parse(file.content.bytes, file.time) : std::nullopt;
    if (!event) {
        return {};
    }
    return [monitor, event = std::move(*event)] { monitor->take(event); };
}

void ClaudeMonitor::take(const ClaudeHookEvent& event) {
    if (isRecent(event.time)) {
        m_state.apply(event);
        m_batch.events.push_back(event);
    }
}

void ClaudeMonitor::readSessionFiles() {
    m_sessionFiles = m_sessionDirectory.read(now());
    std::erase_if(m_sessionFiles, [this](const auto& file) { return !m_seams.processes.isAlive(file.pid); });
    m_liveSessionIds.reset();
    if (!m_sessionFiles.empty() || m_sessionDirectory.exists()) {
        m_liveSessionIds.emplace();
        for (const ClaudeSessionFile& file : m_sessionFiles) {
            m_liveSessionIds->insert(file.sessionId);
        }
    }
}

/// The user answered in the terminal while the island still asked. No answer is written: the agent would
/// ignore it.
void ClaudeMonitor::dropAnsweredElsewhere(const std::vector<ClaudeHookEvent>& events) {
    for (const ClaudePermissionRequest& request : m_requests.open()) {
        const ClaudeSessionFile* file = fileOf(request.sessionId);
        const bool byEvent = std::ranges::any_of(events, [&](const auto& event) {
            return ClaudePermissions::isAnsweredElsewhere(request, event);
        });
        if (byEvent || (file && ClaudePermissions::isAnsweredElsewhere(
                                    request, m_state.lastWaitOf(request.sessionId), *file))) {
            m_requests.remove(request.id);
        }
    }
}

/// A session that had a file and has none any more is over: its terminal was closed, its agent was killed, or
/// it was cleared, which can't be done while a prompt is open. While its folder is away nothing can be said.
void ClaudeMonitor::dropGone() {
    std::set<std::string> withFile;
    for (const ClaudePermissionRequest& request : m_requests.open()) {
        const bool hasFile = fileOf(request.sessionId) != nullptr;
        const bool hadFile = m_requestsWithFile.contains(request.id);
        if (hadFile && !hasFile && m_liveSessionIds) {
            m_requests.remove(request.id);
        } else if (hadFile || hasFile) {
            withFile.insert(request.id);
        }
    }
    m_requestsWithFile = std::move(withFile);
}

/// A session that neither works nor waits any more, since after the request, is past that prompt.
void ClaudeMonitor::dropOvertaken() {
    for (const ClaudePermissionRequest& request : m_requests.open()) {
        const ClaudeSessionFile* file = fileOf(request.sessionId);
        if (file && !file->isBusy && !file->waitingFor && file->statusSince &&
            *file->statusSince > request.receivedAt) {
            m_requests.remove(request.id);
        }
    }
}

std::function<void()> ClaudeMonitor::requestWasAnswered(const std::string& sessionId) {
    m_state.dismissApproval(sessionId);
    return [this, sessionId, wait = m_state.waitOf(sessionId)] { m_state.raiseApproval(sessionId, wait); };
}

std::vector<ClaudeSessionSummary> ClaudeMonitor::currentSessions() const {
    return m_state.summaries(now());
}

const ClaudeSessionFile* ClaudeMonitor::fileOf(const std::string& sessionId) const {
    const auto found = std::ranges::find(m_sessionFiles, sessionId, &ClaudeSessionFile::sessionId);
    return found == m_sessionFiles.end() ? nullptr : &*found;
}

std::optional<std::string> ClaudeMonitor::paneOf(const std::string& sessionId) const {
    const ClaudeSessionFile* file = fileOf(sessionId);
    return file ? file->tmux : std::nullopt;
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/ClaudeSource.h"

#include "VesloraCore/Agents/ClaudePermissions.h"
#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Claude/Spool/AgentSpool.h"
#include "VesloraUI/Support/ReadersWords.h"

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

ClaudeSource::ClaudeSource(const AgentMonitorSeams& seams)
    : m_scheduler(seams.scheduler), m_processes(seams.processes), m_home(seams.directories.home),
      m_sessionDirectory(seams.files, seams.directories.claude + "/sessions") {}

UnderstandSpoolFile ClaudeSource::reader(AgentAnswers& answers) {
    return [this, &answers, home = m_home](const SpoolFile& file) -> SpoolNews {
        // On any thread: only the news may touch `this` and `answers`.
        if (const auto id = requestIdOf(file.name)) {
            auto request = file.content && AgentAnswers::isId(*id)
                               ? ClaudePermissionRequest::parse(file.content.bytes, *id, file.time, home)
                               : std::nullopt;
            if (!request) {
                return [&answers, id = *id] { answers.write(ClaudeDecision::pass, id); };
            }
            return [this, request = std::move(*request)] {
                note(request.sessionId, {HookSign::Kind::request, request.receivedAt});
                m_newRequests.push_back(request);
            };
        }
        auto event = file.content ? ClaudeHookEvent::parse(file.content.bytes, file.time, readersWords())
                                  : std::nullopt;
        if (!event) {
            return {};
        }
        return [this, event = std::move(*event)] { take(event); };
    };
}

void ClaudeSource::take(const ClaudeHookEvent& event) {
    if (AgentSpool::isRecent(event.time, m_scheduler.now())) {
        note(event.sessionId, HookSign::of(event));
        m_state.apply(event);
        m_newEvents.push_back(event);
    }
}

AgentSource::Requests ClaudeSource::readSessions() {
    readSessionFiles();
    m_state.update(m_sessionFiles, m_scheduler.now());
    return std::exchange(m_newRequests, {});
}

void ClaudeSource::readSessionFiles() {
    m_sessionFiles = m_sessionDirectory.read(m_scheduler.now());
    std::erase_if(m_sessionFiles, [this](const auto& file) { return !m_processes.isAlive(file.pid); });
    m_liveSessionIds.reset();
    if (!m_sessionFiles.empty() || m_sessionDirectory.exists()) {
        m_liveSessionIds.emplace();
        for (const ClaudeSessionFile& file : m_sessionFiles) {
            m_liveSessionIds->insert(file.sessionId);
        }
    }
}

/// The user answered in the terminal while the island still asked; or the session had a file and has none any
/// more, and so is over: its terminal was closed, its agent was killed, or it was cleared, which can't be
/// done while a prompt is open. While the files' folder is away nothing can be said.
std::vector<RequestEnd> ClaudeSource::endedByNews(const Requests& open) {
    const Events events = std::exchange(m_newEvents, {});
    std::vector<RequestEnd> ends;
    std::set<std::string> withFile;
    for (const ClaudePermissionRequest& request : open) {
        const bool hasFile = fileOf(request.sessionId) != nullptr;
        const bool hadFile = m_requestsWithFile.contains(request.id);
        if (isAnsweredElsewhere(request, events) || (hadFile && !hasFile && m_liveSessionIds)) {
            ends.push_back({request.id});
        } else if (hadFile || hasFile) {
            withFile.insert(request.id);
        }
    }
    m_requestsWithFile = std::move(withFile);
    return ends;
}

bool ClaudeSource::isAnsweredElsewhere(const ClaudePermissionRequest& request, const Events& events) const {
    const ClaudeSessionFile* file = fileOf(request.sessionId);
    const bool byEvent = std::ranges::any_of(
        events, [&](const auto& event) { return ClaudePermissions::isAnsweredElsewhere(request, event); });
    return byEvent || (file && ClaudePermissions::isAnsweredElsewhere(
                                   request, m_state.lastWaitOf(request.sessionId), *file));
}

/// A session that neither works nor waits any more, since after the request, is past that prompt.
std::vector<RequestEnd> ClaudeSource::overtaken(const Requests& open) const {
    std::vector<RequestEnd> ends;
    for (const ClaudePermissionRequest& request : open) {
        const ClaudeSessionFile* file = fileOf(request.sessionId);
        if (file && !file->isBusy && !file->waitingFor && file->statusSince &&
            *file->statusSince > request.receivedAt) {
            ends.push_back({request.id});
        }
    }
    return ends;
}

std::function<void()> ClaudeSource::answered(const std::string& sessionId) {
    m_state.dismissApproval(sessionId);
    return [this, sessionId, wait = m_state.waitOf(sessionId)] { m_state.raiseApproval(sessionId, wait); };
}

std::vector<ClaudeSessionSummary> ClaudeSource::sessions() const {
    return m_state.summaries(m_scheduler.now());
}

SessionPlace ClaudeSource::placeOf(const ClaudeSessionSummary& session) const {
    const ClaudeSessionFile* file = fileOf(session.id);
    SessionPlace place;
    if (session.pid >= 1) {
        place.processes.push_back(session.pid);
    }
    place.pane = file ? file->tmux : std::nullopt;
    return place;
}

const ClaudeSessionFile* ClaudeSource::fileOf(const std::string& sessionId) const {
    const auto found = std::ranges::find(m_sessionFiles, sessionId, &ClaudeSessionFile::sessionId);
    return found == m_sessionFiles.end() ? nullptr : &*found;
}

} // namespace veslora

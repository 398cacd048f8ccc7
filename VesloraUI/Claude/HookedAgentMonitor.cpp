// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/HookedAgentMonitor.h"

#include "VesloraCore/TmuxText.h"
#include "VesloraUI/Settings/Defaults.h"
#include "VesloraUI/Settings/SettingsKeys.h"

#include <algorithm>

namespace veslora {

HookedAgentMonitor::HookedAgentMonitor(const AgentMonitorSeams& seams, SupportDirectory& support,
                                       Defaults& settings, std::string_view spool, std::string_view answers)
    : m_seams(seams), m_support(support), m_spool(seams.files, support, spool),
      m_answers(seams.files, support, answers), m_settings(settings) {}

void HookedAgentMonitor::start() {
    m_spool.create();
    hooks().updateScripts();
    m_presence = m_support.show(m_seams.processes, now());
    refresh();
    ensureWatches();
    m_refreshTask = m_seams.scheduler.every(period, Precision::coarse, [this] { tick(); });
    usage()->loadToday();
}

void HookedAgentMonitor::stop() {
    m_presence.reset();
    m_refreshTask.cancel();
    m_raiseTask.cancel();
    m_spoolWatch.reset();
}

void HookedAgentMonitor::tick() {
    m_support.writeHeartbeat(now());
    ensureWatches();
    refresh();
}

void HookedAgentMonitor::refresh() {
    readSessions();
    m_answers.removeStale(now());
    const AgentHooks::State state = hooks().state();
    setHooks(state.areInstalled, state.areOutdated);
    publishState();
    // Last, as nobody waits for it.
    usage()->refresh();
}

bool HookedAgentMonitor::isRecent(const SpoolFile& file) const {
    return file.time >= now() - AgentSpool::eventLifetime;
}

void HookedAgentMonitor::ensureWatches() {
    ensureWatch(m_spoolWatch, m_spool.path(), DirectoryChanges::movedInto);
}

void HookedAgentMonitor::ensureWatch(std::unique_ptr<DirectoryWatch>& watch, const std::string& path,
                                     DirectoryChanges changes) {
    if (!watch || !watch->isActive()) {
        watch = m_seams.watcher.watch(path, changes, [this] { refresh(); });
    }
}

void HookedAgentMonitor::handle(const std::vector<ClaudePermissionRequest>& requests) {
    if (requests.empty()) {
        return;
    }
    const auto sessions = currentSessions();
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
bool HookedAgentMonitor::canAnswer(const ClaudePermissionRequest& request,
                                   const std::vector<ClaudeSessionSummary>& sessions) const {
    if (!m_settings.boolValue(SettingsKeys::claudeAnswerFromIsland) ||
        !m_settings.boolValue(SettingsKeys::claudeApprovalAlerts) ||
        !ClaudePermissions::canBeAnsweredOutside(request.tool)) {
        return false;
    }
    const auto session = std::ranges::find(sessions, request.sessionId, &ClaudeSessionSummary::id);
    return session == sessions.end() || session->pid < 1 ||
           !m_seams.hostApplications.isFrontmost(session->pid);
}

void HookedAgentMonitor::publishState() {
    m_permissions.removeExpired(now());
    dropOvertaken();
    publish(currentSessions(), m_permissions.pending(now()));
}

void HookedAgentMonitor::answer(const std::string& requestId, ClaudeDecision decision) {
    m_answers.write(decision, requestId);
    const auto request = std::ranges::find(pendingRequests(), requestId, &ClaudePermissionRequest::id);
    if (decision != ClaudeDecision::pass && request != pendingRequests().end()) {
        requestWasAnswered(request->sessionId);
    }
    // A copy, as publishing replaces the list that the caller's text may lie in.
    const std::string id = requestId; // NOLINT(performance-unnecessary-copy-initialization)
    m_permissions.remove(id);
    publishState();
}

void HookedAgentMonitor::jump(const std::string& sessionId) {
    // A copy, for the same reason.
    const std::string id = sessionId; // NOLINT(performance-unnecessary-copy-initialization)
    raiseTerminal(id);
    markSeen(id);
    hideApproval(id);
    publishState();
}

void HookedAgentMonitor::dismissApproval(const std::string& sessionId) {
    hideApproval(std::string(sessionId));
    publishState();
}

void HookedAgentMonitor::installHooks() {
    hooks().install();
    refresh();
}

void HookedAgentMonitor::removeHooks() {
    if (hooks().remove()) {
        refresh();
    }
}

/// A session in a multiplexer is reached through it, as no window lies above it; whoever says in which pane
/// it runs is asked there first.
void HookedAgentMonitor::raiseTerminal(const std::string& sessionId) {
    const auto session = std::ranges::find(summaries(), sessionId, &ClaudeSessionSummary::id);
    if (session == summaries().end() || session->pid < 1) {
        return;
    }
    const std::int32_t pid = session->pid;
    const auto pane = TmuxText::paneOf(paneOf(sessionId).value_or(""));
    if (!pane && activateHostOf(pid)) {
        return;
    }
    m_raiseTask =
        m_seams.multiplexer.showPane(pid, pane, [this, pid](const TerminalMultiplexer::Client& client) {
            if (!client || !activateHostOf(*client)) {
                activateHostOf(pid);
            }
        });
}

bool HookedAgentMonitor::activateHostOf(std::int32_t pid) {
    const auto app = m_seams.hostApplications.hostAppOf(pid);
    if (app) {
        m_seams.hostApplications.activate(*app);
    }
    return app.has_value();
}

} // namespace veslora

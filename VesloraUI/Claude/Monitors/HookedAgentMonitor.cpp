// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"

#include "VesloraCore/Agents/TmuxText.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>

namespace veslora {

HookedAgentMonitor::HookedAgentMonitor(const AgentTraits& traits, const AgentMonitorSeams& seams,
                                       SupportDirectory& support, Defaults& settings,
                                       UnderstandSpoolFile understand)
    : AgentMonitor(traits), m_seams(seams), m_support(support),
      m_spool(seams.scheduler, support, traits.hookNames.spool, std::move(understand),
              [this] {
                  readSessions();
                  publishState();
              }),
      m_answers(support, traits.hookNames.answers),
      m_requests(seams.scheduler, FrontTerminal(seams.hostApplications, seams.multiplexer), m_answers,
                 [this] { publishState(); }),
      m_settings(settings), m_untakenAnswers(seams.scheduler, m_answers) {}

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
    m_requests.stop();
    m_untakenAnswers.stop();
    m_spoolWatch.reset();
    m_spool.stop();
}

void HookedAgentMonitor::tick() {
    m_support.writeHeartbeat(now());
    ensureWatches();
    refresh();
}

void HookedAgentMonitor::refresh() {
    m_spool.take();
    readSessions();
    m_answers.removeStale(now());
    const AgentHooks::State state = hooks().state();
    setHooks(state.areInstalled, state.areOutdated);
    publishState();
    // Last, as nobody waits for it.
    usage()->refresh();
}

bool HookedAgentMonitor::isRecent(Timestamp time) const {
    return time >= now() - AgentSpool::eventLifetime;
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
    // Read once, so that requests that came one after the other keep that order.
    const Timestamp wallNow = now();
    const double steadyNow = m_seams.scheduler.steadyNow();
    for (ClaudePermissionRequest request : requests) {
        request.answerBy = ClaudePermissions::answerBy(request.receivedAt, wallNow, steadyNow);
        if (mayAnswer(request)) {
            m_requests.take(request, placeOf(request.sessionId, sessions));
        } else {
            m_answers.write(ClaudeDecision::pass, request.id);
        }
    }
}

/// Not when the user wants no alerts, or could not answer it from outside.
bool HookedAgentMonitor::mayAnswer(const ClaudePermissionRequest& request) const {
    return m_settings.boolValue(SettingsKeys::claudeAnswerFromIsland) &&
           m_settings.boolValue(SettingsKeys::claudeApprovalAlerts) &&
           ClaudePermissions::canBeAnsweredOutside(request.tool);
}

SessionPlace HookedAgentMonitor::placeOf(const std::string& sessionId,
                                         const std::vector<ClaudeSessionSummary>& sessions) const {
    const auto session = std::ranges::find(sessions, sessionId, &ClaudeSessionSummary::id);
    if (session == sessions.end()) {
        return {};
    }
    return {processesOf(*session), TmuxText::paneOf(paneOf(sessionId).value_or(""))};
}

std::vector<std::int32_t> HookedAgentMonitor::processesOf(const ClaudeSessionSummary& session) const {
    return session.pid < 1 ? std::vector<std::int32_t>() : std::vector(1, session.pid);
}

void HookedAgentMonitor::publishState() {
    m_requests.removeExpired();
    dropOvertaken();
    if (m_presence) {
        m_requests.awaitDeadline();
    }
    publish(currentSessions(), m_requests.shown());
}

AnswerOutcome HookedAgentMonitor::answer(const std::string& requestId, ClaudeDecision decision) {
    // A copy, as publishing replaces the list that the caller's text may lie in.
    const std::string id = requestId; // NOLINT(performance-unnecessary-copy-initialization)
    const auto requests = m_requests.shown();
    const auto request = std::ranges::find(requests, id, &ClaudePermissionRequest::id);
    if (request == requests.end()) {
        m_answers.write(ClaudeDecision::pass, id);
        m_requests.remove(id);
        publishState();
        return AnswerOutcome::tooLate;
    }
    if (m_answers.write(decision, id)) {
        return AnswerOutcome::failed;
    }
    if (decision != ClaudeDecision::pass) {
        m_untakenAnswers.expect(
            id, request->sessionId,
            [this, raise = requestWasAnswered(request->sessionId)] { raiseAgain(raise); });
    }
    m_requests.remove(id);
    publishState();
    return AnswerOutcome::given;
}

void HookedAgentMonitor::raiseAgain(const std::function<void()>& raise) {
    raise();
    publishState();
}

void HookedAgentMonitor::jump(const std::string& sessionId) {
    // A copy, for the same reason.
    const std::string id = sessionId; // NOLINT(performance-unnecessary-copy-initialization)
    raiseTerminal(id);
    markSeen(id);
    dismissApproval(id);
}

void HookedAgentMonitor::dismissApproval(const std::string& sessionId) {
    m_untakenAnswers.forget(sessionId);
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

// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"

#include "VesloraCore/Agents/HookTrial.h"
#include "VesloraCore/Agents/TmuxText.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Store/AlertPausing.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>

namespace veslora {

namespace {

constexpr double millisecondsPerSecond = 1000;
/// Longer than the script waits.
constexpr double trialLimit = 30;

HookTrialResult trialResultOf(const ProgramRunning::Result& result, double seconds) {
    // Nobody reads and presses that fast, nor does the script wait so short.
    constexpr double atOnce = 2;
    if (!result.isDone) {
        return HookTrialResult::failed;
    }
    if (const auto decision = HookTrial::decisionOf(result.output)) {
        return *decision == ClaudeDecision::allow ? HookTrialResult::allowed : HookTrialResult::denied;
    }
    return seconds < atOnce ? HookTrialResult::passedOn : HookTrialResult::unanswered;
}

} // namespace

HookedAgentMonitor::HookedAgentMonitor(AgentParts parts, const AgentMonitorSeams& seams,
                                       SupportDirectory& support, Defaults& settings)
    : AgentMonitor(parts.traits, parts.usage.get()), m_parts(std::move(parts)), m_seams(seams),
      m_support(support), m_settings(settings), m_answers(support, traits().hookNames.answers),
      m_spool(seams.scheduler, support, traits().hookNames.spool, m_parts.source->reader(m_answers),
              [this] {
                  readSessions();
                  publishState();
              }),
      m_requests(seams.scheduler, FrontTerminal(seams.hostApplications, seams.multiplexer), m_answers,
                 [this] { publishState(); }),
      m_untakenAnswers(seams.scheduler, m_answers) {}

void HookedAgentMonitor::start() {
    m_spool.create();
    m_parts.hooks->updateScripts();
    m_presence = m_support.show(m_seams.processes, m_seams.scheduler.now());
    ensureWatches();
    refresh();
    m_refreshTask = m_seams.scheduler.every(period, Precision::coarse, [this] { tick(); });
    if (usage()) {
        usage()->loadToday();
    }
}

void HookedAgentMonitor::stop() {
    m_presence.reset();
    m_refreshTask.cancel();
    m_raiseTask.cancel();
    m_trialEnd.cancel();
    m_requests.stop();
    m_untakenAnswers.stop();
    m_spoolWatch.reset();
    m_spool.stop();
    m_sessionsWatch.reset();
}

void HookedAgentMonitor::tick() {
    m_support.writeHeartbeat(m_seams.scheduler.now());
    ensureWatches();
    refresh();
}

void HookedAgentMonitor::refresh() {
    m_spool.take();
    readSessions();
    m_answers.removeStale(m_seams.scheduler.now());
    setHooks(m_parts.hooks->state());
    publishState();
    // Last, as nobody waits for it.
    if (usage()) {
        usage()->refresh();
    }
}

void HookedAgentMonitor::ensureWatches() {
    ensureWatch(m_spoolWatch, m_spool.path(), DirectoryChanges::movedInto);
    if (!m_parts.sessionsFolder.empty()) {
        ensureWatch(m_sessionsWatch, m_parts.sessionsFolder, DirectoryChanges::any);
    }
}

void HookedAgentMonitor::ensureWatch(std::unique_ptr<DirectoryWatch>& watch, const std::string& path,
                                     DirectoryChanges changes) {
    if (!watch || !watch->isActive()) {
        watch = m_seams.watcher.watch(path, changes, [this] { refresh(); });
    }
}

void HookedAgentMonitor::readSessions() {
    handle(m_parts.source->readSessions());
    end(m_parts.source->endedByNews(m_requests.open()));
}

void HookedAgentMonitor::handle(const std::vector<ClaudePermissionRequest>& requests) {
    if (requests.empty()) {
        return;
    }
    const auto sessions = m_parts.source->sessions();
    // Read once, so that requests that came one after the other keep that order.
    const Timestamp wallNow = m_seams.scheduler.now();
    const double steadyNow = m_seams.scheduler.steadyNow();
    for (ClaudePermissionRequest request : requests) {
        qCInfo(Logs::agents, "request %s of %s, %.3f s after it was filed", AgentAnswers::named(request.id),
               std::string(traits().name).c_str(), wallNow - request.receivedAt);
        request.answerBy = ClaudePermissions::answerBy(request.receivedAt, wallNow, steadyNow);
        if (mayAnswer(request)) {
            const auto session = std::ranges::find(sessions, request.sessionId, &ClaudeSessionSummary::id);
            m_requests.take(request, session == sessions.end() ? SessionPlace() : placeOf(*session));
        } else {
            m_answers.write(ClaudeDecision::pass, request.id);
        }
    }
}

/// Not when the user wants no alerts, for now or at all, or could not answer it from outside.
bool HookedAgentMonitor::mayAnswer(const ClaudePermissionRequest& request) const {
    return !areAlertsPaused() && m_settings.boolValue(SettingsKeys::claudeAnswerFromIsland) &&
           m_settings.boolValue(SettingsKeys::claudeApprovalAlerts) &&
           ClaudePermissions::canBeAnsweredOutside(request.tool);
}

void HookedAgentMonitor::end(const std::vector<RequestEnd>& ends) {
    for (const RequestEnd& request : ends) {
        if (request.script == RequestEnd::Script::isLetGo) {
            m_answers.write(ClaudeDecision::pass, request.id);
        }
        m_requests.remove(request.id);
    }
}

/// Of what an agent names its pane, nothing but a pane's number reaches a multiplexer.
SessionPlace HookedAgentMonitor::placeOf(const ClaudeSessionSummary& session) const {
    SessionPlace place = m_parts.source->placeOf(session);
    place.pane = TmuxText::paneOf(place.pane.value_or(""));
    return place;
}

void HookedAgentMonitor::publishState() {
    m_requests.removeExpired();
    end(m_parts.source->overtaken(m_requests.open()));
    if (m_presence) {
        m_requests.awaitDeadline();
    }
    setLastSign(m_parts.source->lastSign());
    publish(m_parts.source->sessions(), m_requests.shown());
}

AnswerOutcome HookedAgentMonitor::answer(const std::string& requestId, ClaudeDecision decision) {
    // A copy, as publishing replaces the list that the caller's text may lie in.
    const std::string id = requestId; // NOLINT(performance-unnecessary-copy-initialization)
    const auto requests = m_requests.shown();
    const auto request = std::ranges::find(requests, id, &ClaudePermissionRequest::id);
    if (request == requests.end()) {
        qCInfo(Logs::agents, "%s was answered too late", AgentAnswers::named(id));
        m_answers.write(ClaudeDecision::pass, id);
        m_requests.remove(id);
        publishState();
        return AnswerOutcome::tooLate;
    }
    if (m_answers.write(decision, id)) {
        return AnswerOutcome::failed;
    }
    qCInfo(Logs::agents, "%s was answered %.3f s after it was filed", AgentAnswers::named(id),
           m_seams.scheduler.now() - request->receivedAt);
    if (decision != ClaudeDecision::pass) {
        m_untakenAnswers.expect(
            id, request->sessionId,
            [this, raise = m_parts.source->answered(request->sessionId)] { raiseAgain(raise); });
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
    m_parts.source->markSeen(id);
    dismissApproval(id);
}

void HookedAgentMonitor::dismissApproval(const std::string& sessionId) {
    m_untakenAnswers.forget(sessionId);
    m_parts.source->dismissApproval(sessionId);
    publishState();
}

void HookedAgentMonitor::obey(const AlertPausing& pausing) {
    m_pausing = &pausing;
    connect(m_pausing, &AlertPausing::changed, this, &HookedAgentMonitor::letGoWhilePaused);
}

bool HookedAgentMonitor::areAlertsPaused() const {
    return m_pausing != nullptr && m_pausing->isPaused();
}

void HookedAgentMonitor::letGoWhilePaused() {
    const auto requests = m_requests.open();
    if (!areAlertsPaused() || requests.empty()) {
        return;
    }
    for (const ClaudePermissionRequest& request : requests) {
        qCInfo(Logs::agents, "%s goes to its terminal, as alerts are paused",
               AgentAnswers::named(request.id));
        m_answers.write(ClaudeDecision::pass, request.id);
        m_requests.remove(request.id);
    }
    publishState();
}

void HookedAgentMonitor::installHooks() {
    m_parts.hooks->install();
    refresh();
}

void HookedAgentMonitor::removeHooks() {
    if (m_parts.hooks->remove()) {
        refresh();
    }
}

Task HookedAgentMonitor::tryHooks(std::function<void(HookTrialResult)> done) {
    // By the wall clock, so that no trial takes another's sessions for its own after a restart.
    const std::string session =
        HookTrial::sessionId(static_cast<std::uint64_t>(m_seams.scheduler.now() * millisecondsPerSecond));
    const double begin = m_seams.scheduler.steadyNow();
    return m_seams.programs.run(
        {m_support.pathOf(traits().hookNames.permission)}, HookTrial::request(session), trialLimit,
        [this, session, begin, done = std::move(done)](const ProgramRunning::Result& result) {
            // Else a session that has no process would stay in the list.
            m_trialEnd =
                m_seams.programs.run({m_support.pathOf(traits().hookNames.event)}, HookTrial::end(session),
                                     trialLimit, [](const auto& /*result*/) {});
            done(trialResultOf(result, m_seams.scheduler.steadyNow() - begin));
        });
}

/// A session in a multiplexer is reached through it, as no window lies above it; a session that says in which
/// pane it runs is asked there first.
void HookedAgentMonitor::raiseTerminal(const std::string& sessionId) {
    const auto session = std::ranges::find(summaries(), sessionId, &ClaudeSessionSummary::id);
    if (session == summaries().end() || session->pid < 1) {
        return;
    }
    const std::int32_t pid = session->pid;
    const auto pane = placeOf(*session).pane;
    if (!pane && activateHostOf(pid)) {
        return;
    }
    m_raiseTask =
        m_seams.multiplexer.showPane(pid, pane, [this, pid](const TerminalMultiplexer::Client& client) {
            if (!(client && activateHostOf(*client)) && !activateHostOf(pid)) {
                qCWarning(Logs::agents, "no window belongs to process %d", pid);
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

// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/AgentSignPresenter.h"

#include "VesloraUI/Support/LocalTime.h"

namespace veslora {

namespace {

QString kindOf(HookSign::Kind kind) {
    switch (kind) {
    case HookSign::Kind::sessionStart:
        return AgentSignPresenter::tr("a session began");
    case HookSign::Kind::prompt:
        return AgentSignPresenter::tr("a prompt was sent");
    case HookSign::Kind::toolStart:
        return AgentSignPresenter::tr("a tool was started");
    case HookSign::Kind::toolDone:
        return AgentSignPresenter::tr("a tool has ended");
    case HookSign::Kind::request:
        return AgentSignPresenter::tr("a permission was asked for");
    case HookSign::Kind::needsYou:
        return AgentSignPresenter::tr("a session waits");
    case HookSign::Kind::turnEnd:
        return AgentSignPresenter::tr("a turn has ended");
    case HookSign::Kind::sessionEnd:
        return AgentSignPresenter::tr("a session has ended");
    case HookSign::Kind::other:
        break;
    }
    return AgentSignPresenter::tr("something was told");
}

QString timeOf(Timestamp time, Timestamp now) {
    const QString date = LocalTime::shortDate(time);
    const QString clock = LocalTime::shortTime(time);
    return date == LocalTime::shortDate(now) ? clock : AgentSignPresenter::tr("%1, %2").arg(date, clock);
}

QString textOf(HookTrialResult result) {
    switch (result) {
    case HookTrialResult::allowed:
        return AgentSignPresenter::tr("It works: you allowed it. Nothing was run.");
    case HookTrialResult::denied:
        return AgentSignPresenter::tr("It works: you denied it.");
    case HookTrialResult::unanswered:
        return AgentSignPresenter::tr("No answer: an agent would ask in its terminal now.");
    case HookTrialResult::passedOn:
        return AgentSignPresenter::tr(
            "The prompt went straight to the terminal: answering from the island is "
            "off or paused.");
    case HookTrialResult::failed:
        break;
    }
    return AgentSignPresenter::tr("The script in Veslora's folder couldn't be run.");
}

/// Hooks that were heard since they were put in are heard, whatever the agent's configuration may say.
bool areHeard(const AgentMonitor& monitor) {
    return monitor.lastSign() && monitor.lastSign()->time >= monitor.hooksChangedAt();
}

} // namespace

void AgentSignPresenter::start() {
    follow(m_agents, &AgentsModel::hooksChanged, &AgentsModel::lastSignChanged);
}

AgentMonitor* AgentSignPresenter::monitor() const {
    return m_agents->monitorOf(static_cast<AgentKind>(m_agent));
}

void AgentSignPresenter::read() {
    const AgentMonitor* agent = monitor();
    if (!agent || !agent->hooksInstalled()) {
        m_trial.cancel();
        m_trialText.clear();
        show(m_shown, {});
        return;
    }
    const bool isMissing = !agent->hooksTrusted() && !areHeard(*agent);
    const Timestamp now = environment().scheduler().now();
    const QString sign = isMissing ? tr("%1 has not been told to trust the hooks: run /hooks in it.")
                                         .arg(QString::fromUtf8(agent->traits().name))
                         : agent->lastSign()
                             ? tr("Last event: %1, %2.")
                                   .arg(kindOf(agent->lastSign()->kind), timeOf(agent->lastSign()->time, now))
                             : tr("No event yet: the next thing a session does shows here.");
    show(m_shown,
         {.signText = sign, .isMissing = isMissing, .canTry = !m_trial.isActive(), .trialText = m_trialText});
}

void AgentSignPresenter::tryIt() {
    AgentMonitor* agent = monitor();
    if (!agent || m_trial.isActive()) {
        return;
    }
    m_trial = agent->tryHooks([this](HookTrialResult result) { trialEnded(result); });
    m_trialText = tr("A made-up prompt is on the island: answer it there.");
    refresh();
}

void AgentSignPresenter::trialEnded(HookTrialResult result) {
    m_trialText = textOf(result);
    refresh();
}

} // namespace veslora

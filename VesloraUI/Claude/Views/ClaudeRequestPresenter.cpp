// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeRequestPresenter.h"

#include "VesloraCore/Agents/ApprovalAlert.h"
#include "VesloraCore/Agents/ClaudePermissions.h"
#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "VesloraCore/Text/PathText.h"
#include "VesloraCore/Text/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veslora {

void ClaudeRequestPresenter::start() {
    follow(m_agents, &AgentsModel::changed);
}

/// The island's next request has a presenter of its own: this one's view is on its way out by then, and must
/// not show another request's text there.
void ClaudeRequestPresenter::setRequestId(const QString& id) {
    if (m_requestId.isEmpty()) {
        m_requestId = id;
    }
}

void ClaudeRequestPresenter::setArmed(bool isArmed) {
    Shown next = m_shown;
    next.isArmed = isArmed;
    show(m_shown, std::move(next));
}

/// Once the request is gone, what was shown of it stays as it was: the view is on its way out.
void ClaudeRequestPresenter::read() {
    const auto& requests = m_agents->pendingRequests();
    const auto found = std::ranges::find(requests, m_requestId.toStdString(), &ClaudePermissionRequest::id);
    Shown next = m_shown;
    next.isPending = found != requests.end();
    if (next.isPending) {
        take(*found, next);
        next.others = static_cast<int>(requests.size()) - 1;
        next.sessionName = sessionNameNow();
        next.progress = progressNow();
    }
    show(m_shown, std::move(next));
}

/// A request never changes, and its text may be long: both are taken once.
void ClaudeRequestPresenter::take(const ClaudePermissionRequest& request, Shown& shown) {
    if (!m_request) {
        m_request = request;
        const auto display = ClaudeRequestText::display(m_request->text);
        shown.isComplete = display.isComplete;
        shown.text = QString::fromStdString(display.text);
        const double left = request.answerBy - environment().scheduler().steadyNow();
        shown.seconds = static_cast<int>(std::ceil(std::clamp(left, 0.0, ClaudePermissions::wait)));
    }
}

QString ClaudeRequestPresenter::sessionNameNow() const {
    const auto& sessions = m_agents->summaries();
    const auto session = std::ranges::find(sessions, m_request->sessionId, &ClaudeSessionSummary::id);
    const std::string name =
        session == sessions.end() ? std::string(PathText::lastComponent(m_request->cwd)) : session->name;
    return QString::fromStdString(VisibleText::line(name));
}

double ClaudeRequestPresenter::progressNow() const {
    return ApprovalAlert::fuseProgress(m_request->answerBy, environment().scheduler().steadyNow());
}

void ClaudeRequestPresenter::setDate(double date) {
    m_date = date;
    if (m_request) {
        Shown next = m_shown;
        next.progress = progressNow();
        show(m_shown, std::move(next));
    }
}

void ClaudeRequestPresenter::setTextProven(bool isTextProven) {
    Shown next = m_shown;
    next.isTextProven = isTextProven;
    show(m_shown, std::move(next));
}

QString ClaudeRequestPresenter::title() const {
    const AgentTraits* agent = m_request ? &m_agents->traitsOf(m_request->agent) : nullptr;
    if (!agent || agent->isImplied) {
        return tr("Approve");
    }
    return tr("Approve · %1").arg(QString::fromUtf8(agent->name));
}

QString ClaudeRequestPresenter::waitingText() const {
    return m_shown.others >= 1 ? tr("+%Ln waiting", nullptr, m_shown.others) : QString();
}

QString ClaudeRequestPresenter::spokenText() const {
    if (!m_request) {
        return {};
    }
    const QString agent = QString::fromUtf8(m_agents->traitsOf(m_request->agent).fullName);
    const QString asked = tr("%1 asks in %2: %3").arg(agent, m_shown.sessionName, m_shown.text);
    const QString keys =
        m_shown.isComplete ? tr("Jump, Deny or Allow.") : tr("Too long to show here: Jump or Deny.");
    const QString time = tr("%n seconds to answer.", nullptr, m_shown.seconds);
    return tr("%1. %2 %3").arg(asked, time, keys);
}

QString ClaudeRequestPresenter::note() const {
    if (m_shown.hasFailed) {
        return tr("Couldn't answer");
    }
    if (!m_request || isShownInFull()) {
        return {};
    }
    return m_shown.isComplete ? tr("Can't be shown in full · use Jump")
                              : tr("Too long to show here · use Jump");
}

void ClaudeRequestPresenter::jump() {
    const auto request = m_request;
    if (m_shown.isPending && request) {
        answer(ClaudeDecision::pass);
        m_agents->jump(request->sessionId);
    }
}

void ClaudeRequestPresenter::deny() {
    if (isDenyEnabled()) {
        answer(ClaudeDecision::deny);
        environment().haptics().perform(HapticPattern::generic);
    }
}

void ClaudeRequestPresenter::allow() {
    if (isAllowEnabled()) {
        answer(ClaudeDecision::allow);
    }
}

void ClaudeRequestPresenter::answer(ClaudeDecision decision) {
    const AnswerOutcome outcome = m_agents->answer(m_requestId.toStdString(), decision);
    Shown next = m_shown;
    next.hasFailed = outcome == AnswerOutcome::failed;
    show(m_shown, std::move(next));
}

} // namespace veslora

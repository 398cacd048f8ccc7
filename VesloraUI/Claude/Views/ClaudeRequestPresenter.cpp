// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeRequestPresenter.h"

#include "VesloraCore/Agents/ApprovalAlert.h"
#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "VesloraCore/Text/PathText.h"
#include "VesloraCore/Text/VisibleText.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <algorithm>

namespace veslora {

void ClaudeRequestPresenter::componentComplete() {
    connect(m_agents, &AgentsModel::changed, this, &ClaudeRequestPresenter::readAgents);
    readAgents();
    setDate(ViewEnvironment::of(qmlEngine(this)).scheduler().now());
}

/// The island's next request has a presenter of its own: this one's view is on its way out by then, and must
/// not show another request's text there.
void ClaudeRequestPresenter::setRequestId(const QString& id) {
    if (m_requestId.isEmpty()) {
        m_requestId = id;
    }
}

void ClaudeRequestPresenter::setArmed(bool isArmed) {
    assign(this, m_isArmed, isArmed, &ClaudeRequestPresenter::keysChanged);
}

/// Once the request is gone, what was shown of it stays as it was: the view is on its way out.
void ClaudeRequestPresenter::readAgents() {
    const auto requests = m_agents->pendingRequests();
    const auto found = std::ranges::find(requests, m_requestId.toStdString(), &ClaudePermissionRequest::id);
    const bool isPending = found != requests.end();
    if (assign(this, m_isPending, isPending, &ClaudeRequestPresenter::keysChanged); !isPending) {
        return;
    }
    // A request never changes, and its text may be long: both are taken once.
    if (!m_request) {
        m_request = *found;
        const auto display = ClaudeRequestText::display(m_request->text);
        m_isComplete = display.isComplete;
        m_text = QString::fromStdString(display.text);
    }
    m_others = static_cast<int>(requests.size()) - 1;
    const auto sessions = m_agents->summaries();
    const auto session = std::ranges::find(sessions, m_request->sessionId, &ClaudeSessionSummary::id);
    const std::string name =
        session == sessions.end() ? std::string(PathText::lastComponent(m_request->cwd)) : session->name;
    m_sessionName = QString::fromStdString(VisibleText::line(name));
    emit changed();
    emit keysChanged();
}

void ClaudeRequestPresenter::setDate(double date) {
    m_date = date;
    if (m_request) {
        const double now = ViewEnvironment::of(qmlEngine(this)).scheduler().steadyNow();
        assign(this, m_progress, ApprovalAlert::fuseProgress(m_request->answerBy, now),
               &ClaudeRequestPresenter::progressChanged);
    }
}

void ClaudeRequestPresenter::setTextProven(bool isTextProven) {
    assign(this, m_isTextProven, isTextProven, &ClaudeRequestPresenter::keysChanged);
}

QString ClaudeRequestPresenter::title() const {
    const AgentTraits* agent = m_request ? &m_agents->traitsOf(m_request->agent) : nullptr;
    if (!agent || agent->isImplied) {
        return tr("Approve");
    }
    return tr("Approve · %1").arg(QString::fromUtf8(agent->name));
}

QString ClaudeRequestPresenter::waitingText() const {
    return m_others >= 1 ? tr("+%1 waiting").arg(m_others) : QString();
}

QString ClaudeRequestPresenter::note() const {
    if (m_hasFailed) {
        return tr("Couldn't answer");
    }
    if (!m_request || isShownInFull()) {
        return {};
    }
    return m_isComplete ? tr("Can't be shown in full · use Jump") : tr("Too long to show here · use Jump");
}

void ClaudeRequestPresenter::jump() {
    const auto request = m_request;
    if (m_isPending && request) {
        answer(ClaudeDecision::pass);
        m_agents->jump(request->sessionId);
    }
}

void ClaudeRequestPresenter::deny() {
    if (isDenyEnabled()) {
        answer(ClaudeDecision::deny);
        ViewEnvironment::of(qmlEngine(this)).haptics().perform(HapticPattern::generic);
    }
}

void ClaudeRequestPresenter::allow() {
    if (isAllowEnabled()) {
        answer(ClaudeDecision::allow);
    }
}

void ClaudeRequestPresenter::answer(ClaudeDecision decision) {
    const AnswerOutcome outcome = m_agents->answer(m_requestId.toStdString(), decision);
    assign(this, m_hasFailed, outcome == AnswerOutcome::failed, &ClaudeRequestPresenter::keysChanged);
}

} // namespace veslora

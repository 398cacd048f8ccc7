// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeNoticePresenter.h"

#include "VesloraCore/Agents/ApprovalAlert.h"
#include "VesloraCore/Text/VisibleText.h"

namespace veslora {

void ClaudeNoticePresenter::componentComplete() {
    connect(m_agents, &AgentsModel::changed, this, [this] {
        if (m_isLive) {
            readAgents();
        }
    });
    readAgents();
}

void ClaudeNoticePresenter::readAgents() {
    const auto& waiting = m_agents->waitingForApproval();
    if (waiting.empty()) {
        return;
    }
    const ClaudeSessionSummary& first = waiting.front();
    m_sessionId = first.id;
    m_name = QString::fromStdString(VisibleText::line(first.name));
    const auto& approval = std::get<ClaudeStatus::NeedsApproval>(first.status);
    m_message = QString::fromStdString(VisibleText::line(AlertNotice::message(approval.message)));
    m_more = static_cast<int>(waiting.size()) - 1;
    emit changed();
}

void ClaudeNoticePresenter::jump() {
    m_agents->jump(std::string(m_sessionId));
}

void ClaudeNoticePresenter::dismiss() {
    m_agents->dismissApproval(std::string(m_sessionId));
}

} // namespace veslora

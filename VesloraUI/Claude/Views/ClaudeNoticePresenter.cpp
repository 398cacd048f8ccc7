// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeNoticePresenter.h"

#include "VesloraCore/Agents/ApprovalAlert.h"
#include "VesloraCore/Text/VisibleText.h"
#include "VesloraUI/Support/ReadersWords.h"

namespace veslora {

void ClaudeNoticePresenter::start() {
    connect(m_agents, &AgentsModel::changed, this, [this] {
        if (m_isLive) {
            read();
        }
    });
}

void ClaudeNoticePresenter::read() {
    const auto& waiting = m_agents->waitingForApproval();
    if (waiting.empty()) {
        return;
    }
    const ClaudeSessionSummary& first = waiting.front();
    const auto& approval = std::get<ClaudeStatus::NeedsApproval>(first.status);
    m_sessionId = first.id;
    show(m_shown, {.name = QString::fromStdString(VisibleText::line(first.name)),
                   .message = QString::fromStdString(
                       VisibleText::line(AlertNotice::message(approval.message, readersWords()))),
                   .more = static_cast<int>(waiting.size()) - 1});
}

void ClaudeNoticePresenter::jump() {
    m_agents->jump(std::string(m_sessionId));
}

void ClaudeNoticePresenter::dismiss() {
    m_agents->dismissApproval(std::string(m_sessionId));
}

} // namespace veslora

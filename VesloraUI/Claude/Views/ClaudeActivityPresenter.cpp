// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeActivityPresenter.h"

namespace veslora {

void ClaudeActivityPresenter::start() {
    connect(m_agents, &AgentsModel::changed, this, [this] {
        if (m_isLive) {
            read();
        }
    });
}

void ClaudeActivityPresenter::read() {
    const auto session = m_kind == Finished ? m_agents->latestFinished() : m_agents->longestWorking();
    showAgent(session ? m_agents->traitsOf(session->agent) : *m_shown.agent);
}

void ClaudeActivityPresenter::setDate(double date) {
    m_date = date;
    showAgent(*m_shown.agent);
}

void ClaudeActivityPresenter::showAgent(const AgentTraits& agent) {
    show(m_shown, {.agent = &agent, .spinner = QString::fromUtf8(agent.spinner.frame(m_date))});
}

} // namespace veslora

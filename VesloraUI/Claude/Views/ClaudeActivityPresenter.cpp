// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeActivityPresenter.h"

#include "VesloraUI/Platform/Observable.h"

namespace veslora {

void ClaudeActivityPresenter::componentComplete() {
    connect(m_agents, &AgentsModel::changed, this, [this] {
        if (m_isLive) {
            readAgents();
        }
    });
    readAgents();
    readSpinner();
}

void ClaudeActivityPresenter::readAgents() {
    const auto session = m_kind == Finished ? m_agents->latestFinished() : m_agents->longestWorking();
    if (session &&
        assign(this, m_agent, &m_agents->traitsOf(session->agent), &ClaudeActivityPresenter::agentChanged)) {
        readSpinner();
    }
}

void ClaudeActivityPresenter::setDate(double date) {
    m_date = date;
    readSpinner();
}

void ClaudeActivityPresenter::readSpinner() {
    const auto frame = m_agent->spinner.frame(m_date);
    assign(this, m_spinner, QString::fromUtf8(frame), &ClaudeActivityPresenter::spinnerChanged);
}

} // namespace veslora

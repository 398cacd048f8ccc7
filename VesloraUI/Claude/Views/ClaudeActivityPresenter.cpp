// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeActivityPresenter.h"

#include "VesloraUI/Platform/Appearance.h"

namespace veslora {
namespace {

/// Seconds between two looks at the date of a spinner that does not turn.
constexpr double restingPeriod = 60;

} // namespace

void ClaudeActivityPresenter::start() {
    follow(&environment().appearance(), &Appearance::changed);
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
    const bool isStill = isComplete() && environment().reducesMotion();
    // The middle of its fifth frame, which is a whole mark with every agent.
    const double date = isStill ? 4.5 * agent.spinner.period : m_date;
    show(m_shown, {.agent = &agent,
                   .spinner = QString::fromUtf8(agent.spinner.frame(date)),
                   .period = isStill ? restingPeriod : agent.spinner.period});
}

} // namespace veslora

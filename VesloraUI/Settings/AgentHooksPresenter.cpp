// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/AgentHooksPresenter.h"

#include "VesloraUI/Claude/Hooks/HookFailures.h"

#include <QCoreApplication>

namespace veslora {

namespace {

QString statusOf(const AgentMonitor& agent) {
    return agent.hooksInstalled()  ? AgentHooksPresenter::tr("Installed")
           : agent.hooksOutdated() ? AgentHooksPresenter::tr("Needs update")
                                   : AgentHooksPresenter::tr("Not installed");
}

QString buttonOf(const AgentMonitor& agent) {
    return agent.hooksInstalled()  ? AgentHooksPresenter::tr("Remove")
           : agent.hooksOutdated() ? AgentHooksPresenter::tr("Update")
                                   : AgentHooksPresenter::tr("Install");
}

} // namespace

void AgentHooksPresenter::start() {
    follow(m_agents, &AgentsModel::hooksChanged);
}

void AgentHooksPresenter::read() {
    if (const AgentMonitor* agent = monitor()) {
        show(m_shown, {.title = textOf(&AgentHookTexts::title),
                       .detail = textOf(&AgentHookTexts::detail),
                       .footer = textOf(&AgentHookTexts::footer),
                       .statusText = statusOf(*agent),
                       .buttonText = buttonOf(*agent),
                       .errorText = m_errorText});
    }
}

AgentMonitor* AgentHooksPresenter::monitor() const {
    return m_agents->monitorOf(static_cast<AgentKind>(m_agent));
}

/// In the reader's language.
QString AgentHooksPresenter::textOf(const char* AgentHookTexts::*text) const {
    const AgentMonitor* agent = monitor();
    return agent ? QCoreApplication::translate("AgentHooks", agent->traits().hookTexts.*text) : QString();
}

void AgentHooksPresenter::press() {
    AgentMonitor* agent = monitor();
    if (!agent) {
        return;
    }
    m_errorText = HookFailures::textOf(
        [agent] {
            if (agent->hooksInstalled()) {
                agent->removeHooks();
            } else {
                agent->installHooks();
            }
        },
        agent->traits());
    refresh();
}

} // namespace veslora

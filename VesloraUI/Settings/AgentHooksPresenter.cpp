// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/AgentHooksPresenter.h"

#include "VesloraCore/InstallError.h"

#include <system_error>

namespace veslora {

void AgentHooksPresenter::componentComplete() {
    connect(m_agents, &AgentsModel::hooksChanged, this, &AgentHooksPresenter::changed);
    emit changed();
}

AgentMonitor* AgentHooksPresenter::monitor() const {
    if (!m_agents) {
        return nullptr;
    }
    return m_agent == AgentsModel::Claude ? &m_agents->claude() : m_agents->codex();
}

QString AgentHooksPresenter::statusText() const {
    const AgentMonitor* agent = monitor();
    if (!agent) {
        return {};
    }
    return agent->hooksInstalled()  ? tr("Installed")
           : agent->hooksOutdated() ? tr("Needs update")
                                    : tr("Not installed");
}

QString AgentHooksPresenter::buttonText() const {
    const AgentMonitor* agent = monitor();
    if (!agent) {
        return {};
    }
    return agent->hooksInstalled() ? tr("Remove") : agent->hooksOutdated() ? tr("Update") : tr("Install");
}

QString AgentHooksPresenter::failureText() const {
    return m_agent == AgentsModel::Claude
               ? tr("Couldn't read ~/.claude/settings.json; nothing was changed.")
               : tr("Couldn't read ~/.codex/hooks.json (it must be a JSON object); nothing was changed.");
}

void AgentHooksPresenter::press() {
    AgentMonitor* agent = monitor();
    if (!agent) {
        return;
    }
    try {
        if (agent->hooksInstalled()) {
            agent->removeHooks();
        } else {
            agent->installHooks();
        }
        m_errorText.clear();
    } catch (const ClaudeHooksInstaller::InstallError&) {
        m_errorText = failureText();
    } catch (const std::system_error&) {
        m_errorText = failureText();
    }
    emit changed();
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/ClaudeSettingsPresenter.h"

#include "VesloraCore/ClaudeHooksInstaller.h"

#include <system_error>

namespace veslora {

void ClaudeSettingsPresenter::componentComplete() {
    connect(m_agents, &AgentsModel::hooksChanged, this, &ClaudeSettingsPresenter::changed);
    emit changed();
}

QString ClaudeSettingsPresenter::statusText() const {
    if (!m_agents) {
        return {};
    }
    return m_agents->claudeHooksInstalled()  ? tr("Installed")
           : m_agents->claudeHooksOutdated() ? tr("Needs update")
                                             : tr("Not installed");
}

QString ClaudeSettingsPresenter::buttonText() const {
    if (!m_agents) {
        return {};
    }
    return m_agents->claudeHooksInstalled()  ? tr("Remove")
           : m_agents->claudeHooksOutdated() ? tr("Update")
                                             : tr("Install");
}

void ClaudeSettingsPresenter::press() {
    const QString failure = tr("Couldn't read ~/.claude/settings.json; nothing was changed.");
    try {
        if (m_agents->claudeHooksInstalled()) {
            m_agents->claude().removeHooks();
        } else {
            m_agents->claude().installHooks();
        }
        m_errorText.clear();
    } catch (const ClaudeHooksInstaller::InstallError&) {
        m_errorText = failure;
    } catch (const std::system_error&) {
        m_errorText = failure;
    }
    emit changed();
}

} // namespace veslora

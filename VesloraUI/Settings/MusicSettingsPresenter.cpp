// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/MusicSettingsPresenter.h"

#include "VesloraUI/Platform/AutomationPermission.h"

namespace veslora {

void MusicSettingsPresenter::start() {
    m_permission = &environment().automation();
    follow(m_permission, &AutomationPermission::statusChanged);
}

void MusicSettingsPresenter::read() {
    const bool isAllowed = m_permission->status("com.spotify.client") == AutomationStatus::allowed;
    show(m_automation,
         isAllowed ? tr("Allowed. The music keys control Spotify.") : tr("Open Spotify to check."));
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingBinding.h"

#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Style/ViewEnvironment.h"

namespace veslora {

void SettingBinding::componentComplete() {
    m_settings = &ViewEnvironment::of(qmlEngine(this)).settings();
    connect(m_settings, &Defaults::changed, this, &SettingBinding::read);
    read();
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/BoolSetting.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Style/ViewEnvironment.h"

namespace veslora {

void BoolSetting::componentComplete() {
    m_settings = &ViewEnvironment::of(qmlEngine(this)).settings();
    connect(m_settings, &Defaults::changed, this, &BoolSetting::read);
    read();
}

void BoolSetting::read() {
    assign(this, m_value, m_settings->boolValue(m_key.toStdString()), &BoolSetting::valueChanged);
}

void BoolSetting::setValue(bool value) {
    if (m_settings) {
        m_settings->set(m_key.toStdString(), value);
    }
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/TextSetting.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Style/ViewEnvironment.h"

namespace veslora {

void TextSetting::componentComplete() {
    m_settings = &ViewEnvironment::of(qmlEngine(this)).settings();
    connect(m_settings, &Defaults::changed, this, &TextSetting::read);
    read();
}

void TextSetting::read() {
    const std::string stored = m_settings->stringValue(m_key.toStdString()).value_or(std::string());
    assign(this, m_value, QString::fromStdString(stored), &TextSetting::valueChanged);
}

void TextSetting::setValue(const QString& value) {
    if (m_settings) {
        m_settings->set(m_key.toStdString(), value.toStdString());
    }
}

} // namespace veslora

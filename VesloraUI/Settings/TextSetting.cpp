// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/TextSetting.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"

namespace veslora {

void TextSetting::read() {
    assign(this, m_value, QString::fromStdString(settings()->stringValue(key()).value_or(std::string())),
           &TextSetting::valueChanged);
}

void TextSetting::setValue(const QString& value) {
    if (settings()) {
        settings()->set(key(), value.toStdString());
    }
}

} // namespace veslora

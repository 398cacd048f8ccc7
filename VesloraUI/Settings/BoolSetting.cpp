// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/BoolSetting.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"

namespace veslora {

void BoolSetting::read() {
    assign(this, m_value, settings()->boolValue(key()), &BoolSetting::valueChanged);
}

void BoolSetting::setValue(bool value) {
    if (settings()) {
        settings()->set(key(), value);
    }
}

} // namespace veslora

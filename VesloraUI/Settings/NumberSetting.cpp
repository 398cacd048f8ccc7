// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/NumberSetting.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"

namespace veslora {

void NumberSetting::read() {
    assign(this, m_value, settings()->doubleValue(key()), &NumberSetting::valueChanged);
}

void NumberSetting::setValue(double value) {
    if (settings()) {
        settings()->set(key(), value);
    }
}

} // namespace veslora

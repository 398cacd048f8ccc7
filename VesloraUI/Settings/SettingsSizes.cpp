// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingsSizes.h"

#include "VesloraUI/Platform/Appearance.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <algorithm>
#include <cmath>

namespace veslora {

SettingsSizes::SettingsSizes(const Appearance& appearance) : m_appearance(appearance) {
    connect(&appearance, &Appearance::changed, this, &SettingsSizes::changed);
}

SettingsSizes* SettingsSizes::create(QQmlEngine* engine, QJSEngine* /*scriptEngine*/) {
    return new SettingsSizes(ViewEnvironment::of(engine).appearance());
}

double SettingsSizes::scale() const {
    return std::clamp(m_appearance.current().textScale, 1.0, 2.0);
}

int SettingsSizes::scaled(int size) const {
    return static_cast<int>(std::lround(size * scale()));
}

} // namespace veslora

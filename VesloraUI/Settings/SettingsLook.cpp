// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingsLook.h"

#include "VesloraUI/Platform/Appearance.h"
#include "VesloraUI/Settings/ColorContrast.h"
#include "VesloraUI/Style/ViewEnvironment.h"

namespace veslora {

SettingsLook::SettingsLook(const Appearance& appearance) : m_appearance(appearance) {
    connect(&appearance, &Appearance::changed, this, &SettingsLook::changed);
}

SettingsLook* SettingsLook::create(QQmlEngine* engine, QJSEngine* /*scriptEngine*/) {
    return new SettingsLook(ViewEnvironment::of(engine).appearance());
}

bool SettingsLook::isDark() const {
    return isDark(m_appearance.current());
}

bool SettingsLook::isHighContrast() const {
    return m_appearance.current().highContrast;
}

bool SettingsLook::isDark(const DesktopAppearance& appearance) {
    return appearance.colorScheme == ColorScheme::dark || !appearance.isTold;
}

QColor SettingsLook::readable(const QColor& color, const QList<QColor>& grounds, double wanted) {
    return ColorContrast::readable(color, grounds, wanted);
}

} // namespace veslora

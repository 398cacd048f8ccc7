// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/EditTrayPresenter.h"

#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/AccentChoice.h"

#include <cmath>

namespace veslora {

void EditTrayPresenter::start() {
    m_settings = &environment().settings();
    // The rack does not tell of a space that it does not use now.
    follow(m_settings, &Defaults::changed);
    follow(m_rack, &RackModel::spacingChanged);
}

void EditTrayPresenter::read() {
    const double spacing = m_rack->customSpacing().value_or(m_rack->spacingValue());
    show(m_shown, {.automaticHelp =
                       m_rack->isAutomatic() ? tr("Automatic spacing is on") : tr("Use automatic spacing"),
                   .spacingText = tr("%L1 pt").arg(std::lround(spacing)),
                   .accent = AccentChoice::placeOf(m_settings->stringValue(SettingsKeys::accent))});
}

QVariantList EditTrayPresenter::accents() {
    return AccentChoice::all();
}

void EditTrayPresenter::toggleAutomatic() {
    m_rack->setAutomaticSpacing(!m_rack->isAutomatic());
}

void EditTrayPresenter::chooseAccent(int place) {
    if (const auto stored = AccentChoice::storedAt(place)) {
        m_settings->set(SettingsKeys::accent, *stored);
    }
}

} // namespace veslora

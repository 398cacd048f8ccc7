// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/EditTrayPresenter.h"

#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/Accent.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace veslora {

using AccentColors::allCases;

void EditTrayPresenter::start() {
    m_settings = &environment().settings();
    // The rack does not tell of a space that it does not use now.
    follow(m_settings, &Defaults::changed);
    follow(m_rack, &RackModel::spacingChanged);
}

void EditTrayPresenter::read() {
    const double spacing = m_rack->customSpacing().value_or(m_rack->spacingValue());
    const Accent accent = AccentColors::fromStored(m_settings->stringValue(SettingsKeys::accent));
    show(m_shown, {.automaticHelp =
                       m_rack->isAutomatic() ? tr("Automatic spacing is on") : tr("Use automatic spacing"),
                   .spacingText = tr("%L1 pt").arg(std::lround(spacing)),
                   .accent = static_cast<int>(std::ranges::find(allCases, accent) - allCases.begin())});
}

QVariantList EditTrayPresenter::accents() {
    QVariantList choices;
    for (const Accent accent : allCases) {
        const QByteArray name = AccentColors::displayName(accent).toUtf8();
        const QString shownName = QCoreApplication::translate("Accents", name.constData());
        choices << QVariant::fromValue(
            AccentChoice{tr("%1 accent").arg(shownName), shownName, AccentColors::color(accent)});
    }
    return choices;
}

void EditTrayPresenter::toggleAutomatic() {
    m_rack->setAutomaticSpacing(!m_rack->isAutomatic());
}

void EditTrayPresenter::chooseAccent(int place) {
    const auto index = static_cast<std::size_t>(place);
    if (index < allCases.size()) {
        m_settings->set(SettingsKeys::accent, AccentColors::rawValue(allCases[index]));
    }
}

} // namespace veslora

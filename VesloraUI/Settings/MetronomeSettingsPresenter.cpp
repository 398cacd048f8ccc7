// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/MetronomeSettingsPresenter.h"

#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace veslora {

void MetronomeSettingsPresenter::start() {
    m_settings = &environment().settings();
    follow(m_settings, &Defaults::changed);
}

void MetronomeSettingsPresenter::read() {
    const auto stored = metronomeSoundFrom(m_settings->stringValue(SettingsKeys::metronomeSound));
    const auto* const found = std::ranges::find(allMetronomeSounds, stored);
    show(m_sound, static_cast<int>(std::distance(allMetronomeSounds.begin(), found)));
}

QList<QString> MetronomeSettingsPresenter::sounds() {
    QList<QString> names;
    for (const MetronomeSound sound : allMetronomeSounds) {
        names << QCoreApplication::translate("MetronomeSounds", displayName(sound).data());
    }
    return names;
}

void MetronomeSettingsPresenter::chooseSound(int place) {
    if (place == m_sound || place < 0 || place >= static_cast<int>(allMetronomeSounds.size())) {
        return;
    }
    m_settings->set(SettingsKeys::metronomeSound,
                    rawValue(allMetronomeSounds[static_cast<std::size_t>(place)]));
    m_previewer->preview();
}

} // namespace veslora

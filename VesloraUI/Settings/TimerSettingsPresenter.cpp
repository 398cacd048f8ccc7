// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/TimerSettingsPresenter.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Platform/SoundPlaying.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <algorithm>
#include <iterator>

namespace veslora {

using SettingsKeys::timerSounds;

void TimerSettingsPresenter::componentComplete() {
    const ViewEnvironment& environment = ViewEnvironment::of(qmlEngine(this));
    m_settings = &environment.settings();
    m_player = &environment.sounds();
    connect(m_settings, &Defaults::changed, this, &TimerSettingsPresenter::readSettings);
    readSettings();
}

void TimerSettingsPresenter::readSettings() {
    const auto stored = m_settings->stringValue(SettingsKeys::timerSound);
    const auto* const found = std::ranges::find_if(timerSounds, [&](auto name) { return stored == name; });
    const int place =
        found == timerSounds.end() ? -1 : static_cast<int>(std::distance(timerSounds.begin(), found));
    assign(this, m_sound, place, &TimerSettingsPresenter::soundChanged);
}

QList<QString> TimerSettingsPresenter::sounds() {
    QList<QString> names;
    for (const std::string_view name : timerSounds) {
        names << QString::fromUtf8(name);
    }
    names.back() = tr("None");
    return names;
}

void TimerSettingsPresenter::chooseSound(int place) {
    if (place == m_sound || place < 0 || place >= static_cast<int>(timerSounds.size())) {
        return;
    }
    const std::string_view name = timerSounds[static_cast<std::size_t>(place)];
    m_settings->set(SettingsKeys::timerSound, name);
    if (name != timerSounds.back()) {
        m_player->play(std::string(name));
    }
}

} // namespace veslora

// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/TimerSettingsPresenter.h"

#include "VesloraUI/Platform/SoundPlaying.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace veslora {

using SettingsKeys::timerSounds;

void TimerSettingsPresenter::start() {
    m_settings = &environment().settings();
    m_player = &environment().sounds();
    follow(m_settings, &Defaults::changed);
}

void TimerSettingsPresenter::read() {
    const auto stored = m_settings->stringValue(SettingsKeys::timerSound);
    const auto* const found = std::ranges::find_if(timerSounds, [&](auto name) { return stored == name; });
    show(m_sound,
         found == timerSounds.end() ? -1 : static_cast<int>(std::distance(timerSounds.begin(), found)));
}

QList<QString> TimerSettingsPresenter::sounds() {
    QList<QString> names;
    for (const std::string_view name : timerSounds) {
        names << QCoreApplication::translate("TimerSounds", name.data());
    }
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

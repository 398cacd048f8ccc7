// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/MusicOnIsland.h"

#include "VesloraCore/Island/LiveActivity.h"
#include "VesloraUI/Music/MusicModel.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Widgets/RackModel.h"

#include <algorithm>
#include <utility>

namespace veslora {

MusicOnIsland::MusicOnIsland(MusicModel& music, const RackModel& rack, const Defaults& settings,
                             Scheduler& scheduler, std::function<void()> onChange)
    : m_music(music), m_rack(rack), m_settings(settings), m_scheduler(scheduler),
      m_onChange(std::move(onChange)) {}

MusicOnIsland::~MusicOnIsland() = default;

void MusicOnIsland::start() {
    m_music.onChange = [this] { changed(); };
    m_music.startObservingSpotify();
    updateNeed();
}

void MusicOnIsland::stop() {
    m_music.onChange = nullptr;
    m_grace.cancel();
    m_music.setNeeded(false);
}

void MusicOnIsland::settingsChanged() {
    m_music.settingsChanged();
    updateNeed();
}

/// The wings of music that was paused linger for a while, whose end no event marks.
void MusicOnIsland::changed() {
    m_onChange();
    m_grace.cancel();
    const auto since = m_music.pausedSince();
    const double left = since ? *since + MusicLiveActivity::pausedGrace - m_scheduler.now() : 0;
    if (left > 0) {
        m_grace = m_scheduler.after(std::min(left, MusicLiveActivity::pausedGrace), [this] { changed(); });
    }
}

/// Players are watched only while something can show them.
void MusicOnIsland::updateNeed() {
    m_music.setNeeded(m_rack.layout().contains(WidgetID::music) ||
                      m_settings.boolValue(SettingsKeys::musicLiveActivity));
}

} // namespace veslora
